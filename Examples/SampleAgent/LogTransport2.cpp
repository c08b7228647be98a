// A sample agent: the program that the library starts when a usage document is finished. It is
// inert but for collecting: it moves finished documents into a folder beside the log folder and
// uploads nothing. The library passes no arguments; the agent finds the documents by itself.

#include "Platform/Files.h"
#include "Platform/Process.h"
#include "Utility/src/Mac/FileProxy.h"
#include "Utility/src/Mac/FileSystemUtils.h"
#include "Utility/src/Mac/LogTransUtilsMac.h"
#include "Utility/src/TimeUtils.h"
#include "Utility/src/UsageFileNames.h"
#include "Utility/src/UsageFolders.h"

#include <charconv>
#include <chrono>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kPause(50);

constexpr char kUsage[] =
    "Usage: LogTransport2 [--wait SECONDS]\n"
    "Moves finished usage documents into the folder Collected, and ends when\n"
    "none has come for that long (2 seconds).\n";

bool IsEmptyFile(const std::string& path) {
    const auto size = Platform::SizeOfItem(path);
    return !size || size->logicalBytes == 0;
}

/// A document under its final name that nobody writes to. An empty file is left alone, its lock
/// not even tried: its writer may be about to take it.
bool IsFinished(const std::string& path) {
    const bool named = path.ends_with(UsageFileNames::kPlainExtension) ||
                       path.ends_with(UsageFileNames::kObfuscatedExtension);
    return named && !IsEmptyFile(path) && !FileSystemUtils::IsWriteLocked(path) &&
           !IsEmptyFile(path);
}

std::vector<std::string> FinishedDocuments(const std::string& folder) {
    std::vector<std::string> files;
    FileSystemUtils::GetFilesInDirectory(folder, files, false);
    std::erase_if(files, [](const std::string& path) { return !IsFinished(path); });
    return files;
}

/// Moves documents from the log folder into `Collected` beside it.
class Collector {
public:
    explicit Collector(const std::string& logFolder)
        : m_logFolder(logFolder),
          m_collected(FileSystemUtils::AppendPathElement(FileSystemUtils::GetParentPath(logFolder),
                                                         UsageFolders::kCollected)) {
        FileSystemUtils::CreateLocalDirectory(m_collected);
    }

    /// Whether there are more documents than those that could not be moved.
    bool HasNewDocuments() const { return FinishedDocuments(m_logFolder).size() > m_stuck; }

    void CollectUntilQuiet(std::chrono::seconds quietTime) {
        auto end = Clock::now() + quietTime;
        do {
            if (CollectOnce())
                end = Clock::now() + quietTime;
            else
                std::this_thread::sleep_for(kPause);
        } while (Clock::now() < end);
    }

    /// Adds this launch to the list that the collected documents are kept with.
    void NoteLaunch(const std::string& remark) const {
        const std::string line = TimeUtils::CalcTime() +
                                 " pid=" + std::to_string(Platform::CurrentProcessId()) +
                                 " documents=" + std::to_string(m_moved) + remark + "\n";
        const auto list =
            Platform::OpenFile(FileSystemUtils::AppendPathElement(m_collected, "launches.txt"),
                               Platform::Access::Append);
        Platform::WriteToFile(list, line);
        Platform::CloseFile(list);
    }

private:
    /// Returns whether anything was moved.
    bool CollectOnce() {
        const std::size_t movedBefore = m_moved;
        m_stuck = 0;
        for (const std::string& path : FinishedDocuments(m_logFolder)) {
            const std::string name = FileSystemUtils::GetFileName(path);
            const bool moved = FileSystemUtils::RenameFile(
                path, FileSystemUtils::AppendPathElement(m_collected, name));
            ++(moved ? m_moved : m_stuck);
        }
        return m_moved > movedBefore;
    }

    std::string m_logFolder;
    std::string m_collected;
    std::size_t m_moved = 0;
    std::size_t m_stuck = 0;
};

/// Collects while no other agent does. A document may become ready, and its launch find this
/// agent still at work, between the last look and the release of the lock: hence the second look.
/// Returns whether it worked at all.
bool CollectAsTheOnlyAgent(Collector& collector, std::chrono::seconds quietTime) {
    FileProxy lock;
    bool worked = false;
    while (lock.Open(LogTransUtils::GetResourceId())) {
        collector.CollectUntilQuiet(quietTime);
        lock.Close();
        worked = true;
        if (!collector.HasNewDocuments())
            break;
    }
    return worked;
}

std::optional<std::chrono::seconds> ParseSeconds(std::string_view text) {
    unsigned short seconds = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seconds);
    if (error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return std::chrono::seconds(seconds);
}

std::optional<std::chrono::seconds> ParseCommandLine(const std::vector<std::string>& arguments) {
    if (arguments.empty())
        return std::chrono::seconds(2);
    if (arguments.size() == 2 && arguments[0] == "--wait")
        return ParseSeconds(arguments[1]);
    return std::nullopt;
}

} // namespace

int main(int argc, char** argv) {
    const auto quietTime = ParseCommandLine({argv + 1, argv + argc});
    if (!quietTime) {
        std::cerr << kUsage;
        return 1;
    }
    const std::string logFolder = LogTransUtils::GetUserLogFullPath();
    if (logFolder.empty()) {
        std::cerr << "LogTransport2: this user has no log folder\n";
        return 1;
    }
    Collector collector(logFolder);
    const bool worked = CollectAsTheOnlyAgent(collector, *quietTime);
    collector.NoteLaunch(worked ? "" : " (another agent is at work)");
    return 0;
}
