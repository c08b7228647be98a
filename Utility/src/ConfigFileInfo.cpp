#include "Utility/src/ConfigFileInfo.h"

#include "Utility/src/ConfigFileContainer.h"
#include "Utility/src/ConfigVocabulary.h"
#include "Utility/src/TransConfigUtils.h"

void ConfigFileInfo::GetConfigInfo(ConfigFileContainer& config) {
    maxDiskSpace = TransConfigUtils::GetMaxDiskSpace(config);
    retryInterval = TransConfigUtils::GetRetryInterval(config);
    maxRetries = TransConfigUtils::GetMaxRetries(config);
    baseUrl = TransConfigUtils::GetBaseUrl(config);
    uploadUrl = baseUrl + "/UploadFile/";
    configUrl = baseUrl + "/GetConfig/";
    fathomUrl = baseUrl + "/GetFathom.aspx";
    ulogStatus = TransConfigUtils::GetUlogStatus(config);
    hibernateEntries.clear();
    config.EnumSection(ConfigVocabulary::kHibernateSection, hibernateEntries);
}

bool ConfigFileInfo::GetHibernateProducts(std::vector<std::string>& products) const {
    products.clear();
    for (const auto& [name, value] : hibernateEntries) {
        std::string key = ConfigFileContainer::KeyOf(name);
        if (key != ConfigVocabulary::kOperationKey)
            products.push_back(std::move(key));
    }
    return !products.empty();
}
