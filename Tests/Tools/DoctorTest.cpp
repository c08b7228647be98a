#include "Tests/Tools/VistraTest.h"

#include <nlohmann/json.hpp>

#include <functional>
#include <ostream>

using testing::HasSubstr;
namespace fs = std::filesystem;

namespace {

/// What stands in the way of a recording, or does not.
struct Situation {
    const char* name;
    const char* reason; ///< the gate that refuses; empty when the session is recorded
    std::function<void(const Sandbox&, const HostBundle&)> prepare;
    std::string options = "--family Suite --product Editor --key key"; ///< of vistra
    std::string initialize = "UTInitialize key 1 NULL\n";              ///< of the host
    std::string product = "Suite Editor";
    int exit = -1; ///< when something cannot be looked at
};

void PrintTo(const Situation& situation, std::ostream* out) {
    *out << situation.name;
}

void Nothing(const Sandbox&, const HostBundle&) {}

std::function<void(const Sandbox&, const HostBundle&)> Configured(const std::string& text) {
    return [text](const Sandbox& account, const HostBundle&) {
        WriteText(account.UserConfigFile(), text);
    };
}

/// A configuration that the agent brings, and the user's, which is older or was never made.
std::function<void(const Sandbox&, const HostBundle&)> Brought(const std::string& text,
                                                               const std::string& old = "") {
    return [text, old](const Sandbox& account, const HostBundle& host) {
        WriteText(host.AgentBundle() + "/Contents/Resources/LogTransport2.cfg", text);
        if (old.empty())
            return;
        WriteText(account.UserConfigFile(), old);
        fs::last_write_time(account.UserConfigFile(),
                            fs::file_time_type::clock::now() - std::chrono::hours(1));
    };
}

std::function<void(const Sandbox&, const HostBundle&)> SharedSwitch(const std::string& value) {
    return [value](const Sandbox& account, const HostBundle&) {
        WriteText(account.Root() + "/etc/xdg/preferences/com.norvale.vistra.apip.plist", value);
    };
}

/// Moves the agent out of the host's bundle.
std::function<void(const Sandbox&, const HostBundle&)> AgentAt(const std::string& folder) {
    return [folder](const Sandbox& account, const HostBundle& host) {
        fs::create_directories(account.Root() + "/" + folder);
        fs::rename(host.AgentBundle(), account.Root() + "/" + folder + "/LogTransport2.app");
    };
}

/// A link in the account, which may be one to itself.
std::function<void(const Sandbox&, const HostBundle&)> LinkAt(const std::string& name,
                                                              const std::string& target) {
    return [name, target](const Sandbox& account, const HostBundle&) {
        const fs::path link = account.Home() + "/" + name;
        fs::create_directories(link.parent_path());
        fs::create_symlink(target, link);
    };
}

/// A file where a folder of the account belongs.
std::function<void(const Sandbox&, const HostBundle&)> FileAt(const std::string& name) {
    return [name](const Sandbox& account, const HostBundle&) {
        fs::remove_all(account.Home() + "/" + name);
        WriteText(account.Home() + "/" + name, "in the way");
    };
}

std::function<void(const Sandbox&, const HostBundle&)> Answered(const std::string& answer) {
    return [answer](const Sandbox&, const HostBundle&) {
        EXPECT_EQ(std::system(("'" VISTRA "' opt-in " + answer + " key >/dev/null").c_str()), 0);
    };
}

const std::string kLong(300, 'e');
const std::string kSwitch = "<plist><dict><key>Enabled</key><integer>0</integer></dict></plist>";
const std::string kUsual = "--family Suite --product Editor --key ";

const Situation kSituations[] = {
    {"Agreed", "", Nothing},
    {"Refused", "consent", Answered("out")},
    {"NotAsked", "consent", Answered("reset")},
    {"NotAskedOfPreRelease", "", Answered("reset"), kUsual + "key --state 0",
     "UTInitialize key 1 NULL\nUTSetSerializationState 0\n"},
    {"EmptyName", "product-texts", Nothing, "--family Suite --product '' --key key",
     "UTInitialize key 1 NULL\n", "Suite \"\""},
    {"LongName", "document-folder", Nothing, "--family Suite --key key --product " + kLong,
     "UTInitialize key 1 NULL\n", "Suite " + kLong},
    {"NameWithDelimiter", "document-folder", Nothing, "--family S/e --product Editor --key key",
     "UTInitialize key 1 NULL\n", "S/e Editor"},
    {"KeyWithBackslash", "usage-key", Nothing, kUsual + "'k\\y'", "UTInitialize k\\y 1 NULL\n"},
    {"KeyNotAsked", "consent", Nothing, kUsual + "other", "UTInitialize other 1 NULL\n"},
    {"Disabled", "configuration", Configured("[ulog]\nstatus=Disabled\n")},
    {"Hibernating", "configuration",
     Configured("[ulog]\nstatus=Hibernate\nwakeupdate=2199-01-01\n")},
    {"HibernationOver", "", Configured("[ulog]\nstatus=Hibernate\nwakeupdate=2001-01-01\n")},
    {"Misspelt", "", Configured("[ulog]\nstatus=disabled\n")},
    {"ProductHibernating", "configuration", Configured("[hibernate]\nsuite_editor=x|2199-01-01\n")},
    {"OtherProductHibernating", "", Configured("[hibernate]\nsuite_viewer=x|2199-01-01\n")},
    {"BroughtDisabled", "configuration", Brought("[ulog]\nstatus=Disabled\n")},
    {"BroughtNewer", "", Brought("[ulog]\nstatus=Disabled\n", "[ulog]\nstatus=Disabled\n")},
    {"BroughtNewerWithHibernation", "configuration",
     Brought("[hibernate]\nsuite_editor=|2199-01-01\n", "[ulog]\nstatus=Active\n")},
    {"ConfigurationIsFolder", "",
     [](const Sandbox& account, const HostBundle&) {
         fs::create_directories(account.UserConfigFile());
     },
     kUsual + "key", "UTInitialize key 1 NULL\n", "Suite Editor", 3},
    {"NoPlaceForConfiguration", "configuration", FileAt(".local/share")},
    {"FileForConfiguration", "", FileAt(".local/share/Norvale")},
    {"LinkToItselfForConfiguration", "",
     LinkAt(".local/share/Norvale/LogTransport2", "LogTransport2")},
    {"BroughtNewerForNoRegularFile", "",
     [](const Sandbox& account, const HostBundle& host) {
         LinkAt(".local/share/Norvale/LogTransport2/LogTransport2.cfg", "/dev/null")(account, host);
         Brought("[hibernate]\nsuite_editor=|2199-01-01\n")(account, host);
     },
     kUsual + "key", "UTInitialize key 1 NULL\n", "Suite Editor", 3},
    {"NoAgent", "agent", AgentAt("elsewhere")},
    {"NamedAgent", "", AgentAt("elsewhere"), kUsual + "key --agent elsewhere",
     "UTInitialize key 1 elsewhere\n"},
    {"AgentBesideNamed", "", AgentAt("App/MacOS"), kUsual + "key --agent App/Frameworks",
     "UTInitialize key 1 App/Frameworks\n"},
    {"SwitchedOff", "enablement", SharedSwitch(kSwitch)},
    {"SwitchBroken", "", SharedSwitch("broken"), kUsual + "key", "UTInitialize key 1 NULL\n",
     "Suite Editor", 3},
    {"PreferencesBroken", "consent",
     [](const Sandbox& account, const HostBundle&) { WriteText(account.UserPreferences(), "?"); },
     kUsual + "key", "UTInitialize key 1 NULL\n", "Suite Editor", 3},
    {"PreferencesUnreadable", "stored-answer",
     [](const Sandbox& account, const HostBundle&) {
         const std::string file = account.UserPreferences();
         fs::remove(file);
         fs::create_directory(file);
     },
     kUsual + "key", "UTInitialize key 1 NULL\n", "Suite Editor", 3},
    {"FileForDocuments", "", FileAt(".local/state/Logs/Norvale/LogTransport2")},
    {"NoPlaceForDocuments", "document-folder", FileAt(".local/state")},
    {"LinkToNothingForDocuments", "document-folder", LinkAt(".local/state", "nowhere")},
};

class DoctorTest : public VistraTest {
protected:
    /// Everything about the account but when it was looked at.
    std::string Tree() const {
        std::string tree;
        for (const char* part : {"home", "etc", "Host.app"})
            if (fs::exists(Path(part)))
                for (const auto& entry : fs::recursive_directory_iterator(Path(part)))
                    tree += Describe(entry);
        return tree;
    }

