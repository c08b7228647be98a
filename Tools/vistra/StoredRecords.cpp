#include "Tools/vistra/StoredRecords.h"

#include "Platform/Files.h"
#include "Platform/PreferenceListing.h"
#include "Utility/src/DemographicNode.h"
#include "Utility/src/PreferenceKeys.h"

#include <algorithm>

using namespace PreferenceKeys;
using Platform::PropertyList;

namespace {

const Platform::String& Domain() {
    static const Platform::String domain{kDomain};
    return domain;
}

std::vector<Platform::PreferenceFile> Files() {
    return Platform::PreferenceFiles(&Domain(), kCFPreferencesCurrentUser,
                                     kCFPreferencesCurrentHost);
}

bool IsSetting(std::string_view name) {
    return name == kObfuscate || name == kSend || name == kUserType;
}

bool HasSerialState(const PropertyList::Dictionary& values) {
    return std::ranges::any_of(
        values, [](const auto& entry) { return entry.first.ends_with(kSerialStateSuffix); });
}

RecordKind KindOf(const std::string& name, const PropertyList& value) {
    if (!value.AsDictionary()) {
        if (IsSetting(name))
            return RecordKind::Setting;
        return name == kUserGuid ? RecordKind::Identity : RecordKind::Other;
    }
    if (value.Find(kDemographic) || HasSerialState(*value.AsDictionary()))
        return RecordKind::UsageKey;
    if (value.Find(kOptIn)) // whether of a key or a version, all records together tell
        return value.Find(kDate) ? RecordKind::UsageKey : RecordKind::VersionNote;
    return value.Find(kDate) ? RecordKind::DateOnly : RecordKind::Other;
}

StoredRecord Describe(const std::string& name, const CFPropertyListRef& all,
                      const PropertyList& value) {
    StoredRecord record{
        name, KindOf(name, value), {}, {}, StoredRecords::CountAnswers(name), {all, &value}};
    if (const PropertyList* optIn = value.Find(kOptIn))
        record.optIn = optIn->AsNumber();
    if (const PropertyList* date = value.Find(kDate); date && date->AsString())
        record.date = *date->AsString();
    return record;
}

bool IsKey(const StoredRecord& record) {
    return record.kind == RecordKind::UsageKey || record.kind == RecordKind::DateOnly;
}

} // namespace

std::string StoredRecords::File() {
    const std::vector<Platform::PreferenceFile> files = Files();
    return files.empty() ? std::string() : files.front().path;
}

bool StoredRecords::IsFileBroken() {
    const std::vector<Platform::PreferenceFile> files = Files();
    return !files.empty() &&
           files.front().condition == Platform::PreferenceFile::Condition::Unparsable;
}

std::vector<std::string> StoredRecords::KeptCopies() {
    std::vector<std::string> copies;
    for (const Platform::PreferenceFile& file : Files())
        if (Platform::TypeOfItem(file.keptCopy) == Platform::ItemType::Other)
            copies.push_back(file.keptCopy);
    return copies;
}

std::optional<std::vector<StoredRecord>> StoredRecords::ReadAll() {
    CFPropertyListRef all;
    if (!Platform::CopyPreferences(&Domain(), kCFPreferencesCurrentUser, kCFPreferencesCurrentHost,
                                   all))
        return std::nullopt;
    std::vector<StoredRecord> records;
    for (const auto& [name, value] : *all->AsDictionary())
        records.push_back(Describe(name, all, value));
    for (StoredRecord& record : records)
        if (record.kind == RecordKind::VersionNote && KeyBefore(records, record.name).empty())
            record.kind = RecordKind::UsageKey;
    return records;
}

std::size_t StoredRecords::CountAnswers(const std::string& key) {
    std::vector<std::pair<std::string, std::string>> answers;
    DemographicNode(key).EnumKeyValues(answers);
    return answers.size();
}

bool StoredRecords::Remove(const StoredRecord& record) {
    const Platform::String name{record.name};
    CFPropertyListRef now;
    if (!Platform::CopyPreferenceValue(&name, &Domain(), kCFPreferencesCurrentUser,
                                       kCFPreferencesCurrentHost, now))
        return false;
    return !now ||
           (*now == *record.value &&
            Platform::SetPreferenceValue(&name, nullptr, &Domain(), kCFPreferencesCurrentUser,
                                         kCFPreferencesCurrentHost));
}

std::string StoredRecords::KeyBefore(const std::vector<StoredRecord>& records,
                                     std::string_view name) {
    std::string longest;
    for (const StoredRecord& record : records)
        if (IsKey(record) && record.name.size() > longest.size() &&
            name.starts_with(record.name + "_"))
            longest = record.name;
    return longest;
}
