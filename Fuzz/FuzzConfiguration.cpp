#include "Fuzz/FuzzInput.h"
#include "Tests/Support/Sandbox.h"
#include "Utility/src/ConfigFileContainer.h"
#include "Utility/src/ConfigFileInfo.h"
#include "Utility/src/TransConfigUtils.h"

namespace {

std::string Path() {
    static const Sandbox folder;
    return folder.Root() + "/file.cfg";
}

ConfigFileContainer Rewritten(ConfigFileContainer config) {
    Require(config.Write(Path()) == 0 && config.Read(Path()) == 0, "not written or not read");
    return config;
}

/// What a file holds is kept, unless a section has the separator in its name: another section and
/// key are written then.
void CheckText(const std::string& text) {
    ConfigFileContainer config;
    config.Update(text);
    Require(Rewritten(config).Entries() == config.Entries() || text.find('/') != std::string::npos,
            "changed by writing it");
}

void CheckEdits(ConfigFileContainer config, const std::string& section, const std::string& key,
                const std::string& value) {
    config.SetValue(key, value);
    if (!config.SetValue(section, key, value).empty())
        Require(config.GetValue(section, key) == value, "a value that was set is not there");
    config.RemoveSection(section);
    std::vector<ConfigFileContainer::Entry> entries;
    config.EnumSection(section.c_str(), entries);
    Require(entries.empty() || section.find('\0') != std::string::npos, "not removed");
}

/// A state, once told and repaired, stays as it is.
void CheckStates(const std::string& family, const std::string& name, const std::string& text) {
    WriteText(Path(), text);
    VS_CONFIG_STATE states[3] = {};
    for (VS_CONFIG_STATE& state : states)
        TransConfigUtils::GetStatus(family, name, Path(), "ulog", &state, nullptr);
    Require(states[1] == states[2], "the state changed");
}

void CheckSettings(ConfigFileContainer config) {
    ConfigFileInfo info;
    info.GetConfigInfo(config);
    Require(info.maxDiskSpace >= 5 && info.maxDiskSpace <= 100 && info.maxRetries >= 1 &&
                info.maxRetries <= 5 && TransConfigUtils::ValidUrl(info.baseUrl),
            "a setting out of its range");
}

} // namespace

/// A configuration, an update of it, and section, key and value of an edit; a form feed ends each.
int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    FuzzInput input(bytes, size);
    const std::string text = input.Text('\f'), update = input.Text('\f');
    const std::string section = input.Text('\f'), key = input.Text('\f'), value = input.Text('\f');
    CheckText(text);
    CheckStates(section, key, text);
    ConfigFileContainer config;
    config.Update(text);
    TransConfigUtils::Process(config, update);
    CheckSettings(config);
    CheckEdits(config, section, key, value);
    TransConfigUtils::GetHibernateState(value);
    return 0;
}
