// Where the agent and its configuration are. Nothing here changes or logs anything, so that a
// program may look without leaving a trace.

#include "Utility/src/Mac/CFBundleUtil.h"
#include "Utility/src/Mac/FileSystemUtils.h"
#include "Utility/src/Mac/LogTransUtilsMac.h"
#include "Utility/src/Mac/UserFolderUtils.h"

#include <new>

const char* const kTransportBundlePath = "/Contents/MacOS/LogTransport2.app";
const char* const kTransportExecutableSubPath = "/Contents/MacOS/LogTransport2";

std::string* LogTransUtils::gwsLogTransportPath = new (std::nothrow) std::string();

namespace {

constexpr char kAgentBundleIdentifier[] = "com.norvale.vistra.LogTransport2App";
constexpr char kAgentBundleName[] = "LogTransport2.app";
constexpr char kProgramFolder[] = "MacOS";
constexpr char kResourcesFolder[] = "/Contents/Resources/";
constexpr char kConfigFile[] = "LogTransport2.cfg";

} // namespace

std::string LogTransUtils::FindUserCfg() {
    return UserFolderUtils::PathBelow(kApplicationSupportFolderType,
                                      std::string(kUserCfgFolder) + kConfigFile);
}

std::string LogTransUtils::FindDefaultCfg(const CFBundleRef& host) {
    const std::string folder = GetTransporterDefaultCfgDir(host);
    return folder.empty() ? folder : folder + kConfigFile;
}

bool LogTransUtils::IsUserCfgOutdated(const std::string& userFile, const std::string& defaultFile) {
    return FileSystemUtils::DoesPathExist(defaultFile) &&
           (FileSystemUtils::IsFileNewer(FileSystemUtils::GetParentPath(defaultFile), userFile) ||
            FileSystemUtils::IsFileNewer(defaultFile, userFile));
}

std::string LogTransUtils::GetTransporterDefaultCfgDir() {
    return GetTransporterDefaultCfgDir(CFBundleUtil::GetMainBundle());
}

std::string LogTransUtils::GetTransporterDefaultCfgDir(const CFBundleRef& host) {
    if (!host)
        return std::string();
    std::string identifier;
    CFBundleUtil::GetBundleIdentifier(host, identifier);
    const std::string location = CFBundleUtil::GetBundleLocaton(host);
    return identifier == kAgentBundleIdentifier
               ? location + kResourcesFolder
               : location + kTransportBundlePath + kResourcesFolder;
}

void LogTransUtils::SetLogTransportInputPath(const char* folder) {
    if (!folder)
        return;
    std::string path = folder + FileSystemUtils::GetPathDelimiter() + kAgentBundleName;
    if (gwsLogTransportPath)
        gwsLogTransportPath->swap(path);
    else
        gwsLogTransportPath = new std::string(std::move(path));
}

std::string LogTransUtils::GetLogTransportInputPath() {
    return gwsLogTransportPath ? *gwsLogTransportPath : std::string();
}

std::string LogTransUtils::GetExePathFromLogTransportBundlePath(const std::string& bundlePath) {
    if (bundlePath.empty())
        return std::string();
    std::string executable = bundlePath + kTransportExecutableSubPath;
    if (!FileSystemUtils::DoesPathExist(executable)) // nor does it without the bundle
        executable.clear();
    return executable;
}

std::string LogTransUtils::GetNonDefaultLogTransportExeFullPath(const std::string& bundlePath) {
    const std::string executable = GetExePathFromLogTransportBundlePath(bundlePath);
    if (!executable.empty())
        return executable;
    return GetExePathFromLogTransportBundlePath(GetBundlePathBeside(bundlePath));
}

std::string LogTransUtils::GetBundlePathBeside(const std::string& bundlePath) {
    const std::string contents =
        FileSystemUtils::GetParentPath(FileSystemUtils::GetParentPath(bundlePath));
    const std::string delimiter = FileSystemUtils::GetPathDelimiter();
    return contents + delimiter + kProgramFolder + delimiter + kAgentBundleName;
}

std::string LogTransUtils::GetTransporterExeFullPath() {
    const std::string named = GetLogTransportInputPath();
    if (!named.empty()) {
        const std::string executable = GetNonDefaultLogTransportExeFullPath(named);
        if (!executable.empty())
            return executable;
    }
    const CFBundleRef bundle = CFBundleUtil::GetMainBundle();
    if (!bundle)
        return std::string();
    return GetExePathFromLogTransportBundlePath(CFBundleUtil::GetBundleLocaton(bundle) +
                                                kTransportBundlePath);
}

std::string LogTransUtils::GetAgentPath() {
    std::string path = GetTransporterExeFullPath();
    for (int level = 0; level < 3; ++level)
        path = FileSystemUtils::GetParentPath(path);
    return path;
}

bool LogTransUtils::AgentExists() {
    return !GetTransporterExeFullPath().empty();
}
