#include "Utility/src/StringUtils.h"

#include "Platform/TextFormat.h"

#include <md5.h>
#include <utf8.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdarg>
#include <cstdint>
#include <iterator>

namespace {

constexpr std::size_t kHashDigits = 7;

constexpr std::string_view kReplacementCharacter = "\xEF\xBF\xBD";
constexpr std::string_view kNoncharacters[] = {"\xEF\xBF\xBE", "\xEF\xBF\xBF"};

} // namespace

std::string StringUtils::FormatString(const char* format, ...) {
    if (!format || !Platform::IsValidUtf8(format))
        return std::string();
    std::va_list arguments;
    va_start(arguments, format);
    std::string text = Platform::FormatText(format, arguments);
    va_end(arguments);
    return text;
}

std::string StringUtils::Hash(const void* a, unsigned long aLength, const void* b,
                              unsigned long bLength) {
    if (!a || !b)
        return std::string();
    MD5_CTX context;
    std::array<std::uint8_t, MD5_DIGEST_LENGTH> digest;
    ::MD5Init(&context);
    ::MD5Update(&context, static_cast<const std::uint8_t*>(a), aLength);
    ::MD5Update(&context, static_cast<const std::uint8_t*>(b), bLength);
    ::MD5Final(digest.data(), &context);
    std::string digits;
    for (std::size_t i = 0; i < kHashDigits; ++i)
        digits.push_back(static_cast<char>('0' + digest[i] % 10));
    return digits;
}

void StringUtils::SplitStr(const std::string& text, std::vector<std::string>& parts,
                           const std::string& delimiters) {
    if (text.empty() || delimiters.empty())
        return;
    parts.clear();
    std::size_t end = 0;
    for (std::size_t begin = text.find_first_not_of(delimiters); begin != std::string::npos;
         begin = text.find_first_not_of(delimiters, end)) {
        end = std::min(text.find_first_of(delimiters, begin), text.size());
        parts.push_back(text.substr(begin, end - begin));
    }
}

void StringUtils::ConvertStdStrVecToCFStrVec(const std::vector<std::string>& texts,
                                             std::vector<CFStringRef>& strings) {
    strings.reserve(strings.size() + texts.size());
    for (const std::string& text : texts)
        strings.push_back(Platform::CreateString(text));
}

void StringUtils::ReleaseCFStrVec(std::vector<CFStringRef>& strings) {
    std::for_each(strings.begin(), strings.end(), Platform::ReleaseString);
    strings.clear();
}

std::string StringUtils::AsDocumentText(std::string_view text) {
    std::string repaired(EscapedRoom(text.size()), '\0');
    const char* end = utf8::replace_invalid(text.begin(), text.end(), repaired.data());
    repaired.resize(static_cast<std::size_t>(end - repaired.data()));
    for (std::string_view noncharacter : kNoncharacters)
        for (std::size_t at = repaired.find(noncharacter); at != std::string::npos;
             at = repaired.find(noncharacter, at))
            repaired.replace(at, noncharacter.size(), kReplacementCharacter);
    return repaired;
}

std::string StringUtils::Trim(const std::string& text, const char* characters) {
    const std::size_t first = text.find_first_not_of(characters);
    if (first == std::string::npos)
        return std::string();
    return text.substr(first, text.find_last_not_of(characters) - first + 1);
}

std::string& toLower(std::string& text) {
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char character) {
        return static_cast<char>(std::tolower(character));
    });
    return text;
}
