#include "Tools/vistra/SessionFolder.h"

#include "Platform/FileReading.h"
#include "Tools/vistra/SessionFileName.h"
#include "Tools/vistra/TextCheck.h"
#include "Utility/src/Mac/FileSystemUtils.h"
#include "Utility/src/UsageFileNames.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <system_error>
#include <tuple>
#include <utility>

namespace {

/// A document keeps its extension, though not always its name, when somebody copies it.
bool IsNamedAsDocument(const Platform::FolderEntry& entry) {
    return !entry.isFolder && !entry.name.starts_with('.') &&
           UsageFileNames::HasDocumentExtension(entry.name);
}

SessionFile ReadFile(const std::string& path, FolderKind folder) {
    SessionFile file;
    file.path = path;
    file.index = ParseSessionFileName(path).index;
    file.folder = folder;
    file.isInProgress = path.ends_with(UsageFileNames::kInProgressExtension);
    // Before the look into it: a writer that is done meanwhile must not seem to have crashed.
    file.isHeld = file.isInProgress && Platform::IsHeldLocked(path);
    file.head = ReadDocumentHead(path);
    std::error_code failure;
    const std::uintmax_t bytes = std::filesystem::file_size(path, failure);
    file.bytes = failure ? 0 : bytes;
    return file;
}

/// What files of one session have in common: the number that the document tells, else the one in
/// its name, else nothing.
std::string KeyOf(const SessionFile& file) {
    if (!file.head.session.id.empty())
        return file.head.session.id;
    const std::string id = ParseSessionFileName(file.path).sessionId;
    return id.empty() ? file.path : id;
}

bool ComesFirst(const SessionFile& a, const SessionFile& b) {
    return std::tie(a.index, a.head.firstSeq, a.path) < std::tie(b.index, b.head.firstSeq, b.path);
}

/// A file whose head could not be written knows less than the others.
SessionIdentity IdentityOf(const std::vector<SessionFile>& files, const std::string& key) {
    const auto knows = [](const SessionFile& file) { return !file.head.session.name.empty(); };
    const auto found = std::ranges::find_if(files, knows);
    SessionIdentity identity = (found == files.end() ? files.front() : *found).head.session;
    if (identity.id.empty() && IsGuid(key))
        identity.id = key;
    return identity;
}

SessionState StateOf(const std::vector<SessionFile>& files, DocumentEnd::Kind end) {
    if (std::ranges::any_of(files, &SessionFile::isHeld))
        return SessionState::Open;
    if (std::ranges::any_of(files, &SessionFile::isInProgress))
        return SessionState::Crashed;
    if (end != DocumentEnd::Kind::Session && end != DocumentEnd::Kind::Leftover)
        return SessionState::EndMissing;
    const auto countIn = [&](FolderKind kind) {
        return static_cast<std::size_t>(std::ranges::count(files, kind, &SessionFile::folder));
    };
    if (countIn(FolderKind::Documents) > 0)
        return SessionState::Waiting;
    return countIn(FolderKind::Collected) == files.size() ? SessionState::Collected
                                                          : SessionState::Finished;
}

FolderSession MakeSession(std::vector<SessionFile>&& files, const std::string& key) {
    std::ranges::sort(files, ComesFirst);
    FolderSession session;
    std::vector<std::uint32_t> indices;
    for (const SessionFile& file : files)
        if (file.index)
            indices.push_back(*file.index);
    session.gaps = GapsIn(indices);
    session.files = std::move(files);
    std::erase_if(session.files, [](const auto& file) { return !file.head.problem.empty(); });
    if (session.files.empty())
        return session;
    const SessionFile& last = session.files.back();
    session.identity = IdentityOf(session.files, key);
    session.end = ReadDocumentEnd(last.path, last.head.isObfuscated);
    if (session.end.kind == DocumentEnd::Kind::Leftover && session.files.size() > 1) {
        const SessionFile& before = session.files[session.files.size() - 2];
        if (ReadDocumentEnd(before.path, before.head.isObfuscated).kind !=
            DocumentEnd::Kind::Session)
            session.end.kind = DocumentEnd::Kind::Open;
    }
    session.state = StateOf(session.files, session.end.kind);
    return session;
}

} // namespace

bool ReadSessionFiles(const std::string& folder, FolderKind kind, std::vector<SessionFile>& files) {
    auto entries = Platform::ListFolder(folder);
    if (!entries)
        return false;
    // First those that may soon be gone, for another name.
    std::stable_partition(entries->begin(), entries->end(), [](const Platform::FolderEntry& entry) {
        return entry.name.ends_with(UsageFileNames::kInProgressExtension);
    });
    for (const Platform::FolderEntry& entry : *entries)
        if (IsNamedAsDocument(entry))
            files.push_back(ReadFile(FileSystemUtils::AppendPathElement(folder, entry.name), kind));
    return true;
}

std::vector<FileGap> GapsIn(const std::vector<std::uint32_t>& indices) {
    std::vector<FileGap> gaps;
    std::uint64_t next = 0;
    for (const std::uint32_t index : indices) {
        if (index > next)
            gaps.push_back({static_cast<std::uint32_t>(next), index - 1});
        next = std::uint64_t{index} + 1;
    }
    return gaps;
}

std::uint64_t FolderSession::Bytes() const {
    std::uint64_t bytes = 0;
    for (const SessionFile& file : files)
        bytes += file.bytes;
    return bytes;
}

std::vector<FolderSession> GroupSessions(std::vector<SessionFile> files) {
    std::map<std::string, std::vector<SessionFile>> groups;
    for (SessionFile& file : files)
        groups[KeyOf(file)].push_back(std::move(file));
    std::vector<FolderSession> sessions;
    for (auto& [key, group] : groups)
        if (FolderSession session = MakeSession(std::move(group), key); !session.files.empty())
            sessions.push_back(std::move(session));
    std::ranges::stable_sort(sessions, {}, [](const FolderSession& session) {
        return std::tie(session.identity.start, session.identity.id);
    });
    return sessions;
}
