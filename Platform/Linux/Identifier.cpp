#include "Platform/Identifier.h"

#include <array>
#include <uuid.h>

namespace Platform {

std::string CreateUuidText() {
    uuid_t uuid;
    std::array<char, UUID_STR_LEN> text;
    ::uuid_generate_random(uuid);
    ::uuid_unparse_upper(uuid, text.data());
    return text.data();
}

} // namespace Platform
