#include "Utility/src/Mac/FileProxy.h"

#include "Utility/src/Mac/FileSystemUtils.h"

bool FileProxy::Open(const std::string& path) {
    Close();
    m_file = Platform::OpenLockedFile(path);
    return IsExist();
}

bool FileProxy::Write(std::string_view text) {
    return IsExist() && Platform::WriteToFile(m_file, text);
}

void FileProxy::Close() {
    Platform::CloseFile(m_file);
    m_file = Platform::kNoFile;
}

bool FileProxy::IsValidPath(const std::string& path) {
    return FileSystemUtils::DoesPathExist(path) && !FileSystemUtils::IsDirectory(path);
}
