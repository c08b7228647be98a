#include "Utility/src/StringUtils.h"

#include "Platform/TextFormat.h"

#include <boost/tokenizer.hpp>
#include <openssl/evp.h>
#include <utf8.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdarg>
#include <cstring>
#include <iterator>
#include <memory>

namespace {

constexpr std::size_t kHashDigits = 7;

constexpr std::size_t kReferenceBytes = 5;

/// The reference that stands for a character in a document; null for one that stands for itself.
constexpr const char* ReferenceFor(unsigned char character) {
    switch (character) {
    case '&':
        return "&#38;";
    case '<':
        return "&#60;";
    case '>':
        return "&#62;";
    case '"':
        return "&#34;";
    case '\'':
        return "&#39;";
    case '\\':
        return "&#92;";
    default:
        return nullptr;
    }
}

struct CharacterClass {
    bool isPlain = true; ///< ASCII that stands for itself
    const char* reference = nullptr;
};

constexpr std::array<CharacterClass, 256> MakeClasses() {
    std::array<CharacterClass, 256> classes{};
    for (std::size_t byte = 0; byte < classes.size(); ++byte) {
        classes[byte].reference = ReferenceFor(static_cast<unsigned char>(byte));
        classes[byte].isPlain = byte < 0x80 && !classes[byte].reference;
    }
    return classes;
}

constexpr std::array<CharacterClass, 256> kClasses = MakeClasses();

const CharacterClass& ClassOf(char character) {
    return kClasses[static_cast<unsigned char>(character)];
}

bool IsPlain(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return ClassOf(c).isPlain; });
}

/// Writes in place into room for the longest outcome: recording a value is mostly this loop.
void AppendEscaped(std::string& out, std::string_view text) {
    const std::size_t start = out.size();
    out.resize(start + text.size() * kReferenceBytes);
    char* end = out.data() + start;
    for (char character : text) {
        const char* reference = ClassOf(character).reference;
        if (reference)
            end = std::copy_n(reference, kReferenceBytes, end);
        else
            *end++ = character;
    }
    out.resize(static_cast<std::size_t>(end - out.data()));
}

std::string WellFormed(std::string_view text) {
    std::string repaired;
    utf8::replace_invalid(text.begin(), text.end(), std::back_inserter(repaired));
    return repaired;
}

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
    const std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context(EVP_MD_CTX_new(),
                                                                          &EVP_MD_CTX_free);
    std::array<unsigned char, EVP_MAX_MD_SIZE> digest;
    unsigned length = 0;
    if (!context || !EVP_DigestInit(context.get(), EVP_md5()) ||
        !EVP_DigestUpdate(context.get(), a, aLength) ||
        !EVP_DigestUpdate(context.get(), b, bLength) ||
        !EVP_DigestFinal(context.get(), digest.data(), &length))
        return std::string();
    std::string digits;
    for (std::size_t i = 0; i < kHashDigits && i < length; ++i)
        digits.push_back(static_cast<char>('0' + digest[i] % 10));
    return digits;
}

void StringUtils::SplitStr(const std::string& text, std::vector<std::string>& parts,
                           const std::string& delimiters) {
    if (text.empty() || delimiters.empty())
        return;
    const boost::char_separator<char> separator(delimiters.c_str());
    const boost::tokenizer<boost::char_separator<char>> tokens(text, separator);
    parts.assign(tokens.begin(), tokens.end());
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

std::string StringUtils::ConformXMLString(const char* text) {
    std::string out;
    AppendConformXMLString(out, text);
    return out;
}

void StringUtils::AppendConformXMLString(std::string& out, const char* text) {
    if (!text || !*text) {
        out.append(kNoValue);
        return;
    }
    const std::string_view bytes(text);
    if (IsPlain(bytes))
        out.append(bytes);
    else if (utf8::is_valid(bytes.begin(), bytes.end()))
        AppendEscaped(out, bytes);
    else
        AppendEscaped(out, WellFormed(bytes));
}

void StringUtils::EscapeXML(std::string& text) {
    std::string escaped;
    AppendEscaped(escaped, text);
    text.swap(escaped);
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
