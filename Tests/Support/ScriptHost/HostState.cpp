#include "Tests/Support/ScriptHost/HostState.h"

#include <algorithm>
#include <cfenv>
#include <clocale>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <set>
#include <sstream>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int kResults = 100; // where they go when the streams are closed

volatile std::sig_atomic_t g_childSignals = 0;
std::set<std::string> g_noted;
void (*g_playOn)();
const char* g_moment = "";

/// What is the host's, a line for each fact. Begins its random numbers anew.
std::set<std::string> State() {
    std::ostringstream out;
    for (int number = 0; number < 256; ++number)
        if (const int flags = ::fcntl(number, F_GETFD); flags != -1)
            out << "descriptor " << number << (flags ? " closed on exec " : " inherited ")
                << std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(number)) << "\n";
    for (int number = 1; number <= SIGRTMAX; ++number) {
        struct sigaction action = {};
        ::sigaction(number, nullptr, &action);
        out << "signal " << number << " " << reinterpret_cast<void*>(action.sa_handler) << " "
            << action.sa_flags << "\n";
    }
    for (char** variable = environ; *variable; ++variable)
        out << *variable << "\n";
    out << "number " << 1234567.5 << "\nlocale " << std::locale().name() << " "
        << std::setlocale(LC_ALL, nullptr) << "\nfolder " << std::filesystem::current_path()
        << "\nchild " << ::waitpid(-1, nullptr, WNOHANG | __WALL) << "\nchildren's signals "
        << g_childSignals << "\nrounding " << std::fegetround() << "\nrandom " << std::rand()
        << "\n";
    std::srand(1);
    // Threads, mask, blocked signals, groups, sessions, limits.
    out << std::ifstream("/proc/self/status").rdbuf() << std::ifstream("/proc/self/limits").rdbuf();
    std::set<std::string> lines;
    std::istringstream in(out.str());
    for (std::string line; std::getline(in, line);)
        lines.insert(line);
    std::erase_if(lines, [](const std::string& line) {
        return line.starts_with("Vm") || line.starts_with("Rss") || line.starts_with("FDSize") ||
               line.starts_with("SigQ") || line.find("voluntary_") != std::string::npos;
    });
    return lines;
}

void PrintChanges() {
    const std::set<std::string> now = State();
    std::cout << "changes:\n";
    std::set_symmetric_difference(g_noted.begin(), g_noted.end(), now.begin(), now.end(),
                                  std::ostream_iterator<std::string>(std::cout, "\n"));
}

/// Reads the lines that are left ahead: a child would read them, too, or make them be read again.
void ReadAhead() {
    static auto& script = *new std::stringbuf;
    if (std::cin.rdbuf() != &script)
        std::cin.get(script, '\0').rdbuf(&script);
}

void CloseStreams() {
    struct Results : std::streambuf {
        int overflow(int character) override {
            const char text = static_cast<char>(character);
            return ::write(kResults, &text, 1) == 1 ? character : -1;
        }
    };
    ReadAhead();
    std::cout.rdbuf(new Results);
    ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, kResults);
    for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream)
        ::close(stream);
}

void ChangeLocale() {
    struct Grouping : std::numpunct<char> {
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };
    std::setlocale(LC_ALL, "C.UTF-8");
    std::locale::global(std::locale(std::locale(), new Grouping));
}

void Fork(const std::string& how) {
    ReadAhead();
    std::cout.flush();
    const pid_t child = ::fork();
    if (child == 0 && how == "exit")
        std::exit(0);
    if (child == 0 && how == "stay" && ::prctl(PR_SET_PDEATHSIG, SIGKILL) == 0)
        ::pause();
    if (child == 0)
        ::_exit(0);
    int status = 0;
    if (how != "stay" && ::waitpid(child, &status, 0) == child)
        std::cout << "child ended with " << status << "\n";
}

void PlayAt(const std::string& moment) {
    if (g_moment == moment)
        g_playOn();
}

void End(const std::string& moment) {
    g_moment = (new std::string(moment))->c_str(); // it outlasts static objects
    std::atexit([] { PlayAt("handler"); });
    std::exit(0);
}

struct StaticObject {
    ~StaticObject() { PlayAt("destructor"); }
} g_object;

// Runs when no library has been initialised.
[[gnu::section(".preinit_array"), gnu::used]] void (*const g_first)() = [] {
    std::atexit([] { PlayAt("last"); });
};

const std::map<std::string, void (*)(const std::string&)> kActs = {
    {"state",
     [](const std::string& what) {
         what == "noted" ? std::srand(1), void(g_noted = State()) : PrintChanges();
     }},
    {"streams", [](const std::string&) { CloseStreams(); }},
    {"locale", [](const std::string&) { ChangeLocale(); }},
    {"umask", [](const std::string& mask) { ::umask(mode_t(std::stoul(mask, nullptr, 8))); }},
    {"shell", [](const std::string& text) { std::cout.flush(), std::system(text.c_str()); }},
    {"children",
     [](const std::string& how) {
         const auto count = [](int) { g_childSignals = g_childSignals + 1; };
         std::signal(SIGCHLD, how == "ignored" ? SIG_IGN : +count);
     }},
    {"fork", Fork},
    {"end", End},
};

} // namespace

void ActAsHost(const std::string& verb, const std::string& argument, void (*playOn)()) {
    g_playOn = playOn;
    kActs.at(verb)(argument);
}
