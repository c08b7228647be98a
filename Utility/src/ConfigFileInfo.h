#pragma once

#include <string>
#include <utility>
#include <vector>

class ConfigFileContainer;

/// All values of the agent's configuration in one record.
struct ConfigFileInfo {
    int maxDiskSpace = 0;
    int retryInterval = 0;
    int maxRetries = 0;
    std::string baseUrl;
    std::string uploadUrl;
    std::string configUrl;
    std::string ulogStatus;
    std::string fathomUrl;
    std::vector<std::pair<std::string, std::string>> hibernateEntries;

    /// Fills the record; invalid values are repaired in the container.
    void GetConfigInfo(ConfigFileContainer& config);

    /// Replaces `products` by the keys of the hibernating products; true when there are any.
    bool GetHibernateProducts(std::vector<std::string>& products) const;
};
