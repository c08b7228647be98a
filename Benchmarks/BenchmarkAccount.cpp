#include "Benchmarks/BenchmarkAccount.h"

#include "LogSession/UTLogData.h"

#include <chrono>
#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

/// Longer than a changed preferences file is mistrusted.
constexpr std::chrono::milliseconds kSettlingTime{100};
constexpr char kBrowsers[] = "[Default Applications]\ntext/html=browser.desktop\n"
                             "x-scheme-handler/http=browser.desktop;\n";
constexpr char kOtherFile[] = "other-";
constexpr char kIdleProgram[] = "/bin/true";

std::string NewFolder() {
    std::string path = (fs::temp_directory_path() / "vistra-benchmark-XXXXXX").string();
    if (!::mkdtemp(path.data()))
        throw std::runtime_error("no folder for the account");
    return fs::canonical(path).string();
}

void WriteFile(const fs::path& path, const std::string& text) {
    fs::create_directories(path.parent_path());
    std::ofstream(path) << text;
}

std::string PropertyListOf(const std::string& entries) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>" + entries +
           "</dict></plist>\n";
}

std::string Switch(const char* name, bool value) {
    return std::string("<key>") + name + "</key><integer>" + (value ? "1" : "0") + "</integer>";
}

/// Two switches, and for the rest products that the user has been asked for.
std::string Preferences(const AccountSettings& settings) {
    std::string entries = Switch("send", settings.send) + Switch("obfuscate", settings.obfuscate);
    for (int product = 2; product < settings.storedKeys; ++product)
        entries += "<key>Product" + std::to_string(product) +
                   "</key><dict><key>OptIn</key><integer>1</integer>"
                   "<key>Date</key><string>2026-01-01T00:00:00Z</string></dict>";
    return PropertyListOf(entries);
}

/// The machine decides the name of the preferences file, which a first setting creates.
fs::path PreferencesFile(const fs::path& home) {
    for (const auto& entry : fs::directory_iterator(home / ".config/preferences/ByHost"))
        if (entry.path().extension() == ".plist")
            return entry.path();
    return {};
}

template <class Function>
Function* Exported(const char* name) {
    static void* const library = ::dlopen(VISTRA_LIBRARY, RTLD_NOW);
    return reinterpret_cast<Function*>(::dlsym(library, name));
}

/// Gives the user the settings, and leaves no first time for the session that is measured.
void UseLibrary(const std::string& root, const AccountSettings& settings) {
    const auto setOptIn = Exported<decltype(UTSetOptIn)>("UTSetOptIn");
    LogSession* session = nullptr;
    Exported<decltype(UTInitialize)>("UTInitialize")(BenchmarkAccount::kUsageKey, 1, root.c_str());
    setOptIn(1);
    WriteFile(PreferencesFile(root), Preferences(settings));
    setOptIn(1);
    Exported<decltype(UTStartSession)>("UTStartSession")(&session, "Benchmark", "Session", "1.0",
                                                         "1", "en");
    Exported<decltype(UTCloseSession)>("UTCloseSession")(&session);
}

/// Runs the work in a child process; throws when it did not come to its end.
template <class Work>
void InChild(Work work) {
    const pid_t child = ::fork();
    if (child == 0) {
        work();
        ::_exit(0);
    }
    int status = -1;
    if (::waitpid(child, &status, 0) != child || status != 0)
        throw std::runtime_error("the account could not be set up");
}

} // namespace

BenchmarkAccount::BenchmarkAccount(const AccountSettings& settings) : m_root(NewFolder()) {
    for (const char* name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "DISPLAY"})
        ::unsetenv(name);
    Enter();
    WriteFile(m_root + "/LogTransport2.app/Contents/Info.plist",
              PropertyListOf("<key>CFBundleVersion</key><string>2.0</string>"));
    fs::create_directories(fs::path(AgentProgram()).parent_path());
    fs::copy_file(kIdleProgram, AgentProgram());
    WriteFile(m_root + "/.config/mimeapps.list", kBrowsers);
    InChild([this, &settings] { UseLibrary(m_root, settings); });
    RemoveDocuments();
    AddOtherFiles(settings.otherFiles);
    std::this_thread::sleep_for(kSettlingTime);
}

BenchmarkAccount::~BenchmarkAccount() {
    fs::remove_all(m_root);
}

void BenchmarkAccount::Enter() const {
    ::setenv("HOME", m_root.c_str(), 1);
}

std::string BenchmarkAccount::AgentProgram() const {
    return m_root + "/LogTransport2.app/Contents/MacOS/LogTransport2";
}

std::string BenchmarkAccount::LogFolder() const {
    return m_root + "/.local/state/Logs/Norvale/LogTransport2";
}

std::string BenchmarkAccount::MarkerFolder() const {
    return m_root + "/.local/state/Logs/Norvale/Vistra/SessionInfo";
}

void BenchmarkAccount::RemoveDocuments() const {
    for (const auto& file : fs::directory_iterator(LogFolder()))
        if (!file.path().filename().string().starts_with(kOtherFile))
            fs::remove(file);
}

void BenchmarkAccount::AddOtherFiles(int count) const {
    for (int i = 0; i < count; ++i)
        WriteFile(LogFolder() + "/" + kOtherFile + std::to_string(i), "");
}
