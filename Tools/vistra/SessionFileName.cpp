#include "Tools/vistra/SessionFileName.h"

#include "Tools/vistra/TextCheck.h"
#include "Utility/src/UsageFileNames.h"

#include <charconv>
#include <system_error>

namespace {

/// Takes the index and the separator before it off the name, if it ends so.
std::optional<std::uint32_t> TakeIndex(std::string_view& name) {
    const std::size_t separator = name.rfind('_');
    if (separator == std::string_view::npos)
        return std::nullopt;
    std::uint32_t index = 0;
    const char* const end = name.data() + name.size();
    const auto [stop, error] = std::from_chars(name.data() + separator + 1, end, index);
    if (error != std::errc() || stop != end)
        return std::nullopt;
    name = name.substr(0, separator);
    return index;
}

} // namespace

SessionFileName ParseSessionFileName(std::string_view path) {
    std::string_view name = path.substr(path.rfind('/') + 1);
    name = name.substr(0, name.rfind('.'));
    if (!name.starts_with(UsageFileNames::kPrefix))
        return {};
    SessionFileName parsed;
    parsed.index = TakeIndex(name);
    const std::size_t separator = name.rfind('_');
    const std::string_view id = name.substr(separator + 1);
    if (!IsGuid(id))
        return {};
    parsed.sessionId = id;
    return parsed;
}
