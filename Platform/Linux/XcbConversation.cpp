#include "Platform/Linux/XcbConversation.h"

#include "Platform/Linux/XReader.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <sys/socket.h>

namespace Platform {

namespace {

constexpr std::uint8_t kError = 0;
constexpr std::uint8_t kReply = 1;
constexpr std::uint8_t kSentByClient = 0x80; ///< flag of an event
constexpr std::size_t kShortestMessage = sizeof(xcb_raw_generic_event_t);
constexpr std::size_t kLongestMessage = 65536;

/// What XCB takes for the server's answer to its introduction. XCB sees it before it has spoken,
/// and would look for a message in it if it were as long as one. So it ends after the last field
/// that XCB itself heeds.
constexpr std::size_t kGreetingLength = offsetof(xcb_setup_t, roots_len);
static_assert(kGreetingLength < kShortestMessage && kGreetingLength % 4 == 0);

std::string Greeting() {
    xcb_setup_t setup = {};
    setup.status = 1;
    setup.protocol_major_version = X_PROTOCOL;
    setup.length = (kGreetingLength - sizeof(xcb_setup_authenticate_t)) / 4;
    setup.maximum_request_length = 0xffff; // were it less than needed, XCB would ask and wait
    return std::string(reinterpret_cast<const char*>(&setup), kGreetingLength);
}

bool IsAnswer(const xcb_generic_reply_t& head) {
    return head.response_type == kReply || head.response_type == kError;
}

std::uint64_t LengthOf(const xcb_generic_reply_t& head) {
    const int type = head.response_type & ~kSentByClient;
    const bool isLong = head.response_type == kReply || type == XCB_GE_GENERIC;
    return kShortestMessage + (isLong ? head.length * std::uint64_t{4} : 0);
}

/// What the other end has said. It is never much.
std::string_view Hear(const Descriptor& end, std::array<char, 1024>& buffer) {
    const ssize_t count =
        Retried([&] { return ::recv(end.Get(), buffer.data(), buffer.size(), 0); });
    return std::string_view(buffer.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
}

} // namespace

XcbConversation::XcbConversation(XServerSocket& server) : m_server(server) {
    int ends[2] = {-1, -1};
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ends) != 0)
        return;
    m_end = Descriptor(AwayFromStandardStreams(ends[0]));
    Descriptor other(AwayFromStandardStreams(ends[1]));
    if (!m_end.IsOpen() || !other.IsOpen() || !SendAtOnce(m_end, Greeting()))
        return;
    m_connection.reset(::xcb_connect_to_fd(other.Release(), nullptr));
    std::array<char, 1024> introduction;
    Hear(m_end, introduction);
}

bool XcbConversation::Await(unsigned int request) {
    if (!IsOpen() || !PassRequests())
        return false;
    while (m_answered < request)
        if (!PassAnswer())
            return false;
    // Let XCB read them, so that nothing is left to wait for.
    std::free(::xcb_poll_for_event(Connection()));
    return IsOpen();
}

std::optional<bool> XcbConversation::Has(xcb_extension_t& extension) {
    if (!IsOpen())
        return std::nullopt;
    // XCB waits for this answer when it needs it, so it has to be there before: it is when the
    // next request has been answered.
    ::xcb_prefetch_extension_data(Connection(), &extension);
    const unsigned int next = ::xcb_get_input_focus(Connection()).sequence;
    // Without memory the first request is not made, and XCB would make it later, and wait.
    if (next != m_answered + 2U || !Await(next))
        return std::nullopt;
    const xcb_query_extension_reply_t* const answer =
        ::xcb_get_extension_data(Connection(), &extension);
    return answer && answer->present;
}

bool XcbConversation::PassRequests() {
    std::array<char, 1024> buffer;
    return ::xcb_flush(Connection()) > 0 && m_server.Send(Hear(m_end, buffer));
}

/// Passes on the server's next message, if it is an answer. XCB would wait for the rest of one, so
/// it gets the whole; and each request has one answer, in the order of the requests.
bool XcbConversation::PassAnswer() {
    xcb_generic_reply_t head;
    if (!m_server.Await(kShortestMessage) || !XReader(m_server.Received()).Take(head))
        return false;
    if (LengthOf(head) > kLongestMessage)
        return false;
    const auto length = static_cast<std::size_t>(LengthOf(head));
    if (!m_server.Await(length))
        return false;
    if (IsAnswer(head) && (head.sequence != ++m_answered ||
                           !SendAtOnce(m_end, m_server.Received().substr(0, length))))
        return false;
    m_server.Drop(length);
    return true;
}

} // namespace Platform
