#include "Utility/src/LoggerUtil.h"

#include "Platform/Bundle.h"
#include "Platform/Files.h"
#include "Platform/Process.h"
#include "Utility/src/Mac/FileSystemUtils.h"
#include "Utility/src/StringUtils.h"
#include "Utility/src/TimeUtils.h"

#include <optional>

namespace {

constexpr char kConfigFileName[] = "VSLog.config";
constexpr char kConfigDelimiters[] = " =;,";
constexpr char kAppendKey[] = "append";
constexpr char kAppendOn[] = "1";
constexpr std::size_t kMaximumLineBytes = 511;

/// The content of a file that may be written, too.
std::optional<std::string> ReadWritableFile(const std::string& path) {
    const Platform::FileHandle file = Platform::OpenFile(path, Platform::Access::ReadWrite);
    if (file == Platform::kNoFile)
        return std::nullopt;
    Platform::CloseFile(file);
    return Platform::ReadFile(path);
}

} // namespace

std::string LoggerUtil::GetConfigFilePath() {
    return GetModulePath() + kConfigFileName;
}

std::string LoggerUtil::GetModulePath() {
    const std::string location = Platform::MainBundleLocation();
    return location.empty() ? location : FileSystemUtils::AppendPathElement(location);
}

bool LoggerUtil::DoesPathExist(const std::string& path) {
    return FileSystemUtils::DoesPathExist(path);
}

bool LoggerUtil::GetAppendTag(const std::string& configPath) {
    return GetConfigValue(configPath, kAppendKey) == kAppendOn;
}

std::string LoggerUtil::GetConfigValue(const std::string& configPath, const std::string& key) {
    std::vector<std::string> lines;
    StringUtils::SplitStr(ReadWritableFile(configPath).value_or(""), lines, "\n");
    std::string value;
    for (const std::string& line : lines) {
        if (line.size() > kMaximumLineBytes)
            break;
        std::vector<std::string> tokens;
        SplitString(line, tokens, kConfigDelimiters);
        if (tokens.size() >= 2 && tokens[0] == key)
            value = tokens[1];
    }
    return value;
}

void LoggerUtil::SplitString(const std::string& text, std::vector<std::string>& tokens,
                             const std::string& delimiters) {
    std::vector<std::string> parts;
    if (delimiters.empty() && !text.empty())
        parts.push_back(text);
    StringUtils::SplitStr(text, parts, delimiters);
    tokens.insert(tokens.end(), parts.begin(), parts.end());
}

int LoggerUtil::GetProcessID() {
    return Platform::CurrentProcessId();
}

std::string LoggerUtil::CalcTime() {
    return TimeUtils::CalcTime();
}

bool LoggerUtil::GetCurrentTimeStruct(std::tm& time) {
    return TimeUtils::GetCurrentTimeStruct(time);
}
