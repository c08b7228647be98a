#include "Platform/Bundle.h"

#include "LibraryInfo.h"
#include "Platform/Files.h"
#include "Platform/Linux/Descriptor.h"
#include "Platform/Linux/PropertyListFile.h"
#include "Platform/Process.h"
#include "Platform/ThreadAnnotations.h"

#include <dlfcn.h>
#include <filesystem>
#include <link.h>

namespace fs = std::filesystem;

namespace Platform {

namespace {

constexpr char kIdentifierKey[] = "CFBundleIdentifier";
constexpr char kInfoFile[] = "Info.plist";

/// An empty one for a file that is missing or not understood, and nothing for one that cannot be
/// read just now.
std::optional<PropertyList> ReadInfo(const fs::path& file) {
    errno = 0;
    const auto bytes = ReadFile(file.string(), kMaximumPropertyListBytes);
    if (!bytes && MayPass(errno))
        return std::nullopt;
    std::optional<PropertyList> info = bytes ? ParsePropertyList(*bytes) : std::nullopt;
    return info && info->AsDictionary() ? std::move(*info) : PropertyList();
}

CFBundleRef MakeBundle(const fs::path& location, std::optional<PropertyList> infoOrNothing) {
    if (!infoOrNothing)
        return nullptr;
    PropertyList info = std::move(*infoOrNothing);
    const PropertyList* value = info.Find(kIdentifierKey);
    const std::string* identifier = value ? value->AsString() : nullptr;
    std::string name = identifier ? *identifier : std::string();
    return std::make_shared<const Bundle>(
        Bundle{location.string(), std::move(info), std::move(name)});
}

/// A program in X/Contents/MacOS belongs to the bundle X, any other one to its own folder.
CFBundleRef BundleOfProgram(const fs::path& program) {
    if (program.empty())
        return nullptr;
    const fs::path folder = program.parent_path();
    const fs::path contents = folder.parent_path();
    if (folder.filename() == "MacOS" && contents.filename() == "Contents")
        return MakeBundle(contents.parent_path(), ReadInfo(contents / kInfoFile));
    return MakeBundle(folder, ReadInfo(folder / kInfoFile));
}

/// The file that this code was loaded from.
fs::path FileOfThisCode() {
    Dl_info file = {};
    void* entry = nullptr;
    if (::dladdr1(kLibraryBundleIdentifier, &file, &entry, RTLD_DL_LINKMAP) == 0)
        return fs::path();
    const auto* loaded = static_cast<const link_map*>(entry);
    // A program that contains this code, and not a library, bears no name in the loader's list.
    if (!loaded || !loaded->l_name || *loaded->l_name == '\0')
        return CurrentProgramPath();
    std::error_code failure;
    const fs::path resolved = fs::canonical(loaded->l_name, failure);
    return failure ? fs::path(loaded->l_name) : resolved;
}

CFBundleRef MakeLibraryBundle() {
    PropertyList::Dictionary info;
    info.emplace(kIdentifierKey, PropertyList(std::string(kLibraryBundleIdentifier)));
    info.emplace("CFBundleVersion", PropertyList(std::string(kLibraryVersion)));
    info.emplace("CFBundleShortVersionString", PropertyList(std::string(kLibraryVersion)));
    return MakeBundle(FileOfThisCode().parent_path(), PropertyList(std::move(info)));
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
    const fs::path contents = location / "Contents";
    const bool isFlat = !fs::is_directory(contents, failure);
    return MakeBundle(location, ReadInfo((isFlat ? location : contents) / kInfoFile));
}

} // namespace Platform
