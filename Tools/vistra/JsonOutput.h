#pragma once

#include <nlohmann/json_fwd.hpp>

/// Prints a value for scripts on standard output, in ASCII: no text in it can reach a terminal as
/// anything but text.
void PrintJson(const nlohmann::ordered_json& value);
