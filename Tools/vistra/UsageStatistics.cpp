#include "Tools/vistra/UsageStatistics.h"

#include "LogSession/LogDataValidator.h"
#include "Tools/vistra/GroupNames.h"
#include "Tools/vistra/Html.h"
#include "Tools/vistra/SmallDocument.h"
#include "Utility/src/RecordNames.h"

#include <algorithm>

namespace {

constexpr std::size_t kLongestTextKept = 140; // hosts' texts have at most 128 bytes

std::string Kept(std::string_view text) {
    return Html::Shortened(text, kLongestTextKept);
}

std::string KeptValue(const Record& record, std::string_view attribute) {
    return Kept(record.Value(attribute));
}

SessionEnd EndOf(RecordType lastType, bool isOpen) {
    if (lastType == RecordType::EndSession)
        return SessionEnd::Finished;
    if (lastType == RecordType::SplitSession)
        return SessionEnd::Elsewhere;
    return isOpen ? SessionEnd::Open : SessionEnd::BrokenOff;
}

/// Adds what one document tells of a session to what is known of it.
void Join(SessionFigures& known, const SessionFigures& document) {
    const bool isLater = known.documents == 0 || document.lastSeq >= known.lastSeq;
    if (known.product == Product())
        known.product = document.product;
    if (!known.start)
        known.start = document.start;
    if (isLater && document.last)
        known.last = document.last;
    if (document.end == SessionEnd::Finished || (isLater && known.end != SessionEnd::Finished))
        known.end = document.end;
    known.lastSeq = std::max(known.lastSeq, document.lastSeq);
    known.events += document.events;
    known.rejected += document.rejected;
    ++known.documents;
}

} // namespace

std::optional<std::chrono::seconds> SessionFigures::Length() const {
    if (!start || !last)
        return std::nullopt;
    return std::max(*last - *start, std::chrono::seconds(0));
}

UsageStatistics::Kind UsageStatistics::KindOf(const DocumentHead& head) {
    const SessionIdentity& session = head.session;
    if (!session.id.empty() && !m_seen.emplace(Kept(session.id), head.firstSeq).second)
        return Kind::Copy;
    switch (SmallDocumentKind(session)) {
    case SmallDocument::Kind::Decision:
        return Kind::Decision;
    case SmallDocument::Kind::Crash:
        return Kind::CrashReport;
    default:
        return Kind::Session;
    }
}

void UsageStatistics::Begin(const DocumentHead& head, bool isOpen) {
    const SessionIdentity& session = head.session;
    m_kind = KindOf(head);
    m_copies += m_kind == Kind::Copy;
    m_crashReports += m_kind == Kind::CrashReport;
    if (m_kind == Kind::Session && !session.user.empty())
        m_users.insert(Kept(session.user));
    m_document = SessionFigures();
    m_document.id = Kept(session.id);
    m_document.product = {Kept(session.family), Kept(session.name), Kept(session.version)};
    m_document.start = RecordTime::Parse(session.start);
    m_isOpen = isOpen;
    m_isFinished = m_isRejection = m_hasGroup = false;
    m_lastTime.clear();
    m_lastType = RecordType::Other;
}

void UsageStatistics::Take(const Record& record) {
    m_lastType = record.Type();
    if (m_kind == Kind::Copy || m_kind == Kind::CrashReport)
        return;
    m_lastTime = record.Written(AttributeName::kTime).substr(0, 32);
    m_document.lastSeq = record.Number(AttributeName::kSeq).value_or(m_document.lastSeq);
    m_isFinished |= record.Type() == RecordType::EndSession;
    if (record.Type() == RecordType::DataRec)
        TakeData(record);
    else if (record.Type() == RecordType::EventRec)
        TakeEvent(record);
    if (record.Type() == RecordType::NewGroup) {
        m_hasGroup = true;
        m_isRejection = IsRejectedData(record);
    }
}

void UsageStatistics::TakeData(const Record& record) {
    const std::string_view name = record.Written(AttributeName::kName);
    if (m_kind == Kind::Decision && name == RecordNames::kOptInCount)
        ++(record.Written(AttributeName::kData) == "1" ? m_decisions.in : m_decisions.out);
    if (m_kind != Kind::Session || name != RecordNames::kErrorType)
        return;
    // A split may stand between the group and its records.
    const std::string type = KeptValue(record, AttributeName::kData);
    if (m_isRejection || (!m_hasGroup && (type == kInvalidString || type == kInvalidGroupId))) {
        m_rejected.Add(type);
        ++m_document.rejected;
    }
}

void UsageStatistics::TakeEvent(const Record& record) {
    if (m_kind != Kind::Session)
        return;
    ++m_document.events;
    m_events.Add({KeptValue(record, AttributeName::kCategory),
                  KeptValue(record, AttributeName::kSubcategory),
                  KeptValue(record, AttributeName::kName)});
}

void UsageStatistics::End() {
    if (m_kind != Kind::Session || m_document.id.empty())
        return;
    m_document.last = RecordTime::Parse(m_lastTime);
    m_document.end = m_isFinished ? SessionEnd::Finished : EndOf(m_lastType, m_isOpen);
    Join(Known(m_document.id), m_document);
}

SessionFigures& UsageStatistics::Known(const std::string& id) {
    const auto [place, isNew] = m_places.emplace(id, m_sessions.size());
    if (isNew)
        m_sessions.emplace_back().id = id;
    return m_sessions[place->second];
}
