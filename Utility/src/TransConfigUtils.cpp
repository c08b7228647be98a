#include "Utility/src/TransConfigUtils.h"

#include "Platform/RegularExpression.h"
#include "Utility/src/ConfigFileContainer.h"
#include "Utility/src/ConfigVocabulary.h"

#include <algorithm>
#include <array>
#include <cstdlib>

using namespace ConfigVocabulary;

namespace {

constexpr char kDefaultBaseUrl[] = VISTRA_BASE_URL;
constexpr char kMakerDomain[] = VISTRA_MAKER_DOMAIN;
constexpr char kMergeOperation[] = "Merge";

struct NumberSetting {
    const char* key;
    const char* defaultText;
    long minimum;
    long maximum;
};

constexpr NumberSetting kMaxDiskSpace{kMaxDiskSpaceKey, "10", 5, 100};
constexpr NumberSetting kRetryInterval{kRetryIntervalKey, "10", 1, 60};
constexpr NumberSetting kMaxRetries{kMaxRetriesKey, "3", 1, 5};
constexpr std::array kNumberSettings{kMaxDiskSpace, kRetryInterval, kMaxRetries};

/// The number that a text begins with; 0 without one. Too large a number stays too large.
long LeadingNumber(const std::string& text) {
    return std::strtol(text.c_str(), nullptr, 10);
}

/// The setting's value, replaced by its default in the container when it is not valid.
int GetNumber(ConfigFileContainer& config, const NumberSetting& setting) {
    const long number = LeadingNumber(config.GetValue(kSettingsSection, setting.key));
    if (number >= setting.minimum && number <= setting.maximum)
        return static_cast<int>(number);
    config.SetValue(kSettingsSection, setting.key, setting.defaultText);
    return static_cast<int>(LeadingNumber(setting.defaultText));
}

/// The patterns of acceptable URLs. None is anchored.
std::array<std::string, 3> UrlPatterns() {
    std::string makersHost = "[^/]+\\.";
    for (const char character : std::string(kMakerDomain)) {
        if (character == '.')
            makersHost += '\\';
        makersHost += character;
    }
    return {"http://localhost/vistra", "http://" + makersHost + "/.*",
            "https://" + makersHost + "/.*"};
}

} // namespace

void TransConfigUtils::CreateDefaultConfig(const std::string& path) {
    if (path.empty())
        return;
    ConfigFileContainer config;
    for (const NumberSetting& setting : kNumberSettings)
        config.SetValue(kSettingsSection, setting.key, setting.defaultText);
    config.SetValue(kSettingsSection, kUrlKey, kDefaultBaseUrl);
    ForceActive(config);
    config.Write(path);
}

void TransConfigUtils::ForceActive(ConfigFileContainer& config) {
    config.SetValue(kUlogSection, kStatusKey, GetStatusString(VS_CONFIG_ACTIVE));
    config.SetValue(kUlogSection, kWakeUpDateKey, "");
}

void TransConfigUtils::ReplaceConfig(const std::string& source, const std::string& destination) {
    if (source.empty() || destination.empty())
        return;
    ConfigFileContainer config;
    config.Read(source);
    ForceActive(config);
    config.Write(destination);
}

int TransConfigUtils::GetMaxDiskSpace(ConfigFileContainer& config) {
    return GetNumber(config, kMaxDiskSpace);
}

int TransConfigUtils::GetRetryInterval(ConfigFileContainer& config) {
    return GetNumber(config, kRetryInterval);
}

int TransConfigUtils::GetMaxRetries(ConfigFileContainer& config) {
    return GetNumber(config, kMaxRetries);
}

std::string TransConfigUtils::GetBaseUrl(ConfigFileContainer& config) {
    const std::string url = config.GetValue(kSettingsSection, kUrlKey);
    return ValidUrl(url) ? url : config.SetValue(kSettingsSection, kUrlKey, kDefaultBaseUrl);
}

bool TransConfigUtils::ValidUrl(const std::string& url) {
    return std::ranges::any_of(UrlPatterns(), [&url](const std::string& pattern) {
        return IsMatch(url.c_str(), pattern.c_str());
    });
}

bool TransConfigUtils::IsMatch(const char* text, const char* pattern) {
    return text && pattern && Platform::RegularExpression(pattern).Matches(text);
}

int TransConfigUtils::Process(ConfigFileContainer& target, const std::string& update) {
    ConfigFileContainer parsed;
    parsed.Update(update);
    ConfigFileContainer replacements;
    for (const auto& [tableKey, value] : parsed.Entries()) {
        const std::string section = ConfigFileContainer::SectionOf(tableKey);
        if (parsed.GetValue(section, kOperationKey) == kMergeOperation) {
            target.SetValue(tableKey, value);
            continue;
        }
        // Entries before the update's first header belong to the section "", whose removal
        // empties the target: such an update replaces the whole configuration.
        target.RemoveSection(section);
        replacements.SetValue(tableKey, value);
    }
    for (const auto& [tableKey, value] : replacements.Entries())
        target.SetValue(tableKey, value);
    return 0;
}
