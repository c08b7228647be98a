#pragma once

#include "Platform/Linux/XServerSocket.h"

#include <optional>
#include <xcb/xproto.h>

namespace Platform {

/// Introduces this program to the X server of a display, and finds the screen of that number.
/// Nothing, without logging, when the server refuses, has no such screen, or does not answer in
/// time.
std::optional<xcb_screen_t> OpenXScreen(XServerSocket& server, int display, int screen);

} // namespace Platform
