#include "Tools/vistra/SessionMarker.h"

#include "Platform/Files.h"
#include "Platform/Process.h"
#include "Tools/vistra/TextCheck.h"
#include "Tools/vistra/UtcTime.h"
#include "Utility/src/Mac/FileSystemUtils.h"
#include "Utility/src/UsageFolders.h"

#include <algorithm>
#include <charconv>
#include <system_error>
#include <tuple>

namespace {

constexpr std::size_t kGuidLength = 36;
constexpr std::size_t kNowhere = std::string_view::npos;

/// Takes "PROCESS_PROGRAM". False for anything else.
bool TakeProcess(std::string_view text, SessionMarker& marker) {
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, marker.processId);
    if (error != std::errc() || stop == end || *stop != '_')
        return false;
    marker.program = std::string(stop + 1, end);
    return true;
}

bool IsRunning(const SessionMarker& marker) {
    return marker.processId > 0 && FileSystemUtils::GetFileName(
                                       Platform::ProgramPathOf(marker.processId)) == marker.program;
}

} // namespace

SessionMarker ParseSessionMarker(const std::string& path) {
    SessionMarker marker;
    marker.path = path;
    std::string_view name = path;
    name = name.substr(name.rfind('/') + 1);
    name.remove_suffix(
        std::min(name.size(), std::string_view(UsageFolders::kMarkerExtension).size()));
    marker.owner = name;
    for (std::size_t at = name.find('_'); at != kNowhere; at = name.find('_', at + 1)) {
        const std::string_view id = name.substr(at + 1, kGuidLength);
        const std::string_view rest = name.substr(std::min(name.size(), at + 1 + kGuidLength));
        if (IsGuid(id) && rest.starts_with('_') && TakeProcess(rest.substr(1), marker)) {
            marker.owner = name.substr(0, at);
            marker.sessionId = id;
            break;
        }
    }
    return marker;
}

std::vector<SessionMarker> ReadSessionMarkers(const std::string& folder) {
    std::vector<SessionMarker> markers;
    const auto entries = Platform::ListFolder(folder);
    for (const auto& entry : entries.value_or(std::vector<Platform::FolderEntry>())) {
        if (entry.isFolder || !entry.name.ends_with(UsageFolders::kMarkerExtension))
            continue;
        SessionMarker marker =
            ParseSessionMarker(FileSystemUtils::AppendPathElement(folder, entry.name));
        if (const auto time = Platform::ModificationTime(marker.path))
            marker.time = UtcTime::Text(time->seconds);
        marker.isLive = IsRunning(marker);
        markers.push_back(std::move(marker));
    }
    std::ranges::sort(markers, {}, [](const SessionMarker& marker) {
        return std::tie(marker.time, marker.path);
    });
    return markers;
}
