#pragma once

#include "Utility/src/FileStream.h"
#include "Utility/src/Logger.h"

/// The process's one log file.
class Logger::LoggerFile : public GlobalItem {
public:
    /// Appends to an existing file, or truncates it. A failed open leaves a failed stream.
    LoggerFile(const std::string& fileName, bool append) : m_stream(fileName, append) {}

    /// Path of the log file of that name, its folder created; empty when that cannot be made.
    static std::string GetLogFileName(const std::string& name);

    /// The stream of the process's log file, opened by the first call.
    static std::ostream& GetFile(const std::string& fileName, bool append);

private:
    FileStream m_stream;
};
