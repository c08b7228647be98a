// The part of the check that looks at records in their order: what opens and closes a file, and
// what has to be declared before it is used.

#include "Tools/vistra/DocumentCheck.h"
#include "Tools/vistra/TextCheck.h"
#include "Utility/src/UsageRecord.h"

#include <algorithm>

using namespace AttributeName;

namespace {

std::string Number(std::uint64_t number) {
    return std::to_string(number);
}

/// Whether the record is what the library writes to go on with the session. Its texts stand there
/// unescaped, so that it cannot be told for sure where one ends.
bool Resumes(const Record& record, const SessionIdentity& session) {
    RecordBuffer expected;
    UsageRecord::AppendResumeSession(expected,
                                     {session.id, session.family, session.name, session.version,
                                      session.build, session.language, session.start, session.user},
                                     record.Written(kTime), record.Number(kSeq).value_or(0));
    return std::string(record.Text()) + "\n" == expected.View();
}

/// Whether the text would have had to be escaped elsewhere.
bool HoldsMarkup(std::string_view text) {
    return text.find_first_of("&<>\"") != std::string_view::npos;
}

} // namespace

void DocumentCheck::CheckPlace(const Piece& piece, const Record& record) {
    const bool isFirst = m_records == 0;
    if (isFirst && m_head.isHeadless)
        RemarkOnce(piece.line, "no head: the file could not be opened at once after a split");
    else if (isFirst && !m_isHeadWhole)
        Depart(piece.line, "the head is not whole");
    else if (isFirst != IsOpening(record.Type()))
        Depart(piece.line, std::string(record.Tag()) +
                               (isFirst ? " stands first in the file" : " stands within the file"));
    if (m_isClosed && m_last == RecordType::EndSession && record.Type() == RecordType::SplitSession)
        RemarkOnce(piece.line, "the session's end brought the file to its limit: a second end");
    else if (m_isClosed || m_last == RecordType::EndSession || m_last == RecordType::SplitSession)
        Depart(piece.line, std::string(record.Tag()) + " stands behind the end of the document");
    else if (m_hadEnded && m_records == 1)
        Depart(piece.line, std::string(record.Tag()) + " stands behind the end of the session");
    CheckIdentity(piece, record);
}

void DocumentCheck::CheckIdentity(const Piece& piece, const Record& record) {
    const bool bearsId = record.Type() <= RecordType::ResumeSession;
    const std::string_view id = record.Written(kId);
    if (bearsId && !IsGuid(id))
        Depart(piece.line, "'" + std::string(id.substr(0, 40)) + "' is no session id");
    else if (bearsId && !m_head.session.id.empty() && id != m_head.session.id)
        Depart(piece.line, std::string(record.Tag()) + " bears the id of another session");
    if (record.Type() == RecordType::StartSession)
        CheckStart(piece, record);
    if (record.Type() == RecordType::ResumeSession)
        CheckResumption(piece, record);
}

void DocumentCheck::CheckStart(const Piece& piece, const Record& record) {
    m_state.startBlock.emplace(m_kind);
    m_state.nextGroup = IsSmall() ? 0 : 1;
    if (record.Number(kSeq).value_or(0) != 0)
        Depart(piece.line, "a session begins with seq 0");
}

void DocumentCheck::CheckResumption(const Piece& piece, const Record& record) {
    m_isFollowUp = m_state.nextSeq.has_value();
    if (!m_isFollowUp)
        RemarkOnce(piece.line, "the session's files before this one were not given");
    else if (!m_state.identity.start.empty() && !Resumes(record, m_state.identity))
        Depart(piece.line, "ResumeSession differs from what the file before told of the session");
    if (!IsTime(record.Written(kSessionStartTime)) || !IsGuid(record.Written(kUser)))
        Depart(piece.line, "SessionStartTime or User is not what it should be");
    if (std::ranges::any_of(record.Attributes(),
                            [](const Attribute& attribute) { return attribute.written.empty(); }))
        Depart(piece.line, "a product text is missing");
    if (std::ranges::any_of(record.Attributes(), [](const Attribute& attribute) {
            return HoldsMarkup(attribute.written);
        }))
        RemarkOnce(piece.line, "product texts that are not escaped: no XML parser reads this");
}

void DocumentCheck::CheckGroup(const Piece& piece, const Record& record) {
    const auto group = record.Number(kGroup);
    if (!group)
        return;
    auto& next = m_state.nextGroup;
    if (record.Type() == RecordType::NewGroup) {
        if (next && *group != *next)
            Depart(piece.line,
                   "group " + Number(*group) + " is declared where " + Number(*next) + " belongs");
        next = *group + 1;
    } else if (*group == 0 && !IsSmall()) {
        RemarkOnce(piece.line, "group 0 is used, which is never declared");
    } else if (next && *group >= *next) {
        Depart(piece.line, "group " + Number(*group) + " is used before it is declared");
    }
}

void DocumentCheck::CheckStandardGroups(const Piece& piece, const Record& record) {
    if (!m_state.startBlock || record.Type() == RecordType::StartSession)
        return;
    const std::string departure = m_state.startBlock->Take(record);
    if (!departure.empty())
        Depart(piece.line, departure);
}
