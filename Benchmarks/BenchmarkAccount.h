#pragma once

#include <string>

/// A user account of its own in the folder for temporary files, to which the process's environment
/// leads: a consenting user with fifty stored settings who sends nothing, and an agent that is
/// there. A child sets it up, so that this process still has its first call of the library before
/// it.
class BenchmarkAccount {
public:
    static constexpr char kUsageKey[] = "Benchmark";

    explicit BenchmarkAccount(bool obfuscate);
    ~BenchmarkAccount();
    BenchmarkAccount(const BenchmarkAccount&) = delete;
    BenchmarkAccount& operator=(const BenchmarkAccount&) = delete;

    /// Where the agent is, too.
    const std::string& Root() const { return m_root; }
    std::string LogFolder() const;
    /// Where open sessions are marked.
    std::string MarkerFolder() const;
    void RemoveDocuments() const;

private:
    std::string m_root;
};
