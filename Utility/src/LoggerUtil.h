#pragma once

#include <ctime>
#include <string>
#include <vector>

/// What the logger needs of the process and of its configuration file.
class LoggerUtil {
public:
    /// The configuration file directly inside the host's bundle; without a bundle, relative.
    static std::string GetConfigFilePath();
    /// The main bundle's path with a trailing delimiter; empty when there is none.
    static std::string GetModulePath();
    static bool DoesPathExist(const std::string& path);
    /// Whether the value "append" is exactly "1".
    static bool GetAppendTag(const std::string& configPath);
    /// The last value of the key; empty when there is none, or the file cannot be opened for
    /// reading and writing.
    static std::string GetConfigValue(const std::string& configPath, const std::string& key);
    /// Appends the non-empty pieces of the text between any of the delimiters.
    static void SplitString(const std::string& text, std::vector<std::string>& tokens,
                            const std::string& delimiters);
    static int GetProcessID();
    static std::string CalcTime();
    static bool GetCurrentTimeStruct(std::tm& time);
};
