#include "Platform/Linux/XServerSocket.h"

#include <array>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

namespace Platform {

bool SendAtOnce(const Descriptor& socket, std::string_view bytes) {
    const ssize_t count =
        Retried([&] { return ::send(socket.Get(), bytes.data(), bytes.size(), MSG_NOSIGNAL); });
    return count == static_cast<ssize_t>(bytes.size());
}

XServerSocket::XServerSocket(int display) {
    const std::string path = "/tmp/.X11-unix/X" + std::to_string(display);
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    // Without blocking, connecting fails when as many wait for the server as it lets wait.
    m_socket = Descriptor(
        AwayFromStandardStreams(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)));
    if (::connect(m_socket.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
        m_socket.Close();
}

void XServerSocket::AllowTime(std::chrono::milliseconds time) {
    m_end = std::chrono::steady_clock::now() + time;
}

bool XServerSocket::Await(std::size_t count) {
    std::array<char, 4096> buffer;
    while (m_received.size() < count) {
        if (!IsReadable())
            return false;
        const ssize_t received =
            Retried([&] { return ::recv(m_socket.Get(), buffer.data(), buffer.size(), 0); });
        if (received <= 0)
            return false;
        m_received.append(buffer.data(), static_cast<std::size_t>(received));
    }
    return true;
}

/// Waits for bytes. A server that sends without end does not prolong its time.
bool XServerSocket::IsReadable() {
    pollfd socket = {m_socket.Get(), POLLIN, 0};
    return Retried([&] {
               const auto left = std::chrono::ceil<std::chrono::milliseconds>(
                   m_end - std::chrono::steady_clock::now());
               return left.count() > 0 ? ::poll(&socket, 1, static_cast<int>(left.count())) : 0;
           }) > 0;
}

} // namespace Platform
