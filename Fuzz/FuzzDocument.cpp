#include "Fuzz/FuzzInput.h"
#include "Tests/Support/Sandbox.h"
#include "Tests/Support/UsageDocument.h"
#include "Tools/vistra/Console.h"
#include "Tools/vistra/DocumentCheck.h"
#include "Tools/vistra/RowWriter.h"

#include <nlohmann/json.hpp>

namespace {

const std::string& Path() {
    static const Sandbox folder;
    static const std::string path = folder.Root() + "/document.xml";
    return path;
}

/// Every byte is in one piece, and every record is a row that can be read again.
void CheckPieces(const std::string& document, const SessionIdentity& session) {
    DocumentFile file(Path());
    PieceReader reader(file);
    const auto rows = MakeJsonLinesWriter(false);
    rows->SetSession(session);
    std::string whole, row;
    for (Piece piece; reader.Next(piece);) {
        whole.append(piece.text).append(piece.isEnded ? "\n" : "");
        row.clear();
        rows->AppendRow(row, Record(piece.text));
        Require(nlohmann::json::accept(row), "a row is not JSON: " + row);
        Require(std::ranges::none_of(Console::Printable(piece.text),
                                     [](char c) { return c >= 0 && c < ' '; }),
                "a control character is shown");
    }
    Require(whole == document, "the pieces do not make up the document");
}

/// Whether the check finds nothing at all.
bool IsFaultless(const DocumentHead& head) {
    bool isFaultless = head.problem.empty();
    const auto find = [&](std::uint64_t, const std::string&) { isFaultless = false; };
    const CheckReport report{find, find, {}};
    SessionState session;
    DocumentFile file(Path());
    return DocumentCheck(head, session, report).Run(file).empty() && isFaultless;
}

/// A value with a line feed is well-formed, but no parser gives it back as it is; and the strict
/// reader knows this century only.
bool IsForStrictReader(const std::string& document) {
    bool isOneLine = true;
    DocumentFile file(Path());
    PieceReader reader(file);
    for (Piece piece; reader.Next(piece);)
        isOneLine = isOneLine && piece.text.find_first_of("\n\r\t") == std::string_view::npos;
    for (std::size_t at = 0; (at = document.find("ime=\"", at)) != std::string::npos; at += 5)
        isOneLine = isOneLine && document.compare(at + 5, 2, "20") == 0;
    return isOneLine;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string document(reinterpret_cast<const char*>(bytes), size);
    WriteText(Path(), document);
    const DocumentHead head = ReadDocumentHead(Path());
    if (head.isObfuscated)
        return 0; // the same in other letters
    CheckPieces(document, head.session);
    if (IsFaultless(head) && IsForStrictReader(document))
        ReadDocument(Path());
    return 0;
}
