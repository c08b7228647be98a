#pragma once

#include <vector>

namespace Platform {

/// Size of a display's frame in screen units.
struct DisplaySize {
    double width = 0;
    double height = 0;
};

/// The active displays of the user's screen, in the system's order. Empty, without logging, when
/// there is no display system, or when it is not of this machine or does not answer at once.
/// Returns after less than half a second whatever the display system does.
std::vector<DisplaySize> ActiveDisplays();

} // namespace Platform
