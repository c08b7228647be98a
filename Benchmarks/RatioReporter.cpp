#include "Benchmarks/RatioReporter.h"

#include "Benchmarks/ResultTable.h"

namespace {

constexpr char kCallSuffix[] = "/call";
constexpr char kFloorSuffix[] = "/floor";
constexpr double kMicroseconds = 1e6;

} // namespace

void RatioReporter::ReportRuns(const std::vector<Run>& runs) {
    for (const Run& run : runs)
        if (run.aggregate_name == "median")
            m_medians[run.run_name.function_name] = run.GetAdjustedRealTime() * kMicroseconds /
                                                    benchmark::GetTimeUnitMultiplier(run.time_unit);
    ConsoleReporter::ReportRuns(runs);
}

void RatioReporter::Finalize() {
    for (const auto& [name, median] : m_medians) {
        if (!name.ends_with(kCallSuffix))
            continue;
        const std::string what = name.substr(0, name.size() - (sizeof kCallSuffix - 1));
        const auto floor = m_medians.find(what + kFloorSuffix);
        if (floor != m_medians.end())
            ResultTable::Add(what, "us", median, floor->second);
    }
}
