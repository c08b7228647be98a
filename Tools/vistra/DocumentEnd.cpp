#include "Tools/vistra/DocumentEnd.h"

#include "Platform/FileReading.h"
#include "Tools/vistra/Record.h"
#include "Utility/src/Encryption.h"

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace {

/// Holds the closing record of every document, and most last records of one that was cut short.
constexpr std::uint64_t kLooked = 8 * 1024;

constexpr std::string_view kRecordEnd = "\" />\n";
constexpr std::string_view kRootEnd = "</UsageDoc>\n";

std::string ReadTail(const std::string& path, std::uint64_t bytes) {
    std::string tail(std::min(bytes, kLooked), '\0');
    const Platform::FileHandle file = Platform::OpenFile(path, Platform::Access::Read);
    tail.resize(
        Platform::ReadFromFileAt(file, bytes - tail.size(), tail.data(), tail.size()).value_or(0));
    Platform::CloseFile(file);
    return tail;
}

/// The last whole record of the text; empty where none begins in it.
std::string_view LastRecord(std::string_view text) {
    const std::size_t end = text.rfind(kRecordEnd);
    if (end == std::string_view::npos)
        return std::string_view();
    text = text.substr(0, end + kRecordEnd.size() - 1);
    // A record of a host's texts holds no "<"; a resumed session's may, and is looked at no closer.
    const std::size_t start = text.rfind('<');
    return start == std::string_view::npos ? std::string_view() : text.substr(start);
}

DocumentEnd::Kind KindOf(RecordType closing) {
    switch (closing) {
    case RecordType::EndSession:
        return DocumentEnd::Kind::Session;
    case RecordType::SplitSession:
        return DocumentEnd::Kind::Part;
    default:
        return DocumentEnd::Kind::Open;
    }
}

} // namespace

DocumentEnd ReadDocumentEnd(const std::string& path, bool isObfuscated) {
    DocumentEnd result;
    std::error_code failure;
    const std::uintmax_t size = std::filesystem::file_size(path, failure);
    result.bytes = failure ? 0 : size;
    std::string tail = ReadTail(path, result.bytes);
    if (isObfuscated)
        Encryption::Rot47(tail);
    const Record last(LastRecord(tail));
    result.time = last.Value(AttributeName::kTime);
    if (tail.ends_with(kRootEnd))
        result.kind = KindOf(last.Type());
    return result;
}
