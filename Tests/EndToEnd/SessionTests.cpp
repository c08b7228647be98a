#include "Tests/EndToEnd/EndToEndTest.h"
#include "Tests/Support/XServer.h"

#include <regex>

using namespace testing;
namespace fs = std::filesystem;

namespace {

using SessionTest = EndToEndTest;

std::string Masked(const std::string& text) {
    static const std::regex guid("[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}");
    static const std::regex time("[0-9-]{10}T[0-9:]{8}Z");
    static const std::regex fact("(name=\"(OS|OSType|Num\\w+|Processor\\w*|Speed|Memory)\" data=\")"
                                 "[^\"]+");
    static const std::regex version("(dll\" data=\")[0-9]+\\.[0-9]+\\.[0-9]+");
    std::string masked = std::regex_replace(text, guid, "GUID");
    masked = std::regex_replace(masked, version, "$1LIBRARY");
    masked = std::regex_replace(masked, fact, "$1MACHINE");
    return std::regex_replace(masked, time, "TIME");
}

std::string Expected(const std::string& name) {
    return ReadText(TEST_DATA "/Sessions/" + name);
}

TEST_F(SessionTest, LeavesItsDocumentPlainOrObfuscated) {
    for (const bool obfuscate : {false, true}) {
        Prefer("obfuscate", obfuscate);
        EXPECT_EQ(m_host.Play(kOpen + "UTLogEvent s <File> Open Image NULL 0\n" + kClose),
                  "s=open\ns=NULL\n");
        ASSERT_EQ(Files().size(), 1U);
        EXPECT_THAT(Masked(Files()[0]), EndsWith(std::string("/ulog_Suite_Editor_GUID_GUID_0.") +
                                                 (obfuscate ? "rdy" : "xml")));
        EXPECT_EQ(fs::status(Files()[0]).permissions(), fs::perms(0600));
        EXPECT_EQ(Masked(ClearText(Files()[0])), Expected("session.xml"));
        fs::remove(Files()[0]);
    }
    EXPECT_EQ(m_host.Launches(), 3U) << "two sessions and an opt-in document";
}

TEST_F(SessionTest, TellsOfEachDisplayInAGroupOfItsOwn) {
    const XServer server;
    server.RunXrandr("--setmonitor one 900/240x720/190+0+0 screen "
                     "--setmonitor two 380/100x700/190+900+0 none");
    m_account.SetVariable("DISPLAY", server.Name());
    std::vector<DocumentRecord> records;
    // A server is not waited for, and on a busy machine it may not answer at once.
    for (int i = 0; i < 20 && records.size() <= kStartRecords + kEndRecords; ++i) {
        ClearFolder();
        m_host.Play(kOpen + kClose);
        records = ReadSession(Files());
    }
    EXPECT_THAT(Briefs(records), HasSubstr(Expected("displays.txt")));
}

TEST_F(SessionTest, NamesProgramAndAgentAsTheirBundlesDo) {
    m_account.SetVariable("LANGUAGE", "sv:en");
    const auto told = [this](const std::string& info, const std::string& prefix = "") {
        for (const std::string& bundle : {m_host.Folder(), m_host.AgentBundle()})
            WriteText(bundle + "/Contents/Info.plist",
                      ReadText(TEST_DATA "/Bundles/" + info + ".plist"));
        ClearFolder();
        m_host.Play(kOpen + kClose, prefix);
        const std::vector<DocumentRecord> records = ReadSession(Files());
        std::string values;
        for (const std::size_t i : {11U, 12U, 23U, 24U, 25U, 28U})
            values += records[i]["data"] + " ";
        return values;
    };
    EXPECT_EQ(told("Identity"), "de_DE sv NOVALUE NOVALUE NOVALUE NOVALUE ");
    EXPECT_EQ(told("Usual"), "de_DE sv Name 1.2 short 1.2 ");
    EXPECT_EQ(told("EmptyTexts"), "de_DE sv Executable NOVALUE 4 NOVALUE ");
    EXPECT_EQ(told("WrongKinds"), "de_DE sv Name NOVALUE short NOVALUE ");
    EXPECT_EQ(told("WrongIdentity"), "NOVALUE NOVALUE NOVALUE NOVALUE NOVALUE 1.2 ");
    EXPECT_EQ(told("Broken"), "NOVALUE NOVALUE NOVALUE NOVALUE NOVALUE NOVALUE ");
    EXPECT_EQ(told("Binary"), "de_DE sv Bin\u00E4r 2.1 77 2.1 ");
    // A program that is in no bundle has its Info.plist beside it.
    fs::copy_file(SCRIPT_HOST, m_host.Folder() + "/Plain");
    const std::string plain = "Host.app/Plain <calls >results; exit;";
    EXPECT_EQ(told("Usual", plain), "NOVALUE NOVALUE NOVALUE NOVALUE NOVALUE 1.2 ");
    fs::copy_file(TEST_DATA "/Bundles/Usual.plist", m_host.Folder() + "/Info.plist");
    EXPECT_EQ(told("Identity", plain), "de_DE sv Name 1.2 short NOVALUE ");
}

TEST_F(SessionTest, HasAMarkerThatNamesAProgramThoughItWasDeleted) {
    m_host.Play("host shell \"rm Host.app/Contents/MacOS/Host\"\nUTInitialize key 1 NULL\n"
                "UTSetOptIn 1\n" +
                kStart);
    EXPECT_THAT(NamesIn(m_account.Home() + "/.local/state/Logs/Norvale/Vistra/SessionInfo"),
                ElementsAre(EndsWith("_Host.sif")));
}

TEST_F(SessionTest, IsToldInTheLog) {
    m_host.Play(kOpen + "UTAddToGroup s 1 K V\n" + kClose);
    std::string log;
    for (const std::string& message : m_host.Log())
        log += message.substr(0, message.find('/')) + "\n";
    EXPECT_EQ(log, Expected("log.txt"));
    EXPECT_THAT(LinesOf(m_account.DiagnosticLog())[0],
                MatchesRegex(".INFO. . PID:[0-9]+ . TIME:.{20} . VALUE:UTInitialize . "
                             "DETAIL:File:LogSession/WrapperUTLogData LINE:[0-9]+"));
}

TEST_F(SessionTest, NeedsConsent) {
    for (int i = 0; i < 12; ++i) {
        const int optIn = i / 4 - 1, state = i % 4;
        const bool consent = optIn == 1 || (optIn == -1 && state == 0);
        fs::remove(m_account.DiagnosticLog());
        m_host.Play(kInitialize + "UTSetOptIn " + std::to_string(optIn) +
                    "\nUTSetSerializationState " + std::to_string(state) +
                    "\nUTSetSerializationState 5\n" + kStart + kClose);
        EXPECT_EQ(Files().size(), consent) << optIn << " " << state;
        EXPECT_THAT(m_host.Log(), Contains("DEBUG OptInPolicy: 0").Times(consent ? 0 : 1));
        ClearFolder();
    }
}

TEST_F(SessionTest, RefusedByAGateLeavesALineInTheLogAndNothingElse) {
    const auto expectRefused = [this](const std::string& calls, const std::string& line) {
        fs::remove(m_account.DiagnosticLog());
        EXPECT_THAT(m_host.Play("copy s F\n" + calls), EndsWith("s=NULL\n")) << line;
        EXPECT_THAT(m_host.Log(), Contains("DEBUG " + line));
        EXPECT_THAT(NamesIn(m_account.LogFolder()), IsEmpty()) << line;
    };
    expectRefused(kInitialize + "UTSetOptIn 2\n" + kStart, "OptInSet VerifyOptinValue: 2");
    const std::string start = kInitialize + "UTSetOptIn 1\nUTStartSession s ";
    expectRefused(start + "NULL n v b l", "VerifyString pcAppFamily: VS_STR_NULL");
    expectRefused(start + "f \"\" v b l", "VerifyString pcAppName: VS_STR_EMPTY");
    expectRefused(start + "f n NULL b l", "VerifyString pcAppversion: VS_STR_NULL");
    expectRefused(kStart, "gsPrefx: ");
    expectRefused("UTInitialize \"\" 0 NULL\n" + kStart, "pcUsagekey: VS_STR_EMPTY");
    expectRefused("UTInitialize a\\b 0 NULL\n" + kStart, "pcUsagekey: a\\b");
    // The agent's own configuration stands for the user's while there is none.
    const std::string agents = m_host.AgentBundle() + "/Contents/Resources/LogTransport2.cfg";
    fs::remove(m_account.UserConfigFile());
    WriteText(agents, "[ulog]\nstatus=Disabled");
    expectRefused(kOpen, "VerifyConfigStatus failure");
    for (const char* off : {"[ulog]\nstatus=Disabled", "[hibernate]\nsuite_editor=x|2999-01-01"}) {
        WriteText(m_account.UserConfigFile(), off);
        expectRefused(kOpen, "VerifyConfigStatus failure");
    }
    // Being newer, it takes its place, but for the state.
    fs::last_write_time(m_account.UserConfigFile(),
                        fs::file_time_type::clock::now() - std::chrono::hours(9));
    PreferenceUtil::SetPreferenceValue("Enabled", PreferenceKeys::kEnablementDomain, 0,
                                       kCFPreferencesAnyUser, kCFPreferencesCurrentHost);
    expectRefused(kOpen, "VerifyGroupPolicy failure");
    fs::remove_all(m_host.AgentBundle());
    expectRefused(kOpen, "VerifyTransAgentExist failure");
}

TEST_F(SessionTest, RecordsEachChangeOfTheOptInOnce) {
    for (const auto& [optIn, document] : {std::pair("0", "never-in.xml"),
                                          {"0", ""},
                                          {"1", "opted-in.xml"},
                                          {"0", "no-longer-in.xml"}}) {
        m_host.Play(kInitialize + "UTSetSerializationState 1\nUTSetOptIn " + optIn + "\n" + kStart);
        const auto files = Files("ulog_VistraOptinProductFamily_VistraOptinProduct_00000000-0000-");
        ASSERT_EQ(files.size(), *document ? 1U : 0U);
        EXPECT_EQ(*document ? Masked(ClearText(files[0])) : "",
                  *document ? Expected(document) : "");
        ClearFolder();
    }
    EXPECT_EQ(m_host.Launches(), 3U);
}

constexpr std::size_t kThreshold = 102'400;

std::string Fill(std::size_t records, std::size_t length = 500) {
    return "repeat " + std::to_string(records) + " UTAddToSession s Key " +
           std::string(length, 'x') + "\n";
}

TEST_F(SessionTest, IsSplitRightAfterTheRecordThatReachesTheThreshold) {
    m_host.Play(kOpen + Fill(420) + kClose);
    ASSERT_THAT(Files(), ElementsAre(EndsWith("_0.rdy"), EndsWith("_1.rdy"), EndsWith("_2.rdy")));
    EXPECT_EQ(m_host.Launches(), 4U) << "three files and an opt-in document";
    const std::vector<DocumentRecord> records = ReadSession(Files());
    std::size_t counted = 0, last = 0;
    for (const DocumentRecord& record : records)
        if (record.kind == "SplitSession") {
            EXPECT_TRUE(counted >= kThreshold && counted - last < kThreshold);
            counted = 0;
        } else if (record.kind == "ResumeSession") {
            EXPECT_EQ(record.brief, "ResumeSession|Suite|Editor|1.0|100|en_US");
            EXPECT_EQ(record["SessionStartTime"] + record["User"],
                      records[0]["time"] + records[7]["data"]);
        } else {
            counted += last = record.text.size();
        }
}

TEST_F(SessionTest, ThatMayNoLongerSendClearsTheFolderAtEachHandOver) {
    fs::rename(m_host.AgentBundle(), m_account.Root() + "/LogTransport2.app");
    Prefer("obfuscate", 0);
    const std::string initialize = "UTInitialize key 0 \"" + m_account.Root() + "\"\nUTSetOptIn ";
    const std::string open = initialize + "1\n" + kStart;
    for (const std::string& calls :
         {open + "UTSetOptIn 0\n", open + "UTSetOptIn -1\n", open + "UTInitialize key 0 /no\n",
          initialize + "-1\nUTSetSerializationState 0\n" + kStart +
              "UTSetSerializationState 2\n"}) {
        EXPECT_THAT(m_host.Play(calls + Fill(1) + kClose), EndsWith("s=NULL\n"));
        EXPECT_THAT(NamesIn(m_account.LogFolder()), IsEmpty()) << calls;
        m_host.Play(calls + Fill(190));
        ASSERT_THAT(NamesIn(m_account.LogFolder()), ElementsAre(EndsWith("_0.tmp"))) << calls;
        EXPECT_THAT(ClearText(Files()[0]), ContainsRegex("0.5.4\">\n<ResumeSession [^>]*>\n$"));
        ClearFolder();
    }
}

TEST_F(SessionTest, ThatReachesTheThresholdWithItsEndHasASecondRootEnd) {
    Prefer("obfuscate", 0);
    Prefer("send", 0);
    m_host.Play(kOpen + Fill(300, 200) + kClose);
    const std::size_t size = ReadSession(Files())[200].text.size();
    const std::size_t missing = kThreshold - ReadText(Files()[0]).size();
    const std::size_t more = (missing - 200) / size, last = missing - more * size - (size - 200);
    ClearFolder();
    m_host.Play(kOpen + Fill(300 + more, 200) + Fill(1, last) + kClose);
    ASSERT_EQ(Files().size(), 2U);
    EXPECT_THAT(ReadText(Files()[0]), ContainsRegex("<EndSession [^>]*>\n</UsageDoc>\n"
                                                    "<SplitSession [^>]*>\n</UsageDoc>\n$"));
    EXPECT_THAT(ReadText(Files()[1]), ContainsRegex("0.5.4\">\n<ResumeSession [^>]*>\n$"));
    EXPECT_EQ(m_host.Launches(), 0U) << "sending is off";
}

} // namespace
