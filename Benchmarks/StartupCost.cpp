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
constexpr int kProcesses = 51;
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

Samples Measure(const BenchmarkAccount& account, const std::vector<std::string>& needed) {
    const std::string session =
        "session '" + account.Root() + "' " + BenchmarkAccount::kUsageKey + " '" VISTRA_LIBRARY "'";
    std::string all;
    for (const std::string& library : needed)
        all += " '" + library + "'";
    return Measurement::Repeat("processes", kProcesses, [&] {
        Figures figures;
        RunHost(figures, "library", session);
        RunHost(figures, "needed", "load" + all);
        for (const std::string& library : needed)
            RunHost(figures, library, "load '" + library + "'");
        figures["own memory"] = figures["library memory"] - figures["needed memory"];
        figures["own written"] = figures["library written"] - figures["needed written"];
        return figures;
    });
}

void AddOne(const std::string& section, const std::string& what, const std::string& unit,
            double value, const std::string& target = "") {
    ResultTable::Add({section, what, unit, value, {}, {}, target});
}

void AddResults(const Samples& samples, const std::vector<std::string>& needed) {
    ResultTable::Compare(kSection, "dlopen and UTInitialize", samples, "library load",
                         "needed load", "<= 1.2");
    AddOne(kSection, "first session start", "us", samples.Median("library start"));
    AddOne(kSection, "first session close", "us", samples.Median("library close"));
    for (const std::string& library : needed)
        AddOne(kNeededSection,
               library + ", " + std::to_string(std::lround(samples.Median(library + " memory"))) +
                   " KB private memory",
               "us", samples.Median(library + " load"));
    AddOne(kMemorySection, "private memory of an open session, beyond them", "KB",
           samples.Median("own memory"), "<= 600");
    AddOne(kMemorySection, "the part of it that was written to", "KB",
           samples.Median("own written"));
}

} // namespace

int main(int argc, char** argv) {
    const BenchmarkAccount account;
    const std::vector<std::string> needed(argv + 1, argv + argc);
    AddResults(Measure(account, needed), needed);
    return 0;
}
