#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// Path and file functions. Paths are UTF-8 with the delimiter "/". Results are true for success
/// unless stated; nothing here throws on a failed operation, and nothing is logged.
class FileSystemUtils {
public:
    // Path text; no file is touched.

    static std::string GetPathDelimiter();
    /// Without trailing delimiters; a path of delimiters alone comes back unchanged.
    static std::string RightTrimPathByDelimiter(const std::string& path);
    /// "/" for an item of the root; empty for a path without a delimiter.
    static std::string GetParentPath(const std::string& path);
    static std::string GetPathLastComponent(const std::string& path);
    /// The last component; empty when the path ends with a delimiter.
    static std::string GetFileName(const std::string& path);
    /// Joins two paths with one delimiter between them.
    static std::string AppendPathElement(const std::string& path, const std::string& element);
    /// The path with a trailing delimiter.
    static std::string AppendPathElement(const std::string& path);

    // Tests and information.

    static bool DoesPathExist(const std::string& path);
    /// Whether there is surely nothing at the path; one that cannot be looked at may exist.
    static bool IsPathMissing(const std::string& path);
    static bool IsDirectory(const std::string& path);
    /// True for an empty path, a folder, and a hidden item.
    static bool IsMacSystemFile(const std::string& path);
    /// Whether `a`, or the folder that holds it, is later than `b`: the folder by its creation
    /// date, the files by their modification dates. Equal dates are not later.
    static bool IsFileNewer(const std::string& a, const std::string& b);
    /// Whether the file has at most `limit` bytes; one that cannot be opened has none.
    static bool IsFileSizeValid(const std::string& path, std::int32_t limit);
    /// Whether another holder has the file open under an exclusive lock, or it cannot be opened.
    /// A missing file is created empty.
    static bool IsWriteLocked(const std::string& path);
    /// Whole seconds since 1970. False for an empty or missing path.
    static bool GetFileLastModifiedTime(const std::string& path, std::uint64_t& seconds);
    /// False when the path does not exist or its volume cannot be asked.
    static bool GetDiscFreeSpace(const std::string& path, std::uint64_t& bytes);
    /// Sizes in bytes of a file or of all files of a folder tree. False when anything could not
    /// be measured; the sums gathered so far stay.
    static bool GetFileSize(const std::string& path, std::uint64_t& logical,
                            std::uint64_t& physical);
    /// Appends the full path of every entry that is not a folder. False when `folder` is none;
    /// an unreadable folder adds nothing.
    static bool GetFilesInDirectory(const std::string& folder, std::vector<std::string>& files,
                                    bool recursive);

    // Changes.

    /// Creates the folder with its missing parents; a file in its place is replaced.
    static bool CreateLocalDirectory(const std::string& path);
    /// Removes the item, a folder with its contents. True when nothing exists there.
    static bool DeleteLocalFile(const std::string& path);
    /// Removes a folder, when not recursive only an empty one. False for what is not a folder.
    static bool DeleteDirectory(const std::string& path, bool recursive);
    /// Removes whatever exists at the path. True when nothing is left.
    static bool CleanPath(const std::string& path);
    /// Copies an item, replacing what exists at the destination.
    static bool CopyLocalFile(const std::string& source, const std::string& destination);
    /// Moves an item. An existing destination makes the move fail.
    static bool RenameFile(const std::string& source, const std::string& destination);
    /// Creates or truncates a file. 0 on success, -1 when it cannot be created or written.
    static int WriteFile(const std::string& content, const std::string& path);
    /// Deletes the folder's visible files whose name relative to it matches the pattern. With `*`
    /// or `?` in it the pattern matches anywhere in the name; without, names that begin with it
    /// are kept and all others are deleted.
    static void DeleteFiles(const std::string& folder, const std::string& pattern, bool recursive);
    /// Starts the program at the path, detached. A path that does not exist is handed to the
    /// shell as a command; true when that ends with status 0.
    static bool LaunchPath(const std::string& path);
};
