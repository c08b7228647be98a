#include "LogSession/LogDataValidator.h"

#include "Utility/src/StringUtils.h"

#include <algorithm>

namespace {

enum class Treatment { Name, SpacedName, Plain };

struct Format {
    int bits;
    Treatment treatment;
    unsigned long limit;
};

constexpr unsigned long kNameLimit = 128;
constexpr unsigned long kValueLimit = 512;

// The first format whose bit is set in a kind holds.
constexpr Format kFormats[] = {
    {kGroupCategoryKind, Treatment::Name, kNameLimit},
    {kSubCategoryKind, Treatment::Plain, kNameLimit},
    {kDataKeyKind, Treatment::Name, kNameLimit},
    {kValueKind, Treatment::Plain, kValueLimit},
    {kUsageKeyKind, Treatment::Plain, 64},
    {kPlain128Kind, Treatment::Plain, kNameLimit},
    {kDemographicKeyKind, Treatment::Plain, 64},
    {kDemographicValueKind, Treatment::Plain, kNameLimit},
    {kGroupNameKind, Treatment::Name, kNameLimit},
    {kSpacedNameKind, Treatment::SpacedName, 64},
    {kEventCategoryKind | kEventNameKind, Treatment::Plain, kNameLimit},
};

} // namespace

bool LogDataValidator::IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool LogDataValidator::IsSpace(char c) {
    return c == ' ';
}

bool LogDataValidator::IsNumber(char c) {
    return c >= '0' && c <= '9';
}

bool LogDataValidator::IsUnderScore(char c) {
    return c == '_';
}

bool LogDataValidator::IsCharInvalidII(char c) {
    return !IsLetter(c) && !IsNumber(c) && !IsUnderScore(c);
}

bool LogDataValidator::IsCharInvalid(char c) {
    return IsCharInvalidII(c) && !IsSpace(c);
}

bool LogDataValidator::CheckLength(std::string& s, unsigned long limit) {
    if (s.size() <= limit)
        return false;
    s.resize(limit);
    return true;
}

bool LogDataValidator::EscapeNameII(std::string& s, unsigned long limit) {
    if (!s.empty() && !IsLetter(s.front()))
        s.insert(0, kNamePrefix);
    const bool cut = CheckLength(s, limit);
    std::replace_if(s.begin(), s.end(), IsCharInvalidII, '_');
    return cut;
}

bool LogDataValidator::EscapeName(std::string& s, unsigned long limit) {
    const bool cut = CheckLength(s, limit);
    std::replace_if(s.begin(), s.end(), IsCharInvalid, '_');
    return cut;
}

bool LogDataValidator::EscapeString(std::string& s, int kind) {
    const Format* format = std::find_if(std::begin(kFormats), std::end(kFormats),
                                        [kind](const Format& f) { return kind & f.bits; });
    if (format == std::end(kFormats))
        return false;
    switch (format->treatment) {
    case Treatment::Name:
        return EscapeNameII(s, format->limit);
    case Treatment::SpacedName:
        return EscapeName(s, format->limit);
    case Treatment::Plain:
        break;
    }
    return CheckLength(s, format->limit);
}

bool LogDataValidator::StandsAsItIs(std::string_view text, int kind) {
    switch (kind & ~kOptional) {
    case kValueKind:
        return !text.empty() && text.size() <= kValueLimit;
    case kSubCategoryKind:
    case kEventCategoryKind:
    case kEventNameKind:
        return !text.empty() && text.size() <= kNameLimit;
    case kGroupCategoryKind:
    case kDataKeyKind:
    case kGroupNameKind:
        return !text.empty() && text.size() <= kNameLimit && IsLetter(text.front()) &&
               std::all_of(text.begin(), text.end(), [](char c) { return !IsCharInvalidII(c); });
    default:
        return false; // seldom asked for: the whole check will tell
    }
}

int LogDataValidator::VerifyString(const char* input, std::string& out, int kind) {
    if (!input) {
        out = kind & kNullAllowed ? kNoValue : kNullMarker;
        return kind & kNullAllowed ? kAccepted : kNullString;
    }
    out = input;
    if (out.empty()) {
        out = kind & kEmptyAllowed ? kNoValue : kEmptyMarker;
        return kind & kEmptyAllowed ? kAccepted : kEmptyString;
    }
    if ((kind & kUsageKeyKind) && out.find('\\') != std::string::npos)
        return kBackslash;
    return EscapeString(out, kind) ? kShortened : kAccepted;
}
