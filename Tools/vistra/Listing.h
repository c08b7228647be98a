#pragma once

#include "Tools/vistra/SessionFolder.h"
#include "Tools/vistra/SessionMarker.h"
#include "Tools/vistra/SmallDocument.h"

#include <ostream>
#include <string>
#include <vector>

/// What is recorded in an account, or in a folder.
struct Listing {
    struct Small {
        SmallDocument document;
        FolderSession file;
    };
    std::vector<FolderSession> sessions; ///< of hosts
    std::vector<Small> small;
    std::vector<SessionMarker> markers;

    /// The marker of a session; null when it has none.
    const SessionMarker* MarkerOf(const std::string& sessionId) const;
    /// Those whose sessions have no document here.
    std::vector<SessionMarker> LoneMarkers() const;
};

/// Puts sessions and small documents apart, and reads the latter.
Listing MakeListing(std::vector<FolderSession> sessions, std::vector<SessionMarker> markers);

/// Writes tables for a person, if asked for with the path of each file.
void WriteListing(const Listing& listing, bool withFiles, std::ostream& out);

/// Writes one JSON object for a program, in ASCII.
void WriteListingAsJson(const Listing& listing, std::ostream& out);
