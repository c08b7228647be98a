#include "Utility/src/Mac/LogTransUtilsMac.h"

#include "Utility/src/Logger.h"
#include "Utility/src/Mac/CFBundleUtil.h"
#include "Utility/src/Mac/FileSystemUtils.h"
#include "Utility/src/Mac/UserFolderUtils.h"
#include "Utility/src/TransConfigUtils.h"
#include "Utility/src/UsageFolders.h"

#include <new>

const char* const kTransportBundlePath = "/Contents/MacOS/LogTransport2.app";
const char* const kTransportExecutableSubPath = "/Contents/MacOS/LogTransport2";

std::string* LogTransUtils::gwsLogTransportPath = new (std::nothrow) std::string();

namespace {

Logger* const logger = Logger::GetLogger(kLoggerName);

constexpr char kSourceUnit[] = "Utility/src/Mac/LogTransUtilsMac";
constexpr char kAgentBundleIdentifier[] = "com.norvale.vistra.LogTransport2App";
constexpr char kAgentBundleName[] = "LogTransport2.app";
constexpr char kProgramFolder[] = "MacOS";
constexpr char kResourcesFolder[] = "/Contents/Resources/";
constexpr char kConfigFolder[] = "/Norvale/LogTransport2/";
constexpr char kConfigFile[] = "LogTransport2.cfg";
constexpr char kPolicyFolder[] = "/Norvale/Fathom/Fathom1.0";
constexpr char kPolicyFile[] = "/fathom_policy.xml";
constexpr char kLockFile[] = "/.LogTransportAppLock";

/// Whether the user's configuration is older than what came with the agent.
bool IsOutdated(const std::string& userFile, const std::string& defaultFile) {
    return FileSystemUtils::IsFileNewer(FileSystemUtils::GetParentPath(defaultFile), userFile) ||
           FileSystemUtils::IsFileNewer(defaultFile, userFile);
}

void CreateConfig(const std::string& userFile, const std::string& defaultFile) {
    if (FileSystemUtils::DoesPathExist(defaultFile))
        FileSystemUtils::CopyLocalFile(defaultFile, userFile);
    else
        TransConfigUtils::CreateDefaultConfig(userFile);
}

void BringUpToDate(const std::string& userFile, const std::string& defaultFile) {
    if (FileSystemUtils::DoesPathExist(defaultFile) && IsOutdated(userFile, defaultFile))
        TransConfigUtils::ReplaceConfig(defaultFile, userFile);
}

std::string DefaultConfigFile() {
    const std::string folder = LogTransUtils::GetTransporterDefaultCfgDir();
    return folder.empty() ? folder : folder + kConfigFile;
}

} // namespace

bool LogTransUtils::GetBaseDir(std::int16_t domain, std::uint32_t type, bool create,
                               std::string& path) {
    return UserFolderUtils::GetBaseDir(domain, type, create, path);
}

bool LogTransUtils::GetAppSupportDataDir(std::string& path) {
    return UserFolderUtils::GetAppSupportDataDir(path);
}

bool LogTransUtils::GetUserLibraryDir(std::string& path) {
    return UserFolderUtils::GetUserLibraryDir(path);
}

std::string LogTransUtils::GetUserCfgDir(const std::string& relativeFolder) {
    std::string support;
    if (!GetAppSupportDataDir(support))
        return std::string();
    const std::string folder = FileSystemUtils::AppendPathElement(support, relativeFolder);
    return FileSystemUtils::CreateLocalDirectory(folder) ? folder : std::string();
}

std::string LogTransUtils::GetUserFathomPath() {
    std::string support;
    if (!GetAppSupportDataDir(support))
        return std::string();
    const std::string folder = FileSystemUtils::AppendPathElement(support, kPolicyFolder);
    FileSystemUtils::CreateLocalDirectory(folder);
    return folder + kPolicyFile;
}

std::string LogTransUtils::GetUserCfgFullPath() {
    std::string userFile = UserFolderUtils::PathBelow(kApplicationSupportFolderType,
                                                      std::string(kConfigFolder) + kConfigFile);
    if (FileSystemUtils::DoesPathExist(userFile))
        BringUpToDate(userFile, DefaultConfigFile());
    else if (GetUserCfgDir(kConfigFolder).empty())
        userFile.clear();
    else if (FileSystemUtils::IsPathMissing(userFile))
        CreateConfig(userFile, DefaultConfigFile());
    return userFile;
}

std::string LogTransUtils::GetTransporterDefaultCfgDir() {
    const CFBundleRef bundle = CFBundleUtil::GetMainBundle();
    if (!bundle)
        return std::string();
    std::string identifier;
    CFBundleUtil::GetBundleIdentifier(bundle, identifier);
    const std::string location = CFBundleUtil::GetBundleLocaton(bundle);
    return identifier == kAgentBundleIdentifier
               ? location + kResourcesFolder
               : location + kTransportBundlePath + kResourcesFolder;
}

std::string LogTransUtils::GetUserLogFullPath() {
    const std::string folder =
        UserFolderUtils::PathBelow(kDomainLibraryFolderType, UsageFolders::kDocuments);
    if (FileSystemUtils::IsDirectory(folder))
        return folder;
    std::string library;
    if (!GetUserLibraryDir(library))
        return std::string();
    FileSystemUtils::CreateLocalDirectory(folder);
    return folder;
}

std::string LogTransUtils::GetResourceId() {
    const std::string folder = GetUserLogFullPath();
    return folder.empty() ? folder : folder + kLockFile;
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
    // A host that named, for example, its framework folder has the agent beside its executable.
    const std::string contents =
        FileSystemUtils::GetParentPath(FileSystemUtils::GetParentPath(bundlePath));
    const std::string delimiter = FileSystemUtils::GetPathDelimiter();
    return GetExePathFromLogTransportBundlePath(contents + delimiter + kProgramFolder + delimiter +
                                                kAgentBundleName);
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

bool LogTransUtils::SaveTransporterExePath() {
    return true;
}

bool LogTransUtils::UploadLog(const std::string& documentPath) {
    if (documentPath.empty())
        return false;
    const std::string executable = GetTransporterExeFullPath();
    logger->NoteInfo({"LogTransport2 Path: ", executable}, kSourceUnit, __LINE__);
    return FileSystemUtils::LaunchPath(executable);
}
