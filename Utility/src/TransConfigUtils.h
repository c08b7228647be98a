#pragma once

#include <cstdint>
#include <string>

class ConfigFileContainer;

/// Whether usage collection takes place.
enum VS_CONFIG_STATE : std::int32_t {
    VS_CONFIG_ACTIVE = 0,
    VS_CONFIG_DISABLED = 1,
    VS_CONFIG_HIBERNATE = 2,
};

/// The meaning of the agent's configuration. Missing and malformed values are replaced by their
/// defaults in the container; nothing is cached, locked or logged.
class TransConfigUtils {
public:
    /// Writes a new file with every default. An empty path does nothing; a failure is ignored.
    static void CreateDefaultConfig(const std::string& path);

    /// Writes the source's content to the destination with collection forced active. Empty paths
    /// do nothing; an unreadable source counts as empty.
    static void ReplaceConfig(const std::string& source, const std::string& destination);

    /// Switches collection on in a table.
    static void ForceActive(ConfigFileContainer& config);

    /// State of one application by the file, which is rewritten. 1 when `state` is null or the
    /// path empty, else 0. The last argument is not used.
    static int GetStatus(const std::string& family, const std::string& name,
                         const std::string& path, const std::string& section,
                         VS_CONFIG_STATE* state, unsigned* reserved);

    /// State of all collection. 1 when `state` is null, else 0.
    static int GetOverallStatus(ConfigFileContainer& config, const std::string& section,
                                VS_CONFIG_STATE* state, unsigned* reserved);

    /// State of one application, in which `state` is left alone when there is no entry. Always 0.
    static int GetProductStatus(const std::string& family, const std::string& name,
                                ConfigFileContainer& config, const std::string& section,
                                VS_CONFIG_STATE* state, unsigned* reserved);

    /// Hibernate while the date lies after today, else active, also when it is unreadable.
    static VS_CONFIG_STATE GetHibernateState(const std::string& date);
    static VS_CONFIG_STATE GetStateFromString(const std::string& text);
    static std::string GetStatusString(VS_CONFIG_STATE state);

    static int GetMaxDiskSpace(ConfigFileContainer& config);
    static int GetRetryInterval(ConfigFileContainer& config);
    static int GetMaxRetries(ConfigFileContainer& config);
    static std::string GetBaseUrl(ConfigFileContainer& config);
    static bool ValidUrl(const std::string& url);
    static std::string GetUlogStatus(ConfigFileContainer& config);

    /// Whether the POSIX extended regular expression matches anywhere in the text.
    static bool IsMatch(const char* text, const char* pattern);

    /// Merges a configuration update into the target: sections marked "operation=Merge" key by
    /// key, others as a whole. Always 0.
    static int Process(ConfigFileContainer& target, const std::string& update);
};
