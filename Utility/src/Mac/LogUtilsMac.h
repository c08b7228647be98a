#pragma once

#include <string>

/// Facts about the system, the machine, and the running program, as sessions record them. Nothing
/// fails and nothing is logged: what cannot be had has the fallback given here, else is empty.
class LogUtils {
public:
    // The operating system and its user.

    /// "OS <major>.<minor>.<fix>", 0 for a number that cannot be had.
    static std::string GetOSVersion();
    /// "64bit" or "32bit".
    static std::string GetOSType();
    /// Whether the system's kind of hardware is "x86_64".
    static bool Is64BitOS();
    /// The user's locale; empty for a program without an identity of its own.
    static std::string GetOSLanguage();
    /// The user's preferred language; empty for a program without an identity of its own.
    static std::string GetUserLanguage();

    // The machine.

    /// The system's name for the kind of hardware, at most 63 bytes.
    static std::string GetProcessorType();
    /// Decimal; "0" when unknown.
    static std::string GetNumProcessors();
    /// Physical memory in MiB, decimal; "0" when unknown.
    static std::string GetSystemMemory();
    /// Active displays; 0 when there is no display system.
    static int GetMonitorCount();

    // Programs and libraries. Those of the running program are empty while it has no identity.

    /// File name of the running program.
    static std::string GetProcessName();
    /// The bundle's display name, else its name, else that of its executable.
    static std::string GetApplicationName();
    static std::string GetApplicationVersion();
    /// The maker's build number, else the short version text.
    static std::string GetApplicationBuild();
    /// Always empty: bundles do not tell in which language they run.
    static std::string GetApplicationLanguage();
    /// Version of the loaded bundle with that identifier.
    static std::string GetVersion(const std::string& bundleId);
    /// Version of the agent bundle at the path.
    static std::string GetLogTransportAppVersion(const std::string& agentPath);
};
