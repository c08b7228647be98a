#pragma once

#include <cstdint>

/// Where the library keeps its files, below the user's Library folder.
namespace UsageFolders {

inline constexpr char kDocuments[] = "/Logs/Norvale/LogTransport2";
/// Where an agent may keep what it has collected: the name of a folder beside that of the
/// documents.
inline constexpr char kCollected[] = "Collected";
/// A session is recorded only where more than this is free.
inline constexpr std::uint64_t kMinimumFreeBytes = 10'485'760;

inline constexpr char kMarkers[] = "/Logs/Norvale/Vistra/SessionInfo/";
inline constexpr char kMarkerExtension[] = ".sif";

// The library's own log.
inline constexpr char kLogs[] = "/Logs/Norvale/Vistra/";
inline constexpr char kLogPrefix[] = "VSLog-";
inline constexpr char kLogExtension[] = ".txt";

} // namespace UsageFolders
