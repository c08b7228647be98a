#include "Tools/vistra/FolderOutlook.h"

#include "Platform/FileReading.h"
#include "Utility/src/Mac/FileSystemUtils.h"
#include "Utility/src/Mac/UserFolderUtils.h"

using Platform::ItemType;

namespace {

/// Whether something stands there that leads to no folder: a file, or a link, be it to nothing, to
/// itself or to a place out of reach.
bool Stands(const std::string& item) {
    return Platform::SizeOfItem(item).has_value();
}

/// Goes up to the nearest folder. What stands in the way gives way below the standard folder, and
/// nowhere else. False when the folder cannot be made.
bool FindNearest(const std::string& standardFolder, FolderOutlook& outlook) {
    std::string& item = outlook.nearest;
    for (; !FileSystemUtils::IsDirectory(item); item = FileSystemUtils::GetParentPath(item)) {
        if (item.empty())
            return false;
        const bool stands = Stands(item);
        const bool mayGiveWay = stands && item.size() > standardFolder.size();
        const bool isUnknown = Platform::TypeOfItem(item) == ItemType::Unknown;
        if (isUnknown || stands)
            outlook.obstacle = item;
        if ((isUnknown || stands) && !mayGiveWay)
            return false;
    }
    if (Platform::MayBeWritten(item))
        return true;
    outlook.obstacle = item;
    return false;
}

} // namespace

FolderOutlook LookAtFolder(unsigned type, const std::string& relative) {
    FolderOutlook outlook;
    const std::string standardFolder = Platform::FolderPath(kUserDomain, type);
    if (standardFolder.empty())
        return outlook;
    outlook.folder =
        FileSystemUtils::RightTrimPathByDelimiter(UserFolderUtils::PathBelow(type, relative));
    outlook.nearest = outlook.folder;
    if (FileSystemUtils::IsDirectory(outlook.folder))
        outlook.state = FolderOutlook::State::There;
    else if (FindNearest(standardFolder, outlook))
        outlook.state = FolderOutlook::State::WouldBeMade;
    return outlook;
}
