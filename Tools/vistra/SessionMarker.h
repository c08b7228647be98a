#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// A marker of an open session: an empty file whose name tells all. A crash leaves it behind.
struct SessionMarker {
    std::string path;
    std::string owner;     ///< usage key, family and product, as they stand in the name
    std::string sessionId; ///< empty, as what follows, where the name is not one the library gives
    int processId = 0;
    std::string program;
    std::string time;    ///< UTC, when it was made; empty when unknown
    bool isLive = false; ///< a process of that number still runs that program
};

/// Reads the name of a marker. Whether its program runs is not looked at.
SessionMarker ParseSessionMarker(const std::string& path);

/// The markers of a folder, the oldest first. None where it cannot be listed.
std::vector<SessionMarker> ReadSessionMarkers(const std::string& folder);
