#include "Utility/src/Mac/DataConversions.h"

#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

bool DataConversions::CFStringToString(CFStringRef string, std::string& text) {
    if (!string)
        return false;
    text = string->utf8;
    return true;
}

bool DataConversions::FSRefToStdioPath(const FSRef& reference, std::string& path) {
    if (reference.path.empty())
        return false;
    path = reference.path;
    return true;
}

bool DataConversions::StdioPathToFSRef(const std::string& path, FSRef& reference) {
    std::error_code error;
    if (path.empty() || path.find('\0') != std::string::npos || !fs::exists(path, error))
        return false;
    // A reference names its item whatever the current folder becomes later.
    const fs::path absolute = fs::absolute(path, error);
    if (error)
        return false;
    reference.path = absolute.string();
    return true;
}
