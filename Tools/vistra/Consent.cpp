#include "Tools/vistra/Consent.h"

#include "LogSession/LogDataValidator.h"
#include "Platform/PlatformString.h"
#include "Tools/vistra/StoredRecords.h"
#include "Utility/src/LogSessionUtils.h"

#include <algorithm>

namespace {

bool NeedsNoQuotes(char c) {
    return LogDataValidator::IsLetter(c) || LogDataValidator::IsNumber(c) ||
           LogDataValidator::IsUnderScore(c) || c == '-' || c == '.';
}

} // namespace

std::string Consent::WhyNoKey(const std::string& key) {
    std::string usable;
    switch (LogDataValidator::VerifyString(key.c_str(), usable, kUsageKeyKind)) {
    case kAccepted:
        return Platform::IsValidUtf8(key) ? "" : "is not UTF-8, so nothing is stored under it";
    case kShortened:
        return "is longer than 64 bytes: a host's key would be cut to " + usable;
    case kBackslash:
        return "holds a backslash, which no usage key may";
    default:
        return "is empty, which no usage key may be";
    }
}

std::string Consent::Store(const std::string& key, int optIn) {
    LogSessionUtils::SetOptIn(key.c_str(), optIn);
    LogSessionUtils::CheckOptDate(key);
    int stored = optIn;
    if (!LogSessionUtils::ReadOptIn(key.c_str(), stored))
        return "cannot be read, so nothing was changed";
    if (stored != optIn)
        return std::string("could not be changed: the answer is still \"") + Name(stored) + "\"";
    if (!LogSessionUtils::CheckOptInExist(key.c_str(),
                                          LogSessionUtils::GenerateOptInDateKey(key).c_str()))
        return "could not be changed: the date of the answer is missing";
    if (optIn == kOptInUnknown && StoredRecords::CountAnswers(key) > 0)
        return "still holds the demographic answers of the key";
    return std::string();
}

const char* Consent::Name(int optIn) {
    switch (optIn) {
    case kOptedIn:
        return "in";
    case kOptedOut:
        return "out";
    case kOptInUnknown:
        return "not asked";
    default:
        return "no known answer";
    }
}

std::string Consent::ShellWord(std::string_view key) {
    const std::string_view separator = key.starts_with('-') ? "-- " : "";
    if (!key.empty() && std::ranges::all_of(key, NeedsNoQuotes))
        return std::string(separator).append(key);
    std::string quoted = std::string(separator) + "'";
    for (const char c : key) {
        if (c == '\'')
            quoted += "'\\'";
        quoted += c;
    }
    return quoted + "'";
}
