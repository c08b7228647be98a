#include "Tools/vistra/SmallDocument.h"

#include "Tools/vistra/PieceReader.h"
#include "Tools/vistra/Record.h"
#include "Utility/src/RecordNames.h"

namespace {

constexpr int kMostPieces = 32;

std::string InWords(const std::string& change) {
    if (change == "1")
        return "agreed";
    if (change == "0")
        return "refused";
    return change == "-1" ? "withdrawn" : change;
}

void Take(const Record& record, SmallDocument& document) {
    using namespace RecordNames;
    const std::string name = record.Value(AttributeName::kName);
    const std::string data = record.Value(AttributeName::kData);
    if (name == kOptInProductFamily || name == kCrashProductFamily)
        document.product.family = data;
    else if (name == kOptInProductName || name == kCrashProductName)
        document.product.name = data;
    else if (name == kOptInProductVersion)
        document.product.version = data;
    else if (name == kOptInCount)
        document.change = InWords(data);
}

} // namespace

SmallDocument::Kind SmallDocumentKind(const SessionIdentity& identity) {
    using namespace RecordNames;
    if (!identity.user.empty()) // a host may call its product so, but its sessions name a user
        return SmallDocument::Kind::None;
    if (identity.family == kOptInRateFamily && identity.name == kOptInRateProduct)
        return SmallDocument::Kind::Decision;
    if (identity.family == kVistraCategory && identity.name == kAppCrash)
        return SmallDocument::Kind::Crash;
    return SmallDocument::Kind::None;
}

SmallDocument ReadSmallDocument(const std::string& path, SmallDocument::Kind kind) {
    SmallDocument document;
    document.kind = kind;
    DocumentFile file(path);
    PieceReader reader(file);
    Piece piece;
    for (int i = 0; i < kMostPieces && reader.Next(piece); ++i)
        if (piece.kind == Piece::Kind::Record)
            Take(Record(piece.text), document);
    return document;
}
