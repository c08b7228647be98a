#include "Tools/vistra/Account.h"

#include "Tools/vistra/Console.h"
#include "Tools/vistra/ShownText.h"
#include "Tools/vistra/UtcTime.h"
#include "Utility/src/RecordNames.h"

#include <numeric>

namespace {

using Console::Style;

constexpr std::size_t kTimeColumn = 11, kNameColumn = 24;

/// The document of the host's that a record is about, behind two blanks; empty for none.
std::string AboutDocument(const Record& record) {
    const std::string document = record.Value(AttributeName::kDoc);
    const bool isNone = document == RecordNames::kNoDocument || ShownText(document, "").empty();
    return isNone ? "" : "  (doc " + Console::Printable(document) + ")";
}

std::string BriefOf(RecordType type) {
    switch (type) {
    case RecordType::StartSession:
        return "The session starts";
    case RecordType::ResumeSession:
        return "The session goes on from another file";
    case RecordType::SplitSession:
        return "The session goes on in another file";
    default:
        return "The session ends";
    }
}

} // namespace

void Account::Begin(const DocumentHead& head) {
    if (head.session.id != m_session)
        m_groups.Clear();
    m_session = head.session.id;
    m_unknown = head.isResumed ? ", declared in another file" : ", not declared";
    m_start = UtcTime::Seconds(head.session.start);
    m_time.clear();
    m_group.clear();
    m_counts = {};
}

/// When a record was written, seen from the session's start; or as the record tells it, where that
/// cannot be said. It may be left out where the line before has the same.
std::string Account::TimeColumn(const Record& record, bool mayBeBlank) {
    const std::string time = record.Value(AttributeName::kTime);
    const bool isBlank = mayBeBlank && time == m_time;
    m_time = time;
    const auto seconds = UtcTime::Seconds(time);
    if (isBlank)
        return std::string(kTimeColumn, ' ');
    if (!seconds || !m_start)
        return Padded(ShownText(time), kTimeColumn);
    const std::int64_t passed = *seconds - *m_start;
    return Padded((passed < 0 ? "" : "+") + UtcTime::Span(passed), kTimeColumn);
}

void Account::TellMoment(const Record& record, const std::string& what) {
    m_out << TimeColumn(record, false) << what << '\n';
    m_group.clear();
}

void Account::Tell(const Record& record) {
    ++m_counts[static_cast<std::size_t>(record.Type())];
    switch (record.Type()) {
    case RecordType::NewGroup:
        return TellGroup(record);
    case RecordType::DataRec:
        return TellValue(record);
    case RecordType::EventRec:
        return TellMoment(record, SubjectOf(record, FaintDash()) + AboutDocument(record));
    case RecordType::NewDoc:
        return TellMoment(record, "New document " + ShownText(record.Value(AttributeName::kDoc)));
    default:
        return TellMoment(record, Console::Styled(Style::Good, BriefOf(record.Type())));
    }
}

void Account::TellGroup(const Record& record) {
    m_groups.Declare(record);
    const std::string time = TimeColumn(record, false);
    m_group = record.Written(AttributeName::kGroup);
    m_isRejectedData = IsRejectedData(record);
    m_out << time
          << Console::Styled(m_isRejectedData ? Style::Bad : Style::Heading,
                             "Group " + ShownText(m_group, "-") + ": " + SubjectOf(record) +
                                 (m_isRejectedData ? ", what the library refused or cut" : ""))
          << AboutDocument(record) << '\n';
}

/// Names the group of a value that stands apart from the group's declaration.
void Account::AnnounceGroup(const Record& record) {
    const auto number = record.Number(AttributeName::kGroup);
    const GroupNames::Group* const group = number ? m_groups.Find(*number) : nullptr;
    m_group = record.Written(AttributeName::kGroup);
    m_isRejectedData = group && group->isRejectedData;
    m_out << TimeColumn(record, false)
          << Console::Styled(m_isRejectedData ? Style::Bad : Style::Heading,
                             "Group " + ShownText(m_group, "-") +
                                 (group ? ": " + group->name + ", again" : m_unknown))
          << '\n';
}

void Account::TellValue(const Record& record) {
    if (m_group.empty() || m_group != record.Written(AttributeName::kGroup))
        AnnounceGroup(record);
    const std::string name = ShownText(record.Value(AttributeName::kName), "-");
    const std::string value = ShownText(record.Value(AttributeName::kData));
    m_out << TimeColumn(record, true) << "  " << Padded(name, kNameColumn)
          << (m_isRejectedData ? Console::Styled(Style::Bad, value) : value) << '\n';
}

void Account::End() {
    const auto count = [this](RecordType type) { return m_counts[static_cast<std::size_t>(type)]; };
    const std::uint64_t all = std::accumulate(m_counts.begin(), m_counts.end(), std::uint64_t{0});
    std::string text = Counted(all, "record");
    text.append(": ").append(Counted(count(RecordType::NewGroup), "group"));
    text.append(", ").append(Counted(count(RecordType::DataRec), "value"));
    text.append(", ").append(Counted(count(RecordType::EventRec), "event"));
    if (count(RecordType::NewDoc) > 0)
        text.append(", ").append(Counted(count(RecordType::NewDoc), "new document"));
    m_out << '\n' << Console::Styled(Style::Faint, text) << '\n';
}
