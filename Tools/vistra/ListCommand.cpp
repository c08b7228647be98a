#include "Platform/Files.h"
#include "Platform/UserFolders.h"
#include "Tools/vistra/Commands.h"
#include "Tools/vistra/Console.h"
#include "Tools/vistra/Listing.h"
#include "Utility/src/Mac/FileSystemUtils.h"
#include "Utility/src/Mac/UserFolderUtils.h"
#include "Utility/src/UsageFolders.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <optional>

namespace {

constexpr int kMostLooks = 5;

struct ListOptions {
    std::optional<std::string> folder;
    bool json = false;
    bool files = false;
};

ExitCode Complained(const std::string& path, const std::string& problem) {
    Console::Complain(path, problem);
    return ExitCode::InputMissed;
}

ExitCode ReadFolder(const std::string& folder, FolderKind kind, std::vector<SessionFile>& files) {
    if (ReadSessionFiles(folder, kind, files))
        return ExitCode::Done;
    switch (Platform::TypeOfItem(folder)) {
    case Platform::ItemType::Missing:
        return Complained(folder, "does not exist");
    case Platform::ItemType::Other:
        return Complained(folder, "is not a folder");
    default:
        return Complained(folder, "cannot be read");
    }
}

/// An account in which nothing was recorded has no such folder.
ExitCode ReadFolderIfThere(const std::string& folder, FolderKind kind,
                           std::vector<SessionFile>& files) {
    const bool isThere = !folder.empty() && !FileSystemUtils::IsPathMissing(folder);
    return isThere ? ReadFolder(folder, kind, files) : ExitCode::Done;
}

/// Documents before those that were collected: one that an agent moves meanwhile is not missed.
/// Markers before both: that of a session which ends meanwhile is not missed either.
ExitCode ReadAccount(std::vector<SessionFile>& files, std::vector<SessionMarker>& markers) {
    const auto below = [](const char* relative) {
        return UserFolderUtils::PathBelow(kDomainLibraryFolderType, relative);
    };
    const std::string documents = below(UsageFolders::kDocuments);
    const std::string collected = FileSystemUtils::AppendPathElement(
        FileSystemUtils::GetParentPath(documents), UsageFolders::kCollected);
    markers = ReadSessionMarkers(below(UsageFolders::kMarkers));
    ExitCode exit = ReadFolderIfThere(documents, FolderKind::Documents, files);
    if (!documents.empty())
        exit = Worse(exit, ReadFolderIfThere(collected, FolderKind::Collected, files));
    return exit;
}

/// Complains of each file that is no document.
ExitCode ComplainOfUnreadable(const std::vector<SessionFile>& files) {
    ExitCode exit = ExitCode::Done;
    for (const SessionFile& file : files)
        if (!file.head.problem.empty())
            exit = Complained(file.path, file.head.problem);
    return exit;
}

/// One that was seen being written tells that its session is open, whatever its name is by now.
bool HasGone(const SessionFile& file) {
    const bool wasOpen = file.isHeld && file.head.problem.empty();
    return !wasOpen && !Platform::SizeOfItem(file.path);
}

ExitCode List(const ListOptions& options) {
    std::vector<SessionFile> files;
    std::vector<SessionMarker> markers;
    ExitCode exit = ExitCode::Done;
    // What has gone since it was found is listed where it has gone to: at another look, if need be.
    bool hasGone = true;
    for (int looks = 0; hasGone && looks < kMostLooks; ++looks) {
        files.clear();
        exit = !options.folder ? ReadAccount(files, markers)
                               : ReadFolder(*options.folder, FolderKind::Any, files);
        if (exit != ExitCode::Done && options.folder)
            return exit;
        hasGone = std::erase_if(files, HasGone) > 0;
    }
    exit = Worse(exit, ComplainOfUnreadable(files));
    const Listing listing = MakeListing(GroupSessions(std::move(files)), std::move(markers));
    if (options.json)
        WriteListingAsJson(listing, std::cout);
    else
        WriteListing(listing, options.files, std::cout);
    return exit;
}

} // namespace

void AddListCommand(CLI::App& vistra, ExitCode& exit) {
    const auto options = std::make_shared<ListOptions>();
    CLI::App& command = *vistra.add_subcommand(
        "list", "List the recorded sessions: when, of which product, and what became of them");
    command.footer(
        "A session is open (a program is recording it), left by a crash, waiting (ended, not\n"
        "yet collected), collected, or finished (ended, in a FOLDER that you name); or its\n"
        "end is missing (the last file is not here, or was cut short).\n\n" +
        vistra.get_footer());
    command
        .add_option("FOLDER", options->folder,
                    "Look into this folder alone; else at this account's documents, at those\n"
                    "that the agent keeps in Collected beside them, and at markers of sessions")
        ->type_name("");
    command.add_flag("--files", options->files, "Name the files of each session as well");
    command.add_flag("--json", options->json, "Print one JSON object, for a program");
    command.callback([options, &exit] { exit = Worse(exit, List(*options)); });
}
