#include "Utility/src/Encryption.h"

#include <cstring>

namespace {

constexpr int kFirst = 33; ///< first printable character after the blank
constexpr int kHalf = 47;  ///< half of the printable characters

} // namespace

char Encryption::Rot47(char character) {
    // Without branches, so that compilers turn a loop over a text into vector instructions.
    const auto place = static_cast<unsigned char>(character - kFirst);
    const auto moved = static_cast<unsigned char>(place < kHalf ? place + kHalf : place - kHalf);
    return static_cast<char>((place < 2 * kHalf ? moved : place) + kFirst);
}

void Encryption::Rot47(char* text) {
    if (!text)
        return;
    for (; *text; ++text)
        *text = Rot47(*text);
}

void Encryption::Rot47(std::string& text) {
    for (char& character : text)
        character = Rot47(character);
}

char* Encryption::GetRotData(const char* text) {
    if (!text)
        return nullptr;
    const std::size_t length = std::strlen(text);
    char* data = new char[length + 1]();
    std::memcpy(data, text, length);
    Rot47(data);
    return data;
}
