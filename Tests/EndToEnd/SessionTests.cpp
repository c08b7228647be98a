#include "Tests/EndToEnd/EndToEndTest.h"
#include "Tests/Support/XServer.h"

#include <regex>

using namespace testing;
namespace fs = std::filesystem;

namespace {

using SessionTest = EndToEndTest;

constexpr char kDocument[] = R"(<?xml version="1.0" encoding="utf-8"?>

<UsageDoc version="0.5.4">
<StartSession id="GUID" time="TIME" seq="0" />
<NewGroup category="Vistra" subcategory="NOVALUE" name="Session" time="TIME" group="1" doc="0" seq="1" />
<DataRec time="TIME" group="1" name="ProductFamily" data="Suite" seq="2" />
<DataRec time="TIME" group="1" name="ProductName" data="Editor" seq="3" />
<DataRec time="TIME" group="1" name="ProductVersion" data="1.0" seq="4" />
<DataRec time="TIME" group="1" name="ProductBuild" data="100" seq="5" />
<DataRec time="TIME" group="1" name="ProductLanguage" data="en_US" seq="6" />
<DataRec time="TIME" group="1" name="User" data="GUID" seq="7" />
<NewGroup category="Vistra" subcategory="NOVALUE" name="SystemInfo" time="TIME" group="2" doc="0" seq="8" />
<DataRec time="TIME" group="2" name="OS" data="MACHINE" seq="9" />
<DataRec time="TIME" group="2" name="OSType" data="MACHINE" seq="10" />
<DataRec time="TIME" group="2" name="OSLanguage" data="de_DE" seq="11" />
<DataRec time="TIME" group="2" name="UserLanguage" data="de_DE" seq="12" />
<DataRec time="TIME" group="2" name="Processor" data="MACHINE" seq="13" />
<DataRec time="TIME" group="2" name="ProcessorName" data="MACHINE" seq="14" />
<DataRec time="TIME" group="2" name="ProcessorModel" data="MACHINE" seq="15" />
<DataRec time="TIME" group="2" name="NumProcessors" data="MACHINE" seq="16" />
<DataRec time="TIME" group="2" name="Speed" data="MACHINE" seq="17" />
<DataRec time="TIME" group="2" name="Memory" data="MACHINE" seq="18" />
<DataRec time="TIME" group="2" name="MonitorCount" data="0" seq="19" />
<DataRec time="TIME" group="2" name="DefaultBrowser" data="com.apple.safari " seq="20" />
<NewGroup category="Vistra" subcategory="NOVALUE" name="Demographics" time="TIME" group="3" doc="0" seq="21" />
<NewGroup category="Vistra" subcategory="NOVALUE" name="ExecutableInfo" time="TIME" group="4" doc="0" seq="22" />
<DataRec time="TIME" group="4" name="ExecutableName" data="Test Host" seq="23" />
<DataRec time="TIME" group="4" name="ExecutableVersion" data="7" seq="24" />
<DataRec time="TIME" group="4" name="ExecutableBuild" data="7.1" seq="25" />
<DataRec time="TIME" group="4" name="ExecutableLanguage" data="NOVALUE" seq="26" />
<NewGroup category="Vistra" subcategory="NOVALUE" name="UsageVersionInfo" time="TIME" group="5" doc="0" seq="27" />
<DataRec time="TIME" group="5" name="LogTransport2.exe" data="2.0" seq="28" />
<DataRec time="TIME" group="5" name="LogSession.dll" data="LIBRARY" seq="29" />
<EventRec doc="0" category="&#60;File&#62;" subcategory="Open" name="Image" time="TIME" seq="30" />
<NewGroup category="Vistra" subcategory="NOVALUE" name="OptInInfo" time="TIME" group="6" doc="0" seq="31" />
<DataRec time="TIME" group="6" name="Key" data="key" seq="32" />
<DataRec time="TIME" group="6" name="OptedIn" data="TRUE" seq="33" />
<DataRec time="TIME" group="6" name="Date" data="TIME" seq="34" />
<EndSession id="GUID" time="TIME" seq="35" />
</UsageDoc>
)";

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

