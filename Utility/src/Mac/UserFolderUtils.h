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

    /// Path of an item below a standard folder; neither needs to be there. Empty where that folder
    /// has no path.
    static std::string PathBelow(std::uint32_t type, const std::string& relative);
};
