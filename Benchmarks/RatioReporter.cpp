#include "Benchmarks/RatioReporter.h"

#include <iomanip>

namespace {

constexpr char kCallSuffix[] = "/call";
constexpr char kFloorSuffix[] = "/write";

} // namespace

void RatioReporter::ReportRuns(const std::vector<Run>& runs) {
    for (const Run& run : runs)
        if (run.aggregate_name == "median")
            m_medians[run.run_name.function_name] = run.GetAdjustedRealTime();
    ConsoleReporter::ReportRuns(runs);
}

void RatioReporter::Finalize() {
    std::ostream& out = GetOutputStream();
    for (const auto& [name, median] : m_medians) {
        if (!name.ends_with(kCallSuffix))
            continue;
        const std::string what = name.substr(0, name.size() - (sizeof kCallSuffix - 1));
        const auto floor = m_medians.find(what + kFloorSuffix);
        if (floor != m_medians.end())
            out << std::left << std::setw(40) << what << std::right << std::fixed
                << std::setprecision(2) << median / floor->second
                << " times a bare write of the same bytes\n";
    }
}
