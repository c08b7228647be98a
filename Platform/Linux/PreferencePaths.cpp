#include "Platform/Linux/PreferencePaths.h"

#include "Platform/Files.h"
#include "Platform/Linux/Descriptor.h"
#include "Platform/Linux/Environment.h"
#include "Platform/Linux/EnvironmentFolders.h"
#include "Platform/Preferences.h"
#include "Platform/ThreadAnnotations.h"

#include <algorithm>
#include <string_view>

namespace {

// Scopes are told apart by address alone, so they serve before load-time initialisers have run.
const Platform::String gCurrentUser{};
const Platform::String gAnyUser{};
const Platform::String gCurrentHost{};
const Platform::String gAnyHost{};

} // namespace

constinit const CFStringRef kCFPreferencesCurrentUser = &gCurrentUser;
constinit const CFStringRef kCFPreferencesAnyUser = &gAnyUser;
constinit const CFStringRef kCFPreferencesCurrentHost = &gCurrentHost;
constinit const CFStringRef kCFPreferencesAnyHost = &gAnyHost;

namespace Platform {

namespace {

constexpr char kFolder[] = "/preferences/";
constexpr char kExtension[] = ".plist";
constexpr std::size_t kUsualRest = 64; ///< of a path, without home folder and domain

bool CanNameFile(const std::string& domain) {
    return !domain.empty() && domain.find('/') == std::string::npos &&
           domain.find('\0') == std::string::npos;
}

/// The machine keeps its name while a program runs; empty while it cannot be told. Never destroyed,
/// for the host's exit handlers.
std::string ThisMachine() {
    static AnnotatedMutex mutex;
    static std::string& name = *new std::string;
    const ScopedLock lock(mutex);
    if (name.empty())
        name = MachineName("/etc/machine-id");
    return name;
}

std::optional<PreferencePaths> PathsOfUser(const std::string& domain, CFStringRef host) {
    std::string path = ConfigHome();
    if (path.empty())
        return std::nullopt;
    path.reserve(path.size() + domain.size() + kUsualRest);
    path += kFolder;
    if (host == kCFPreferencesCurrentHost) {
        const std::string machine = ThisMachine();
        if (machine.empty())
            return std::nullopt;
        path.append("ByHost/").append(domain).append(".").append(machine);
    } else {
        path += domain;
    }
    path += kExtension;
    PreferencePaths paths;
    paths.search.push_back(path);
    paths.target = std::move(path);
    return paths;
}

PreferencePaths PathsOfEverybody(const std::string& domain) {
    PreferencePaths paths;
    for (const std::string& folder : SharedConfigFolders())
        paths.search.push_back(folder + kFolder + domain + kExtension);
    paths.target = paths.search.front();
    paths.permissions = 0644;
    return paths;
}

} // namespace

bool CanNamePreferences(CFStringRef domain, CFStringRef user, CFStringRef host) {
    return domain && CanNameFile(domain->utf8) &&
           (user == kCFPreferencesCurrentUser || user == kCFPreferencesAnyUser) &&
           (host == kCFPreferencesCurrentHost || host == kCFPreferencesAnyHost);
}

std::optional<PreferencePaths> FindPreferences(CFStringRef domain, CFStringRef user,
                                               CFStringRef host) {
    if (!CanNamePreferences(domain, user, host))
        return std::nullopt;
    if (user == kCFPreferencesCurrentUser)
        return PathsOfUser(domain->utf8, host);
    return PathsOfEverybody(domain->utf8);
}

std::string MachineName(const std::string& machineIdFile) {
    errno = 0;
    const std::optional<std::string> content = ReadFile(machineIdFile, 4096);
    if (!content && MayPass(errno))
        return std::string();
    std::string id = content.value_or("");
    id.resize(std::min(id.size(), id.find_first_of(std::string_view(" \t\r\n/\0", 6))));
    return id.empty() || id == "uninitialized" ? HostName() : id;
}

} // namespace Platform
