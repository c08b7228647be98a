#include "Tools/vistra/GroupNames.h"

#include "Tools/vistra/ShownText.h"
#include "Utility/src/RecordNames.h"
#include "Utility/src/StringUtils.h"

#include <iterator>
#include <utility>

namespace {

/// A longer name is no host's: the library cuts them.
constexpr std::size_t kLongestName = 4096;

bool IsOfTheLibrary(const Record& record) {
    return record.Type() == RecordType::NewGroup &&
           record.Written(AttributeName::kCategory) == RecordNames::kVistraCategory &&
           record.Written(AttributeName::kSubcategory) == kNoValue;
}

} // namespace

bool IsRejectedData(const Record& record) {
    return IsOfTheLibrary(record) &&
           record.Written(AttributeName::kName) == RecordNames::kValidationErrorsGroup;
}

std::string SubjectOf(const Record& record, std::string_view none) {
    const std::string name = ShownText(record.Value(AttributeName::kName), none);
    if (IsOfTheLibrary(record))
        return name;
    std::string subject = ShownText(record.Value(AttributeName::kCategory), none);
    subject.append(" / ").append(ShownText(record.Value(AttributeName::kSubcategory), none));
    return subject.append(" / ").append(name);
}

void GroupNames::Declare(const Record& record) {
    const auto number = record.Number(AttributeName::kGroup);
    if (!number)
        return;
    Group group{SubjectOf(record), IsRejectedData(record)};
    if (group.name.size() > kLongestName)
        group.name = "of a very long name";
    m_groups[*number] = std::move(group);
    if (m_groups.size() > kMost) // the session's own group, the first one, is used to the end
        m_groups.erase(std::next(m_groups.begin()));
}

const GroupNames::Group* GroupNames::Find(std::uint32_t number) const {
    const auto found = m_groups.find(number);
    return found == m_groups.end() ? nullptr : &found->second;
}
