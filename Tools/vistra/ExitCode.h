#pragma once

#include <algorithm>

/// What the program ends with; of several the greatest.
enum class ExitCode : int {
    Done = 0,
    Findings = 1,    ///< what was asked about is not as it should be, or recording is off
    WrongUsage = 2,  ///< nothing was done
    InputMissed = 3, ///< some input could not be read, or not to its end; the rest was processed
    NotDone = 4,     ///< output could not be written, or a change could not be made
};

inline ExitCode Worse(ExitCode a, ExitCode b) {
    return std::max(a, b);
}
