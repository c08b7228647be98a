// What a session costs the host from its start to its close, beside the system calls that make the
// same files. The process has had a session before: what it keeps of the machine and of the
// settings is there. Apart from that, what a display and the launch of the agent add; the display
// is the one that DISPLAY names.

#include "Benchmarks/BareSession.h"
#include "Benchmarks/HostSession.h"
#include "Benchmarks/ResultTable.h"

#include <cstdio>
#include <cstdlib>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr char kSection[] = "A session | the same files by bare system calls";
constexpr char kExtraSection[] = "What may come to a session | the same without it";
constexpr char kTarget[] = "<= 3";
// Many short rounds: few of them meet another program's turn, and the median none.
constexpr int kRounds = 1001;
constexpr int kLaunchRounds = 201;
constexpr useconds_t kAgentsLife = 3'000;

template <class Work>
double Microseconds(Work work) {
    return Measurement::MicrosecondsEach(1, [&work](std::size_t) { work(); });
}

void AddSession(Figures& figures, const std::string& way, double start, double close) {
    figures[way + " start"] = start;
    figures[way + " close"] = close;
    figures[way] = start + close;
}

void MeasureLibrary(Figures& figures, const std::string& way) {
    LogSession* session = nullptr;
    const double start = Microseconds([&session] { session = HostCalls::StartSession(); });
    AddSession(figures, way, start, Microseconds([&session] { UTCloseSession(&session); }));
}

void MeasureFloor(Figures& figures, BareSession& bare) {
    const double start = Microseconds([&bare] { bare.Start(); });
    AddSession(figures, "floor", start, Microseconds([&bare] { bare.Close(); }));
}

void CompareWithFloor(const BenchmarkAccount& account) {
    account.Enter();
    BareSession bare(account, RecordSession(account));
    const Samples samples = Measurement::Repeat("session", kRounds, [&] {
        Figures figures;
        MeasureLibrary(figures, "library");
        MeasureFloor(figures, bare);
        account.RemoveDocuments();
        return figures;
    });
    ResultTable::Compare(kSection, "start and close", samples, "library", "floor", kTarget);
    ResultTable::Compare(kSection, "start", samples, "library start", "floor start");
    ResultTable::Compare(kSection, "close", samples, "library close", "floor close");
}

/// A session as it is, and one with something more, in turn.
template <class Prepare>
Samples CompareWithMore(const std::string& name, int rounds, const BenchmarkAccount& account,
                        Prepare prepare) {
    return Measurement::Repeat(name, rounds, [&] {
        Figures figures;
        for (const bool more : {false, true}) {
            prepare(more);
            MeasureLibrary(figures, more ? "more" : "plain");
            account.RemoveDocuments();
        }
        return figures;
    });
}

void CompareDisplay(const BenchmarkAccount& account, const std::string& display) {
    account.Enter();
    const auto samples = CompareWithMore("display", kLaunchRounds, account, [&](bool more) {
        more ? ::setenv("DISPLAY", display.c_str(), 1) : ::unsetenv("DISPLAY");
    });
    ::unsetenv("DISPLAY");
    ResultTable::Compare(kExtraSection, "start with the screens of a display", samples,
                         "more start", "plain start");
}

/// What starting the agent costs at least.
double MeasureSpawn(const std::string& program) {
    char* arguments[] = {const_cast<char*>(program.c_str()), nullptr};
    pid_t child = 0;
    const double result = Microseconds([&] {
        if (::posix_spawn(&child, program.c_str(), nullptr, nullptr, arguments, environ) != 0)
            throw std::runtime_error("no agent");
    });
    ::waitpid(child, nullptr, 0);
    return result;
}

void CompareLaunch(const BenchmarkAccount& idle, const BenchmarkAccount& sending) {
    const auto samples = Measurement::Repeat("launch", kLaunchRounds, [&] {
        Figures figures;
        for (const BenchmarkAccount* account : {&idle, &sending}) {
            account->Enter();
            MeasureLibrary(figures, account == &idle ? "plain" : "more");
            ::usleep(kAgentsLife);
            account->RemoveDocuments();
        }
        figures["spawn"] = MeasureSpawn(idle.AgentProgram());
        return figures;
    });
    ResultTable::Compare(kExtraSection, "close that launches the agent", samples, "more close",
                         "plain close");
    ResultTable::Add({kExtraSection,
                      "posix_spawn of the agent alone",
                      "us",
                      {},
                      samples.Median("spawn"),
                      {},
                      ""});
}

} // namespace

int main() {
    const char* named = std::getenv("DISPLAY");
    const std::string display = named ? named : "";
    const BenchmarkAccount account, sending({.send = true});
    HostCalls::Initialize(account);
    CompareWithFloor(account);
    if (display.empty())
        std::puts("No display is named: the screens are left out.");
    else
        CompareDisplay(account, display);
    CompareLaunch(account, sending);
    return 0;
}
