#pragma once

#include "Platform/PlatformString.h"
#include "Platform/UserFolders.h"

#include <string>

/// Conversions between platform objects and UTF-8 text. Each returns false, with the out value
/// unchanged and nothing logged, when there is nothing to convert.
class DataConversions {
public:
    static bool CFStringToString(CFStringRef string, std::string& text);
    static bool FSRefToStdioPath(const FSRef& reference, std::string& path);
    /// False also when nothing exists at the path.
    static bool StdioPathToFSRef(const std::string& path, FSRef& reference);
};
