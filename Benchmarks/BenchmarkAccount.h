#pragma once

#include <string>

/// What a user has set and has lying about.
struct AccountSettings {
    bool obfuscate = true;
    bool send = false;
    int storedKeys = 50; ///< of the preferences, the two above included
    int otherFiles = 0;  ///< in the log folder
};

/// A user account of its own in the folder for temporary files: a consenting user, and an agent
/// that is there and does nothing. A child sets it up, so that this process still has its first
/// call of the library before it: make all accounts before that call.
class BenchmarkAccount {
public:
    static constexpr char kUsageKey[] = "Benchmark";

    explicit BenchmarkAccount(const AccountSettings& settings = {});
    ~BenchmarkAccount();
    BenchmarkAccount(const BenchmarkAccount&) = delete;
    BenchmarkAccount& operator=(const BenchmarkAccount&) = delete;

    /// Has the process's environment lead to this account, as it does to the one made last.
    void Enter() const;
    /// Where the agent is, too.
    const std::string& Root() const { return m_root; }
    std::string AgentProgram() const;
    std::string LogFolder() const;
    /// Where open sessions are marked.
    std::string MarkerFolder() const;
    /// Removes what is in the log folder, but for the other files.
    void RemoveDocuments() const;

private:
    void AddOtherFiles(int count) const;

    std::string m_root;
};
