#include "Platform/Identifier.h"

#include "Platform/Linux/Descriptor.h"

#include <algorithm>
#include <boost/uuid/uuid_io.hpp>
#include <fcntl.h>
#include <unistd.h>

namespace Platform {

namespace {

/// False when the system gives no random bytes.
bool FillAtRandom(boost::uuids::uuid& id) {
    if (::getentropy(id.data, sizeof id.data) == 0)
        return true;
    const Descriptor source = OpenDescriptor("/dev/urandom", O_RDONLY | O_NOCTTY);
    return source.IsOpen() &&
           Retried([&] { return ::read(source.Get(), id.data, sizeof id.data); }) == sizeof id.data;
}

} // namespace

std::string CreateUuidText() {
    boost::uuids::uuid id;
    if (!FillAtRandom(id))
        return std::string();
    id.data[6] = static_cast<std::uint8_t>((id.data[6] & 0x0f) | 0x40); // version 4, random
    id.data[8] = static_cast<std::uint8_t>((id.data[8] & 0x3f) | 0x80); // of the standard variant
    std::string text = boost::uuids::to_string(id);
    std::ranges::transform(text, text.begin(), [](char digit) {
        return digit < 'a' ? digit : static_cast<char>(digit - 'a' + 'A');
    });
    return text;
}

} // namespace Platform
