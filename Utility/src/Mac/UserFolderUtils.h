#pragma once

#include "Platform/UserFolders.h"

#include <cstdint>
#include <string>

/// Look-up of the user's standard folders, each created when asked for. False, without logging,
/// when there is none.
class UserFolderUtils {
public:
    static bool GetBaseDir(std::int16_t domain, std::uint32_t type, bool create, std::string& path);
    static bool GetAppSupportDataDir(std::string& path);
    static bool GetUserLibraryDir(std::string& path);

    /// Sets `path` to that of a folder below a standard one, unless that has none. Whether the
    /// folder is there; then so is all above it.
    static bool FindFolder(std::uint32_t type, const std::string& relative, std::string& path);
};
