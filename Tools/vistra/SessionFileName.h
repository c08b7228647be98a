#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// What the name of a document tells.
struct SessionFileName {
    std::string product; ///< family and name as one: either may hold the separator
    std::string userId;
    std::string sessionId;              ///< empty where the name is not one that the library gives
    std::optional<std::uint32_t> index; ///< of the file in its session; none for a small document
};

/// Reads the name of the file at the path.
SessionFileName ParseSessionFileName(std::string_view path);
