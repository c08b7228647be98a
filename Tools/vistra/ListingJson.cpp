#include "Tools/vistra/Listing.h"

#include <nlohmann/json.hpp>

namespace {

using Json = nlohmann::ordered_json;

const char* NameOf(SessionState state) {
    switch (state) {
    case SessionState::Open:
        return "open";
    case SessionState::Crashed:
        return "crashed";
    case SessionState::Finished:
        return "finished";
    case SessionState::Waiting:
        return "waiting";
    case SessionState::Collected:
        return "collected";
    default:
        return "end missing";
    }
}

Json ToJson(const SessionMarker& marker) {
    Json json{{"path", marker.path}, {"owner", marker.owner}, {"time", marker.time}};
    if (!marker.sessionId.empty()) {
        json["session"] = marker.sessionId;
        json["process"] = marker.processId;
        json["program"] = marker.program;
    }
    json["running"] = marker.isLive;
    return json;
}

Json ToJson(const SessionFile& file) {
    Json json{{"path", file.path}, {"bytes", file.bytes}};
    if (file.index)
        json["index"] = *file.index;
    json["obfuscated"] = file.head.isObfuscated;
    json["collected"] = file.folder == FolderKind::Collected;
    return json;
}

Json FilesOf(const FolderSession& session) {
    Json files = Json::array();
    for (const SessionFile& file : session.files)
        files.push_back(ToJson(file));
    return files;
}

Json ToJson(const FolderSession& session, const SessionMarker* marker) {
    const SessionIdentity& identity = session.identity;
    Json missing = Json::array();
    for (const FileGap& gap : session.gaps)
        missing.push_back({{"first", gap.first}, {"last", gap.last}});
    return {{"id", identity.id},
            {"family", identity.family},
            {"name", identity.name},
            {"version", identity.version},
            {"build", identity.build},
            {"language", identity.language},
            {"user", identity.user},
            {"started", identity.start},
            {"lastRecord", session.end.time},
            {"state", NameOf(session.state)},
            {"bytes", session.Bytes()},
            {"missing", missing},
            {"marker", marker ? ToJson(*marker) : Json()},
            {"files", FilesOf(session)}};
}

Json ToJson(const Listing::Small& small) {
    const bool isDecision = small.document.kind == SmallDocument::Kind::Decision;
    const SessionIdentity& product = small.document.product;
    Json json{{"kind", isDecision ? "decision" : "crash"},
              {"family", product.family},
              {"name", product.name}};
    if (isDecision) {
        json["version"] = product.version;
        json["change"] = small.document.change;
    }
    json["written"] = small.file.identity.start;
    json["state"] = NameOf(small.file.state);
    json["files"] = FilesOf(small.file);
    return json;
}

} // namespace

void WriteListingAsJson(const Listing& listing, std::ostream& out) {
    Json json{
        {"sessions", Json::array()}, {"documents", Json::array()}, {"markers", Json::array()}};
    for (const FolderSession& session : listing.sessions)
        json["sessions"].push_back(ToJson(session, listing.MarkerOf(session.identity.id)));
    for (const Listing::Small& small : listing.small)
        json["documents"].push_back(ToJson(small));
    for (const SessionMarker& marker : listing.LoneMarkers())
        json["markers"].push_back(ToJson(marker));
    // Bytes that are no UTF-8, as a name may hold them, become U+FFFD.
    out << json.dump(2, ' ', true, Json::error_handler_t::replace) << '\n';
}
