#include "Tests/Support/Sandbox.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace fs = std::filesystem;

namespace {

std::optional<std::string> Variable(const std::string& name) {
    const char* value = std::getenv(name.c_str());
    return value ? std::optional<std::string>(value) : std::nullopt;
}

void Assign(const std::string& name, const std::optional<std::string>& value) {
    if (value)
        ::setenv(name.c_str(), value->c_str(), 1);
    else
        ::unsetenv(name.c_str());
}

} // namespace

Sandbox::Sandbox() {
    std::string pattern = (fs::temp_directory_path() / "vistra-test-XXXXXX").string();
    m_root = fs::canonical(::mkdtemp(pattern.data())).string();
    fs::create_directories(Home());
    SetVariable("HOME", Home());
    SetVariable("XDG_CONFIG_DIRS", m_root + "/etc/xdg");
    for (const char* name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "DISPLAY",
                             "XAUTHORITY", "LC_ALL", "LC_MESSAGES", "LANGUAGE"})
        SetVariable(name, std::nullopt);
    SetVariable("LANG", "de_DE.UTF-8");
}

Sandbox::~Sandbox() {
    for (const auto& [name, value] : m_saved)
        Assign(name, value);
    std::error_code ignored;
    fs::remove_all(m_root, ignored);
}

std::string Sandbox::LogFolder() const {
    return Home() + "/.local/state/Logs/Norvale/LogTransport2";
}

std::string Sandbox::UserPreferences() const {
    const std::string folder = Home() + "/.config/preferences/ByHost/";
    for (const std::string& name : NamesIn(folder))
        if (name.starts_with("com.norvale.vistra.") && name.ends_with(".plist"))
            return folder + name;
    return folder + "missing.plist";
}

std::string Sandbox::UserConfigFile() const {
    return Home() + "/.local/share/Norvale/LogTransport2/LogTransport2.cfg";
}

std::string Sandbox::DiagnosticLog() const {
    return Home() + "/.local/state/Logs/Norvale/Vistra/VSLog-LogSession.txt";
}

void Sandbox::SetVariable(const std::string& name, const std::optional<std::string>& value) {
    m_saved.try_emplace(name, Variable(name));
    Assign(name, value);
}

std::string ReadText(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << path;
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

void WriteText(const std::string& path, const std::string& text) {
    fs::create_directories(fs::path(path).parent_path());
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file << text;
    ASSERT_TRUE(file.good()) << path;
}

std::vector<std::string> NamesIn(const std::string& folder) {
    std::vector<std::string> names;
    std::error_code missing;
    for (const auto& entry : fs::directory_iterator(folder, missing))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}
