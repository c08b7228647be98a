#include "Platform/UserDefaults.h"

#include "Platform/Linux/Environment.h"
#include "Platform/Linux/SystemText.h"

namespace Platform {

namespace {

/// A locale's name without its encoding; empty for the locales that name no language, and for
/// what is no text.
std::string LanguageOf(std::string locale) {
    if (const std::size_t dot = locale.find('.'); dot != std::string::npos)
        locale.erase(dot, locale.find('@', dot) - dot);
    const bool isNone = locale == "C" || locale == "POSIX" || !IsPlainText(locale);
    return isNone ? std::string() : locale;
}

/// The locale of the messages that the user reads.
std::string MessageLocale() {
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"})
        if (const std::string value = Variable(name); !value.empty())
            return LanguageOf(value);
    return std::string();
}

PropertyList::Array Languages() {
    PropertyList::Array languages;
    for (const std::string& entry : ListVariable("LANGUAGE"))
        if (std::string language = LanguageOf(entry); !language.empty())
            languages.push_back(PropertyList(std::move(language)));
    if (std::string locale = MessageLocale(); languages.empty() && !locale.empty())
        languages.push_back(PropertyList(std::move(locale)));
    return languages;
}

} // namespace

std::optional<PropertyList> UserDefault(std::string_view key) {
    if (key == kLocaleDefault)
        if (std::string locale = MessageLocale(); !locale.empty())
            return PropertyList(std::move(locale));
    if (key == kLanguagesDefault)
        if (PropertyList::Array languages = Languages(); !languages.empty())
            return PropertyList(std::move(languages));
    return std::nullopt;
}

} // namespace Platform
