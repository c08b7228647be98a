// The agent's configuration as a session start would find it, after bringing it up to date.

#include "Platform/FileReading.h"
#include "Platform/UserFolders.h"
#include "Tools/vistra/FolderOutlook.h"
#include "Tools/vistra/Gates.h"
#include "Utility/src/ConfigFileContainer.h"
#include "Utility/src/ConfigVocabulary.h"
#include "Utility/src/Mac/FileSystemUtils.h"
#include "Utility/src/Mac/LogTransUtilsMac.h"
#include "Utility/src/TransConfigUtils.h"

using namespace ConfigVocabulary;

namespace {

bool Read(ConfigFileContainer& config, const std::string& file, Gate& gate) {
    if (config.Read(file) != ConfigFileContainer::kFailure)
        return true;
    gate.notes.push_back(file + " cannot be read, and counts as empty");
    gate.isMissed = true;
    return false;
}

bool CanBeReplaced(const std::string& file) {
    return Platform::MayBeWritten(file) &&
           Platform::MayBeWritten(FileSystemUtils::GetParentPath(file));
}

/// What stands in the user's file when the start asks it; the file may first be set anew. One that
/// cannot be read stays so, as it keeps its permissions.
void ReadUserFile(ConfigFileContainer& config, const std::string& defaultFile, Gate& gate) {
    if (!Read(config, gate.file, gate) || !LogTransUtils::IsUserCfgOutdated(gate.file, defaultFile))
        return;
    if (!CanBeReplaced(gate.file)) {
        gate.notes.push_back("the newer " + defaultFile +
                             " should take its place, but the file may not be written");
        return;
    }
    gate.notes.push_back("a session start would first set " + gate.file +
                         " anew from this newer file, with collection active");
    gate.file = defaultFile;
    Read(config, gate.file, gate);
    TransConfigUtils::ForceActive(config);
}

/// What a missing file would be made as.
void ReadNewFile(ConfigFileContainer& config, const FolderOutlook& folder,
                 const std::string& defaultFile, Gate& gate) {
    const bool hasDefault = FileSystemUtils::DoesPathExist(defaultFile);
    if (!Platform::MayBeWritten(folder.nearest)) {
        gate.notes.push_back("the file cannot be made, so that collection counts as active");
    } else if (hasDefault) {
        gate.notes.push_back("a session start would make " + gate.file + " as a copy of this file");
        gate.file = defaultFile;
        Read(config, gate.file, gate);
    } else {
        gate.notes.push_back("a session start would make the file, with collection active");
    }
}

std::string ValueOf(const ConfigFileContainer& config, const char* key) {
    return config.GetValue(kUlogSection, key);
}

std::string InSection(const char* section, const std::string& what) {
    return std::string("in section [").append(section).append("] ").append(what);
}

/// Asks the state of all collection. The container is repaired, so what stood there is kept first.
bool AskOverallState(ConfigFileContainer& config, Gate& gate) {
    const std::string status = ValueOf(config, kStatusKey),
                      wakeUp = ValueOf(config, kWakeUpDateKey);
    VS_CONFIG_STATE state = VS_CONFIG_ACTIVE;
    TransConfigUtils::GetOverallStatus(config, kUlogSection, &state, nullptr);
    if (state == VS_CONFIG_ACTIVE) {
        if (!status.empty() && status != TransConfigUtils::GetStatusString(state))
            gate.notes.push_back(std::string(kStatusKey) + "=" + status +
                                 (wakeUp.empty() ? "" : " until " + wakeUp) +
                                 " counts as Active, and would be replaced by it");
        return true;
    }
    gate.Refuse(state == VS_CONFIG_DISABLED ? "collection is disabled"
                                            : "collection hibernates until " + wakeUp);
    gate.change = InSection(kUlogSection, "set status=Active");
    return false;
}

void AskProductState(ConfigFileContainer& config, const SessionStart& start, Gate& gate) {
    const std::string entry = start.family + "_" + start.product;
    const std::string value = config.GetValue(kHibernateSection, entry);
    VS_CONFIG_STATE state = VS_CONFIG_ACTIVE;
    TransConfigUtils::GetProductStatus(start.family, start.product, config, kHibernateSection,
                                       &state, nullptr);
    if (state != VS_CONFIG_ACTIVE) {
        gate.Refuse("this product hibernates: " + entry + "=" + value);
        gate.change = InSection(kHibernateSection, "delete the line " + entry + "=...");
    } else if (!value.empty()) {
        gate.notes.push_back("this product's hibernation, " + value +
                             ", is over and would be deleted");
    }
}

} // namespace

Gate AskConfiguration(const SessionStart& start) {
    Gate gate("configuration", "agent's configuration", "collection is active");
    gate.file = LogTransUtils::FindUserCfg();
    const std::string defaultFile = LogTransUtils::FindDefaultCfg(BundleOf(start));
    if (start.program.empty())
        gate.notes.push_back("without --host, what an agent inside the host's bundle would bring "
                             "is not looked at");
    ConfigFileContainer config;
    if (FileSystemUtils::DoesPathExist(gate.file)) {
        ReadUserFile(config, defaultFile, gate);
    } else {
        const FolderOutlook folder = LookAtFolder(kApplicationSupportFolderType, kUserCfgFolder);
        if (folder.state == FolderOutlook::State::CannotBe) {
            gate.Refuse(folder.folder.empty()
                            ? "the user has no home folder"
                            : folder.folder + " cannot be made: see " + folder.obstacle);
            return gate;
        }
        ReadNewFile(config, folder, defaultFile, gate);
    }
    gate.change = InSection(kUlogSection, "set status=Disabled to switch collection off");
    if (AskOverallState(config, gate))
        AskProductState(config, start, gate);
    return gate;
}
