#include "Platform/Linux/XAuthority.h"

#include "Platform/Linux/Descriptor.h"

#include <X11/Xauth.h>
#include <array>
#include <cstdio>
#include <fcntl.h>
#include <memory>
#include <string_view>
#include <unistd.h>

namespace Platform {

namespace {

struct Closer {
    void operator()(std::FILE* file) const { std::fclose(file); }
    void operator()(Xauth* entry) const { ::XauDisposeAuth(entry); }
};

std::string HostName() {
    std::array<char, 256> name = {};
    ::gethostname(name.data(), name.size() - 1);
    return name.data();
}

std::string_view Text(const char* text, unsigned short length) {
    return std::string_view(text, length);
}

/// The library's own search would wait for a file that is none, and open it inheritably.
std::unique_ptr<std::FILE, Closer> OpenAuthorityFile() {
    const char* const path = ::XauFileName();
    Descriptor file = path ? OpenRegularFile(path, O_RDONLY) : Descriptor();
    std::unique_ptr<std::FILE, Closer> stream(file.IsOpen() ? ::fdopen(file.Get(), "rb") : nullptr);
    if (stream)
        file.Release();
    return stream;
}

bool IsFor(const Xauth& entry, std::string_view host, std::string_view display) {
    const bool isHost =
        entry.family == FamilyWild ||
        (entry.family == FamilyLocal && Text(entry.address, entry.address_length) == host);
    const std::string_view number = Text(entry.number, entry.number_length);
    return isHost && (number.empty() || number == display) &&
           Text(entry.name, entry.name_length) == kXCookieMethod;
}

} // namespace

std::string FindXCookie(int display) {
    const auto file = OpenAuthorityFile();
    if (!file)
        return std::string();
    const std::string host = HostName();
    const std::string number = std::to_string(display);
    while (const std::unique_ptr<Xauth, Closer> entry{::XauReadAuth(file.get())})
        if (IsFor(*entry, host, number))
            return std::string(Text(entry->data, entry->data_length));
    return std::string();
}

} // namespace Platform
