#pragma once

class LogSession;

/// Reports rejected caller data into a session's document; without a session, nowhere.
class DataLogger {
public:
    explicit DataLogger(LogSession* session) : m_session(session) {}

    /// Records the error in a group of its own. False, with nothing written, without a session
    /// and for a null text.
    bool LogInvalidData(const char* errorType, const char* value) const;

private:
    LogSession* m_session;
};
