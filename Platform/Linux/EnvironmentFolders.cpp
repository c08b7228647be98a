#include "Platform/Linux/EnvironmentFolders.h"

#include "Platform/Files.h"
#include "Platform/Linux/Environment.h"

#include <algorithm>
#include <pwd.h>
#include <unistd.h>

namespace Platform {

namespace {

constexpr char kSystemConfigFolder[] = "/etc/xdg";

/// An absolute path without trailing delimiters; empty when `path` is not absolute.
std::string AbsoluteOrNothing(std::string path) {
    if (!path.starts_with('/'))
        return std::string();
    while (path.size() > 1 && path.ends_with('/'))
        path.pop_back();
    return path;
}

std::string HomeFromPasswordDatabase() {
    constexpr std::size_t kLargestRecord = 1 << 20;
    struct passwd record = {};
    struct passwd* found = nullptr;
    for (std::string buffer(1024, '\0'); buffer.size() <= kLargestRecord;
         buffer.resize(buffer.size() * 2))
        if (::getpwuid_r(::getuid(), &record, buffer.data(), buffer.size(), &found) != ERANGE)
            return found && found->pw_dir ? found->pw_dir : "";
    return std::string();
}

std::string UserFolder(const char* variable, const char* belowHome) {
    std::string folder = AbsoluteOrNothing(Variable(variable));
    if (!folder.empty())
        return folder;
    folder = HomeFolder();
    if (folder.empty())
        return folder;
    if (!folder.ends_with('/'))
        folder += '/';
    folder += belowHome;
    return folder;
}

} // namespace

std::string HomeFolder() {
    std::string home = AbsoluteOrNothing(Variable("HOME"));
    if (home.empty())
        home = AbsoluteOrNothing(HomeFromPasswordDatabase());
    return home;
}

std::string ConfigHome() {
    return UserFolder("XDG_CONFIG_HOME", ".config");
}

std::string DataHome() {
    return UserFolder("XDG_DATA_HOME", ".local/share");
}

std::string StateHome() {
    return UserFolder("XDG_STATE_HOME", ".local/state");
}

std::vector<std::string> SharedConfigFolders() {
    std::vector<std::string> folders;
    for (const std::string& entry : ListVariable("XDG_CONFIG_DIRS"))
        if (const std::string folder = AbsoluteOrNothing(entry); !folder.empty())
            folders.push_back(folder);
    if (std::find(folders.begin(), folders.end(), kSystemConfigFolder) == folders.end())
        folders.push_back(kSystemConfigFolder);
    return folders;
}

bool CreateFolderWithParents(const std::string& path) {
    if (TypeOfItem(path) == ItemType::Folder)
        return true;
    std::string parent = "/";
    for (std::size_t end = 0; end < path.size();) {
        end = std::min(path.find('/', end + 1), path.size());
        const std::string folder = path.substr(0, end);
        if (!CreateFolder(folder, parent))
            return false;
        parent = folder;
    }
    return true;
}

} // namespace Platform
