// What the library costs a process that begins: loading and initialising it, its first session,
// and the memory that it takes; beside loading nothing but the libraries that it needs, which are
// the arguments. Every figure is the median of many fresh processes of all kinds in turn.

#include "Benchmarks/BenchmarkAccount.h"
#include "Benchmarks/ResultTable.h"

#include <cmath>
#include <cstdio>
#include <stdexcept>

namespace {

constexpr char kSection[] = "A process that begins | loading the libraries that it needs";
constexpr char kNeededSection[] = "What each needed library costs, alone in a process";
constexpr char kMemorySection[] = "Size and memory";
constexpr int kProcesses = 201;
constexpr int kProcessesOfEach = 31;
constexpr double kKilobyte = 1000; // the stricter reading
constexpr double kKibibyte = 1024;

/// Runs a host, and adds what it tells of the way.
void RunHost(Figures& figures, const std::string& way, const std::string& arguments) {
    double load = 0, start = 0, close = 0, memory = 0, written = 0;
    const std::string command = "'" VISTRA_LOADING_HOST "' " + arguments;
    FILE* output = ::popen(command.c_str(), "r");
    const int count = output ? std::fscanf(output, "%lf %lf %lf %lf %lf", &load, &start, &close,
                                           &memory, &written)
                             : 0;
    if (!output || ::pclose(output) != 0 || count != 5)
        throw std::runtime_error("failed: " + command);
    figures[way + " load"] = load;
    figures[way + " start"] = start;
    figures[way + " close"] = close;
    figures[way + " memory"] = memory * kKibibyte / kKilobyte;
    figures[way + " written"] = written * kKibibyte / kKilobyte;
}

/// Both kinds, each as often the first: what one has loaded is still in the processor's caches for
/// the other.
Samples Compare(const BenchmarkAccount& account, const std::vector<std::string>& needed) {
    const std::string session =
        "session '" + account.Root() + "' " + BenchmarkAccount::kUsageKey + " '" VISTRA_LIBRARY "'";
    std::string load = "load";
    for (const std::string& library : needed)
        load += " '" + library + "'";
    bool isLibraryFirst = false;
    return Measurement::Repeat("processes", kProcesses, [&] {
        Figures figures;
        isLibraryFirst = !isLibraryFirst;
        if (isLibraryFirst)
            RunHost(figures, "library", session);
        RunHost(figures, "needed", load);
        if (!isLibraryFirst)
            RunHost(figures, "library", session);
        figures["own memory"] = figures["library memory"] - figures["needed memory"];
        figures["own written"] = figures["library written"] - figures["needed written"];
        return figures;
    });
}

Samples MeasureEach(const std::vector<std::string>& needed) {
    return Measurement::Repeat("needed libraries", kProcessesOfEach, [&] {
        Figures figures;
        for (const std::string& library : needed)
            RunHost(figures, library, "load '" + library + "'");
        return figures;
    });
}

void AddOne(const std::string& section, const std::string& what, const std::string& unit,
            double value, const std::string& target = "") {
    ResultTable::Add({section, what, unit, value, {}, {}, target});
}

void AddEach(const Samples& samples, const std::vector<std::string>& needed) {
    for (const std::string& library : needed)
        AddOne(kNeededSection,
               library + ", " + std::to_string(std::lround(samples.Median(library + " memory"))) +
                   " KB private memory",
               "us", samples.Median(library + " load"));
}

void AddResults(const Samples& samples) {
    ResultTable::Compare(kSection, "dlopen and UTInitialize", samples, "library load",
                         "needed load", "<= 1.2");
    AddOne(kSection, "first session start", "us", samples.Median("library start"));
    AddOne(kSection, "first session close", "us", samples.Median("library close"));
    AddOne(kMemorySection, "private memory of an open session, beyond them", "KB",
           samples.Median("own memory"), "<= 600");
    AddOne(kMemorySection, "the part of it that was written to", "KB",
           samples.Median("own written"));
}

} // namespace

int main(int argc, char** argv) {
    const BenchmarkAccount account;
    const std::vector<std::string> needed(argv + 1, argv + argc);
    AddResults(Compare(account, needed));
    AddEach(MeasureEach(needed), needed);
    return 0;
}
