#pragma once

#include "Tools/vistra/DocumentEnd.h"
#include "Tools/vistra/DocumentHead.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// What a folder is to the agent.
enum class FolderKind {
    Any,       ///< it is not known
    Documents, ///< where it looks for finished documents
    Collected, ///< where it keeps those that it has collected
};

/// A file that holds a document, or part of one.
struct SessionFile {
    std::string path;
    std::optional<std::uint32_t> index; ///< in its session, as the name tells
    DocumentHead head;                  ///< with a problem when it is no document
    std::uint64_t bytes = 0;
    bool isInProgress = false; ///< not handed over yet
    bool isHeld = false;       ///< and locked by its writer
    FolderKind folder = FolderKind::Any;
};

/// Adds every file of the folder that is named as a document. False, with nothing added, when the
/// folder cannot be listed.
bool ReadSessionFiles(const std::string& folder, FolderKind kind, std::vector<SessionFile>& files);

enum class SessionState {
    Open,       ///< a program is writing it
    Crashed,    ///< its writer went without ending it
    Finished,   ///< ended
    Waiting,    ///< ended; the agent has not collected all of it
    Collected,  ///< ended; the agent has collected all of it
    EndMissing, ///< the last file that is here is not the session's last one, or was cut short
};

/// Files that are not here: from the index `first` to the index `last`.
struct FileGap {
    std::uint32_t first = 0;
    std::uint32_t last = 0;
};

/// One session, or one of the small documents that stand for themselves.
struct FolderSession {
    SessionIdentity identity;
    std::vector<SessionFile> files; ///< readable ones, in order; at least one
    std::vector<FileGap> gaps;      ///< before and between them
    DocumentEnd end;                ///< of the last file
    SessionState state = SessionState::EndMissing;

    std::uint64_t Bytes() const;
};

/// Puts the files of each session together, ordered by their start. How a session ends is read from
/// its last file.
///
/// Its state follows from names and locks: one that is still called in progress is being written if
/// it is locked, and was left by a crash if not. Only where every file has its final name, the last
/// few thousand bytes of the last one tell whether the session ended there.
std::vector<FolderSession> GroupSessions(std::vector<SessionFile> files);

/// The gaps between ascending indices, and before the first.
std::vector<FileGap> GapsIn(const std::vector<std::uint32_t>& indices);
