#include "Utility/src/TransConfigUtils.h"

#include "Utility/src/ConfigFileContainer.h"
#include "Utility/src/ConfigVocabulary.h"
#include "Utility/src/Mac/FileSystemUtils.h"
#include "Utility/src/StringUtils.h"

#include <boost/date_time/date_parsing.hpp>
#include <boost/date_time/gregorian/gregorian_types.hpp>

#include <algorithm>
#include <optional>
#include <string_view>

using namespace ConfigVocabulary;

namespace {

using Date = boost::gregorian::date;

struct StateName {
    VS_CONFIG_STATE state;
    const char* text;
};

/// The first one stands for every value and text that is not listed.
constexpr StateName kStateNames[] = {
    {VS_CONFIG_ACTIVE, "Active"},
    {VS_CONFIG_DISABLED, "Disabled"},
    {VS_CONFIG_HIBERNATE, "Hibernate"},
};

/// Whether the date parser may have the text: it computes with each character of year, month and
/// day as with a digit before it looks whether it is one, which overflows with those far from
/// digits.
bool IsParsable(std::string_view text) {
    constexpr std::string_view kSeparators = ",-. /";
    for (int part = 0; part < 3 && !text.empty(); ++part) {
        text.remove_prefix(std::min(text.find_first_not_of(kSeparators), text.size()));
        const std::string_view word = text.substr(0, text.find_first_of(kSeparators));
        if (std::ranges::any_of(word, [](char c) { return c < '0' || c > '~'; }))
            return false;
        text.remove_prefix(word.size());
    }
    return true;
}

/// A date that is written year first; nothing when it cannot be read.
std::optional<Date> ParseDate(const std::string& text) {
    if (!IsParsable(text))
        return std::nullopt;
    try {
        const Date date = boost::date_time::parse_date<Date>(text, boost::date_time::ymd_order_iso);
        return date.is_special() ? std::nullopt : std::optional(date);
    } catch (...) { // the parser does not say all that it throws
        return std::nullopt;
    }
}

/// The wake-up date of a product's entry.
std::string DateOfEntry(const std::string& entry) {
    const std::size_t bar = entry.find('|');
    return bar == std::string::npos ? std::string() : entry.substr(bar + 1);
}

/// Removes an entry, also one whose key holds the delimiter of table keys, as the name of a
/// product may.
void RemoveEntry(ConfigFileContainer& config, const std::string& section, const std::string& key) {
    config.SetValue(ConfigFileContainer::TableKey(StringUtils::Trim(section, kBlanks),
                                                  StringUtils::Trim(key, kBlanks)),
                    "");
}

} // namespace

int TransConfigUtils::GetStatus(const std::string& family, const std::string& name,
                                const std::string& path, const std::string& section,
                                VS_CONFIG_STATE* state, unsigned* reserved) {
    if (!state || path.empty())
        return 1;
    ConfigFileContainer config;
    const bool wasRead = config.Read(path) != ConfigFileContainer::kFailure;
    GetOverallStatus(config, section, state, reserved);
    if (*state == VS_CONFIG_ACTIVE)
        GetProductStatus(family, name, config, kHibernateSection, state, reserved);
    // A missing file is created. One that is there but could not be read is not the table's to
    // replace: what the user has set would be gone.
    if (wasRead || !FileSystemUtils::DoesPathExist(path))
        config.Write(path);
    return 0;
}

int TransConfigUtils::GetOverallStatus(ConfigFileContainer& config, const std::string& section,
                                       VS_CONFIG_STATE* state, unsigned*) {
    if (!state)
        return 1;
    *state = GetStateFromString(config.GetValue(section, kStatusKey));
    if (*state == VS_CONFIG_HIBERNATE) {
        *state = GetHibernateState(config.GetValue(section, kWakeUpDateKey));
        if (*state == VS_CONFIG_ACTIVE)
            config.SetValue(section, kWakeUpDateKey, "");
    }
    if (*state == VS_CONFIG_ACTIVE)
        config.SetValue(section, kStatusKey, GetStatusString(*state));
    return 0;
}

int TransConfigUtils::GetProductStatus(const std::string& family, const std::string& name,
                                       ConfigFileContainer& config, const std::string& section,
                                       VS_CONFIG_STATE* state, unsigned*) {
    const std::string key = family + "_" + name;
    const std::string entry = config.GetValue(section, key);
    if (!state || entry.empty())
        return 0;
    *state = GetHibernateState(DateOfEntry(entry));
    if (*state == VS_CONFIG_ACTIVE)
        RemoveEntry(config, section, key);
    return 0;
}

VS_CONFIG_STATE TransConfigUtils::GetHibernateState(const std::string& date) {
    const std::optional<Date> wakeUp = ParseDate(date);
    return wakeUp && *wakeUp > boost::gregorian::day_clock::local_day() ? VS_CONFIG_HIBERNATE
                                                                        : VS_CONFIG_ACTIVE;
}

VS_CONFIG_STATE TransConfigUtils::GetStateFromString(const std::string& text) {
    for (const StateName& name : kStateNames)
        if (text == name.text)
            return name.state;
    return kStateNames[0].state;
}

std::string TransConfigUtils::GetStatusString(VS_CONFIG_STATE state) {
    for (const StateName& name : kStateNames)
        if (state == name.state)
            return name.text;
    return kStateNames[0].text;
}

std::string TransConfigUtils::GetUlogStatus(ConfigFileContainer& config) {
    VS_CONFIG_STATE state = VS_CONFIG_ACTIVE;
    GetOverallStatus(config, kUlogSection, &state, nullptr);
    return GetStatusString(state);
}
