#include "Tools/vistra/Listing.h"

#include <algorithm>
#include <utility>

const SessionMarker* Listing::MarkerOf(const std::string& sessionId) const {
    const auto found = std::ranges::find(markers, sessionId, &SessionMarker::sessionId);
    return found == markers.end() || sessionId.empty() ? nullptr : &*found;
}

std::vector<SessionMarker> Listing::LoneMarkers() const {
    std::vector<SessionMarker> lone = markers;
    std::erase_if(lone, [this](const SessionMarker& marker) {
        return !marker.sessionId.empty() &&
               std::ranges::any_of(sessions, [&](const FolderSession& session) {
                   return session.identity.id == marker.sessionId;
               });
    });
    return lone;
}

Listing MakeListing(std::vector<FolderSession> sessions, std::vector<SessionMarker> markers) {
    Listing listing;
    listing.markers = std::move(markers);
    for (FolderSession& session : sessions) {
        // Between two of its files a session has none that is being written.
        const bool isUnended =
            session.state == SessionState::Crashed || session.state == SessionState::EndMissing;
        const SessionMarker* const marker = listing.MarkerOf(session.identity.id);
        if (isUnended && marker && marker->isLive)
            session.state = SessionState::Open;
        const auto kind = SmallDocumentKind(session.identity);
        if (kind == SmallDocument::Kind::None)
            listing.sessions.push_back(std::move(session));
        else
            listing.small.push_back(
                {ReadSmallDocument(session.files.front().path, kind), std::move(session)});
    }
    return listing;
}
