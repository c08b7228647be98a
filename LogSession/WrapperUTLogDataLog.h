#pragma once

#include "LogSession/WrapperUTLogData.h"

#include <string>
#include <string_view>

namespace WRAPPERLAYER {

/// Name under which all of the wrapper layer logs.
inline constexpr char kSourceUnit[] = "LogSession/WrapperUTLogData";

// Messages in parts: with the log off nothing is composed, and every call passes through here.

template <class... Parts>
void LogInfo(std::string_view message, long line, const Parts&... details) noexcept {
    if (logger->IsEnabled())
        logger->NoteInfo({message, details...}, kSourceUnit, line);
}

template <class... Parts>
void LogDebug(std::string_view message, long line, const Parts&... details) noexcept {
    if (logger->IsEnabled())
        logger->NoteDebug({message, details...}, kSourceUnit, line);
}

/// Checks one argument of a call; a refusal is logged as "VerifyString <name>: <text>".
template <class Text>
bool VerifyArgument(const DataLogger& dataLogger, const char* name, const char* input, Text& out,
                    int kind, long line) {
    if (VerifyString(dataLogger, input, out, kind))
        return true;
    LogDebug("VerifyString ", line, name, ": ", out);
    return false;
}

} // namespace WRAPPERLAYER
