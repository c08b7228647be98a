// What a session costs the host from its start to its close, beside the system calls that make the
// same files. The process has had a session before: what it keeps of the machine and of the
// settings is there.

#include "Benchmarks/BareSession.h"
#include "Benchmarks/HostCalls.h"
#include "Benchmarks/RatioReporter.h"

#include <chrono>
#include <functional>

namespace {

// Many short repetitions: few of them meet another program's turn, and the median none.
constexpr benchmark::IterationCount kSessions = 1;
constexpr int kRepetitions = 1001;

/// One way to make the files of a session.
struct Way {
    const char* suffix;
    std::function<void()> start, close;
};

/// What is measured of a session.
struct Stretch {
    const char* name;
    bool hasStart, hasClose;
};

constexpr Stretch kStretches[] = {
    {"session start and close", true, true},
    {"session start", true, false},
    {"session close", false, true},
};

void Measure(benchmark::State& state, const BenchmarkAccount& account, const Way& way,
             const Stretch& stretch) {
    using Clock = std::chrono::steady_clock;
    for (auto _ : state) {
        const Clock::time_point begin = Clock::now();
        way.start();
        const Clock::time_point open = Clock::now();
        way.close();
        const Clock::time_point end = Clock::now();
        const Clock::duration none = Clock::duration::zero();
        const std::chrono::duration<double> measured =
            (stretch.hasStart ? open - begin : none) + (stretch.hasClose ? end - open : none);
        state.SetIterationTime(measured.count());
    }
    account.RemoveDocuments();
}

void Register(const BenchmarkAccount& account, const Way& way, const Stretch& stretch,
              const std::string& mode) {
    const std::string name = stretch.name + mode + way.suffix;
    benchmark::RegisterBenchmark(
        name.c_str(),
        [&, stretch](benchmark::State& state) { Measure(state, account, way, stretch); })
        ->Iterations(kSessions)
        ->Repetitions(kRepetitions)
        ->ReportAggregatesOnly()
        ->UseManualTime();
}

} // namespace

int main(int argc, char** argv) {
    const bool plain = HostCalls::IsPlain(argc, argv);
    const BenchmarkAccount account(!plain);
    benchmark::Initialize(&argc, argv);
    HostCalls::Initialize(account);
    BareSession bare(account, RecordSession(account));
    LogSession* session = nullptr;
    const Way library{"/call", [&session] { session = HostCalls::StartSession(); },
                      [&session] { UTCloseSession(&session); }};
    const Way floor{"/floor", [&bare] { bare.Start(); }, [&bare] { bare.Close(); }};
    for (const Stretch& stretch : kStretches)
        for (const Way* way : {&library, &floor})
            Register(account, *way, stretch, plain ? " in clear" : " obfuscated");
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return 0;
}