TEST_F(SessionTest, LeavesItsDocumentPlainOrObfuscated) {
    for (const bool obfuscate : {false, true}) {
        Prefer("obfuscate", obfuscate);
        EXPECT_EQ(m_host.Play(kOpen + "UTLogEvent s <File> Open Image NULL 0\n" + kClose),
                  "s=open\ns=NULL\n");
        ASSERT_EQ(Files().size(), 1U);
        EXPECT_THAT(Masked(Files()[0]), EndsWith(std::string("/ulog_Suite_Editor_GUID_GUID_0.") +
                                                 (obfuscate ? "rdy" : "xml")));
        EXPECT_EQ(fs::status(Files()[0]).permissions(), fs::perms(0600));
        EXPECT_EQ(Masked(ClearText(Files()[0])), kDocument);
        EXPECT_EQ(ReadSession(Files()).size(), kStartRecords + 1 + kEndRecords);
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
    EXPECT_THAT(Briefs(records), HasSubstr("DataRec|2|MonitorCount|2\n"
                                           "DataRec|2|DefaultBrowser|com.apple.safari \n"
                                           "NewGroup|Vistra|NOVALUE|VistraScreenResolution|3|0\n"
                                           "DataRec|3|width|900\nDataRec|3|height|720\n"
                                           "NewGroup|Vistra|NOVALUE|VistraScreenResolution|4|0\n"
                                           "DataRec|4|width|380\nDataRec|4|height|700\n"
                                           "NewGroup|Vistra|NOVALUE|Demographics|5|0\n"));
}

TEST_F(SessionTest, IsToldInTheLog) {
    m_host.Play(kOpen + "UTAddToGroup s 1 K V\n" + kClose);
    std::string log;
    for (const std::string& message : m_host.Log())
        log += message.substr(0, message.find('/')) + "\n";
    EXPECT_EQ(log, "INFO UTInitialize\nINFO UTSetOptIn\nINFO OptInSet: keyvalue: 1\n"
                   "INFO UTStartSession\nINFO OptInGet: keyvalue: 1\n"
                   "DEBUG UTStartSession Success: \nINFO LogTransport2 Path: \n"
                   "INFO UTAddToGroup\nDEBUG UTAddToGroup has valid session\n"
                   "INFO UTCloseSession\nDEBUG UTCloseSession has valid session\n"
                   "DEBUG UTCloseSession Before EndSession: \nINFO LogTransport2 Path: \n"
                   "DEBUG UTCloseSession Success: \n");
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
    for (const char* off : {"[ulog]\nstatus=Disabled", "[hibernate]\nsuite_editor=x|2999-01-01"}) {
        WriteText(m_account.UserConfigFile(), off);
        expectRefused(kOpen, "VerifyConfigStatus failure");
    }
    // The agent's own configuration, being newer, takes the place of the user's.
    fs::last_write_time(m_account.UserConfigFile(),
                        fs::file_time_type::clock::now() - std::chrono::hours(9));
    WriteText(m_host.AgentBundle() + "/Contents/Resources/LogTransport2.cfg", "");
    PreferenceUtil::SetPreferenceValue("Enabled", PreferenceKeys::kEnablementDomain, 0,
                                       kCFPreferencesAnyUser, kCFPreferencesCurrentHost);
    expectRefused(kOpen, "VerifyGroupPolicy failure");
    fs::remove_all(m_host.AgentBundle());
    expectRefused(kOpen, "VerifyTransAgentExist failure");
}

TEST_F(SessionTest, RecordsEachChangeOfTheOptInOnce) {
    for (const auto& [optIn, base, count] :
         {std::tuple(0, "1", "0"), {0, "", ""}, {1, "0", "1"}, {0, "0", "-1"}}) {
        m_host.Play(kInitialize + "UTSetSerializationState 1\nUTSetOptIn " + std::to_string(optIn) +
                    "\n" + kStart);
        const auto files = Files("ulog_VistraOptinProductFamily_VistraOptinProduct_00000000-0000-");
        ASSERT_EQ(files.size(), *base ? 1U : 0U);
        EXPECT_EQ(Briefs(ReadSession(files, 0)), !*base ? ""
                                                        : R"(StartSession
NewGroup|Vistra|OptinRate|Session|0|NOVALUE
DataRec|0|ProductFamily|VistraOptinProductFamily
DataRec|0|ProductName|VistraOptinProduct
NewGroup|OptinProductInfo|OptinProductInfo|OptinProductInfo|1|NOVALUE
DataRec|1|OptinProductFamily|Suite
DataRec|1|OptinProductName|Editor
DataRec|1|OptinProductVersion|1.0
DataRec|1|OptinProductSerializationState|Trial
DataRec|1|OptinKey|key
NewGroup|OptInInfo|OptInInfo|OptInInfo|2|NOVALUE
DataRec|2|BaseCount|)" + std::string(base) + "\nDataRec|2|OptInCount|" +
                                                              count + "\nEndSession\n");
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
