#pragma once

#include "Platform/Linux/XServerSocket.h"

#include <cstdlib>
#include <memory>
#include <optional>
#include <xcb/xcb.h>
#include <xcb/xcbext.h>

namespace Platform {

/// Requests to an X server through XCB. As XCB waits without limit, it never has the server's
/// socket: it has one end of a pair of sockets, and what it says and hears there is passed on.
class XcbConversation {
public:
    /// Begins with a server that has let this program in. Every waiting fails, without logging,
    /// when that was not possible.
    explicit XcbConversation(XServerSocket& server);

    /// For making requests, and for nothing that waits. Only requests that have an answer are
    /// made, and one of an extension only when the server has it.
    xcb_connection_t* Connection() const { return m_connection.get(); }

    /// Waits for the answers to all requests up to the one of that sequence number. False, without
    /// logging, when the server does not give them in time, or something else instead.
    bool Await(unsigned int request);

    /// Whether the server has an extension. Nothing, without logging, when it does not tell in
    /// time.
    std::optional<bool> Has(xcb_extension_t& extension);

    /// The awaited answer to a request; null, without logging, when that was an error.
    template <typename Reply>
    auto Take(unsigned int request) {
        void* reply = nullptr;
        ::xcb_poll_for_reply(Connection(), request, &reply, nullptr);
        return std::unique_ptr<Reply, Deleter>(static_cast<Reply*>(reply));
    }

private:
    struct Deleter {
        void operator()(void* reply) const { std::free(reply); }
        void operator()(xcb_connection_t* connection) const { ::xcb_disconnect(connection); }
    };

    bool IsOpen() const { return m_connection && ::xcb_connection_has_error(Connection()) == 0; }
    bool PassRequests();
    bool PassAnswer();

    XServerSocket& m_server;
    Descriptor m_end; ///< our end; open longer than XCB's, whose writing would else raise SIGPIPE
    std::unique_ptr<xcb_connection_t, Deleter> m_connection;
    std::uint16_t m_answered = 0; ///< sequence number of the latest request that has its answer
};

} // namespace Platform
