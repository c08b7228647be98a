#pragma once

#include <cstdint>
#include <string>

/// Look-up of the user's standard folders, each created when asked for. False, without logging,
/// when there is none.
class UserFolderUtils {
public:
    static bool GetBaseDir(std::int16_t domain, std::uint32_t type, bool create, std::string& path);
    static bool GetAppSupportDataDir(std::string& path);
    static bool GetUserLibraryDir(std::string& path);
};
