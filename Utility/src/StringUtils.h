#pragma once

#include "Platform/PlatformString.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// Characters that the configuration formats treat as blank.
inline constexpr char kBlanks[] = " \t\r\n";

/// What a document holds in place of an absent text.
inline constexpr char kNoValue[] = "NOVALUE";

class StringUtils {
public:
    /// printf-style formatting; empty when the format is not valid UTF-8.
    static std::string FormatString(const char* format, ...)
#if defined(__GNUC__)
        __attribute__((format(printf, 1, 2)))
#endif
        ;

    /// Seven decimal digits made of the MD5 digest of the bytes at `a` followed by those at `b`.
    /// Empty when either is null.
    static std::string Hash(const void* a, unsigned long aLength, const void* b,
                            unsigned long bLength);

    /// Replaces `parts` by the non-empty pieces of `text` between any of the delimiters. An empty
    /// text, or no delimiters, leaves `parts` untouched.
    static void SplitStr(const std::string& text, std::vector<std::string>& parts,
                         const std::string& delimiters);

    /// Appends a platform string for each text; null for a text that is not valid UTF-8. The
    /// caller gives them back with ReleaseCFStrVec.
    static void ConvertStdStrVecToCFStrVec(const std::vector<std::string>& texts,
                                           std::vector<CFStringRef>& strings);
    static void ReleaseCFStrVec(std::vector<CFStringRef>& strings);

    /// The text with U+FFFD in place of ill-formed UTF-8 and of U+FFFE and U+FFFF, which no XML
    /// document may hold.
    static std::string AsDocumentText(std::string_view text);

    /// The text as an XML attribute value: as AsDocumentText, the characters & < > " ' \ written
    /// as references, "NOVALUE" for a null or empty text.
    static std::string ConformXMLString(const char* text);
    /// Writes the same into room for EscapedRoom bytes; returns its end. The text is neither null
    /// nor empty.
    static char* WriteConformXMLString(char* out, std::string_view text);
    /// Bytes that a text may need when every character of it is escaped. Throws when there is no
    /// memory of that size.
    static std::size_t EscapedRoom(std::size_t textBytes) {
        if (textBytes > kLongestTextBytes)
            ThrowTooLong();
        return kLongestReferenceBytes * textBytes + kSlackBytes;
    }

    /// The replacement step of ConformXMLString on well-formed text, in place.
    static void EscapeXML(std::string& text);

    /// The text without leading and trailing characters that belong to `characters`.
    static std::string Trim(const std::string& text, const char* characters);

private:
    static constexpr std::size_t kLongestReferenceBytes = 5;
    /// A character is stored by eight bytes, whatever its length.
    static constexpr std::size_t kSlackBytes = 8;
    /// A record holds several texts, and the sum of their rooms must not wrap around.
    static constexpr std::size_t kLongestTextBytes = SIZE_MAX / 64;

    [[noreturn]] static void ThrowTooLong();
};

/// Lower-cases in place, byte by byte, and returns the text.
std::string& toLower(std::string& text);