    bool IsRecorded(const std::string& calls) const {
        const std::string results = m_host.Play(calls);
        for (const std::string& name : NamesIn(m_account.LogFolder()))
            if (name.ends_with(".tmp"))
                return results.ends_with("s=open\n");
        return false;
    }

private:
    static std::string Describe(const fs::directory_entry& entry) {
        const fs::file_status status = entry.symlink_status();
        std::string text = entry.path().string() + " " +
                           std::to_string(static_cast<unsigned>(status.permissions())) + " ";
        if (status.type() == fs::file_type::symlink)
            return text + "\n";
        text += std::to_string(entry.last_write_time().time_since_epoch().count());
        return text + (entry.is_regular_file() ? ReadText(entry.path()) : "") + "\n";
    }
};

class SituationTest : public DoctorTest, public testing::WithParamInterface<Situation> {};

TEST_P(SituationTest, SaysWhatAHostFindsAndLeavesNoTrace) {
    const Situation& situation = GetParam();
    Vistra("opt-in in key");
    situation.prepare(m_account, m_host);
    const std::string before = Tree();
    const std::string options =
        "doctor --host Host.app/Contents/MacOS/Host " + situation.options + " ";
    const VistraRun run = Vistra(options + "--json");
    const std::string told = Vistra(options).output;
    EXPECT_EQ(Tree(), before);

    const auto json = nlohmann::json::parse(run.output);
    EXPECT_EQ(json["reason"].is_null() ? "" : json["reason"].get<std::string>(), situation.reason);
    EXPECT_EQ(json["recording"], IsRecorded(situation.initialize + "UTStartSession s " +
                                            situation.product + " 1.0 100 en_US\n"))
        << run.output;
    EXPECT_EQ(run.exit, situation.exit >= 0 ? situation.exit : (*situation.reason ? 1 : 0));
    EXPECT_THAT(told,
                HasSubstr(*situation.reason ? "\nRecording is off: " : "\nRecording is on: "));
}

INSTANTIATE_TEST_SUITE_P(Doctor, SituationTest, testing::ValuesIn(kSituations),
                         [](const auto& situation) { return situation.param.name; });

TEST_F(DoctorTest, CountsAFileSystemWithoutSpaceAndPrintsNothingThatATerminalActsOn) {
    Vistra("opt-in in key");
    fs::create_directories(fs::path(m_account.LogFolder()).parent_path());
    fs::create_directory_symlink("/proc", m_account.LogFolder()); // which has none
    const VistraRun full = Vistra("doctor --host Host.app/Contents/MacOS/Host " + kUsual + "key");
    EXPECT_EQ(full.exit, 1);
    EXPECT_THAT(full.output, HasSubstr("0.0 MiB are free; more than 10.0 MiB are needed"));
    EXPECT_FALSE(IsRecorded("UTInitialize key 1 NULL\nUTStartSession s Suite Editor 1 1 en\n"));

    const VistraRun hostile = Vistra("doctor --family Suite --product Editor "
                                     "--key \"$(printf 'k\\033[31m\\\\')\" "
                                     "--agent \"$(printf 'a\\033]0;\\n')\"");
    EXPECT_THAT(hostile.output, HasSubstr("a\\x1B]0;"));
    EXPECT_THAT(hostile.output, testing::Not(HasSubstr("\033")));
    EXPECT_EQ(Vistra("doctor --family F --product P --key k --state 4").exit, 2);
    EXPECT_EQ(Vistra("doctor --family F --product P --key k --host nowhere").exit, 2);
}

TEST_F(DoctorTest, TellsAnAnswerThatNobodyGivesFromARefusal) {
    Vistra("opt-in out key");
    std::string text = ReadText(m_account.UserPreferences());
    WriteText(m_account.UserPreferences(), text.replace(text.find("<integer>0") + 9, 1, "7"));
    EXPECT_THAT(Vistra("doctor --host Host.app/Contents/MacOS/Host " + kUsual + "key").output,
                HasSubstr("consent: the stored answer is neither 1 nor 0: 7."));
}

} // namespace
