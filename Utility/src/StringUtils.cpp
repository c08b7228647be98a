#include "Utility/src/StringUtils.h"

#include "Platform/TextFormat.h"

#include <boost/algorithm/string/replace.hpp>
#include <boost/tokenizer.hpp>
#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <utf8.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdarg>
#include <cstring>
#include <iterator>
#include <memory>
#include <stdexcept>

namespace {

constexpr std::size_t kHashDigits = 7;

constexpr std::size_t kLongestReferenceBytes = 5;

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

constexpr std::array<const char*, 256> MakeReferences() {
    std::array<const char*, 256> references{};
    for (std::size_t byte = 0; byte < references.size(); ++byte)
        references[byte] = ReferenceFor(static_cast<unsigned char>(byte));
    return references;
}

constexpr std::array<bool, 256> MakePlain() {
    std::array<bool, 256> plain{};
    for (std::size_t byte = 0; byte < 0x80; ++byte)
        plain[byte] = !ReferenceFor(static_cast<unsigned char>(byte));
    return plain;
}

constexpr std::array<const char*, 256> kReferences = MakeReferences();
/// ASCII that stands for itself.
constexpr std::array<bool, 256> kPlain = MakePlain();

/// Recording a value that is full of markup is mostly this loop.
char* WriteEscaped(char* out, std::string_view text) {
    for (char character : text) {
        const char* reference = kReferences[static_cast<unsigned char>(character)];
        if (reference)
            out = std::copy_n(reference, kLongestReferenceBytes, out);
        else
            *out++ = character;
    }
    return out;
}

constexpr std::string_view kReplacementCharacter = "\xEF\xBF\xBD";
constexpr std::string_view kNoncharacters[] = {"\xEF\xBF\xBE", "\xEF\xBF\xBF"};

/// Whether the text may stand in a document as it is, but for characters to escape.
bool IsDocumentText(std::string_view text) {
    return utf8::is_valid(text.begin(), text.end()) &&
           std::none_of(std::begin(kNoncharacters), std::end(kNoncharacters),
                        [text](std::string_view noncharacter) {
                            return text.find(noncharacter) != std::string_view::npos;
                        });
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
    // A digest crashes once libcrypto has shut down, which comes before some exit handlers.
    if (!a || !b || !OPENSSL_init_crypto(0, nullptr))
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

std::string StringUtils::AsDocumentText(std::string_view text) {
    std::string repaired;
    utf8::replace_invalid(text.begin(), text.end(), std::back_inserter(repaired));
    for (std::string_view noncharacter : kNoncharacters)
        boost::algorithm::replace_all(repaired, noncharacter, kReplacementCharacter);
    return repaired;
}

std::string StringUtils::ConformXMLString(const char* text) {
    if (!text || !*text)
        return kNoValue;
    std::string out(EscapedRoom(std::strlen(text)), '\0');
    const char* end = WriteConformXMLString(out.data(), text);
    out.resize(static_cast<std::size_t>(end - out.data()));
    return out;
}

std::size_t StringUtils::EscapedRoom(std::size_t textBytes) {
    // A record holds several texts, and their sum must not wrap around either.
    if (textBytes > std::string().max_size() / 8 / kLongestReferenceBytes)
        throw std::length_error("text");
    return textBytes * kLongestReferenceBytes;
}

char* StringUtils::WriteConformXMLString(char* out, std::string_view text) {
    char* end = out;
    for (char character : text) {
        if (!kPlain[static_cast<unsigned char>(character)])
            return IsDocumentText(text) ? WriteEscaped(out, text)
                                        : WriteEscaped(out, AsDocumentText(text));
        *end++ = character;
    }
    return end;
}

void StringUtils::EscapeXML(std::string& text) {
    std::string escaped(EscapedRoom(text.size()), '\0');
    const char* end = WriteEscaped(escaped.data(), text);
    escaped.resize(static_cast<std::size_t>(end - escaped.data()));
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
