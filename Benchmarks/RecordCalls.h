#pragma once

#include "Benchmarks/HostSession.h"

#include <string>

/// The calls that record, with the texts of a host.
namespace RecordCalls {

using Call = void (*)(const HostSession&);

/// The text again and again, `bytes` long, or a little less so that no character is cut.
inline std::string Repeated(const std::string& text, std::size_t bytes) {
    std::string result;
    while (result.size() <= bytes)
        result += text;
    while ((result[bytes] & 0xC0) == 0x80)
        --bytes;
    return result.substr(0, bytes);
}

inline const std::string kMarkup = Repeated("<", 512);
inline const std::string kMixture = Repeated("<b class=\"x\">Tom & Anna's</b> 3 > 2, plain. ", 512);
inline const std::string kWorld = Repeated("Größe, 寸法, размер, μέγεθος; ", 512);
inline const std::string kMarkupOfEvent = Repeated("<", 128);

inline void LogEvent(const HostSession& host) {
    UTLogEvent(host.Get(), "File", "Open", "Image", nullptr, 0);
}

inline void LogEventOfMarkup(const HostSession& host) {
    const char* text = kMarkupOfEvent.c_str();
    UTLogEvent(host.Get(), text, text, text, nullptr, 0);
}

inline void AddToSession(const HostSession& host) {
    UTAddToSession(host.Get(), "Theme", "dark");
}

inline void AddToGroup(const HostSession& host) {
    UTAddToGroup(host.Get(), host.Group(), "Width", "1920");
}

template <const std::string& value>
void AddToSession(const HostSession& host) {
    UTAddToSession(host.Get(), "Theme", value.c_str());
}

template <const std::string& value>
void AddToGroup(const HostSession& host) {
    UTAddToGroup(host.Get(), host.Group(), "Width", value.c_str());
}

} // namespace RecordCalls
