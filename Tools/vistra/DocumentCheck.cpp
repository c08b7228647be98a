#include "Tools/vistra/DocumentCheck.h"

#include "Platform/FileReading.h"
#include "Tools/vistra/SessionFileName.h"
#include "Tools/vistra/TextCheck.h"
#include "Utility/src/Mac/FileSystemUtils.h"
#include "Utility/src/StringUtils.h"
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

} // namespace

DocumentCheck::DocumentCheck(const DocumentHead& head, SessionState& state,
                             const CheckReport& report)
    : m_head(head), m_kind(SmallDocumentKind(head.session)), m_state(state), m_report(report),
      m_hadEnded(state.hasEnded) {}

std::string DocumentCheck::Run(DocumentFile& file) {
    // Before the look into it: a writer that is done meanwhile must not seem to have crashed.
    m_isInProgress = file.Path().ends_with(UsageFileNames::kInProgressExtension);
    const bool isHeld = m_isInProgress && Platform::IsHeldLocked(file.Path());
    CheckName(file.Path());
    PieceReader reader(file);
    for (Piece piece; reader.Next(piece);) {
        Handle(piece);
        if (m_report.progress)
            m_report.progress(piece.line);
    }
    if (!m_head.isHeadless)
        m_state.identity = m_head.session;
    if (!m_isClosed && file.Problem().empty()) {
        if (isHeld)
            return "is still being written; checked up to here";
        CheckBroken();
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
    if (!name.starts_with(kPrefix) || session.id.empty())
        return;
    const SessionFileName told = ParseSessionFileName(path);
    const bool isWhole = !IsSmall() && !session.user.empty() && !session.name.empty();
    if (told.sessionId != session.id || told.index.has_value() == IsSmall() ||
        (isWhole && !StringUtils::AsDocumentText(name).starts_with(
                        CommonName(session.family, session.name, session.user, session.id))))
        Depart(1, "the name does not fit the session that the document tells of");
    if (told.index)
        CheckIndex(*told.index);
}

/// Files are counted in their names, where none is missing.
void DocumentCheck::CheckIndex(std::uint32_t index) {
    const bool isStart = !m_head.isResumed && !m_head.isHeadless;
    const bool isNext = m_head.isHeadless || m_state.nextSeq == m_head.firstSeq;
    const auto belongs = isStart ? 0 : isNext ? m_state.nextIndex : std::nullopt;
    if (belongs && index != *belongs)
        Depart(1, "the name counts the file as " + Number(index) + " where " + Number(*belongs) +
                      " belongs");
    m_state.nextIndex = index + 1;
}

/// Tells of the piece that was broken off, when it turns out that this is not for its being
/// written.
void DocumentCheck::CheckBroken() {
    if (m_brokenLine > 0)
        Depart(m_brokenLine, "breaks off within a record");
    m_brokenLine = 0;
}

void DocumentCheck::Handle(const Piece& piece) {
    CheckBroken();
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
        m_brokenLine = piece.line;
        return;
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
    if (time == m_state.time && !time.empty())
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
    if (m_state.nextSeq && *seq != *m_state.nextSeq) {
        const bool isFirst = m_records == 0;
        // A file that could not be opened at once lacks the records of that time.
        if (!isFirst || !m_head.isHeadless || *seq < *m_state.nextSeq)
            Depart(piece.line, "seq " + Number(*seq) + " stands where " + Number(*m_state.nextSeq) +
                                   " belongs");
        if (isFirst && record.Type() != RecordType::StartSession)
            m_state.LoseTrack();
    }
    m_state.nextSeq = *seq + 1;
}

/// Looks at a file that its root end does not close.
void DocumentCheck::CheckEnd(std::uint64_t line) {
    const bool mayHaveEnded = m_hadEnded || !m_isFollowUp;
    if (m_records == 1 && m_head.isResumed && mayHaveEnded && !m_isInProgress)
        RemarkOnce(line, "the session had ended in the file before; this one has no end");
    else
        Depart(line,
               IsClosing(m_last) ? "the root has no end tag" : "ends before its session does");
}

void DocumentCheck::RemarkOnce(std::uint64_t line, const std::string& what) {
    if (m_remarks.insert(what).second)
        m_report.remark(line, what);
}
