// A host to be run under a tracer of system calls: two sessions, then the bare floor of one. Every
// stretch is announced by a call that leaves its name in the trace.

#include "Benchmarks/BareSession.h"
#include "Benchmarks/HostCalls.h"

#include <unistd.h>

namespace {

/// Everything up to the next announcement belongs to the stretch; what no name is given for is
/// not counted.
void Announce(const char* stretch) {
    if (::access((std::string("stretch:") + stretch).c_str(), F_OK) == 0)
        ::_exit(1);
}

void RunSession(const char* start, const char* close) {
    Announce(start);
    LogSession* session = HostCalls::StartSession();
    Announce(close);
    UTCloseSession(&session);
    Announce("");
}

} // namespace

int main(int argc, char** argv) {
    const BenchmarkAccount account(!HostCalls::IsPlain(argc, argv));
    HostCalls::Initialize(account);
    RunSession("first start", "first close");
    RunSession("later start", "later close");
    BareSession bare(account, RecordSession(account));
    Announce("bare start");
    bare.Start();
    Announce("bare close");
    bare.Close();
    Announce("");
    return 0;
}
