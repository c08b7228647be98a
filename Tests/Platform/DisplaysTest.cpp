#include "Platform/Displays.h"

#include "Tests/Support/Sandbox.h"
#include "Tests/Support/XServer.h"

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <chrono>
#include <functional>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>
#include <xcb/randr.h>

using namespace std::chrono_literals;

namespace {

constexpr int kAttempts = 20; ///< at a server that may be late when the machine is busy

class Displays : public testing::Test {
protected:
    void TearDown() override { EXPECT_EQ(NamesIn("/proc/self/fd").size(), m_descriptors); }

    /// The sizes of the displays; each attempt to get them is quick.
    std::string Ask(const std::string& display, int attempts = 1) {
        m_sandbox.SetVariable("DISPLAY", display);
        std::string sizes;
        while (sizes.empty() && attempts-- > 0) {
            const auto begin = std::chrono::steady_clock::now();
            for (const auto& [width, height] : Platform::ActiveDisplays())
                sizes += std::to_string(int(width)) + "x" + std::to_string(int(height)) + " ";
            EXPECT_LT(std::chrono::steady_clock::now() - begin, 2s) << display;
        }
        return sizes;
    }

    Sandbox m_sandbox;
    const std::size_t m_descriptors = NamesIn("/proc/self/fd").size();
};

/// A socket that lets one program wait at the socket file of a display.
int ListenFor(const std::string& display) {
    sockaddr_un address = {AF_UNIX, {}};
    XSocketPath(display).copy(address.sun_path, sizeof address.sun_path - 1);
    const int listener = ::socket(AF_UNIX, SOCK_STREAM, 0);
    EXPECT_EQ(::bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    ::listen(listener, 0);
    return listener;
}

bool Say(int client, const std::string& bytes) {
    return ::send(client, bytes.data(), bytes.size(), MSG_NOSIGNAL) == ssize_t(bytes.size());
}

/// Does the same with each program that connects to it.
class FakeServer {
public:
    explicit FakeServer(const std::function<void(int client)>& act) {
        m_thread = std::thread([this, act] {
            for (int client; (client = ::accept(m_listener, nullptr, nullptr)) >= 0;) {
                act(client);
                ::close(client);
            }
        });
    }
    /// Says this, and nothing more until the program leaves.
    explicit FakeServer(const std::string& bytes)
        : FakeServer([bytes](int client) {
              Say(client, bytes);
              for (char heard[4096]; ::recv(client, heard, sizeof heard, 0) > 0;) {
              }
          }) {}
    ~FakeServer() {
        ::shutdown(m_listener, SHUT_RDWR);
        m_thread.join();
        ::close(m_listener);
        ::unlink(XSocketPath(m_number).c_str());
    }
    std::string Name() const { return ":" + m_number; }

private:
    const std::string m_number = std::to_string(60000 + ::getpid()); // no other test's
    const int m_listener = ListenFor(m_number);
    std::thread m_thread;
};

// What servers say.

template <typename Structure>
std::string Bytes(const Structure& structure, std::size_t size = sizeof(Structure)) {
    std::string bytes(reinterpret_cast<const char*>(&structure), sizeof structure);
    bytes.resize(size);
    return bytes;
}

std::string Message(std::uint8_t type, std::uint16_t request, std::uint32_t length = 0) {
    return Bytes(xcb_generic_reply_t{type, 0, request, length}, 32);
}

std::string Welcome(std::uint16_t vendorLength = 0) {
    xcb_screen_t screen = {};
    screen.width_in_pixels = 1024;
    screen.height_in_pixels = 768;
    xcb_setup_t setup = {};
    setup.status = 1;
    setup.length = (sizeof setup + sizeof screen) / 4 - 2;
    setup.vendor_len = vendorLength;
    setup.roots_len = 1;
    return Bytes(setup) + Bytes(screen);
}

std::string Extension(bool isThere = true) {
    return Bytes(xcb_query_extension_reply_t{1, 0, 1, 0, isThere, 0, 0, 0}, 32) + Message(1, 2);
}

std::string Version(std::uint32_t minor, std::uint16_t request = 3) {
    return Bytes(xcb_randr_query_version_reply_t{1, 0, request, 0, 1, minor, {}});
}

std::string Monitors(std::uint32_t count, std::uint16_t outputs = 0, std::uint32_t length = 6) {
    return Bytes(xcb_randr_get_monitors_reply_t{1, 0, 4, length, 0, count, 0, {}}) +
           Bytes(xcb_randr_monitor_info_t{0, 0, 0, outputs, 0, 0, 640, 480, 0, 0});
}

/// An entry of an authority file.
std::string Authority(const std::string& host, const std::string& display, char cookie) {
    std::string entry = {1, 0};
    for (const std::string& text :
         {host, display, std::string("MIT-MAGIC-COOKIE-1"), std::string(16, cookie)})
        entry += std::string{0, char(text.size())} + text;
    return entry;
}

} // namespace

TEST_F(Displays, AreThoseOfTheScreenThatIsNamed) {
    const XServer server("-screen 1 800x600x24");
    EXPECT_EQ(Ask(server.Name(), kAttempts), "1280x720 ");
    EXPECT_EQ(Ask("unix" + server.Name() + ".1", kAttempts), "800x600 ");
    EXPECT_EQ(Ask(server.Name() + ".2"), "");
}

TEST_F(Displays, AreToldToTheUserWithTheCookie) {
    WriteText(m_sandbox.Root() + "/server", Authority("any", "any", 'r'));
    const XServer server("-auth " + m_sandbox.Root() + "/server");
    char host[256] = {};
    ::gethostname(host, sizeof host - 1);
    EXPECT_EQ(Ask(server.Name()), "") << "no cookie";
    WriteText(m_sandbox.Home() + "/.Xauthority", Authority(host, server.Number(), 'w'));
    EXPECT_EQ(Ask(server.Name()), "") << "wrong cookie";
    m_sandbox.SetVariable("XAUTHORITY", m_sandbox.Root() + "/user");
    WriteText(m_sandbox.Root() + "/user", Authority("else", server.Number(), 'w') +
                                              Authority(host, server.Number() + "0", 'w') +
                                              Authority(host, server.Number(), 'r'));
    EXPECT_EQ(Ask(server.Name(), kAttempts), "1280x720 ");
}

TEST_F(Displays, AreAskedForAtTheSocketFileOnlyWithoutWaitingForIt) {
    sockaddr_in address = {};
    socklen_t length = sizeof address;
    const int network = ::socket(AF_INET, SOCK_STREAM, 0);
    ::listen(network, 1);
    ::getsockname(network, reinterpret_cast<sockaddr*>(&address), &length);
    const std::string number = std::to_string(ntohs(address.sin_port) - 6000);
    EXPECT_EQ(Ask(":" + number), "") << "no socket file";
    const int local = ListenFor(number);
    for (const std::string before : {"localhost:", "127.0.0.1:", "tcp/localhost:", "tcp/:", "::",
                                     "unix/:", ":-", ": ", "", "unix", ":429496729600000"})
        EXPECT_EQ(Ask(before + number), "");
    for (const int listener : {network, local}) {
        pollfd connection = {listener, POLLIN, 0};
        EXPECT_EQ(::poll(&connection, 1, 0), 0) << listener;
    }
    EXPECT_EQ(Ask(":" + number), "") << "nobody answers";
    EXPECT_EQ(Ask(":" + number), "") << "one waits already";
    ::close(local);
    EXPECT_EQ(Ask(":" + number), "") << "nobody listens";
    ::close(network);
    ::unlink(XSocketPath(number).c_str());
}

TEST_F(Displays, AreNoneWhenTheServerDoesNotAnswerAtOnce) {
    const std::string answers = Welcome() + Extension() + Version(5) + Monitors(1);
    for (const unsigned length : {0U, 60U, 80U, 176U, 231U})
        EXPECT_EQ(Ask(FakeServer(answers.substr(0, length)).Name()), "") << length;
    const auto trickle = [&](int client) {
        for (std::size_t sent = 0; Say(client, answers.substr(sent % 200, 1)); ++sent)
            std::this_thread::sleep_for(20ms);
    };
    const auto flood = [](int client) {
        Say(client, Welcome());
        while (Say(client, std::string(32 * 1000, 2))) { // events
        }
    };
    EXPECT_EQ(Ask(FakeServer([](int client) { Say(client, Welcome()); }).Name()), "");
    EXPECT_EQ(Ask(FakeServer(trickle).Name()), "");
    EXPECT_EQ(Ask(FakeServer(flood).Name()), "");
}

TEST_F(Displays, AreOnlyWhatTheServersBytesHold) {
    const std::string longEvent = Message(XCB_GE_GENERIC | 128, 0, 8) + Message(1, 9);
    const std::string start = Welcome() + Extension(), known = start + Version(5);
    const struct {
        const char* what;
        std::string bytes;
        const char* sizes;
    } cases[] = {
        {"events", start + Message(2, 0) + longEvent + Version(5) + Monitors(1), "640x480 "},
        {"old version", start + Version(4) + Monitors(1), "1024x768 "},
        {"no extension", Welcome() + Extension(false), "1024x768 "},
        {"no monitors", known + Monitors(0), ""},
        {"not a server", std::string(300000, 'x'), ""},
        {"long vendor", Welcome(65535) + Extension() + Version(5) + Monitors(1), ""},
        {"fewer monitors", known + Monitors(1000), ""},
        {"fewer outputs", known + Monitors(1, 65535), ""},
        {"huge answer", known + Monitors(1, 0, 0x40000006), ""},
        {"answer to another request", start + Version(5, 4) + Monitors(1), ""},
    };
    for (const auto& [what, bytes, sizes] : cases)
        EXPECT_EQ(Ask(FakeServer(bytes).Name(), *sizes ? kAttempts : 1), sizes) << what;
}
