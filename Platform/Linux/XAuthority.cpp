#include "Platform/Linux/XAuthority.h"

#include "Platform/Files.h"
#include "Platform/Linux/Environment.h"
#include "Platform/Linux/EnvironmentFolders.h"

#include <X11/Xauth.h>
#include <cstdio>
#include <memory>
#include <string_view>

namespace Platform {

namespace {

constexpr char kUsualFile[] = "/.Xauthority";
constexpr std::uint64_t kMaximumBytes = 1 << 20;

struct Closer {
    void operator()(std::FILE* file) const { std::fclose(file); }
    void operator()(Xauth* entry) const { ::XauDisposeAuth(entry); }
};

std::string_view Text(const char* text, unsigned short length) {
    return std::string_view(text, length);
}

/// What the library's own search would find; but that waits for a file that is none, reads one of
/// any size, and keeps the name where other threads may change it.
std::optional<std::string> ReadAuthorityFile() {
    const std::string named = Variable("XAUTHORITY");
    if (!named.empty())
        return ReadFile(named, kMaximumBytes);
    const std::string home = HomeFolder();
    return home.empty() ? std::nullopt : ReadFile(home + kUsualFile, kMaximumBytes);
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
    std::optional<std::string> bytes = ReadAuthorityFile();
    if (!bytes || bytes->empty())
        return std::string();
    const std::unique_ptr<std::FILE, Closer> file(::fmemopen(bytes->data(), bytes->size(), "rb"));
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
