#pragma once

#include "Platform/Bundle.h"

#include <cstdint>
#include <string>

/// The agent that collects finished documents: where it and its files are, and starting it.
/// Failures show as empty paths and false results; only UploadLog logs.
class LogTransUtils {
public:
    static bool GetBaseDir(std::int16_t domain, std::uint32_t type, bool create, std::string& path);
    static bool GetAppSupportDataDir(std::string& path);
    static bool GetUserLibraryDir(std::string& path);

    /// Application Support joined with the folder, created; empty when it cannot be made.
    static std::string GetUserCfgDir(const std::string& relativeFolder);
    /// Path of the policy file, its folder created.
    static std::string GetUserFathomPath();
    /// Path of the user's configuration file, which is brought up to date with the default.
    static std::string GetUserCfgFullPath();
    // The same without a change: the user's configuration file, the one that came with the agent
    // inside a host, and whether the first would be set anew from the second. Empty without a home
    // folder or a bundle.

    static std::string FindUserCfg();
    static std::string FindDefaultCfg(const CFBundleRef& host);
    static bool IsUserCfgOutdated(const std::string& userFile, const std::string& defaultFile);

    static std::string GetTransporterDefaultCfgDir();
    static std::string GetTransporterDefaultCfgDir(const CFBundleRef& host);
    /// The folder of usage documents, created; the path is returned also when that fails.
    static std::string GetUserLogFullPath();
    /// Path of the agent's lock file; empty without a folder of usage documents.
    static std::string GetResourceId();

    /// Sets the folder that the host says holds the agent; null changes nothing.
    static void SetLogTransportInputPath(const char* folder);
    static std::string GetLogTransportInputPath();

    static std::string GetExePathFromLogTransportBundlePath(const std::string& bundlePath);
    static std::string GetNonDefaultLogTransportExeFullPath(const std::string& bundlePath);
    /// Where the agent is beside the executable of a host that named, for example, its framework
    /// folder.
    static std::string GetBundlePathBeside(const std::string& bundlePath);
    /// Empty when there is no agent.
    static std::string GetTransporterExeFullPath();
    static std::string GetAgentPath();
    static bool AgentExists();
    /// Always true; does nothing.
    static bool SaveTransporterExePath();

    /// Starts the agent, which finds finished documents by itself, and logs its path. False for an
    /// empty document path, and when the agent could not be started. Where there is no agent the
    /// shell is given an empty command, which succeeds: ask AgentExists first.
    static bool UploadLog(const std::string& documentPath);

    /// Bundle path that the host named; lives until the process ends.
    static std::string* gwsLogTransportPath;
};

/// Folder of the user's configuration file, below Application Support.
inline constexpr char kUserCfgFolder[] = "/Norvale/LogTransport2/";

/// The agent bundle inside a host's bundle, and the executable inside the agent's.
extern const char* const kTransportBundlePath;
extern const char* const kTransportExecutableSubPath;
