#include "Platform/UserFolders.h"

#include "Platform/Files.h"
#include "Platform/Linux/EnvironmentFolders.h"

namespace Platform {

namespace {

std::string FolderOfType(std::uint32_t type) {
    switch (type) {
    case kApplicationSupportFolderType:
        return DataHome();
    case kDomainLibraryFolderType:
        return StateHome();
    default:
        return std::string();
    }
}

} // namespace

bool FindFolder(std::int16_t domain, std::uint32_t type, bool create, FSRef& folder) {
    const std::string path = domain == kUserDomain ? FolderOfType(type) : std::string();
    if (path.empty() ||
        !(create ? CreateFolderWithParents(path) : TypeOfItem(path) == ItemType::Folder))
        return false;
    folder.path = path;
    return true;
}

} // namespace Platform
