#include "LogSession/LogSessionManager.h"

#include <algorithm>

LogSessionManager* LogSessionManager::GetInstance() {
    static LogSessionManager* instance = nullptr;
    if (!instance)
        instance = GarbageCollection::CreateGlobalObj<LogSessionManager>();
    return instance;
}

void LogSessionManager::Add(const LogSession* session) {
    if (session && !IsExist(session))
        m_sessions.push_back(session);
}

bool LogSessionManager::IsExist(const LogSession* session) const {
    return std::find(m_sessions.begin(), m_sessions.end(), session) != m_sessions.end();
}

bool LogSessionManager::ValidateSession(const LogSession* session) const {
    return IsExist(session);
}

void LogSessionManager::Remove(const LogSession* session) {
    m_sessions.remove(session);
}
