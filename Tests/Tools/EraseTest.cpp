#include "Platform/Files.h"
#include "Tests/Tools/VistraTest.h"

#include <set>

using namespace testing;
namespace fs = std::filesystem;

namespace {

constexpr char kPrecious[] = "not the library's";
const std::string kGuid = "12345678-1234-1234-1234-123456789ABC";

class EraseTest : public VistraTest {
protected:
    std::string Logs(const std::string& name) const {
        return m_account.LogFolder() + "/../" + name;
    }

    /// A session of a product; a host that crashes leaves its marker, if it had one.
    void Record(const std::string& key, const std::string& product, bool hasMarker,
                const std::string& last = "UTCloseSession s\n") const {
        m_host.Play("UTInitialize " + key + (hasMarker ? " 1" : " 0") +
                    " NULL\nUTSetOptIn 1\nUTStartSession s Suite " + product + " 1.0 1 en\n" +
                    last);
    }

    /// Everything in the account but folders, links included, and sizes with them.
    std::string Files() const {
        std::vector<std::string> lines;
        for (const auto& entry : fs::recursive_directory_iterator(m_account.Home()))
            if (!entry.is_directory() || entry.is_symlink())
                lines.push_back(entry.path().string() + "\n" +
                                (entry.is_regular_file() ? ReadText(entry.path()) : "") + "\n");
        std::ranges::sort(lines);
        std::string all;
        for (const std::string& line : lines)
            all += line;
        return all;
    }

