#include "Utility/src/Mac/LogTransUtilsMac.h"

#include "Utility/src/Logger.h"
#include "Utility/src/Mac/FileSystemUtils.h"
#include "Utility/src/Mac/UserFolderUtils.h"
#include "Utility/src/TransConfigUtils.h"
#include "Utility/src/UsageFolders.h"

namespace {

Logger* const logger = Logger::GetLogger(kLoggerName);

constexpr char kSourceUnit[] = "Utility/src/Mac/LogTransUtilsMac";
constexpr char kPolicyFolder[] = "/Norvale/Fathom/Fathom1.0";
constexpr char kPolicyFile[] = "/fathom_policy.xml";
constexpr char kLockFile[] = "/.LogTransportAppLock";

void CreateConfig(const std::string& userFile, const std::string& defaultFile) {
    if (FileSystemUtils::DoesPathExist(defaultFile))
        FileSystemUtils::CopyLocalFile(defaultFile, userFile);
    else
        TransConfigUtils::CreateDefaultConfig(userFile);
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
    std::string userFile = FindUserCfg();
    if (FileSystemUtils::DoesPathExist(userFile)) {
        const std::string defaultFile = FindDefaultCfg(Platform::MainBundle());
        if (IsUserCfgOutdated(userFile, defaultFile))
            TransConfigUtils::ReplaceConfig(defaultFile, userFile);
    } else if (GetUserCfgDir(kUserCfgFolder).empty()) {
        userFile.clear();
    } else if (FileSystemUtils::IsPathMissing(userFile)) {
        CreateConfig(userFile, FindDefaultCfg(Platform::MainBundle()));
    }
    return userFile;
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
