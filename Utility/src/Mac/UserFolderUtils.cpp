#include "Utility/src/Mac/UserFolderUtils.h"

#include "Utility/src/Mac/DataConversions.h"
#include "Utility/src/Mac/FileSystemUtils.h"

bool UserFolderUtils::GetBaseDir(std::int16_t domain, std::uint32_t type, bool create,
                                 std::string& path) {
    FSRef folder;
    return Platform::FindFolder(domain, type, create, folder) &&
           DataConversions::FSRefToStdioPath(folder, path);
}

bool UserFolderUtils::GetAppSupportDataDir(std::string& path) {
    return GetBaseDir(kUserDomain, kApplicationSupportFolderType, true, path);
}

bool UserFolderUtils::GetUserLibraryDir(std::string& path) {
    return GetBaseDir(kUserDomain, kDomainLibraryFolderType, true, path);
}

std::string UserFolderUtils::PathBelow(std::uint32_t type, const std::string& relative) {
    const std::string folder = Platform::FolderPath(kUserDomain, type);
    return folder.empty() ? folder : FileSystemUtils::AppendPathElement(folder, relative);
}
