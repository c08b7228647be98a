#pragma once

#include "Utility/src/GarbageCollection.h"

#include <list>

class LogSession;

/// Registry of live sessions, which makes the handles of hosts checkable: pointers are compared
/// and never followed. Relies on the API lock.
class LogSessionManager : public GlobalItem {
public:
    static LogSessionManager* GetInstance();

    /// Null, and a session that is already there, are ignored.
    void Add(const LogSession* session);
    bool IsExist(const LogSession* session) const;
    bool ValidateSession(const LogSession* session) const;
    void Remove(const LogSession* session);

private:
    std::list<const LogSession*> m_sessions;
};
