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

// The first format whose bit is set in a kind holds.
constexpr Format kFormats[] = {
    {kGroupCategoryKind, Treatment::Name, 128},
    {kSubCategoryKind, Treatment::Plain, 128},
    {kDataKeyKind, Treatment::Name, 128},
    {kValueKind, Treatment::Plain, 512},
    {kUsageKeyKind, Treatment::Plain, 64},
    {kPlain128Kind, Treatment::Plain, 128},
    {kDemographicKeyKind, Treatment::Plain, 64},
    {kDemographicValueKind, Treatment::Plain, 128},
    {kGroupNameKind, Treatment::Name, 128},
    {kSpacedNameKind, Treatment::SpacedName, 64},
    {kEventCategoryKind | kEventNameKind, Treatment::Plain, 128},
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
