#pragma once

#include "Platform/Files.h"

#include <cstddef>
#include <string>

/// The clear text of one document, obfuscated or not, from its first byte to its last, read from
/// the very file that the agent takes. Opening takes no lock.
class DocumentFile {
public:
    /// Opens the file. It may turn out that there is nothing to read: see Problem.
    explicit DocumentFile(std::string path);
    ~DocumentFile() { Platform::CloseFile(m_file); }
    DocumentFile(const DocumentFile&) = delete;
    DocumentFile& operator=(const DocumentFile&) = delete;

    const std::string& Path() const { return m_path; }
    bool IsObfuscated() const { return m_isObfuscated; }

    /// Why the file cannot be read, or not to its end; empty while it can.
    const std::string& Problem() const { return m_problem; }

    /// Reads the next clear text into `bytes`, up to `size`. Returns its length; 0 at the end and
    /// on failure, which Problem tells then.
    std::size_t Read(char* bytes, std::size_t size);

private:
    void ReadStart();
    std::size_t ReadRaw(char* bytes, std::size_t size);

    std::string m_path;
    Platform::FileHandle m_file = Platform::kNoFile;
    std::string m_problem;
    std::string m_start; ///< what was read to look for the marker, without it
    bool m_isObfuscated = false;
};
