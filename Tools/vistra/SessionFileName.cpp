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

/// Takes the id and the separator before it off the name. Empty, with the name left, where it ends
/// with none.
std::string TakeId(std::string_view& name) {
    const std::size_t separator = name.rfind('_');
    const std::string_view id = name.substr(separator + 1);
    if (separator == std::string_view::npos || !IsGuid(id))
        return std::string();
    name = name.substr(0, separator);
    return std::string(id);
}

} // namespace

SessionFileName ParseSessionFileName(std::string_view path) {
    std::string_view name = path.substr(path.rfind('/') + 1);
    name = name.substr(0, name.rfind('.'));
    if (!name.starts_with(UsageFileNames::kPrefix))
        return {};
    name.remove_prefix(std::string_view(UsageFileNames::kPrefix).size());
    SessionFileName parsed;
    parsed.index = TakeIndex(name);
    parsed.sessionId = TakeId(name);
    parsed.userId = TakeId(name);
    parsed.product = name;
    return parsed.sessionId.empty() ? SessionFileName() : parsed;
}
