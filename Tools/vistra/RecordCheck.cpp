#include "Tools/vistra/RecordCheck.h"

#include "Utility/src/UsageRecord.h"

#include <algorithm>
#include <array>
#include <climits>

using namespace AttributeName;

namespace {

std::string Quoted(std::string_view text) {
    constexpr std::size_t kShown = 24;
    return std::string("'").append(text.substr(0, kShown)).append("'");
}

std::string NamesOf(const Record& record) {
    std::string names;
    for (const Attribute& attribute : record.Attributes())
        names.append(names.empty() ? "" : ", ").append(attribute.name);
    return names.empty() ? "none" : names;
}

/// Names the first place where the two texts part.
std::string Difference(const Record& record, std::string_view expected) {
    const std::string tag(record.Tag());
    const std::string names = NamesOf(record), expectedNames = NamesOf(Record(expected));
    if (names != expectedNames)
        return tag + ": the attributes are " + names + "; they should be " + expectedNames;
    const std::string_view text = record.Text();
    const auto [at, other] = std::ranges::mismatch(text, expected);
    const auto offset = static_cast<std::size_t>(at - text.begin());
    std::string difference = tag + ": at byte ";
    difference.append(std::to_string(offset + 1)).append(" stands ");
    return difference + Quoted(text.substr(offset)) + "; it should be " +
           Quoted(expected.substr(offset));
}

/// How a record at either end of a file is composed; null for all other records.
decltype(&UsageRecord::AppendStartSession) BoundaryComposer(RecordType type) {
    switch (type) {
    case RecordType::StartSession:
        return &UsageRecord::AppendStartSession;
    case RecordType::EndSession:
        return &UsageRecord::AppendEndSession;
    case RecordType::SplitSession:
        return &UsageRecord::AppendSplitSession;
    default:
        return nullptr;
    }
}

} // namespace

std::string RecordCheck::Departure(const Record& record) {
    if (!record.IsWhole())
        return std::string(record.Tag()) + ": its attributes cannot be read";
    m_composed.Clear();
    if (!Compose(record))
        return std::string(record.Tag()) +
               ": its seq or group is missing, or is not a plain number";
    std::string_view expected = m_composed.View();
    expected.remove_suffix(1); // the line feed
    return record.Text() == expected ? std::string() : Difference(record, expected);
}

/// Composes the record from its values. False where a number is none.
bool RecordCheck::Compose(const Record& record) {
    const auto seq = record.Number(kSeq);
    const auto group = record.Number(kGroup);
    const bool hasGroup =
        record.Type() == RecordType::DataRec || record.Type() == RecordType::NewGroup;
    if (!seq || (hasGroup && (!group || *group > INT_MAX)))
        return false;
    const std::string_view time = record.Written(kTime);
    if (const auto append = BoundaryComposer(record.Type()))
        append(m_composed, record.Written(kId), time, *seq);
    else if (record.Type() == RecordType::ResumeSession)
        ComposeResumption(record, *seq);
    else
        ComposeContent(record, time, static_cast<int>(group.value_or(0)), *seq);
    return true;
}

void RecordCheck::ComposeResumption(const Record& record, std::uint32_t seq) {
    std::array<std::string, kResumptionAttributes.size()> t;
    for (std::size_t i = 0; i < t.size(); ++i)
        t[i] = record.Written(kResumptionAttributes[i]);
    UsageRecord::AppendResumeSession(m_composed, {t[0], t[1], t[2], t[3], t[4], t[5], t[6], t[7]},
                                     record.Written(kTime), seq);
}

void RecordCheck::ComposeContent(const Record& record, std::string_view time, int group,
                                 std::uint32_t seq) {
    const auto text = [&](std::string_view attribute, std::size_t room) {
        return record.Value(attribute, m_rooms[room]);
    };
    if (record.Type() == RecordType::DataRec)
        return UsageRecord::AppendDataRec(m_composed, time, group, text(kName, 0), text(kData, 1),
                                          seq);
    if (record.Type() == RecordType::NewDoc)
        return UsageRecord::AppendNewDoc(m_composed, text(kDoc, 0), time, seq);
    const UsageRecord::Subject subject{text(kCategory, 0), text(kSubcategory, 1), text(kName, 2),
                                       text(kDoc, 3)};
    if (record.Type() == RecordType::EventRec)
        UsageRecord::AppendEventRec(m_composed, subject, time, seq);
    else
        UsageRecord::AppendNewGroup(m_composed, subject, time, group, seq);
}
