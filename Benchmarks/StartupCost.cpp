// What the library costs a process that begins: loading and initialising it, its first session,
// and the memory that it takes; beside loading nothing but the libraries that it needs, which are
// the arguments. Every figure is the median of many fresh processes of both kinds in turn.

#include "Benchmarks/BenchmarkAccount.h"
#include "Benchmarks/ResultTable.h"

#include <algorithm>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

constexpr int kProcesses = 41;

/// What one process told, as LoadingHost prints it.
struct Cost {
    double load = 0, start = 0, close = 0, memory = 0;
};

Cost RunHost(const std::string& arguments) {
    Cost cost;
    const std::string command = "'" VISTRA_LOADING_HOST "' " + arguments;
    FILE* output = ::popen(command.c_str(), "r");
    const int count = output ? std::fscanf(output, "%lf %lf %lf %lf", &cost.load, &cost.start,
                                           &cost.close, &cost.memory)
                             : 0;
    if (!output || ::pclose(output) != 0 || count != 4)
        throw std::runtime_error("failed: " + command);
    return cost;
}

double Median(std::vector<Cost> costs, double Cost::*figure) {
    std::ranges::sort(costs, {}, figure);
    return costs[costs.size() / 2].*figure;
}

} // namespace

int main(int argc, char** argv) {
    const BenchmarkAccount account(true);
    const std::string session =
        "session '" + account.Root() + "' " + BenchmarkAccount::kUsageKey + " '" VISTRA_LIBRARY "'";
    std::string load = "load";
    for (int i = 1; i < argc; ++i)
        load += std::string(" '") + argv[i] + "'";
    std::vector<Cost> ofLibrary, ofNeeded;
    for (int i = 0; i < kProcesses; ++i) {
        ofLibrary.push_back(RunHost(session));
        ofNeeded.push_back(RunHost(load));
    }
    ResultTable::Add("loading and UTInitialize", "us", Median(ofLibrary, &Cost::load),
                     Median(ofNeeded, &Cost::load));
    ResultTable::Add("first session start of a process", "us", Median(ofLibrary, &Cost::start));
    ResultTable::Add("first session close of a process", "us", Median(ofLibrary, &Cost::close));
    ResultTable::Add("private memory with an open session", "KiB", Median(ofLibrary, &Cost::memory),
                     Median(ofNeeded, &Cost::memory));
    return 0;
}
