#include "LogSession/CrashHandler.h"

#include "LogSession/LogSession.h"
#include "LogSession/OptInPolicy.h"
#include "Platform/Files.h"
#include "Platform/Process.h"
#include "Utility/src/Converters.h"
#include "Utility/src/Logger.h"
#include "Utility/src/Mac/FileSystemUtils.h"
#include "Utility/src/Mac/LogTransUtilsMac.h"
#include "Utility/src/Mac/PreferenceUtil.h"
#include "Utility/src/Mac/UserFolderUtils.h"
#include "Utility/src/PreferenceKeys.h"
#include "Utility/src/UsageFolders.h"

#include <compare>
#include <set>

namespace CrashHandlingSpace {

namespace {

Logger* const logger = Logger::GetLogger(kLoggerName);
constexpr char kSourceUnit[] = "LogSession/CrashHandler";
constexpr long kEntryLine = 493; ///< under which readers of the log know the entry
constexpr std::size_t kKeptMarkers = 50;

/// A marker of the folder. Those of one second are ordered by path, so that two processes that
/// prune at once choose the same ones.
struct FileStat {
    std::uint64_t modified = 0; ///< seconds since 1970
    std::string path;
    auto operator<=>(const FileStat&) const = default;
};

std::string LogDirPath() {
    return UserFolderUtils::PathBelow(kDomainLibraryFolderType, UsageFolders::kMarkers);
}

/// Finds the folder of the markers and creates it. 0, -1 when the user has no Library folder, -2
/// when the folder cannot be created.
int GetLogDir(std::string& dir) {
    dir = LogDirPath();
    if (FileSystemUtils::IsDirectory(dir))
        return 0;
    std::string library;
    if (!LogTransUtils::GetUserLibraryDir(library))
        return -1;
    return FileSystemUtils::CreateLocalDirectory(dir) ? 0 : -2;
}

/// Path of the session's marker in the folder. False only for a null session.
bool GetSessionInfoName(LogSession* session, const std::string& dir, std::string& path) {
    if (!session)
        return false;
    path = FileSystemUtils::AppendPathElement(dir) + OptInPolicy::GetInstance()->GetUsageKey();
    for (const std::string& field :
         {session->GetProductFamily(), session->GetProductName(), session->GetSessionId(),
          Converters::NumberToString(Platform::CurrentProcessId()), session->GetProcessName()})
        path += "_" + field;
    path += UsageFolders::kMarkerExtension;
    return true;
}

/// Deletes the oldest files beyond the limit.
void PruneMarkers(const std::string& dir) {
    std::vector<std::string> paths;
    FileSystemUtils::GetFilesInDirectory(dir, paths, false);
    if (paths.size() <= kKeptMarkers)
        return;
    // A set: while others create and delete markers, a listing may name one twice.
    std::set<FileStat> files;
    for (std::string& path : paths) {
        FileStat file{0, std::move(path)};
        FileSystemUtils::GetFileLastModifiedTime(file.path, file.modified);
        files.insert(std::move(file));
    }
    for (; files.size() > kKeptMarkers; files.erase(files.begin()))
        FileSystemUtils::DeleteLocalFile(files.begin()->path);
}

} // namespace

} // namespace CrashHandlingSpace

using namespace CrashHandlingSpace;

LogSession* CrashHandler::gpLogSession = nullptr;

bool CrashHandler::SetCrashHandler(LogSession* session, const std::string&) {
    logger->NoteInfo({"CrashHandler::SetCrashHandler"}, kSourceUnit, kEntryLine);
    const std::string agent = LogTransUtils::GetTransporterExeFullPath();
    if (session)
        PreferenceUtil::SetPreferenceValue(
            PreferenceKeys::kCrashProcessor, session->GetProcessName(), PreferenceKeys::kDomain,
            agent, kCFPreferencesCurrentUser, kCFPreferencesCurrentHost);
    if (!agent.empty())
        RecordSessionInfo(session);
    gpLogSession = session;
    return true;
}

bool CrashHandler::RecordSessionInfo(LogSession* session) {
    std::string dir = LogDirPath(), path;
    if (dir.empty() || !GetSessionInfoName(session, dir, path))
        return false;
    if (FileSystemUtils::WriteFile("", path) == 0) // unless it is the folder's first marker
        return true;
    if (GetLogDir(dir) != 0)
        return false;
    FileSystemUtils::WriteFile("", path);
    return true;
}

bool CrashHandler::RemoveSessionInfo(LogSession* session) {
    std::string dir, path;
    if (GetLogDir(dir) != 0 || !GetSessionInfoName(session, dir, path))
        return false;
    if (!Platform::DeleteFile(path))
        return false;
    PruneMarkers(dir);
    return true;
}
