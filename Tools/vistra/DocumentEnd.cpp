#include "Tools/vistra/DocumentEnd.h"

#include "Platform/FileReading.h"
#include "Tools/vistra/PieceReader.h"
#include "Tools/vistra/Record.h"
#include "Utility/src/Encryption.h"
#include "Utility/src/UsageFileNames.h"

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

/// Of a text that ends with the root's end tag. A session whose end filled its file ends twice.
DocumentEnd::Kind KindOf(std::string_view text, RecordType closing) {
    if (closing == RecordType::EndSession)
        return DocumentEnd::Kind::Session;
    if (closing != RecordType::SplitSession)
        return DocumentEnd::Kind::Open;
    text = text.substr(0, text.rfind('<', text.size() - kRootEnd.size() - 1));
    const bool hasEnded = text.ends_with(kRootEnd);
    return hasEnded ? DocumentEnd::Kind::Session : DocumentEnd::Kind::Part;
}

/// Whether the file is what a session leaves whose end filled the file before.
bool IsLeftover(const std::string& path) {
    if (path.ends_with(UsageFileNames::kInProgressExtension))
        return false;
    DocumentFile file(path);
    PieceReader reader(file);
    std::size_t records = 0;
    bool resumes = false;
    for (Piece piece; records < 2 && reader.Next(piece);) {
        records += piece.kind == Piece::Kind::Record;
        resumes = piece.kind == Piece::Kind::Record &&
                  Record(piece.text).Type() == RecordType::ResumeSession;
    }
    return records == 1 && resumes;
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
        result.kind = KindOf(tail, last.Type());
    else if (result.bytes <= kLooked && IsLeftover(path))
        result.kind = DocumentEnd::Kind::Leftover;
    return result;
}
