#pragma once

#include "Platform/Linux/Descriptor.h"

#include <chrono>
#include <string>
#include <string_view>

namespace Platform {

/// Sends all of a few bytes. False, without logging, when the other end does not take them at once.
bool SendAtOnce(const Descriptor& socket, std::string_view bytes);

/// The connection to an X server of this machine. It waits for nothing once its time is over.
class XServerSocket {
public:
    /// Connects through the server's socket file, which is the only way tried. Not connected,
    /// without logging, when no server takes the connection at once.
    explicit XServerSocket(int display);

    bool IsConnected() const { return m_socket.IsOpen(); }

    /// Begins a time at whose end every waiting fails.
    void AllowTime(std::chrono::milliseconds time);

    /// False, without logging, when the server does not take them at once.
    bool Send(std::string_view bytes) { return SendAtOnce(m_socket, bytes); }

    /// Waits until `count` bytes are received and not dropped yet. False, without logging, when
    /// they do not come in time.
    bool Await(std::size_t count);

    std::string_view Received() const { return m_received; }
    void Drop(std::size_t count) { m_received.erase(0, count); }

private:
    bool IsReadable();

    Descriptor m_socket;
    std::chrono::steady_clock::time_point m_end;
    std::string m_received;
};

} // namespace Platform
