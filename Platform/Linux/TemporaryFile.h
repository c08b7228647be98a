#pragma once

#include "Platform/Linux/Descriptor.h"

namespace Platform {

/// New content on its way to a file's place, in a file beside it. Whatever did not get there is
/// removed at the end.
class TemporaryFile {
public:
    /// A name of its own beside `target`.
    static TemporaryFile Unique(const std::string& target);
    /// A fixed name, which the caller's lock keeps from other writers; what a killed writer left
    /// there is removed. A new file in the target's place has these permissions.
    static TemporaryFile Named(const std::string& path, mode_t permissions);

    TemporaryFile(TemporaryFile&&) = default;
    ~TemporaryFile();

    bool IsOpen() const { return m_file.IsOpen(); }
    /// Writes the content down to the disk. False on failure.
    bool Store(std::string_view content);
    /// Takes the place of `target` in one step, with the permissions of a file that is there. False
    /// on failure, or when that file may not be written.
    bool Replace(const std::string& target);
    /// Moves to a name that does not exist. False when it does, or on failure.
    bool MoveToNew(const std::string& target);

private:
    TemporaryFile(std::string path, Descriptor file)
        : m_path(std::move(path)), m_file(std::move(file)) {}
    bool TakePermissionsOf(const std::string& target);

    std::string m_path;
    Descriptor m_file;
    bool m_moved = false;
};

} // namespace Platform
