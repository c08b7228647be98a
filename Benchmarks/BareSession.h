#pragma once

#include "Benchmarks/BenchmarkAccount.h"

#include <string>
#include <vector>

/// What the library wrote in one session, write by write.
struct SessionContent {
    std::vector<std::string> atStart;
    std::vector<std::string> atClose;
};

/// Has the library write a session, and takes its document apart. Throws when there is none, or
/// when not every write of the session went there.
SessionContent RecordSession(const BenchmarkAccount& account);

/// The floor of a session: the same files with the same content in the same number of writes, by
/// nothing but the system calls that it takes. Both steps throw on failure.
class BareSession {
public:
    BareSession(const BenchmarkAccount& account, SessionContent content);

    /// Creates and locks the document, writes its start, and marks the session as open.
    void Start();
    /// Writes the rest, closes and renames the document, and removes the mark.
    void Close();

private:
    const SessionContent m_content;
    const std::string m_document; ///< path without number and extension
    const std::string m_marker;
    int m_file = -1;
    int m_number = 0;
    std::string m_inProgress;
};
