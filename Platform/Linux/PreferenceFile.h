#pragma once

#include "Platform/Linux/Descriptor.h"
#include "Platform/PropertyList.h"

#include <string>

namespace Platform {

/// Follows the name of a file that could not be parsed, which is kept so.
inline constexpr char kKeptCopyExtension[] = ".corrupt";

/// Replaces a preference file; one that could not be parsed is kept beside it. A new file gets the
/// permissions. The caller holds its lock. False, with the old file in place, on any failure.
bool WritePreferenceFile(const std::string& path, const PropertyList& values, bool keepOld,
                         mode_t permissions);

/// The right to write a preference file, which one writer of all processes has at a time.
class PreferenceLock {
public:
    /// Waits for up to two seconds.
    explicit PreferenceLock(const std::string& preferenceFile);
    ~PreferenceLock();
    PreferenceLock(const PreferenceLock&) = delete;
    PreferenceLock& operator=(const PreferenceLock&) = delete;

    bool IsHeld() const { return m_held; }

private:
    Descriptor m_file;
    bool m_held = false;
};

} // namespace Platform
