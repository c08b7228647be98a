#pragma once

#include <cstddef>
#include <string>

/// ROT47: printable characters other than the blank change places, everything else stays. The
/// transform is its own inverse.
class Encryption {
public:
    static char Rot47(char character);

    /// In place; null is ignored.
    static void Rot47(char* text);
    static void Rot47(std::string& text);
    static void Rot47(char* bytes, std::size_t length);

    /// A new NUL-terminated array that the caller deletes; null for a null text.
    static char* GetRotData(const char* text);
};

/// Stands in clear before the obfuscated text of a document.
inline constexpr char kObfuscationMarker[] = "Q-B$ko#$zRUd5wuxelin";
