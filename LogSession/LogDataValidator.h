#pragma once

#include <string>
#include <string_view>

/// How a caller's string is treated: one format bit, and what else is allowed.
enum StringKind : int {
    kGroupCategoryKind = 0x1,     ///< name with prefix, 128 bytes
    kSubCategoryKind = 0x2,       ///< 128 bytes
    kDataKeyKind = 0x4,           ///< name with prefix, 128 bytes
    kValueKind = 0x8,             ///< 512 bytes
    kUsageKeyKind = 0x10,         ///< 64 bytes, no backslash
    kPlain128Kind = 0x20,         ///< 128 bytes
    kDemographicKeyKind = 0x40,   ///< 64 bytes
    kDemographicValueKind = 0x80, ///< 128 bytes
    kGroupNameKind = 0x100,       ///< name with prefix, 128 bytes
    kEventCategoryKind = 0x20000, ///< 128 bytes
    kEventNameKind = 0x40000,     ///< 128 bytes
    kSpacedNameKind = 0x40000000, ///< name without prefix, blanks allowed, 64 bytes
    kNullAllowed = 0x2000000,     ///< null becomes "NOVALUE"
    kEmptyAllowed = 0x4000000,    ///< the empty string becomes "NOVALUE"
    kOptional = kNullAllowed | kEmptyAllowed,
};

/// Results of the validator and of the environment checks.
enum ValidationCode : int {
    kAccepted = 0,
    kShortened = 1, ///< accepted after cutting
    kNullString = 3,
    kEmptyString = 5,
    kBackslash = 6,
    kBadOptInValue = 9,
    kConfigNotActive = 12,
    kAgentMissing = 13,
    kRecordingDisabled = 14,
};

/// Written in place of a refused string.
inline constexpr char kNullMarker[] = "VS_STR_NULL";
inline constexpr char kEmptyMarker[] = "VS_STR_EMPTY";
/// Put in front of a name that does not begin with a letter.
inline constexpr char kNamePrefix[] = "VS_";
/// Error types in a document.
inline constexpr char kInvalidString[] = "VS_INVALID_STRING";
inline constexpr char kInvalidGroupId[] = "VS_INVALID_GROUPID";

/// Checks on what a host passes, and on whether recording may take place. Never fails and never
/// logs: every input ends in a code and a usable text.
class LogDataValidator {
public:
    // ASCII classes; bytes from 0x80 up belong to none.
    static bool IsLetter(char c);
    static bool IsSpace(char c); ///< the blank only
    static bool IsNumber(char c);
    static bool IsUnderScore(char c);
    static bool IsCharInvalidII(char c); ///< not for a name
    static bool IsCharInvalid(char c);   ///< not for a name with blanks

    /// Cuts to the limit in bytes; true when it cut.
    static bool CheckLength(std::string& s, unsigned long limit);
    /// Makes a name of the text, with the prefix where needed; true when it cut.
    static bool EscapeNameII(std::string& s, unsigned long limit);
    /// Makes a name with blanks of the text; true when it cut.
    static bool EscapeName(std::string& s, unsigned long limit);
    /// Applies the kind's treatment; true when it cut.
    static bool EscapeString(std::string& s, int kind);

    /// True only if the whole check would accept the text and leave it as it is; takes no copy.
    static bool StandsAsItIs(std::string_view text, int kind);
    /// The whole check. Returns a ValidationCode; `out` receives the usable text or a marker.
    static int VerifyString(const char* input, std::string& out, int kind);

    /// Whether the agent's configuration lets this application collect: kAccepted or
    /// kConfigNotActive. Brings the configuration file up to date.
    static int VerifyConfigStatus(const std::string& prefix, const std::string& family,
                                  const std::string& name);
    /// kAccepted or kAgentMissing.
    static int VerifyTransAgentExist();
    /// kAccepted or kRecordingDisabled.
    static int VerifyGroupPolicy();
    /// kAccepted or kBadOptInValue.
    static int VerifyOptinValue(int value, int a, int b, int c);
};
