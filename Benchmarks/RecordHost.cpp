// A host to be run as it is and under tools: stretches of N and of 2 N calls of each kind, so that
// the difference is what N calls take; and bare writes in the same way. Prints how many
// allocations each stretch took. A stretch is named "<kind>:<number of calls>".

#include "Benchmarks/Allocations.h"
#include "Benchmarks/BareFile.h"
#include "Benchmarks/Stretch.h"

#include <cstdio>

namespace {

using RecordCalls::Call;

constexpr int kShortCalls = 200, kLongCalls = 10;
constexpr int kWarmingCalls = 3; // until every buffer has its size
constexpr char kBareKind[] = "write(2)";

template <class Work>
void RunStretch(const std::string& kind, int count, Work work) {
    unsigned long allocations = 0;
    {
        const Stretch stretch(kind + ":" + std::to_string(count));
        const unsigned long before = Allocations::Count();
        for (int i = 0; i < count; ++i)
            work();
        allocations = Allocations::Count() - before;
    }
    std::printf("allocations\t%s\t%d\t%lu\n", kind.c_str(), count, allocations);
}

void RunCalls(const std::string& kind, const BenchmarkAccount& account, int count, Call call) {
    for (const int calls : {count, 2 * count}) {
        const HostSession host(account);
        for (int i = 0; i < kWarmingCalls; ++i)
            call(host);
        RunStretch(kind, calls, [&host, call] { call(host); });
    }
}

void RunWrites(const BenchmarkAccount& account, const StoredSession& stored) {
    const BareFile file(account, stored);
    const std::string* next = stored.records.data();
    for (const int calls : {kShortCalls, 2 * kShortCalls})
        RunStretch(kBareKind, calls, [&file, &next] {
            if (::write(file.Descriptor(), next->data(), next->size()) < 0)
                throw std::runtime_error("bare write");
            ++next;
        });
}

void RunKinds(const std::string& mode, const BenchmarkAccount& account) {
    using namespace RecordCalls;
    const auto run = [&](const std::string& kind, int count, Call call) {
        RunCalls(kind + ", " + mode, account, count, call);
    };
    run("UTLogEvent", kShortCalls, LogEvent);
    run("UTAddToSession", kShortCalls, AddToSession);
    run("UTAddToGroup", kShortCalls, AddToGroup);
    run("UTAddToSession, 512 of '<'", kLongCalls, AddToSession<kMarkup>);
    run("UTAddToSession, 512 of mark-up and text", kLongCalls, AddToSession<kMixture>);
    run("UTAddToSession, 512 of non-ASCII", kLongCalls, AddToSession<kWorld>);
}

} // namespace

int main() {
    const BenchmarkAccount clear({.obfuscate = false}), obfuscated;
    HostCalls::Initialize(obfuscated);
    RunWrites(obfuscated, StoreSession(obfuscated, RecordCalls::LogEvent));
    RunKinds("in clear", clear);
    RunKinds("obfuscated", obfuscated);
    return 0;
}