    std::string DocumentOf(const std::string& product) const {
        for (const std::string& name : NamesIn(m_account.LogFolder()))
            if (name.find("_" + product + "_") != std::string::npos)
                return m_account.LogFolder() + "/" + name;
        return std::string();
    }
};

TEST_F(EraseTest, TakesAllThatIsStoredAndNothingElse) {
    Record("key", "Editor", true);
    Record("key", "Crashing", true, "UTSetDemographic Colour red\n");
    WriteText(Logs("Collected/ulog_A_B_" + kGuid + "_" + kGuid + "_12.rdy"), "collected");
    WriteText(m_account.UserPreferences() + ".corrupt", "broken");
    const std::set<std::string> others = {
        Logs("Collected/launches.txt"), m_account.LogFolder() + "/.LogTransportAppLock",
        m_account.LogFolder() + "/notes.xml", Logs("Vistra/SessionInfo/readme")};
    for (const std::string& other : others)
        WriteText(other, kPrecious);
    const std::string config = ReadText(m_account.UserConfigFile()), before = Files();

    const VistraRun dry = Vistra("erase --dry-run"), refused = Vistra("erase");
    EXPECT_EQ(dry.exit, 0) << dry.errors;
    EXPECT_EQ(refused.exit, 2) << "there is nobody to ask";
    EXPECT_EQ(Files(), before);
    EXPECT_THAT(dry.output, HasSubstr("Documents: 5 files, "));
    EXPECT_THAT(dry.output, HasSubstr("Markers of sessions: 1 file, 0 bytes\n"));
    EXPECT_THAT(dry.output, HasSubstr("  key  (answer: in, 0 demographic answers)\n"));
    EXPECT_THAT(dry.output, HasSubstr("  vistra opt-in out key\n"));

    EXPECT_EQ(Vistra("erase --yes").exit, 0);
    for (const std::string& other : others)
        EXPECT_EQ(ReadText(other), kPrecious);
    EXPECT_THAT(NamesIn(m_account.LogFolder()), ElementsAre(".LogTransportAppLock", "notes.xml"));
    EXPECT_THAT(NamesIn(Logs("Collected")), ElementsAre("launches.txt"));
    EXPECT_THAT(NamesIn(Logs("Vistra")), ElementsAre("SessionInfo"));
    EXPECT_THAT(NamesIn(Logs("Vistra/SessionInfo")), ElementsAre("readme"));
    EXPECT_EQ(ReadText(m_account.UserConfigFile()), config);
    EXPECT_THAT(ReadText(m_account.UserPreferences()), Not(HasSubstr("<key>")));
    EXPECT_EQ(Vistra("erase").output, "There is nothing to erase.\n");
}

TEST_F(EraseTest, LeavesSettingsWhereTheyAre) {
    WriteText(m_account.UserConfigFile(), "");
    Vistra("opt-in out key");
    std::string text = ReadText(m_account.UserPreferences());
    text.insert(text.find("<key>key"), "<key>obfuscate</key><integer>0</integer><key>UserType</key>"
                                       "<string>tester</string>");
    WriteText(m_account.UserPreferences(), text);
    EXPECT_EQ(Vistra("erase --yes").exit, 0);
    const std::string left = ReadText(m_account.UserPreferences());
    EXPECT_THAT(left, AllOf(HasSubstr("obfuscate"), HasSubstr("tester"), Not(HasSubstr("OptIn"))));
}

TEST_F(EraseTest, TakesOnlyWhatBelongsToTheKey) {
    fs::remove(m_host.Folder() + "/VSLog.config");
    Record("key", "Editor", true);
    Record("key", "Crashing", true, "UTSetNonDefaultDemographic key Colour red\n");
    Record("key", "Untold", false,
           "UTNewDataGroup s Mine NULL OptInInfo g NULL 0\n"
           "UTAddToGroup s g Key key\n");
    Record("key_2", "Other", true);
    Record("key_2", "OtherCrashing", true, "");
    const VistraRun run = Vistra("erase --key key --yes");
    EXPECT_EQ(run.exit, 1) << run.errors;
    EXPECT_THAT(run.output, HasSubstr(DocumentOf("Untold") + "  does not tell its key\n"));
    for (const char* gone : {"Editor", "Crashing"})
        EXPECT_EQ(DocumentOf(gone), "") << gone;
    for (const char* there : {"Untold", "Other", "OtherCrashing"})
        EXPECT_NE(DocumentOf(there), "") << there;
    EXPECT_THAT(NamesIn(m_account.LogFolder()), SizeIs(5)) << "with two changed decisions";
    EXPECT_THAT(NamesIn(Logs("Vistra/SessionInfo")), ElementsAre(StartsWith("key_2_Suite_Other")));
    const std::string left = ReadText(m_account.UserPreferences());
    for (const char* record : {"<key>key_2</key>", "<key>key_2_Suite_Other_1.0</key>", "GUID"})
        EXPECT_THAT(left, HasSubstr(record));
    for (const char* record : {"<key>key</key>", "<key>key_Suite_Editor_1.0</key>", "Colour"})
        EXPECT_THAT(left, Not(HasSubstr(record)));
}

TEST_F(EraseTest, FindsTheAnswersOfAKeyThatIsAPath) {
    m_host.Play("UTOptInSet a/b 1\nUTSetNonDefaultDemographic a/b Colour red\n"
                "UTSetNonDefaultDemographic a/c Colour blue\n");
    Vistra("erase --key a/b --yes");
    EXPECT_THAT(ReadText(m_account.UserPreferences()),
                AllOf(Not(HasSubstr("OptIn")), Not(HasSubstr("red")), HasSubstr("blue")));
    EXPECT_EQ(Vistra("erase --key 'a\\b' --yes").exit, 2);

    m_host.Play("UTSetDemographic Size large\n");
    for (const char* notItsOwn : {"a", "Demographic"})
        Vistra(std::string("erase --yes --key ") + notItsOwn);
    EXPECT_THAT(ReadText(m_account.UserPreferences()),
                AllOf(HasSubstr("blue"), HasSubstr("large")));
}

TEST_F(EraseTest, KeepsWhatIsInUseAndNeverFollowsALink) {
    fs::remove(m_host.Folder() + "/VSLog.config");
    Record("key", "Editor", true, "");
    const std::string open = DocumentOf("Editor"), precious = Path("precious.xml");
    const Platform::FileHandle host = Platform::OpenLockedFile(open);
    WriteText(precious, kPrecious);
    fs::create_symlink(precious, m_account.LogFolder() + "/ulog_link.xml");
    WriteText(Path("elsewhere/ulog_far.xml"), kPrecious);
    fs::create_directory_symlink(Path("elsewhere"), Logs("Collected"));
    const VistraRun run = Vistra("erase --yes");
    Platform::CloseFile(host);
    EXPECT_EQ(run.exit, 1);
    EXPECT_THAT(run.output, HasSubstr(open + "  is being written: close the program first\n"));
    EXPECT_THAT(run.output, HasSubstr("its session is open: close the program first\n"));
    EXPECT_TRUE(fs::exists(open));
    EXPECT_THAT(NamesIn(Logs("Vistra/SessionInfo")), SizeIs(1));
    EXPECT_TRUE(fs::is_symlink(m_account.LogFolder() + "/ulog_link.xml"));
    EXPECT_EQ(ReadText(precious), kPrecious);
    EXPECT_EQ(ReadText(Path("elsewhere/ulog_far.xml")), kPrecious);
    EXPECT_EQ(Vistra("erase --yes").exit, 1) << "the links";
    EXPECT_FALSE(fs::exists(open));
}

TEST_F(EraseTest, TakesNoMoreThanItHasSaidAndAgreementWasGivenFor) {
    fs::remove(m_host.Folder() + "/VSLog.config");
    Record("key", "Editor", true);
    const std::string said = DocumentOf("Editor"), late = m_account.LogFolder() + "/ulog_late.xml";
    const auto answer = [this](const std::string& what) {
        const std::string command = "cd '" + m_account.Root() +
                                    "'; rm -f out; { i=0; until grep -qs 'y/N' out || "
                                    "[ $((i+=1)) -gt 1000 ]; do sleep 0.02; done; " +
                                    what +
                                    "; } | script -qfec"
                                    " \"'" VISTRA "' erase\" /dev/null >out";
        return WEXITSTATUS(std::system(command.c_str()));
    };
    EXPECT_EQ(answer("echo n"), 4);
    EXPECT_TRUE(fs::exists(said));
    EXPECT_EQ(answer("cp '" + said + "' '" + late +
                     "'; '" VISTRA "' opt-in out key >/dev/null; "
                     "echo y"),
              4);
    EXPECT_FALSE(fs::exists(said));
    EXPECT_TRUE(fs::exists(late));
    EXPECT_THAT(Text("out"), HasSubstr("\"key\" has changed meanwhile"));
    EXPECT_THAT(Vistra("opt-in status key").output, HasSubstr("Answer:              out\n"));
}

TEST_F(EraseTest, TellsWhatItCouldNotLookAt) {
    fs::remove(m_host.Folder() + "/VSLog.config");
    Record("key", "Editor", true);
    const std::string file = m_account.UserPreferences();
    WriteText(file, "broken");
    const VistraRun broken = Vistra("erase --yes");
    EXPECT_EQ(broken.exit, 3);
    EXPECT_THAT(broken.errors, HasSubstr(file + ": cannot be understood"));
    EXPECT_EQ(DocumentOf("Editor"), "") << "the rest is erased";
    fs::remove(file);
    fs::create_directory(file);
    EXPECT_THAT(Vistra("erase --yes").errors, HasSubstr(file + ": cannot be read"));
}

} // namespace
