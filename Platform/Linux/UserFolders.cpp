#include "Platform/UserFolders.h"

#include "Platform/Files.h"
#include "Platform/Linux/EnvironmentFolders.h"

namespace Platform {

std::string FolderPath(std::int16_t domain, std::uint32_t type) {
    switch (domain == kUserDomain ? type : 0) {
    case kApplicationSupportFolderType:
        return DataHome();
    case kDomainLibraryFolderType:
        return StateHome();
    default:
        return std::string();
    }
}

bool FindFolder(std::int16_t domain, std::uint32_t type, bool create, FSRef& folder) {
    const std::string path = FolderPath(domain, type);
    if (path.empty() ||
        !(create ? CreateFolderWithParents(path) : TypeOfItem(path) == ItemType::Folder))
        return false;
    folder.path = path;
    return true;
}

} // namespace Platform
