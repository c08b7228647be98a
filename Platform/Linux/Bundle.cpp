#include "Platform/Bundle.h"

#include "LibraryInfo.h"
#include "Platform/Files.h"
#include "Platform/Linux/Descriptor.h"
#include "Platform/Linux/FileCache.h"
#include "Platform/Process.h"
#include "Platform/ThreadAnnotations.h"

#include <algorithm>
#include <dlfcn.h>
#include <filesystem>
#include <link.h>

namespace fs = std::filesystem;

namespace Platform {

namespace {

constexpr char kIdentifierKey[] = "CFBundleIdentifier";
constexpr char kInfoFile[] = "/Info.plist";
constexpr char kContents[] = "/Contents";
constexpr char kPrograms[] = "/MacOS";

CFBundleRef MakeBundle(std::string location, CFPropertyListRef info) {
    const PropertyList* value = info->Find(kIdentifierKey);
    const std::string* identifier = value ? value->AsString() : nullptr;
    std::string name = identifier ? *identifier : std::string();
    return std::make_shared<const Bundle>(
        Bundle{std::move(location), std::move(info), std::move(name)});
}

/// Null when the information is there but cannot be read just now.
CFBundleRef MakeBundle(std::string location, FileState info) {
    if (MayPass(info.reason))
        return nullptr;
    return MakeBundle(std::move(location), std::move(info.values));
}

/// The folder that holds the item of an absolute path.
std::string FolderOf(const std::string& path) {
    return path.substr(0, std::max<std::size_t>(path.rfind('/'), 1));
}

/// Where a bundle and its information are; empty when it cannot be told.
struct Place {
    std::string location;
    std::string infoFolder;
};

/// A program in X/Contents/MacOS belongs to the bundle X, any other one to its own folder.
Place PlaceOfBundle(const std::string& program) {
    if (program.empty())
        return {};
    const std::string folder = FolderOf(program), contents = FolderOf(folder);
    if (folder.ends_with(kPrograms) && contents.ends_with(kContents))
        return {FolderOf(contents), contents};
    return {folder, folder};
}

/// The file that this code was loaded from.
std::string FileOfThisCode() {
    Dl_info file = {};
    void* entry = nullptr;
    if (::dladdr1(kLibraryBundleIdentifier, &file, &entry, RTLD_DL_LINKMAP) == 0)
        return std::string();
    const auto* loaded = static_cast<const link_map*>(entry);
    // A program that contains this code, and not a library, bears no name in the loader's list.
    if (!loaded || !loaded->l_name || *loaded->l_name == '\0')
        return CurrentProgramPath();
    std::error_code failure;
    const fs::path resolved = fs::canonical(loaded->l_name, failure);
    return failure ? loaded->l_name : resolved.string();
}

CFBundleRef MakeLibraryBundle() {
    PropertyList::Dictionary info;
    info[kIdentifierKey] = PropertyList(std::string(kLibraryBundleIdentifier));
    info["CFBundleVersion"] = PropertyList(std::string(kLibraryVersion));
    info["CFBundleShortVersionString"] = PropertyList(std::string(kLibraryVersion));
    return MakeBundle(FolderOf(FileOfThisCode()),
                      std::make_shared<const PropertyList>(std::move(info)));
}

CFBundleRef LibraryBundle() {
    static const CFBundleRef& bundle = *new CFBundleRef(MakeLibraryBundle());
    return bundle;
}

} // namespace

// What is made once here is never destroyed, as calls may come from the host's exit handlers.

CFBundleRef MainBundle() {
    static AnnotatedMutex mutex;
    static CFBundleRef& bundle = *new CFBundleRef;
    const ScopedLock lock(mutex);
    if (!bundle) // for as long as its path or its information cannot be told
        bundle = BundleOfProgram(CurrentProgramPath());
    return bundle;
}

CFBundleRef BundleOfProgram(const std::string& program) {
    Place place = PlaceOfBundle(program);
    if (place.location.empty())
        return nullptr;
    return MakeBundle(std::move(place.location), ReadDictionaryFile(place.infoFolder + kInfoFile));
}

std::string MainBundleLocation() {
    return PlaceOfBundle(CurrentProgramPath()).location;
}

CFBundleRef LoadedBundle(const std::string& identifier) {
    if (identifier == kLibraryBundleIdentifier)
        return LibraryBundle();
    const CFBundleRef bundle = MainBundle();
    return bundle && !identifier.empty() && bundle->identifier == identifier ? bundle : nullptr;
}

CFBundleRef BundleAtPath(const std::string& path) {
    std::error_code failure;
    std::string location = path.starts_with('/') ? path : fs::absolute(path, failure).string();
    if (path.empty() || failure)
        return nullptr;
    while (location.size() > 1 && location.ends_with('/'))
        location.pop_back();
    const std::string contents = location + kContents;
    FileState info = ReadDictionaryFile(contents + kInfoFile);
    const bool isMissing = info.condition == FileState::Condition::Missing;
    const bool isReached = !isMissing && info.condition != FileState::Condition::Unreadable;
    if (!isReached && TypeOfItem(location) != ItemType::Folder)
        return nullptr;
    if (isMissing && TypeOfItem(contents) != ItemType::Folder)
        info = ReadDictionaryFile(location + kInfoFile);
    return MakeBundle(std::move(location), std::move(info));
}

} // namespace Platform
