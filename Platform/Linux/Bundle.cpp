#include "Platform/Bundle.h"

#include "LibraryInfo.h"
#include "Platform/Files.h"
#include "Platform/Linux/Descriptor.h"
#include "Platform/Linux/PropertyListFile.h"
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

/// An empty one for a file that is missing or not understood, and nothing for one that cannot be
/// read just now.
std::optional<PropertyList> ReadInfo(const std::string& folder) {
    errno = 0;
    const auto bytes = ReadFile(folder + kInfoFile, kMaximumPropertyListBytes);
    if (!bytes && MayPass(errno))
        return std::nullopt;
    std::optional<PropertyList> info = bytes ? ParsePropertyList(*bytes) : std::nullopt;
    return info && info->AsDictionary() ? std::move(*info) : PropertyList();
}

CFBundleRef MakeBundle(std::string location, std::optional<PropertyList> infoOrNothing) {
    if (!infoOrNothing)
        return nullptr;
    PropertyList info = std::move(*infoOrNothing);
    const PropertyList* value = info.Find(kIdentifierKey);
    const std::string* identifier = value ? value->AsString() : nullptr;
    std::string name = identifier ? *identifier : std::string();
    return std::make_shared<const Bundle>(
        Bundle{std::move(location), std::move(info), std::move(name)});
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
Place PlaceOfMainBundle() {
    const std::string program = CurrentProgramPath();
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
    return MakeBundle(FolderOf(FileOfThisCode()), PropertyList(std::move(info)));
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
        if (Place place = PlaceOfMainBundle(); !place.location.empty())
            bundle = MakeBundle(std::move(place.location), ReadInfo(place.infoFolder));
    return bundle;
}

std::string MainBundleLocation() {
    return PlaceOfMainBundle().location;
}

CFBundleRef LoadedBundle(const std::string& identifier) {
    if (identifier == kLibraryBundleIdentifier)
        return LibraryBundle();
    const CFBundleRef bundle = MainBundle();
    return bundle && !identifier.empty() && bundle->identifier == identifier ? bundle : nullptr;
}

CFBundleRef BundleAtPath(const std::string& path) {
    std::error_code failure;
    fs::path location = fs::absolute(path, failure).lexically_normal();
    if (path.empty() || !fs::is_directory(location, failure))
        return nullptr;
    if (!location.has_filename() && location.has_relative_path())
        location = location.parent_path();
    const std::string folder = location.string(), contents = folder + kContents;
    return MakeBundle(folder, ReadInfo(fs::is_directory(contents, failure) ? contents : folder));
}

} // namespace Platform
