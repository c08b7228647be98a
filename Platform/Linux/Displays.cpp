#include "Platform/Displays.h"

#include "Platform/Linux/Environment.h"
#include "Platform/Linux/XReader.h"
#include "Platform/Linux/XScreen.h"
#include "Platform/Linux/XcbConversation.h"

#include <cstdlib>
#include <xcb/randr.h>

namespace Platform {

namespace {

constexpr std::chrono::milliseconds kTimeToBegin(200);  ///< for letting this program in
constexpr std::chrono::milliseconds kTimeToAnswer(200); ///< for all that is asked then

// The first version of the extension that knows monitors.
constexpr std::uint32_t kMajorVersion = 1;
constexpr std::uint32_t kMinorVersion = 5;

struct DisplayName {
    int display = -1;
    int screen = -1;
};

/// The display of this machine that the environment names; nothing when it names none.
std::optional<DisplayName> LocalDisplay() {
    const std::string name = Variable("DISPLAY");
    char* host = nullptr;
    DisplayName parsed;
    if (name.empty() || !::xcb_parse_display(name.c_str(), &host, &parsed.display, &parsed.screen))
        return std::nullopt;
    std::free(host);
    if (parsed.display < 0 || parsed.screen < 0)
        return std::nullopt;
    // What the parser passes over, as a protocol or a number beyond its range, is not local.
    for (std::string local : {":", "unix:"}) {
        local += std::to_string(parsed.display);
        if (name == local || name == local + "." + std::to_string(parsed.screen))
            return parsed;
    }
    return std::nullopt;
}

DisplaySize SizeOf(const xcb_screen_t& screen) {
    return {double(screen.width_in_pixels), double(screen.height_in_pixels)};
}

/// The monitors of an answer; none when it holds less than it states.
std::vector<DisplaySize> MonitorsIn(const xcb_randr_get_monitors_reply_t& reply) {
    XReader reader({reinterpret_cast<const char*>(&reply + 1), reply.length * std::size_t{4}});
    std::vector<DisplaySize> monitors;
    xcb_randr_monitor_info_t monitor;
    for (std::uint32_t left = reply.nMonitors; left > 0; --left) {
        if (!reader.Take(monitor) || !reader.Skip(monitor.nOutput * sizeof(xcb_randr_output_t)))
            return {};
        monitors.push_back({double(monitor.width), double(monitor.height)});
    }
    return monitors;
}

bool KnowsMonitors(const xcb_randr_query_version_reply_t* version) {
    return version &&
           (version->major_version > kMajorVersion ||
            (version->major_version == kMajorVersion && version->minor_version >= kMinorVersion));
}

/// The monitors that the server tells, or the screen when it cannot tell any.
std::vector<DisplaySize> AskFor(XcbConversation& conversation, const xcb_screen_t& screen) {
    const std::optional<bool> canTell = conversation.Has(xcb_randr_id);
    if (!canTell)
        return {};
    if (!*canTell)
        return {SizeOf(screen)};
    // One wait for both: a server that does not know the second request says so.
    const auto version =
        ::xcb_randr_query_version(conversation.Connection(), kMajorVersion, kMinorVersion);
    const auto monitors = ::xcb_randr_get_monitors(conversation.Connection(), screen.root, true);
    if (!conversation.Await(monitors.sequence))
        return {};
    const auto known = conversation.Take<xcb_randr_query_version_reply_t>(version.sequence);
    const auto reply = conversation.Take<xcb_randr_get_monitors_reply_t>(monitors.sequence);
    if (!reply || !KnowsMonitors(known.get()))
        return {SizeOf(screen)};
    return MonitorsIn(*reply);
}

} // namespace

std::vector<DisplaySize> ActiveDisplays() {
    const std::optional<DisplayName> name = LocalDisplay();
    if (!name)
        return {};
    XServerSocket server(name->display);
    if (!server.IsConnected())
        return {};
    server.AllowTime(kTimeToBegin);
    const std::optional<xcb_screen_t> screen = OpenXScreen(server, name->display, name->screen);
    if (!screen)
        return {};
    server.AllowTime(kTimeToAnswer);
    XcbConversation conversation(server);
    return AskFor(conversation, *screen);
}

} // namespace Platform
