#pragma once

#include "Platform/Files.h"

#include <string>
#include <string_view>

/// An output file held open with an exclusive advisory lock, which tells other programs that it
/// is still being written. Destroying a proxy does not close its file: its owner does.
class FileProxy {
public:
    FileProxy() = default;
    FileProxy(const FileProxy&) = delete;
    FileProxy& operator=(const FileProxy&) = delete;

    /// Opens the file for writing from its start, created when missing, never truncated. False,
    /// without logging, when it cannot be opened or another holder has it locked.
    bool Open(const std::string& path);

    /// Writes UTF-8 text at the current position. False when not open or not all was written.
    bool Write(std::string_view text);

    /// Closes the file when open.
    void Close();

    /// Whether the path names an existing item that is not a folder.
    static bool IsValidPath(const std::string& path);

    /// Whether a file is held open.
    bool IsExist() const { return m_file != Platform::kNoFile; }

private:
    Platform::FileHandle m_file = Platform::kNoFile;
};
