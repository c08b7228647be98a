#pragma once

#include "Benchmarks/BenchmarkAccount.h"
#include "LogSession/UTLogData.h"

#include <stdexcept>

/// What every host of a benchmark does alike.
namespace HostCalls {

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

/// A session in the account, with a group of the host's own. The documents stay when it is closed.
class HostSession {
public:
    explicit HostSession(const BenchmarkAccount& account) : m_account(account) {
        m_account.Enter();
        m_session = HostCalls::StartSession();
        UTNewDataGroup(m_session, "View", "Window", "Canvas", &m_group, nullptr, 0);
        if (m_group < 0)
            throw std::runtime_error("no group");
    }
    ~HostSession() {
        m_account.Enter();
        UTCloseSession(&m_session);
    }
    HostSession(const HostSession&) = delete;
    HostSession& operator=(const HostSession&) = delete;

    LogSession* Get() const { return m_session; }
    int Group() const { return m_group; }

private:
    const BenchmarkAccount& m_account;
    LogSession* m_session = nullptr;
    int m_group = -1;
};
