#pragma once

#include <cstdint>
#include <string>

/// A reference to an existing file or folder.
struct FSRef {
    std::string path;
};

/// Folder domains and folder types (four-character codes) of the folder look-up.
constexpr std::int16_t kUserDomain = -32763;
constexpr std::uint32_t kApplicationSupportFolderType = 0x61737570; // 'asup'
constexpr std::uint32_t kDomainLibraryFolderType = 0x646c6962;      // 'dlib'

namespace Platform {

/// Path of one of the user's standard folders, whether it is there or not. Empty for an unknown
/// domain or type, and for a user without a home folder.
std::string FolderPath(std::int16_t domain, std::uint32_t type);

/// Finds one of the user's standard folders, creating it when `create` is set. Returns false,
/// without logging, for an unknown domain or type, or when there is no such folder.
bool FindFolder(std::int16_t domain, std::uint32_t type, bool create, FSRef& folder);

} // namespace Platform
