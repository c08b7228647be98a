#pragma once

#include "Platform/Files.h"

#include <ostream>
#include <streambuf>
#include <string>

/// Stream buffer over a file of the platform; every insertion goes to the file at once.
class FileStreamBuffer : public std::streambuf {
public:
    explicit FileStreamBuffer(Platform::FileHandle file) : m_file(file) {}
    ~FileStreamBuffer() override { Platform::CloseFile(m_file); }
    FileStreamBuffer(const FileStreamBuffer&) = delete;
    FileStreamBuffer& operator=(const FileStreamBuffer&) = delete;

protected:
    int_type overflow(int_type character) override;
    std::streamsize xsputn(const char* text, std::streamsize length) override;

private:
    Platform::FileHandle m_file;
};

/// Output stream over a file that is readable by its user alone and does not survive an exec. A
/// failed open leaves a stream in the bad state.
class FileStream : public std::ostream {
public:
    FileStream(const std::string& path, bool append);

private:
    FileStream(Platform::FileHandle file);

    FileStreamBuffer m_buffer;
};
