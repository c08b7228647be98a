#include "Utility/src/Mac/FileSystemUtils.h"

#include "Platform/Files.h"
#include "Platform/Launch.h"
#include "Platform/RegularExpression.h"
#include "Platform/UserFolders.h"
#include "Utility/src/Mac/DataConversions.h"

#include <filesystem>
#include <optional>
#include <system_error>

namespace fs = std::filesystem;

namespace {

/// What stands at the path itself, a link not followed; file_type::none when that cannot be told.
fs::file_type ItemTypeOf(const std::string& path) {
    if (path.empty() || path.find('\0') != std::string::npos)
        return fs::file_type::not_found;
    std::error_code ignored;
    return fs::symlink_status(path, ignored).type();
}

/// Removes what stands in the way of a new folder. Never a folder with its contents: another
/// program may have made it just now.
bool MakeRoomForFolder(const std::string& path) {
    const fs::file_type type = ItemTypeOf(path);
    if (type == fs::file_type::not_found || FileSystemUtils::IsDirectory(path))
        return true;
    if (type == fs::file_type::none)
        return false;
    std::error_code error;
    fs::remove(path, error);
    return !error;
}

/// Whether one of the items is the other or holds it, so that replacing the destination would
/// destroy the source, or the copy would hold itself.
bool DoOverlap(const std::string& source, const std::string& destination) {
    std::error_code error;
    const fs::path item = fs::canonical(source, error);
    const fs::path target =
        fs::absolute(FileSystemUtils::RightTrimPathByDelimiter(destination), error);
    // A link at the destination is replaced itself, so only the way to it is resolved.
    const fs::path copy = fs::weakly_canonical(target.parent_path(), error) / target.filename();
    const std::string from = FileSystemUtils::AppendPathElement(item.string()),
                      to = FileSystemUtils::AppendPathElement(copy.string());
    return from.starts_with(to) || to.starts_with(from);
}

bool CopyEntry(const fs::directory_entry& entry, const fs::path& destination) {
    std::error_code error;
    switch (entry.symlink_status(error).type()) {
    case fs::file_type::symlink:
        fs::copy_symlink(entry.path(), destination, error);
        return !error;
    case fs::file_type::directory:
        return Platform::CreateFolder(destination.string(), destination.parent_path().string());
    default:
        return Platform::CopyFile(entry.path().string(), destination.string());
    }
}

bool CopyFolderContents(const fs::path& source, const fs::path& destination) {
    std::error_code error;
    fs::recursive_directory_iterator entry(source, error);
    for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error))
        if (!CopyEntry(*entry, destination / entry->path().lexically_relative(source)))
            return false;
    return !error;
}

bool CopyFolder(const std::string& source, const std::string& destination) {
    const std::string target = FileSystemUtils::RightTrimPathByDelimiter(destination);
    if (Platform::CreateFolder(target, FileSystemUtils::GetParentPath(target)) &&
        CopyFolderContents(FileSystemUtils::RightTrimPathByDelimiter(source), target))
        return true;
    FileSystemUtils::CleanPath(target);
    return false;
}

/// The extended regular expression of a wildcard pattern. Its other characters keep the meaning
/// that they have in such an expression.
std::string WildcardExpression(const std::string& pattern) {
    std::string expression;
    for (const char character : pattern) {
        if (character == '?')
            expression += ".{1}";
        else if (character == '.')
            expression += "\\.";
        else if (character == '*')
            expression += ".*";
        else
            expression += character;
    }
    return expression;
}

/// Tells which names a pattern condemns; see DeleteFiles.
class DeletionTest {
public:
    explicit DeletionTest(const std::string& pattern) : m_pattern(pattern) {
        if (pattern.find_first_of("*?") != std::string::npos)
            m_expression.emplace(WildcardExpression(pattern));
    }
    bool Condemns(const std::string& name) const {
        return m_expression ? m_expression->Matches(name) : !name.starts_with(m_pattern);
    }

private:
    const std::string& m_pattern;
    std::optional<Platform::RegularExpression> m_expression; ///< of a pattern with wildcards
};

