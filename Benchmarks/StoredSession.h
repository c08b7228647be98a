#pragma once

#include "Benchmarks/RecordCalls.h"

#include <string>
#include <vector>

/// What the library really stores when a host makes the same call until its file is full: the
/// bytes that a bare write has to store, too.
struct StoredSession {
    std::string start;                ///< what precedes the calls
    std::vector<std::string> records; ///< of each call, the one that filled the file included
    std::string end;                  ///< with which the full file ends
    std::string nextStart;            ///< with which the next one begins
};

/// Throws when the library does not store what it should.
StoredSession StoreSession(const BenchmarkAccount& account, RecordCalls::Call call);
