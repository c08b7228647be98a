#include "Tools/vistra/DocumentFile.h"

#include "Platform/FileReading.h"
#include "Utility/src/Encryption.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace {

constexpr std::string_view kMarker = kObfuscationMarker;

std::string WhyNotOpened(const std::string& path) {
    switch (Platform::TypeOfItem(path)) {
    case Platform::ItemType::Missing:
        return "does not exist";
    case Platform::ItemType::Folder:
        return "is a folder";
    default:
        return "cannot be read";
    }
}

} // namespace

DocumentFile::DocumentFile(std::string path)
    : m_path(std::move(path)), m_file(Platform::OpenFile(m_path, Platform::Access::Read)) {
    if (m_file == Platform::kNoFile)
        m_problem = WhyNotOpened(m_path);
    else
        ReadStart();
}

void DocumentFile::ReadStart() {
    m_start.resize(kMarker.size());
    std::size_t length = 0;
    while (length < m_start.size()) {
        const std::size_t count = ReadRaw(m_start.data() + length, m_start.size() - length);
        if (count == 0)
            break;
        length += count;
    }
    m_start.resize(length);
    m_isObfuscated = m_start == kMarker;
    if (m_isObfuscated)
        m_start.clear();
}

std::size_t DocumentFile::ReadRaw(char* bytes, std::size_t size) {
    const auto count = Platform::ReadFromFile(m_file, bytes, size);
    if (!count)
        m_problem = "cannot be read any further";
    return count.value_or(0);
}

std::size_t DocumentFile::Read(char* bytes, std::size_t size) {
    if (!m_problem.empty())
        return 0;
    if (!m_start.empty()) {
        const std::size_t count = std::min(size, m_start.size());
        std::copy_n(m_start.begin(), count, bytes);
        m_start.erase(0, count);
        return count;
    }
    const std::size_t count = ReadRaw(bytes, size);
    if (m_isObfuscated)
        Encryption::Rot47(bytes, count);
    return count;
}
