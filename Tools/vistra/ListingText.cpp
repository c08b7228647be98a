#include "Tools/vistra/Console.h"
#include "Tools/vistra/Listing.h"
#include "Tools/vistra/ShownText.h"
#include "Tools/vistra/UtcTime.h"

#include <array>

namespace {

using Console::Style;

constexpr std::size_t kTimeWidth = 21, kSpanWidth = 10, kStateWidth = 17;

struct ShownState {
    const char* text;
    Style style;
};

ShownState Shown(SessionState state) {
    switch (state) {
    case SessionState::Open:
        return {"open", Style::Good};
    case SessionState::Crashed:
        return {"left by a crash", Style::Bad};
    case SessionState::Finished:
        return {"finished", Style::Heading};
    case SessionState::Waiting:
        return {"waiting", Style::Heading};
    case SessionState::Collected:
        return {"collected", Style::Faint};
    default:
        return {"end is missing", Style::Bad};
    }
}

std::string StateColumn(SessionState state) {
    const ShownState shown = Shown(state);
    return Console::Styled(shown.style, Padded(shown.text, kStateWidth));
}

std::string TimeColumn(const std::string& time) {
    return Padded(ShownText(UtcTime::Readable(time), "-"), kTimeWidth);
}

std::string LeftPadded(std::string text, std::size_t width) {
    return text.insert(0, text.size() < width ? width - text.size() : 0, ' ');
}

std::string ShownSize(std::uint64_t bytes) {
    constexpr std::array kUnits{" KiB", " MiB", " GiB", " TiB"};
    if (bytes < 1024)
        return std::to_string(bytes) + " B";
    std::size_t unit = 0;
    std::uint64_t tenths = bytes * 10 / 1024;
    for (; tenths >= 10'240 && unit + 1 < kUnits.size(); ++unit)
        tenths /= 1024;
    std::string text = std::to_string(tenths / 10);
    return text.append(".").append(std::to_string(tenths % 10)).append(kUnits[unit]);
}

std::string ProductOf(const SessionIdentity& identity) {
    std::string text = ShownText(identity.family, "-") + " / " + ShownText(identity.name, "-");
    return identity.version.empty() ? text : text.append(" ").append(ShownText(identity.version));
}

std::string LastedOf(const FolderSession& session) {
    const auto from = UtcTime::Seconds(session.identity.start);
    const auto to = UtcTime::Seconds(session.end.time);
    return Padded(from && to ? UtcTime::Span(*to - *from) : "-", kSpanWidth);
}

std::string MarkerText(const SessionMarker& marker) {
    if (marker.sessionId.empty())
        return "a marker of unknown form";
    return "marker of " + ShownText(marker.program) + ", process " +
           std::to_string(marker.processId) +
           (marker.isLive ? ", which is running" : ", which is gone: a trace of a crash");
}

std::string GapText(const FileGap& gap) {
    if (gap.first == gap.last)
        return "file " + std::to_string(gap.first) + " is not here";
    return "files " + std::to_string(gap.first) + " to " + std::to_string(gap.last) +
           " are not here";
}

void WriteNote(const std::string& text, std::ostream& out) {
    out << "    " << text << '\n';
}

void WriteFiles(const FolderSession& session, std::ostream& out) {
    for (const SessionFile& file : session.files)
        WriteNote(Console::Printable(file.path), out);
}

void WriteSession(const FolderSession& session, const SessionMarker* marker, std::ostream& out) {
    constexpr std::size_t kShownOfId = 8;
    out << TimeColumn(session.identity.start) << LastedOf(session) << StateColumn(session.state)
        << LeftPadded(std::to_string(session.files.size()), 5)
        << LeftPadded(ShownSize(session.Bytes()), 12) << "  "
        << Padded(ShownText(session.identity.id.substr(0, kShownOfId), "-"), kShownOfId + 2)
        << ProductOf(session.identity) << '\n';
    for (const FileGap& gap : session.gaps)
        WriteNote(Console::Styled(Style::Bad, GapText(gap)), out);
    if (marker)
        WriteNote(MarkerText(*marker), out);
}

void WriteSmall(const Listing::Small& small, std::ostream& out) {
    const bool isDecision = small.document.kind == SmallDocument::Kind::Decision;
    const std::string what = isDecision ? ShownText(small.document.change, "-") : "a crash";
    out << TimeColumn(small.file.identity.start) << Padded(what, kSpanWidth + 2)
        << StateColumn(small.file.state) << ProductOf(small.document.product) << '\n';
}

void WriteHeading(const char* text, std::ostream& out) {
    out << Console::Styled(Style::Heading, text) << '\n';
}

} // namespace

void WriteListing(const Listing& listing, bool withFiles, std::ostream& out) {
    if (listing.sessions.empty())
        out << "No sessions.\n";
    else
        WriteHeading("STARTED (UTC)        LASTED    STATE            FILES        SIZE  SESSION   "
                     "PRODUCT",
                     out);
    for (const FolderSession& session : listing.sessions) {
        WriteSession(session, listing.MarkerOf(session.identity.id), out);
        if (withFiles)
            WriteFiles(session, out);
    }
    if (!listing.small.empty())
        WriteHeading("\nDECIDED (UTC)        DECISION    STATE            PRODUCT", out);
    for (const Listing::Small& small : listing.small) {
        WriteSmall(small, out);
        if (withFiles)
            WriteFiles(small.file, out);
    }
    const std::vector<SessionMarker> lone = listing.LoneMarkers();
    if (!lone.empty())
        WriteHeading("\nMADE (UTC)           MARKER OF A SESSION WITHOUT A DOCUMENT", out);
    for (const SessionMarker& marker : lone)
        out << TimeColumn(marker.time) << MarkerText(marker) << "  ("
            << ShownText(marker.owner, "-") << ")\n";
}
