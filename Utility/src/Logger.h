#pragma once

#include "Utility/src/GarbageCollection.h"

#include <initializer_list>
#include <ostream>
#include <string>
#include <string_view>

/// Name under which every module asks for the logger.
inline constexpr char kLoggerName[] = "LogSession";

/// The library's own troubleshooting log. One object serves the process: over a file when the
/// host's bundle asks for it, otherwise a NULLLogger. Logging reports no failure.
class Logger : public GlobalItem {
public:
    class LoggerFile;

    explicit Logger(std::ostream& stream) : m_stream(&stream) {}

    virtual void LogFatal(const std::string& message, const std::string& detail);
    virtual void LogError(const std::string& message, const std::string& detail);
    virtual void LogWarning(const std::string& message, const std::string& detail);
    virtual void LogDebug(const std::string& message, const std::string& detail);
    virtual void LogInfo(const std::string& message, const std::string& detail);

    virtual void LogFatal(const std::string& message, const std::string& file, long line);
    virtual void LogError(const std::string& message, const std::string& file, long line);
    virtual void LogWarning(const std::string& message, const std::string& file, long line);
    virtual void LogDebug(const std::string& message, const std::string& file, long line);
    virtual void LogInfo(const std::string& message, const std::string& file, long line);

    /// Writes one line and flushes it; nothing while the stream is in a failed state, or without
    /// one.
    virtual void Log(const std::string& level, const std::string& value, const std::string& detail);

    /// Whether a line would be written; lets callers spare composing one.
    bool IsEnabled() const { return m_stream != nullptr; }

    // How the library itself logs: a message in parts, put together only when the log is on. The
    // line is lost when memory runs out, for what it tells of must not fail by it.

    void NoteInfo(std::initializer_list<std::string_view> message, const char* file,
                  long line) noexcept;
    void NoteDebug(std::initializer_list<std::string_view> message, const char* file,
                   long line) noexcept;

    /// The process's logger, whatever the name; created by the first call. Never null, never
    /// throws.
    static Logger* GetLogger(const std::string& name) noexcept;

    static std::string GetCodeInfo(const std::string& file, long line);

protected:
    /// Over no stream: even the standard ones would have to be made ready in every host.
    Logger() = default;

private:
    using LevelFunction = void (Logger::*)(const std::string&, const std::string&, long);
    void Note(LevelFunction log, std::initializer_list<std::string_view> message, const char* file,
              long line) noexcept;

    std::ostream* m_stream = nullptr;
};

/// A logger that does nothing.
class NULLLogger : public Logger {
public:
    void LogFatal(const std::string&, const std::string&) override {}
    void LogError(const std::string&, const std::string&) override {}
    void LogWarning(const std::string&, const std::string&) override {}
    void LogDebug(const std::string&, const std::string&) override {}
    void LogInfo(const std::string&, const std::string&) override {}
    void LogFatal(const std::string&, const std::string&, long) override {}
    void LogError(const std::string&, const std::string&, long) override {}
    void LogWarning(const std::string&, const std::string&, long) override {}
    void LogDebug(const std::string&, const std::string&, long) override {}
    void LogInfo(const std::string&, const std::string&, long) override {}

    /// A statically allocated one that outlives every caller.
    static NULLLogger* Static() noexcept;
};
