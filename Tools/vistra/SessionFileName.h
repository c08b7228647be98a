#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// What the name of a document tells. Family and product may hold the separator, so they are told
/// by the document alone.
struct SessionFileName {
    std::string sessionId;              ///< empty where the name is not one that the library gives
    std::optional<std::uint32_t> index; ///< of the file in its session; none for a small document
};

/// Reads the name of the file at the path.
SessionFileName ParseSessionFileName(std::string_view path);
