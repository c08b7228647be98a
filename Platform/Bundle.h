#pragma once

#include "Platform/PropertyList.h"

#include <memory>
#include <string>

namespace Platform {

/// A program or library folder with its information dictionary.
struct Bundle {
    std::string location;   ///< absolute path, no trailing delimiter
    CFPropertyListRef info; ///< never null; empty where there is no readable Info.plist
    std::string identifier; ///< empty where the dictionary has no string identifier
};

} // namespace Platform

/// A shared bundle; null where there is none.
using CFBundleRef = std::shared_ptr<const Platform::Bundle>;

namespace Platform {

/// The bundle of this library among the loaded ones.
inline constexpr char kLibraryBundleIdentifier[] = "com.norvale.vistra.LogSessionFramework";

/// The running program's bundle; null when the system does not tell which program runs.
CFBundleRef MainBundle();

/// The bundle of a program's file, given by its absolute path; null when its information cannot be
/// read just now.
CFBundleRef BundleOfProgram(const std::string& program);

/// Where the main bundle is, without a look at its information; empty when there is none.
std::string MainBundleLocation();

/// The loaded bundle with that identifier: the main bundle or this library. Else null.
CFBundleRef LoadedBundle(const std::string& identifier);

/// The bundle at a folder, as it is now. Returns null when there is no such folder.
CFBundleRef BundleAtPath(const std::string& path);

} // namespace Platform
