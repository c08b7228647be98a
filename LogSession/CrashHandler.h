#pragma once

#include <string>

class LogSession;

/// Keeps a marker, an empty file named for its session, for as long as a session is open. One that
/// outlives its process tells the agent that the host ended without closing the session. Failures
/// are quiet results; the session goes on. Relies on the API lock.
class CrashHandler {
public:
    /// Notes in the preferences which agent handles crashes of this program, and writes the
    /// session's marker if that agent is there. The second argument is not used. Always true.
    static bool SetCrashHandler(LogSession* session, const std::string& appFamily);

    /// Writes the marker. False for a null session, and when there is no folder for it.
    static bool RecordSessionInfo(LogSession* session);

    /// Deletes the marker, then the oldest of the others beyond fifty. False, with nothing else
    /// deleted, when the marker is not there or cannot be deleted.
    static bool RemoveSessionInfo(LogSession* session);

    /// The session of the last SetCrashHandler; it may have ended since.
    static LogSession* gpLogSession;
};
