#pragma once

#include <string>

/// Opt-in values as they are exchanged and stored.
enum OptInValue : int { kOptInUnknown = -1, kOptedOut = 0, kOptedIn = 1 };

/// The few facts, kept in the preferences, that decide whether and how usage is recorded, and some
/// about the machine. Every call reads or writes the preferences afresh. Failures are silent: a
/// read gives the default, a write false. A stored value of the wrong kind counts as absent.
class LogSessionUtils {
public:
    /// Whether recording is on for this machine.
    static bool IsVistraEnabled();
    /// Always true.
    static bool UsageCompressFlag();
    /// Whether documents are obfuscated; true unless switched off.
    static bool UsageObfuscateFlag();
    /// Whether finished documents are handed to the agent; true unless switched off.
    static bool UsageSendFlag();

    /// The user's opt-in for a product, kOptInUnknown when there is none.
    static int GetOptIn(const char* productKey);
    /// Stores an opt-in. kOptInUnknown forgets it and the demographic answers; other values than
    /// the three store nothing. Always true.
    static bool SetOptIn(const char* productKey, int value);

    /// Like GetOptIn, but false, with `value` unchanged, when what is stored cannot be read.
    static bool ReadOptIn(const char* productKey, int& value);
    /// Puts back what GetOptIn told; the demographic answers stay.
    static void RestoreOptIn(const char* productKey, int value);

    // A text of the product's record, such as its date.

    static bool SetOptIn(const char* productKey, const char* subKey, const char* value);
    static bool CheckOptInExist(const char* productKey, const char* subKey);
    static bool GetOptIn(const char* productKey, const char* subKey, std::string& out);

    /// Sub-key of the date of a product's record.
    static std::string GenerateOptInDateKey(const std::string& productKey);
    /// Stores the current time as the product's date unless one is there. -1 for an empty key,
    /// else 0.
    static int CheckOptDate(const std::string& productKey);

    static bool GetSerializationState(const char* productKey, const char* subKey, int& out);
    static bool SetSerializationState(const char* productKey, const char* subKey, int value);

    /// What kind of user this is, as the user's administrator noted it; empty when nobody did.
    static std::string GetUserType();

    // Facts about the machine and the user's programs: Mac/LogSessionUtilsMac.cpp. Nothing fails.

    /// The maker's name for the processor; "NOVALUE" when unknown.
    static std::string GetProcessorName();
    /// The maker's name for the machine, at most 63 bytes; empty when unknown.
    static std::string GetProcessorModel();
    /// The processor's clock in MHz, decimal; "0" when unknown.
    static std::string GetProcessorSpeed();
    /// The user's browser; when none is known, false with a fixed name. The version is always
    /// empty.
    static bool GetDefaultBrowser(std::string& browser, std::string& version);
    /// Always empty.
    static std::string GetOSName();
};
