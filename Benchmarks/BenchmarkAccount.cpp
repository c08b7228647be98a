#include "Benchmarks/BenchmarkAccount.h"

#include "LogSession/UTLogData.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

void WriteFile(const fs::path& path, const std::string& text) {
    fs::create_directories(path.parent_path());
    std::ofstream(path) << text;
}

std::string Preferences(bool obfuscate) {
    return std::string("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>"
                       "<key>obfuscate</key><integer>") +
           (obfuscate ? "1" : "0") +
           "</integer><key>send</key><integer>0</integer></dict></plist>\n";
}

/// The machine id decides the name of the preferences file; a first stored opt-in creates it.
fs::path PreferencesFile(const fs::path& home) {
    UTSetOptIn(1);
    for (const auto& entry : fs::directory_iterator(home / ".config/preferences/ByHost"))
        if (entry.path().extension() == ".plist")
            return entry.path();
    return {};
}

} // namespace

BenchmarkAccount::BenchmarkAccount(bool obfuscate)
    : m_root(fs::current_path() / ("benchmark-account-" + std::to_string(::getpid()))) {
    fs::create_directories(m_root);
    ::setenv("HOME", m_root.c_str(), 1);
    for (const char* name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME"})
        ::unsetenv(name);
    WriteFile(m_root + "/LogTransport2.app/Contents/MacOS/LogTransport2", "");
    UTInitialize("Benchmark", 0, m_root.c_str());
    WriteFile(PreferencesFile(m_root), Preferences(obfuscate));
    UTSetOptIn(1);
}

BenchmarkAccount::~BenchmarkAccount() {
    fs::remove_all(m_root);
}
