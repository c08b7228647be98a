#pragma once

#include "LogSession/WrapperUTLogData.h"

#include <string>
#include <string_view>

namespace WRAPPERLAYER {

/// Name under which all of the wrapper layer logs.
inline constexpr char kSourceUnit[] = "LogSession/WrapperUTLogData";

// With the log off, these compose nothing: every call passes through here.

inline void LogInfo(std::string_view message, long line, std::string_view detail = {}) {
    if (logger->IsEnabled())
        logger->LogInfo(std::string(message).append(detail), kSourceUnit, line);
}

inline void LogDebug(std::string_view message, long line, std::string_view detail = {}) {
    if (logger->IsEnabled())
        logger->LogDebug(std::string(message).append(detail), kSourceUnit, line);
}

/// Checks one argument of a call; a refusal is logged as "VerifyString <name>: <text>".
inline bool VerifyArgument(const DataLogger& dataLogger, const char* name, const char* input,
                           std::string& out, int kind, long line) {
    if (VerifyString(dataLogger, input, out, kind))
        return true;
    LogDebug(std::string("VerifyString ").append(name).append(": "), line, out);
    return false;
}

} // namespace WRAPPERLAYER
