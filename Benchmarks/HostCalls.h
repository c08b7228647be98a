#pragma once

#include "Benchmarks/BenchmarkAccount.h"
#include "LogSession/UTLogData.h"

#include <cstring>
#include <stdexcept>

/// What every host of a benchmark does alike.
namespace HostCalls {

/// Whether documents are to be written in clear: the program's first argument.
inline bool IsPlain(int argc, char** argv) {
    return argc > 1 && std::strcmp(argv[1], "--plain") == 0;
}

inline void Initialize(const BenchmarkAccount& account) {
    UTInitialize(BenchmarkAccount::kUsageKey, 1, account.Root().c_str());
}

/// Throws when no session is recorded: what would be measured then is nothing.
inline LogSession* StartSession() {
    LogSession* session = nullptr;
    UTStartSession(&session, "Benchmark", "Session", "1.0", "1", "en");
    if (!session)
        throw std::runtime_error("no session");
    return session;
}

} // namespace HostCalls
