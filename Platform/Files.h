#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// File services that the C++ library does not offer. Files are created readable and writable by
// their user alone, and no descriptor survives an exec. Nothing here logs or throws on a failed
// system call.

namespace Platform {

using FileHandle = int;
constexpr FileHandle kNoFile = -1;

enum class Access { Read, ReadWrite, Append, Truncate };

/// Opens a regular file; Append and Truncate create it when missing. kNoFile on failure.
FileHandle OpenFile(const std::string& path, Access access);

/// Opens a file for reading and writing from its start, created when missing, with an exclusive
/// advisory lock. A last component that is a symbolic link is refused. kNoFile when it cannot be
/// opened or another holder has the lock.
FileHandle OpenLockedFile(const std::string& path);

/// Writes all of `bytes` at the current position, in one system call unless the system takes
/// fewer. False when not all of it could be written.
bool WriteToFile(FileHandle file, std::string_view bytes);

/// Gives back the lock, if any, and closes; kNoFile is ignored.
void CloseFile(FileHandle file);

/// The content of a regular file of at most `maximumBytes`. Nothing on any failure.
std::optional<std::string> ReadFile(const std::string& path,
                                    std::uint64_t maximumBytes = UINT64_MAX);

/// Replaces the file's content whole or not at all, keeping the permissions of an existing file;
/// content that is already there only renews the modification time. False, with the old file
/// untouched, when it cannot be written, or an existing file may not be.
bool ReplaceFile(const std::string& path, std::string_view content);

/// Sets the file's modification time to now. False when it is not there or may not be written.
bool RenewModificationTime(const std::string& path);

/// Copies the content of a regular file to a name that does not exist. False on any failure, with
/// nothing left at the new name.
bool CopyFile(const std::string& source, const std::string& destination);

/// Deletes an item that is not a folder; of a link only the link. False, with nothing deleted, for
/// any other path, and when it cannot be deleted.
bool DeleteFile(const std::string& path) noexcept;

/// Moves an item in one step; false when the target exists or the move fails.
bool RenameWithoutReplacing(const std::string& source, const std::string& destination);

/// Creates a folder with the permissions of `parent`. True also when a folder is already there.
bool CreateFolder(const std::string& path, const std::string& parent);

struct FolderEntry {
    std::string name;
    bool isFolder = false; ///< also a link to one
    bool isLink = false;
};

/// The entries of a folder but itself and its parent, in no order. Nothing when it cannot be
/// listed; entries that cannot be read any more are left out.
std::optional<std::vector<FolderEntry>> ListFolder(const std::string& path);

enum class ItemType { Missing, Folder, Other, Unknown };

/// What the path leads to, links followed. Unknown for a path that names nothing, and for an item
/// that cannot be looked at.
ItemType TypeOfItem(const std::string& path);

/// A point in time since 1970, to the nanosecond.
struct FileTime {
    std::int64_t seconds = 0;
    std::int64_t nanoseconds = 0;
    auto operator<=>(const FileTime&) const = default;
};

/// Nothing when the item does not exist, or (CreationTime) the file system keeps no birth time.
std::optional<FileTime> ModificationTime(const std::string& path);
std::optional<FileTime> CreationTime(const std::string& path);

struct FileSize {
    std::uint64_t logicalBytes = 0;
    std::uint64_t allocatedBytes = 0;
};

/// Size of one item, a symbolic link not followed. Nothing when it does not exist.
std::optional<FileSize> SizeOfItem(const std::string& path);

/// Bytes that an unprivileged user may still use on the volume that holds `path`.
std::optional<std::uint64_t> FreeBytes(const std::string& path);

} // namespace Platform
