#include "Utility/src/Logger.h"

#include "Platform/Lock.h"
#include "Utility/src/Converters.h"
#include "Utility/src/LoggerFile.h"
#include "Utility/src/LoggerUtil.h"
#include "Utility/src/Mac/FileSystemUtils.h"
#include "Utility/src/Mac/UserFolderUtils.h"
#include "Utility/src/UsageFolders.h"

#include <exception>
#include <new>

namespace {

constexpr char kFatal[] = "FATAL";
constexpr char kError[] = "ERROR";
constexpr char kWarning[] = "WARNING";
constexpr char kDebug[] = "DEBUG";
constexpr char kInfo[] = "INFO";

Logger* CreateLogger(const std::string& configPath, const std::string& name) {
    std::string fileName;
    if (LoggerUtil::DoesPathExist(configPath))
        fileName = Logger::LoggerFile::GetLogFileName(name);
    if (fileName.empty())
        return GarbageCollection::CreateGlobalObj<NULLLogger>();
    std::ostream& file =
        Logger::LoggerFile::GetFile(fileName, LoggerUtil::GetAppendTag(configPath));
    return GarbageCollection::CreateGlobalObj<Logger>(file);
}

} // namespace

void Logger::LogFatal(const std::string& message, const std::string& detail) {
    Log(kFatal, message, detail);
}

void Logger::LogError(const std::string& message, const std::string& detail) {
    Log(kError, message, detail);
}

void Logger::LogWarning(const std::string& message, const std::string& detail) {
    Log(kWarning, message, detail);
}

void Logger::LogDebug(const std::string& message, const std::string& detail) {
    Log(kDebug, message, detail);
}

void Logger::LogInfo(const std::string& message, const std::string& detail) {
    Log(kInfo, message, detail);
}

void Logger::LogFatal(const std::string& message, const std::string& file, long line) {
    Log(kFatal, message, GetCodeInfo(file, line));
}

void Logger::LogError(const std::string& message, const std::string& file, long line) {
    Log(kError, message, GetCodeInfo(file, line));
}

void Logger::LogWarning(const std::string& message, const std::string& file, long line) {
    Log(kWarning, message, GetCodeInfo(file, line));
}

void Logger::LogDebug(const std::string& message, const std::string& file, long line) {
    Log(kDebug, message, GetCodeInfo(file, line));
}

void Logger::LogInfo(const std::string& message, const std::string& file, long line) {
    Log(kInfo, message, GetCodeInfo(file, line));
}

void Logger::NoteInfo(std::initializer_list<std::string_view> message, const char* file,
                      long line) noexcept {
    Note(&Logger::LogInfo, message, file, line);
}

void Logger::NoteDebug(std::initializer_list<std::string_view> message, const char* file,
                       long line) noexcept {
    Note(&Logger::LogDebug, message, file, line);
}

void Logger::Note(LevelFunction log, std::initializer_list<std::string_view> message,
                  const char* file, long line) noexcept {
    if (!IsEnabled())
        return;
    const Platform::CancellationGuard guard; // a write is where a thread would be cancelled
    try {
        std::string text;
        for (const std::string_view part : message)
            text += part;
        (this->*log)(text, file, line);
    } catch (const std::exception&) {
        return;
    }
}

void Logger::Log(const std::string& level, const std::string& value, const std::string& detail) {
    if (!m_stream || !m_stream->good())
        return;
    std::string line = "[" + level + "] | PID:";
    line += Converters::NumberToString(LoggerUtil::GetProcessID());
    line += " | TIME:" + LoggerUtil::CalcTime();
    line += " | VALUE:" + value;
    line += " | DETAIL:" + detail + "\n";
    m_stream->write(line.data(), static_cast<std::streamsize>(line.size()));
    m_stream->flush();
}

std::string Logger::GetCodeInfo(const std::string& file, long line) {
    return "File:" + file + " LINE:" + Converters::NumberToString(line);
}

Logger* Logger::GetLogger(const std::string& name) noexcept {
    static std::string* configPath = nullptr;
    static Logger* logger = nullptr;
    // A module's load-time initialiser has nobody to report to.
    try {
        if (!configPath)
            configPath = GarbageCollection::CreateGlobalStr(LoggerUtil::GetConfigFilePath());
        if (!logger)
            logger = CreateLogger(*configPath, name);
    } catch (const std::exception&) {
        logger = NULLLogger::Static();
    }
    return logger;
}

NULLLogger* NULLLogger::Static() noexcept {
    alignas(NULLLogger) static unsigned char storage[sizeof(NULLLogger)];
    static NULLLogger* const logger = new (storage) NULLLogger();
    return logger;
}

std::string Logger::LoggerFile::GetLogFileName(const std::string& name) {
    std::string library;
    if (!UserFolderUtils::GetUserLibraryDir(library))
        return std::string();
    const std::string path = library + UsageFolders::kLogs + UsageFolders::kLogPrefix + name +
                             UsageFolders::kLogExtension;
    return FileSystemUtils::CreateLocalDirectory(FileSystemUtils::GetParentPath(path))
               ? path
               : std::string();
}

std::ostream& Logger::LoggerFile::GetFile(const std::string& fileName, bool append) {
    static LoggerFile* file = nullptr;
    if (!file)
        file = GarbageCollection::CreateGlobalObj<LoggerFile>(fileName, append);
    return file->m_stream;
}