std::string QuotedForShell(const std::string& text) {
    std::string quoted = "'";
    for (const char character : text) {
        if (character == '\'')
            quoted += "'\\''";
        else
            quoted += character;
    }
    return quoted + "'";
}

} // namespace

bool FileSystemUtils::CreateLocalDirectory(const std::string& path) {
    if (path.empty() || path.find('\0') != std::string::npos)
        return false;
    if (IsDirectory(path))
        return true;
    const std::string folder = RightTrimPathByDelimiter(path);
    const std::string parent = GetParentPath(path);
    return MakeRoomForFolder(folder) && CreateLocalDirectory(parent) &&
           Platform::CreateFolder(folder, parent);
}

bool FileSystemUtils::DeleteLocalFile(const std::string& path) {
    if (Platform::DeleteFile(path)) // takes no memory, which may be what a file is deleted for
        return true;
    // Without its trailing delimiter a link is the item itself, not the folder behind it.
    const std::string item = RightTrimPathByDelimiter(path);
    const fs::file_type type = ItemTypeOf(item);
    if (type == fs::file_type::not_found)
        return true;
    std::error_code error;
    if (fs::path(item).relative_path().empty()) // the root
        return false;
    if (type == fs::file_type::directory)
        fs::remove_all(item, error);
    else
        fs::remove(item, error);
    return !error;
}

bool FileSystemUtils::DeleteDirectory(const std::string& path, bool recursive) {
    const std::string item = RightTrimPathByDelimiter(path);
    const fs::file_type type = ItemTypeOf(item);
    if (type == fs::file_type::not_found)
        return !path.empty();
    if (type != fs::file_type::directory)
        return false;
    if (recursive)
        return DeleteLocalFile(item);
    std::error_code error;
    fs::remove(item, error);
    return !error;
}

bool FileSystemUtils::CleanPath(const std::string& path) {
    // DeleteLocalFile removes whole folders as well, and of a link only the link.
    return DeleteLocalFile(path);
}

bool FileSystemUtils::CopyLocalFile(const std::string& source, const std::string& destination) {
    if (!DoesPathExist(source) || DoOverlap(source, destination) || !CleanPath(destination))
        return false;
    return IsDirectory(source) ? CopyFolder(source, destination)
                               : Platform::CopyFile(source, RightTrimPathByDelimiter(destination));
}

bool FileSystemUtils::RenameFile(const std::string& source, const std::string& destination) {
    return Platform::RenameWithoutReplacing(source, destination);
}

int FileSystemUtils::WriteFile(const std::string& content, const std::string& path) {
    const Platform::FileHandle file = Platform::OpenFile(path, Platform::Access::Truncate);
    if (file == Platform::kNoFile)
        return -1;
    const bool written = Platform::WriteToFile(file, content);
    Platform::CloseFile(file);
    return written ? 0 : -1;
}

void FileSystemUtils::DeleteFiles(const std::string& folder, const std::string& pattern,
                                  bool recursive) {
    // Listed whole first: a listing in progress may miss entries while others are deleted.
    std::vector<std::string> files;
    GetFilesInDirectory(folder, files, recursive);
    const std::size_t prefix = AppendPathElement(RightTrimPathByDelimiter(folder)).size();
    const DeletionTest test(pattern);
    for (const std::string& file : files)
        if (!IsMacSystemFile(file) && test.Condemns(file.substr(prefix)))
            DeleteLocalFile(file);
}

bool FileSystemUtils::LaunchPath(const std::string& path) {
    FSRef item;
    if (!DataConversions::StdioPathToFSRef(path, item))
        return Platform::RunShellCommand(path) == 0;
    if (Platform::LaunchItem(item.path))
        return true;
    return DoesPathExist(path) && Platform::RunShellCommand(QuotedForShell(path) + " &") == 0;
}
