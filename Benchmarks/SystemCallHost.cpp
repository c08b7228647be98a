// A host to be run under a tracer of system calls: two sessions, then the bare floor of one.

#include "Benchmarks/BareSession.h"
#include "Benchmarks/HostSession.h"
#include "Benchmarks/Stretch.h"

namespace {

template <class Work>
void Trace(const char* name, Work work) {
    const Stretch stretch(name);
    work();
}

void RunSession(const char* start, const char* close) {
    LogSession* session = nullptr;
    Trace(start, [&session] { session = HostCalls::StartSession(); });
    Trace(close, [&session] { UTCloseSession(&session); });
}

} // namespace

int main() {
    const BenchmarkAccount account;
    HostCalls::Initialize(account);
    RunSession("first start", "first close");
    RunSession("later start", "later close");
    BareSession bare(account, RecordSession(account));
    Trace("bare start", [&bare] { bare.Start(); });
    Trace("bare close", [&bare] { bare.Close(); });
    return 0;
}
