#pragma once

#include "Benchmarks/StoredSession.h"

#include <unistd.h>

/// The floor of recording: a file of the log folder with the bytes that the library stores, by
/// nothing but the system calls that it takes. Throws on failure.
class BareFile {
public:
    /// Locked, and with what precedes the records.
    BareFile(const BenchmarkAccount& account, const StoredSession& content);
    /// Removes all its files.
    ~BareFile();
    BareFile(const BareFile&) = delete;
    BareFile& operator=(const BareFile&) = delete;

    int Descriptor() const { return m_file; }
    const std::vector<std::string>& Records() const { return m_content.records; }

    /// Stores the next of the records, which begin anew after the last one. A full file is ended
    /// and renamed, and another one begun.
    void WriteNext() {
        const std::string& record = m_content.records[m_next];
        Store(record);
        if (++m_next == m_content.records.size())
            m_next = 0;
        if (m_bytes >= kFileBytes)
            BeginNext();
    }

private:
    static constexpr std::size_t kFileBytes = 102'400;

    void Store(const std::string& text) {
        if (::write(m_file, text.data(), text.size()) != static_cast<ssize_t>(text.size()))
            throw std::runtime_error("bare write");
        m_bytes += text.size();
    }
    void Open();
    void BeginNext();
    std::string FinishedPath(int number) const;

    const StoredSession& m_content;
    const std::string m_path;
    std::size_t m_next = 0;
    std::size_t m_bytes = 0;
    int m_file = -1;
    int m_finished = 0;
};
