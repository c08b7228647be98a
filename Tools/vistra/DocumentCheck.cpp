#include "Tools/vistra/DocumentCheck.h"

#include "Platform/FileReading.h"
#include "Tools/vistra/TextCheck.h"
#include "Utility/src/Mac/FileSystemUtils.h"
#include "Utility/src/RecordNames.h"
#include "Utility/src/UsageFileNames.h"
#include "Utility/src/UsageRecord.h"

#include <algorithm>
#include <vector>

using namespace AttributeName;

namespace {

std::string Number(std::uint64_t number) {
    return std::to_string(number);
}

/// The lines that every file begins with.
const std::vector<std::string>& HeadLines() {
    static const std::vector<std::string> lines = [] {
        RecordBuffer head;
        UsageRecord::AppendHead(head);
        std::vector<std::string> split;
        std::string_view rest = head.View();
        for (std::size_t end; (end = rest.find('\n')) != rest.npos; rest.remove_prefix(end + 1))
            split.emplace_back(rest.substr(0, end));
        return split;
    }();
    return lines;
}

bool IsSmallDocument(const SessionIdentity& session) {
    return (session.family == RecordNames::kOptInRateFamily &&
            session.name == RecordNames::kOptInRateProduct) ||
           (session.family == RecordNames::kVistraCategory &&
            session.name == RecordNames::kAppCrash);
}

bool IsClosing(RecordType type) {
    return type == RecordType::EndSession || type == RecordType::SplitSession;
}

} // namespace

DocumentCheck::DocumentCheck(const DocumentHead& head, SessionState& state,
                             const CheckReport& report)
    : m_head(head), m_state(state), m_report(report), m_isSmall(IsSmallDocument(head.session)) {}

std::string DocumentCheck::Run(DocumentFile& file) {
    CheckName(file.Path());
    PieceReader reader(file);
    for (Piece piece; reader.Next(piece);) {
        Handle(piece);
        if (m_report.progress)
            m_report.progress(piece.line);
    }
    m_state.identity = m_head.session;
    if (!m_isClosed && file.Problem().empty()) {
        if (Platform::IsHeldLocked(file.Path()))
            return "is still being written; checked up to here";
        CheckEnd(reader.Line());
    }
    return file.Problem();
}

/// The name tells the agent whose document it is, and how to read it.
void DocumentCheck::CheckName(const std::string& path) {
    using namespace UsageFileNames;
    const std::string name = FileSystemUtils::GetFileName(path);
    const bool isFinished = name.ends_with(kPlainExtension) || name.ends_with(kObfuscatedExtension);
    if (isFinished && !name.ends_with(FinishedExtension(m_head.isObfuscated)))
        Depart(1, std::string("the name does not fit a document that is ") +
                      (m_head.isObfuscated ? "obfuscated" : "in clear"));
    const SessionIdentity& session = m_head.session;
    if (name.starts_with(kPrefix) && !m_isSmall && !session.user.empty() &&
        !name.starts_with(CommonName(session.family, session.name, session.user, session.id)))
        Depart(1, "the name does not fit the session that the document tells of");
}

void DocumentCheck::Handle(const Piece& piece) {
    if (!piece.isEnded && piece.kind != Piece::Kind::EmptyLine &&
        piece.kind != Piece::Kind::Broken && piece.kind != Piece::Kind::TooLong)
        Depart(piece.line, "no line ends behind " + std::string(piece.text.substr(0, 24)));
    switch (piece.kind) {
    case Piece::Kind::Prolog:
    case Piece::Kind::EmptyLine:
    case Piece::Kind::RootStart:
        return HandleFrame(piece);
    case Piece::Kind::RootEnd:
        return HandleRootEnd(piece);
    case Piece::Kind::Record:
        return HandleRecord(piece);
    case Piece::Kind::Broken:
        return Depart(piece.line, "breaks off within a record");
    case Piece::Kind::TooLong:
        return Depart(piece.line, "a record is too long to be checked");
    case Piece::Kind::Text:
        return Depart(piece.line, "text stands between the records");
    }
}

void DocumentCheck::HandleFrame(const Piece& piece) {
    const auto& lines = HeadLines();
    if (m_frameLines < lines.size() && m_records == 0) {
        if (piece.text != lines[m_frameLines])
            Depart(piece.line, "the head has '" + std::string(piece.text.substr(0, 60)) +
                                   "' where it should have '" + lines[m_frameLines] + "'");
        m_isHeadWhole = ++m_frameLines == lines.size();
        return;
    }
    Depart(piece.line, piece.kind == Piece::Kind::EmptyLine ? "an empty line between the records"
                                                            : "a second head");
}

void DocumentCheck::HandleRootEnd(const Piece& piece) {
    RecordBuffer expected;
    UsageRecord::AppendRootEnd(expected);
    if (std::string(piece.text) + "\n" != expected.View())
        return Depart(piece.line, "an end tag that is not that of the root");
    if (m_isClosed || !IsClosing(m_last))
        Depart(piece.line, "the root ends without EndSession or SplitSession before it");
    m_isClosed = true;
}

void DocumentCheck::HandleRecord(const Piece& piece) {
    const Record record(piece.text);
    if (record.Type() == RecordType::Other)
        return Depart(piece.line,
                      "no record is called '" + std::string(record.Tag().substr(0, 40)) + "'");
    CheckCharacters(piece);
    if (const std::string departure = m_recordCheck.Departure(record); !departure.empty())
        Depart(piece.line, departure);
    CheckPlace(piece, record);
    CheckTime(piece, record);
    CheckSeq(piece, record);
    CheckGroup(piece, record);
    CheckStandardGroups(piece, record);
    m_last = record.Type();
    m_state.hasEnded = m_state.hasEnded || m_last == RecordType::EndSession;
    m_isClosed = false;
    ++m_records;
}

void DocumentCheck::CheckCharacters(const Piece& piece) {
    const auto found = FindForbiddenCharacter(piece.text);
    if (!found)
        return;
    const std::string_view before = piece.text.substr(0, found->at);
    Depart(piece.line + static_cast<std::uint64_t>(std::ranges::count(before, '\n')),
           "XML cannot carry " + found->what + ", at byte " + Number(found->at + 1) +
               " of the record");
}

void DocumentCheck::CheckTime(const Piece& piece, const Record& record) {
    const std::string_view time = record.Written(kTime);
    if (time == m_state.time)
        return;
    if (!IsTime(time))
        return Depart(piece.line, "'" + std::string(time.substr(0, 30)) + "' is no time");
    if (time < m_state.time)
        RemarkOnce(piece.line, "the clock was set back");
    m_state.time = time;
}

void DocumentCheck::CheckSeq(const Piece& piece, const Record& record) {
    const auto seq = record.Number(kSeq);
    if (!seq)
        return; // told of already
    if (m_state.nextSeq && *seq != *m_state.nextSeq)
        Depart(piece.line,
               "seq " + Number(*seq) + " stands where " + Number(*m_state.nextSeq) + " belongs");
    m_state.nextSeq = *seq + 1;
}

/// Looks at a file that its root end does not close.
void DocumentCheck::CheckEnd(std::uint64_t line) {
    if (m_records == 1 && m_head.isResumed && (m_state.hasEnded || !m_isFollowUp))
        RemarkOnce(line, "the session had ended in the file before; this one has no end");
    else
        Depart(line,
               IsClosing(m_last) ? "the root has no end tag" : "ends before its session does");
}

void DocumentCheck::RemarkOnce(std::uint64_t line, const std::string& what) {
    if (m_remarks.insert(what).second)
        m_report.remark(line, what);
}
