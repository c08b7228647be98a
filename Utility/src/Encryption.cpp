#include "Utility/src/Encryption.h"

#include <cstring>

namespace {

constexpr int kFirst = 33; ///< first printable character after the blank
constexpr int kHalf = 47;  ///< half of the printable characters

/// A byte of ones, or of zeros.
constexpr signed char Mask(bool condition) {
    return static_cast<signed char>(-static_cast<int>(condition));
}

} // namespace

char Encryption::Rot47(char character) {
    // Masks on signed bytes: compilers turn a loop of these into a few vector instructions. The
    // printable characters come to lie at the lower end of the signed numbers.
    constexpr int kLowest = -128;
    const auto byte = static_cast<signed char>(character);
    const auto place = static_cast<signed char>(byte + kLowest - kFirst);
    const signed char isPrintable = Mask(place < kLowest + 2 * kHalf);
    const signed char isLower = Mask(place < kLowest + kHalf);
    return static_cast<char>(byte + (isPrintable & -kHalf) + (isLower & (2 * kHalf)));
}

void Encryption::Rot47(char* text) {
    if (!text)
        return;
    for (; *text; ++text)
        *text = Rot47(*text);
}

void Encryption::Rot47(std::string& text) {
    Rot47(text.data(), text.size());
}

void Encryption::Rot47(char* bytes, std::size_t length) {
    for (std::size_t i = 0; i < length; ++i)
        bytes[i] = Rot47(bytes[i]);
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
