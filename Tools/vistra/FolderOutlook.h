#pragma once

#include <string>

/// Whether a folder of the library is there, or what would become of an attempt to make it.
struct FolderOutlook {
    enum class State { There, WouldBeMade, CannotBe };

    State state = State::CannotBe;
    std::string folder;
    std::string nearest;  ///< itself, or the nearest folder above it that is there
    std::string obstacle; ///< what would give way to it, or what it cannot be made for
};

/// Looks at a folder below one of the user's standard folders, by that one's type.
FolderOutlook LookAtFolder(unsigned type, const std::string& relative);
