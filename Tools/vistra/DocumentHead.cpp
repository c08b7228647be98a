#include "Tools/vistra/DocumentHead.h"

#include "Tools/vistra/PieceReader.h"
#include "Tools/vistra/Record.h"
#include "Tools/vistra/SessionFileName.h"
#include "Utility/src/RecordNames.h"

namespace {

/// Looks at no more than this: the Session group comes first, with a handful of records.
constexpr int kMostPieces = 64;

struct Field {
    const char* name;
    std::string SessionIdentity::*text;
};

constexpr Field kFields[] = {
    {RecordNames::kProductFamily, &SessionIdentity::family},
    {RecordNames::kProductName, &SessionIdentity::name},
    {RecordNames::kProductVersion, &SessionIdentity::version},
    {RecordNames::kProductBuild, &SessionIdentity::build},
    {RecordNames::kProductLanguage, &SessionIdentity::language},
    {RecordNames::kUser, &SessionIdentity::user},
};

void TakeOpening(const Record& record, DocumentHead& head) {
    head.session.id = record.Value(AttributeName::kId);
    head.session.start = record.Value(AttributeName::kTime);
}

void TakeResumption(const Record& record, DocumentHead& head) {
    TakeOpening(record, head);
    head.isResumed = true;
    head.session.start = record.Value(AttributeName::kSessionStartTime);
    for (const Field& field : kFields)
        head.session.*field.text = record.Value(field.name);
}

void TakeData(const Record& record, DocumentHead& head) {
    const std::string name = record.Value(AttributeName::kName);
    for (const Field& field : kFields)
        if (name == field.name)
            head.session.*field.text = record.Value(AttributeName::kData);
}

/// Takes what a record tells. False when the records behind it tell nothing about the whole.
bool Take(const Record& record, DocumentHead& head) {
    switch (record.Type()) {
    case RecordType::StartSession:
        TakeOpening(record, head);
        return true;
    case RecordType::ResumeSession:
        TakeResumption(record, head);
        return false;
    case RecordType::NewGroup:
        return record.Written(AttributeName::kName) == RecordNames::kSessionGroup;
    case RecordType::DataRec:
        TakeData(record, head);
        return true;
    default:
        return false;
    }
}

void TakeName(const std::string& path, DocumentHead& head) {
    SessionFileName name = ParseSessionFileName(path);
    head.session.id = std::move(name.sessionId);
    head.session.user = std::move(name.userId);
}

bool IsFrame(const Piece& piece) {
    return piece.kind == Piece::Kind::Prolog || piece.kind == Piece::Kind::RootStart ||
           piece.kind == Piece::Kind::EmptyLine;
}

/// A document begins with its prolog, or, where the head could not be written, with a record.
bool BeginsADocument(const Piece& piece) {
    return piece.kind == Piece::Kind::Prolog ||
           (piece.kind == Piece::Kind::Record && Record(piece.text).Type() != RecordType::Other);
}

std::string WhyNothing(const DocumentFile& file) {
    if (!file.Problem().empty())
        return file.Problem();
    return file.IsObfuscated() ? "ends behind the marker" : "is empty";
}

} // namespace

DocumentHead ReadDocumentHead(const std::string& path) {
    DocumentFile file(path);
    PieceReader reader(file);
    DocumentHead head;
    head.isObfuscated = file.IsObfuscated();
    Piece piece;
    if (!reader.Next(piece)) {
        head.problem = WhyNothing(file);
        return head;
    }
    if (!BeginsADocument(piece)) {
        head.problem = "is not a usage document";
        return head;
    }
    if (piece.kind == Piece::Kind::Record && !IsOpening(Record(piece.text).Type())) {
        head.isHeadless = true;
        TakeName(path, head);
    }
    bool isFirst = true, goesOn = true;
    for (int i = 0; goesOn && i < kMostPieces; ++i) {
        if (!IsFrame(piece)) {
            const Record record(piece.text);
            if (isFirst)
                head.firstSeq = record.Number(AttributeName::kSeq).value_or(0);
            goesOn = (!isFirst || IsOpening(record.Type())) && Take(record, head);
            isFirst = false;
        }
        goesOn = goesOn && reader.Next(piece);
    }
    return head;
}
