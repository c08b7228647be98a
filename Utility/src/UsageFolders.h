#pragma once

/// Where the library keeps its files, below the user's Library folder.
namespace UsageFolders {

inline constexpr char kDocuments[] = "/Logs/Norvale/LogTransport2";
inline constexpr char kMarkers[] = "/Logs/Norvale/Vistra/SessionInfo/";
inline constexpr char kMarkerExtension[] = ".sif";

} // namespace UsageFolders
