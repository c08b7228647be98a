#pragma once

#include <cstdio>
#include <string>

/// A real X server of the test's own, with a screen of 1280x720 that nobody sees.
class XServer {
public:
    /// Starts it, and returns when it is ready; fails the test when it does not become so.
    explicit XServer(const std::string& arguments = "");
    ~XServer();
    XServer(const XServer&) = delete;
    XServer& operator=(const XServer&) = delete;

    const std::string& Number() const { return m_number; }
    std::string Name() const { return ":" + m_number; }

    /// Changes the arrangement of its monitors.
    void RunXrandr(const std::string& arguments) const;

private:
    std::FILE* m_output = nullptr;
    int m_process = -1;
    std::string m_number;
};

/// Path of an X server's socket file. Creates the folder.
std::string XSocketPath(const std::string& number);
