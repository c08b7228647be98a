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

    /// The same of a server that tells them, if not always in time when the machine is busy.
    std::string AskUntilTold(const std::string& display) { return Ask(display, 20); }

    Sandbox m_sandbox;
    const std::size_t m_descriptors = NamesIn("/proc/self/fd").size();
};

/// A socket bound or connected to a file, or to a name that begins with a zero; -1 on failure.
int SocketAt(const std::string& name, decltype(::connect)& use) {
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    name.copy(address.sun_path, sizeof address.sun_path);
    const int number = ::socket(AF_UNIX, SOCK_STREAM, 0);
    const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + name.size());
    if (use(number, reinterpret_cast<sockaddr*>(&address), length) == 0)
        return number;
    ::close(number);
    return -1;
}

bool Say(int client, const std::string& bytes) {
    return ::send(client, bytes.data(), bytes.size(), MSG_NOSIGNAL) == ssize_t(bytes.size());
}

/// Does the same with each program that connects to it. Without an act, it lets one wait.
class FakeServer {
public:
    using Act = std::function<void(int client)>;

    explicit FakeServer(const Act& act) {
        for (int number = 60000; m_listener < 0 && number < 65000; ++number)
            m_listener = SocketAt(XSocketPath(m_number = std::to_string(number)), ::bind);
        ::listen(m_listener, 0);
        m_thread = std::thread([this, act] {
            for (int client; act && (client = ::accept(m_listener, nullptr, nullptr)) >= 0;) {
                act(client);
                ::close(client);
            }
        });
    }
    ~FakeServer() {
        Die();
        m_thread.join();
        ::close(m_listener);
        ::unlink(XSocketPath(m_number).c_str());
    }
    const std::string& Number() const { return m_number; }
    std::string Name() const { return ":" + m_number; }
    void Die() const { ::shutdown(m_listener, SHUT_RDWR); }

private:
    std::string m_number;
    int m_listener = -1;
    std::thread m_thread;
};

/// Says this, and nothing more until the program leaves.
FakeServer::Act Saying(const std::string& bytes) {
    return [bytes](int client) {
        Say(client, bytes);
        for (char heard[4096]; ::recv(client, heard, sizeof heard, 0) > 0;) {
        }
    };
}

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

std::string Welcome(std::uint8_t screens = 1, std::uint16_t vendorLength = 0) {
    xcb_screen_t screen = {};
    screen.width_in_pixels = 1024;
    screen.height_in_pixels = 768;
    screen.allowed_depths_len = 255;
    xcb_setup_t setup = {};
    setup.status = 1;
    setup.length = (sizeof setup + sizeof screen) / 4 - 2;
    setup.vendor_len = vendorLength;
    setup.roots_len = screens;
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
    EXPECT_EQ(AskUntilTold(server.Name()), "1280x720 ");
    EXPECT_EQ(AskUntilTold("unix" + server.Name() + ".1"), "800x600 ");
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
    EXPECT_EQ(AskUntilTold(server.Name()), "1280x720 ");
}

TEST_F(Displays, AreAskedForAtTheSocketFileOnly) {
    sockaddr_in address = {};
    socklen_t length = sizeof address;
    const int network = ::socket(AF_INET, SOCK_STREAM, 0);
    ::listen(network, 1);
    ::getsockname(network, reinterpret_cast<sockaddr*>(&address), &length);
    const std::string number = std::to_string(ntohs(address.sin_port) - 6000);
    const std::string path = XSocketPath(number);
    const int abstract = SocketAt('\0' + path, ::bind);
    ::listen(abstract, 1);
    EXPECT_EQ(Ask(":" + number), "") << "no socket file";
    const int local = SocketAt(path, ::bind);
    ::listen(local, 1);
    for (const std::string before : {"localhost:", "127.0.0.1:", "tcp/localhost:", "tcp/:", "::",
                                     "unix/:", ":-", ": ", "", "unix", ":429496729600000"})
        EXPECT_EQ(Ask(before + number), "");
    for (const std::string name : {"", ":", "x", ":0x", "/"})
        EXPECT_EQ(Ask(name), "");
    for (const int listener : {network, abstract, local}) {
        pollfd connection = {listener, POLLIN, 0};
        EXPECT_EQ(::poll(&connection, 1, 0), 0) << listener;
        ::close(listener);
    }
    ::unlink(path.c_str());
}

TEST_F(Displays, AreNoneWhenNobodyTakesTheConnection) {
    const FakeServer server(nullptr);
    const int waiting = SocketAt(XSocketPath(server.Number()), ::connect);
    EXPECT_EQ(Ask(server.Name()), "") << "no other may wait";
    ::close(waiting);
    server.Die();
    EXPECT_EQ(Ask(server.Name()), "") << "nobody listens";
}

TEST_F(Displays, AreNoneWhenTheServerDoesNotAnswerAtOnce) {
    const std::string answers = Welcome() + Extension() + Version(5) + Monitors(1);
    for (const unsigned length : {0U, 60U, 80U, 176U, 231U})
        EXPECT_EQ(Ask(FakeServer(Saying(answers.substr(0, length))).Name()), "") << length;
    const FakeServer::Act acts[] = {
        [](int client) { Say(client, Welcome()); },
        [&](int client) {
            for (std::size_t sent = 0; Say(client, answers.substr(sent % 200, 1)); ++sent)
                std::this_thread::sleep_for(20ms);
        },
        [](int client) {
            Say(client, Welcome());
            while (Say(client, std::string(32 * 1000, 2))) { // events
            }
        },
    };
    for (const auto& act : acts)
        EXPECT_EQ(Ask(FakeServer(act).Name()), "") << &act - acts;
}

TEST_F(Displays, AreOnlyWhatTheServersBytesHold) {
    const std::string longEvent = Message(XCB_GE_GENERIC | 128, 0, 8) + Message(1, 9);
    const std::string start = Welcome() + Extension();
    const std::string known = start + Version(5);
    const struct {
        const char* what;
        std::string bytes;
        const char* sizes;
        const char* screen = "";
    } cases[] = {
        {"a monitor", known + Monitors(1), "640x480 "},
        {"events", start + Message(2, 0) + longEvent + Version(5) + Monitors(1), "640x480 "},
        {"old version", start + Version(4) + Monitors(1), "1024x768 "},
        {"request unknown", known + Message(0, 4), "1024x768 "},
        {"no extension", Welcome() + Extension(false), "1024x768 "},
        {"no monitors", known + Monitors(0), ""},
        {"refused", '\0' + known.substr(1) + Monitors(1), ""},
        {"not a server", std::string(300000, 'x'), ""},
        {"no screens", Welcome(0) + Extension() + Version(5) + Monitors(1), ""},
        {"fewer screens", Welcome(2) + Extension() + Version(5) + Monitors(1), "", ".1"},
        {"long vendor", Welcome(1, 65535) + Extension() + Version(5) + Monitors(1), ""},
        {"fewer monitors", known + Monitors(1000), ""},
        {"fewer outputs", known + Monitors(1, 65535), ""},
        {"huge answer", known + Monitors(1, 0, 0x40000006), ""},
        {"answer to another request", start + Version(5, 4) + Monitors(1), ""},
        {"answer given twice", known + Version(5) + Monitors(1), ""},
    };
    for (const auto& [what, bytes, sizes, screen] : cases) {
        const FakeServer server(Saying(bytes));
        EXPECT_EQ(Ask(server.Name() + screen, *sizes ? 20 : 1), sizes) << what;
    }
}
