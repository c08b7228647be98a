#include "Platform/FileReading.h"
#include "Tools/vistra/Commands.h"
#include "Tools/vistra/Console.h"
#include "Tools/vistra/Documents.h"
#include "Tools/vistra/ReportPage.h"
#include "Tools/vistra/SessionFileName.h"
#include "Utility/src/UsageFileNames.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <iostream>
#include <memory>

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kMostMissedNamed = 100;

struct Options {
    std::vector<std::string> folders;
    std::string output;
};

bool IsInProgress(const std::string& path) {
    return path.ends_with(UsageFileNames::kInProgressExtension);
}

/// The documents of the folders. Folders that cannot be listed are told of and taken out.
std::vector<std::string> FindDocuments(std::vector<std::string>& folders) {
    std::vector<std::string> paths;
    std::erase_if(folders, [&](const std::string& folder) {
        const auto entries = Platform::ListFolder(folder);
        if (!entries)
            Console::Complain(folder, Platform::TypeOfItem(folder) == Platform::ItemType::Missing
                                          ? "does not exist"
                                          : "cannot be read as a folder");
        for (const Platform::FolderEntry& entry :
             entries.value_or(std::vector<Platform::FolderEntry>()))
            if (!entry.isFolder && UsageFileNames::IsDocumentName(entry.name))
                paths.push_back((fs::path(folder) / entry.name).string());
        return !entries;
    });
    // Finished documents first: a copy made while one was written tells less.
    std::ranges::sort(paths, {},
                      [](const std::string& path) { return std::pair(IsInProgress(path), path); });
    return paths;
}

class ReportMaking {
public:
    explicit ReportMaking(std::vector<std::string> folders) {
        m_origin.made = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
        m_origin.folders = std::move(folders);
    }

    void Read(const std::vector<std::string>& paths) {
        m_origin.documents = paths.size();
        for (std::size_t i = 0; i < paths.size(); ++i) {
            Console::ShowProgress("Document " + std::to_string(i + 1) + " of " +
                                  std::to_string(paths.size()));
            Read(paths[i]);
        }
        Console::ShowProgress("");
    }

    std::string Page() const { return ReportPage(m_usage, m_origin); }
    ExitCode Exit() const { return m_exit; }

private:
    void Read(const std::string& path) {
        bool isBegun = false;
        const bool isOpen = IsInProgress(path) && Platform::IsHeldLocked(path);
        const ExitCode exit = ReadDocuments(
            {path}, {[&](DocumentHead head) {
                         isBegun = true;
                         if (head.session.id.empty()) // the head could not be written
                             head.session.id = ParseSessionFileName(path).sessionId;
                         m_usage.Begin(head, isOpen);
                     },
                     [&](const Record& record, std::uint64_t) { m_usage.Take(record); },
                     [&] { m_usage.End(); }});
        m_exit = Worse(m_exit, exit);
        // One that merely breaks off belongs to a session without an end, and is told of there.
        if (exit != ExitCode::Done && (!isBegun || m_usage.LastIsClosed()))
            NoteMissed({path, !isBegun});
    }

    void NoteMissed(const MissedDocument& document) {
        ++(document.isUnreadable ? m_origin.unreadable : m_origin.damaged);
        if (m_origin.missed.size() < kMostMissedNamed)
            m_origin.missed.push_back(document);
    }

    UsageStatistics m_usage;
    ReportOrigin m_origin;
    ExitCode m_exit = ExitCode::Done;
};

/// Why the page must not be written there; empty when it may.
std::string WhyNotWritten(const std::string& output, const std::vector<std::string>& documents) {
    std::error_code error;
    if (output == "-" || !fs::exists(output, error))
        return "";
    if (!fs::is_regular_file(output, error))
        return "is not a file that could be replaced";
    const bool isDocument = std::ranges::any_of(documents, [&](const std::string& document) {
        return fs::equivalent(document, output, error);
    });
    return isDocument ? "is one of the documents; the page would replace it" : "";
}

ExitCode Write(const std::string& output, const std::string& page) {
    if (output == "-") {
        std::cout << page;
        return ExitCode::Done;
    }
    if (Platform::ReplaceFile(output, page))
        return ExitCode::Done;
    Console::Complain(output, "cannot be written");
    return ExitCode::NotDone;
}

ExitCode MakeReport(const Options& options) {
    std::vector<std::string> folders = options.folders;
    const std::vector<std::string> documents = FindDocuments(folders);
    if (folders.empty())
        return ExitCode::InputMissed;
    if (const std::string reason = WhyNotWritten(options.output, documents); !reason.empty()) {
        Console::Complain(options.output, reason);
        return ExitCode::NotDone;
    }
    const bool hasAllFolders = folders.size() == options.folders.size();
    ReportMaking report(std::move(folders));
    report.Read(documents);
    const ExitCode exit = Worse(report.Exit(), Write(options.output, report.Page()));
    return Worse(exit, hasAllFolders ? ExitCode::Done : ExitCode::InputMissed);
}

} // namespace

void AddReportCommand(CLI::App& vistra, ExitCode& exit) {
    auto options = std::make_shared<Options>();
    CLI::App* const report = vistra.add_subcommand(
        "report", "Sum up the documents of folders in one page for a person to read");
    report
        ->add_option("FOLDER", options->folders, "Folders with usage documents; not those in them")
        ->type_name("")
        ->required();
    report
        ->add_option("-o,--output", options->output,
                     "The HTML page to write, replaced if it is there; - for standard output")
        ->required()
        ->type_name("FILE");
    report->callback([options, &exit] { exit = Worse(exit, MakeReport(*options)); });
}
