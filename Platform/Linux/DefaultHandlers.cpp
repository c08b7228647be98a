#include "Platform/DefaultHandlers.h"

#include "Platform/Linux/EnvironmentFolders.h"
#include "Platform/Linux/FileCache.h"
#include "Platform/Linux/SystemText.h"

namespace Platform {

namespace {

constexpr char kListFile[] = "/mimeapps.list"; // below the user's configuration folder
constexpr char kChosenSection[] = "[Default Applications]";
constexpr std::string_view kSchemePrefix = "x-scheme-handler/";
constexpr std::size_t kMaximumBytes = 1 << 20;

/// The first program of a list that its separators end.
std::string_view FirstProgram(std::string_view list) {
    std::string_view first;
    while (first.empty() && !list.empty())
        first = Trimmed(TakeUntil(';', list));
    return first;
}

/// Appends what one line of the chosen programs says about a scheme, if it does.
void AppendHandler(std::string_view line, PropertyList::Array& handlers) {
    const std::size_t equals = line.find('=');
    const std::string_view type = Trimmed(line.substr(0, equals));
    if (equals == std::string_view::npos || !type.starts_with(kSchemePrefix))
        return;
    const std::string scheme(type.substr(kSchemePrefix.size()));
    const std::string program(FirstProgram(line.substr(equals + 1)));
    if (program.empty() || !IsPlainText(program) || !IsPlainText(scheme))
        return;
    PropertyList::Dictionary handler;
    handler[kHandlerScheme] = PropertyList(scheme);
    handler[kHandlerProgram] = PropertyList(program);
    handlers.push_back(PropertyList(std::move(handler)));
}

std::optional<PropertyList> ReadHandlers(const std::string& text) {
    if (text.size() > kMaximumBytes)
        return std::nullopt;
    PropertyList::Array handlers;
    bool isChosen = false;
    for (std::string_view lines = text; !lines.empty();) {
        const std::string_view line = Trimmed(TakeUntil('\n', lines));
        if (line.starts_with('['))
            isChosen = line == kChosenSection;
        else if (isChosen)
            AppendHandler(line, handlers);
    }
    return PropertyList(std::move(handlers));
}

} // namespace

CFPropertyListRef DefaultHandlers() {
    const std::string folder = ConfigHome();
    if (folder.empty())
        return nullptr;
    FileState list = ReadFileState(folder + kListFile, ReadHandlers);
    return list.condition == FileState::Condition::Readable ? std::move(list.values) : nullptr;
}

} // namespace Platform
