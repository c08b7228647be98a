#pragma once

#include <string>

/// Facts about the running program. Nothing fails: what cannot be had has a fixed fallback.
class LogUtils {
public:
    /// File name of the running program; empty when unknown.
    static std::string GetProcessName();
};
