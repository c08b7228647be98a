#include "Platform/Identifier.h"

#include <array>
#include <unistd.h>
#include <uuid.h>

namespace Platform {

std::string CreateUuidText() {
    uuid_t uuid;
    std::array<char, UUID_STR_LEN> text;
    // The library's own generator seeds rand() anew, whose sequence is the host's.
    if (::getentropy(uuid, sizeof uuid) != 0)
        ::uuid_generate_random(uuid);
    uuid[6] = static_cast<unsigned char>((uuid[6] & 0x0f) | 0x40); // version 4, random
    uuid[8] = static_cast<unsigned char>((uuid[8] & 0x3f) | 0x80); // of the standard variant
    ::uuid_unparse_upper(uuid, text.data());
    return text.data();
}

} // namespace Platform
