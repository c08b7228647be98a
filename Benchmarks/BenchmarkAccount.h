#pragma once

#include <string>

/// A user account of its own below the working folder, in which recording is allowed: the user
/// has opted in, an agent is there, and finished documents are not handed to it.
class BenchmarkAccount {
public:
    explicit BenchmarkAccount(bool obfuscate);
    ~BenchmarkAccount();
    BenchmarkAccount(const BenchmarkAccount&) = delete;
    BenchmarkAccount& operator=(const BenchmarkAccount&) = delete;

    const std::string& Root() const { return m_root; }

private:
    std::string m_root;
};
