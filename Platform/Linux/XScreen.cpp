#include "Platform/Linux/XScreen.h"

#include "Platform/Linux/XAuthority.h"
#include "Platform/Linux/XReader.h"

#include <bit>
#include <xcb/xcb.h>

namespace Platform {

namespace {

constexpr std::uint8_t kAccepted = 1;

std::string IntroductionWith(const std::string& cookie) {
    const std::string_view method = cookie.empty() ? "" : kXCookieMethod;
    xcb_setup_request_t head = {};
    head.byte_order = std::endian::native == std::endian::little ? 'l' : 'B';
    head.protocol_major_version = X_PROTOCOL;
    head.protocol_minor_version = X_PROTOCOL_REVISION;
    head.authorization_protocol_name_len = static_cast<std::uint16_t>(method.size());
    head.authorization_protocol_data_len = static_cast<std::uint16_t>(cookie.size());
    std::string bytes(reinterpret_cast<const char*>(&head), sizeof head);
    bytes.append(method).resize(PaddedForX(bytes.size()));
    bytes.append(cookie).resize(PaddedForX(bytes.size()));
    return bytes;
}

/// Leaves out the rest of a screen: what it can show in each depth.
bool SkipDepths(XReader& reader, const xcb_screen_t& screen) {
    xcb_depth_t depth;
    for (unsigned left = screen.allowed_depths_len; left > 0; --left)
        if (!reader.Take(depth) || !reader.Skip(depth.visuals_len * sizeof(xcb_visualtype_t)))
            return false;
    return true;
}

std::optional<xcb_screen_t> ScreenIn(std::string_view answer, int number) {
    XReader reader(answer);
    xcb_setup_t setup;
    if (!reader.Take(setup) || setup.status != kAccepted || number >= setup.roots_len ||
        !reader.Skip(PaddedForX(setup.vendor_len)) ||
        !reader.Skip(setup.pixmap_formats_len * sizeof(xcb_format_t)))
        return std::nullopt;
    xcb_screen_t screen;
    while (reader.Take(screen)) {
        if (number-- == 0)
            return screen;
        if (!SkipDepths(reader, screen))
            break;
    }
    return std::nullopt;
}

} // namespace

std::optional<xcb_screen_t> OpenXScreen(XServerSocket& server, int display, int screen) {
    xcb_setup_authenticate_t head; // the answer of any kind begins as this one does
    if (!server.Send(IntroductionWith(FindXCookie(display))) || !server.Await(sizeof head) ||
        !XReader(server.Received()).Take(head))
        return std::nullopt;
    const std::size_t length = sizeof head + head.length * std::size_t{4};
    if (!server.Await(length))
        return std::nullopt;
    const auto found = ScreenIn(server.Received().substr(0, length), screen);
    server.Drop(length);
    return found;
}

} // namespace Platform
