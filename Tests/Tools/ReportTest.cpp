#include "Tests/Tools/VistraTest.h"
#include "Utility/src/MiniSession.h"

#include <regex>

using testing::AllOf;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

const std::string kSession =
    "UTInitialize key 0 NULL\nUTSetOptIn 1\nUTStartSession s Suite Editor 1.0 100 en_US\n";

std::string Opening(const std::string& id, const std::string& start) {
    return "<StartSession id=\"" + id + "\" time=\"" + start + "\" seq=\"0\" />\n";
}

std::string Event(const std::string& texts, const std::string& time) {
    return "<EventRec doc=\"0\" " + texts + " time=\"" + time + "\" seq=\"4\" />\n";
}

std::string Closing(const std::string& tag, const std::string& id, const std::string& time) {
    return "<" + tag + " id=\"" + id + "\" time=\"" + time + "\" seq=\"9\" />\n</UsageDoc>\n";
}

/// A session from its start to an end.
std::string Whole(const std::string& id, const std::string& start, const std::string& end) {
    return Opening(id, start) + Closing("EndSession", id, end);
}

class ReportTest : public VistraTest {
protected:
    void Make(const std::string& name, const std::string& records) const {
        WriteText(Path("made/ulog_" + name),
                  "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n\n<UsageDoc version=\"0.5.4\">\n" +
                      records);
    }

    /// Reports on a folder; what a reader sees is in `Page`, with a bar between its parts.
    VistraRun Report(const std::string& folder) {
        const VistraRun run = Vistra("report '" + folder + "' -o report.html");
        const std::string page = Text("report.html");
        m_text =
            std::regex_replace(page.substr(page.find("<body>")), std::regex("(<[^>]*>\\s*)+"), "|");
        return run;
    }

    std::string m_text;
};

TEST_F(ReportTest, SumsUpWhatHostsHaveRecorded) {
    m_host.Play(
        kSession + "repeat 3 UTLogEvent s File Open Image NULL 0\n" +
        "UTLogEvent s File Save NULL NULL 0\nUTAddToSession s \"\" refused\n" +
        "UTNewDataGroup s C NULL NULL g NULL 0\nUTAddToGroup s g Key Value\nrepeat 210 "
        "UTAddToSession s Key " +
        std::string(500, 'x') + "\nUTLogEvent s View Zoom In NULL 0\nUTCloseSession s\n" +
        "UTStartSession t Suite Reader 2.0 200 en_US\nUTLogEvent t Page Turn NULL NULL 0\n");
    const VistraRun run = Report(m_account.LogFolder());
    EXPECT_EQ(run.exit, 3);
    EXPECT_THAT(run.errors, ContainsRegex("^vistra: [^\n]*Reader[^\n]*\\.tmp:[0-9]+: ends before "
                                          "its session does\n$"));
    for (const char* fact :
         {"|Sessions|2|on ", "|Products|2|in 2 versions|", "|Events|6|3 in a session on average|",
          "|Left by a crash|1|50 % of the sessions|", "|Rejected data|2|in 1 session|",
          "Not counted as sessions: 2 documents about decisions (2 for being recorded, 0 against "
          "it)",
          "|File|4|Page|1|View|1|", "|File |2 kinds|", "|Open|Image|3|Save|–|1|",
          "|VS_INVALID_GROUPID|data for a group that there is not|1|VS_INVALID_STRING|",
          "|Suite, Editor|1.0|1|0|5|2|", "|Suite, Reader|2.0|1|1|1|0|", "|5|2|finished|",
          "|1|0|crash|"})
        EXPECT_THAT(m_text, HasSubstr(fact));
    EXPECT_THAT(m_text, Not(HasSubstr("Documents that could not be read")));
}

TEST_F(ReportTest, TellsAnOpenSessionFromOneThatACrashLeft) {
    m_host.Play(kSession + "host shell \"'" VISTRA "' report '" + m_account.LogFolder() +
                "' -o open.html 2>open.err\"\nUTCloseSession s\n");
    EXPECT_THAT(Text("open.html"), AllOf(HasSubstr(">open</td>"), Not(HasSubstr(">crash</td>"))));
    EXPECT_THAT(Text("open.err"), HasSubstr("is still being written"));
    MiniSession("Suite", "Editor", "S", "U", true, m_account.LogFolder()).CreateCrashFile();
    EXPECT_EQ(Report(m_account.LogFolder()).exit, 0);
    EXPECT_THAT(m_text, AllOf(HasSubstr("|Sessions|1|"), HasSubstr("|Left by a crash|0|"),
                              HasSubstr("An agent has written 1 report about crashed programs.")));
}

TEST_F(ReportTest, TellsSessionsApartWhateverTheOrderOfTheirDocuments) {
    const std::string start = "2025-03-04T10:00:00Z";
    const std::string resumed =
        "<ResumeSession id=\"A\" ProductFamily=\"F\" ProductName=\"N\" ProductVersion=\"1\" "
        "ProductBuild=\"1\" ProductLanguage=\"en\" SessionStartTime=\"" +
        start + "\" User=\"U\" time=\"2025-03-04T11:00:00Z\" seq=\"10\" />\n";
    Make("1.xml", resumed + "<EndSession id=\"A\" time=\"2025-03-04T11:30:00Z\" seq=\"11\" />\n"
                            "</UsageDoc>\n");
    Make("2.xml", Opening("A", start) + Closing("SplitSession", "A", "2025-03-04T11:00:00Z"));
    Make("2 copied.xml",
         Opening("A", start) + Closing("SplitSession", "A", "2025-03-04T11:00:00Z"));
    Make("3.xml", Whole("B", "2025-03-05T10:00:00Z", "2025-03-05T09:00:00Z"));
    const std::string guid = "6F9619FF-8B86-D011-B42D-00C04FC964FF";
    const std::string cut = Closing("SplitSession", guid, "2025-03-04T10:12:00Z");
    Make("4.rdy", Opening(guid, start) + cut);
    WriteText(Path("made/ulog_F_N_U_" + guid + "_1.xml"), Event("category=\"C\"", start) + cut);
    Make("5.xml", Whole("D", "1970-01-01T00:00:00Z", "1970-01-01T00:00:30Z"));
    Make("6.xml", Whole("E", "yesterday", "today"));
    WriteText(Path("made/other.xml"), "not looked at");
    EXPECT_EQ(Report("made").exit, 0);
    for (const char* fact :
         {"|Sessions|5|2025-03-04 to 2025-03-05|", "|Recorded time|1\u00a0h|",
          "Left out: 1 document that is a copy",
          "|2025-03-04 10:00|F, N|1|1\u00a0h\u00a030\u00a0min|0|0|finished|A|",
          "|2025-03-05 10:00|unknown|0\u00a0s|0|0|finished|B|",
          "|12\u00a0min|1|0|elsewhere|6F9619FF|", "|1970-01-01 00:00|unknown|30\u00a0s|",
          "|unknown|unknown|unknown|0|0|finished|E|", "Not in the chart: 2 sessions"})
        EXPECT_THAT(m_text, HasSubstr(fact));
}

TEST_F(ReportTest, DrawsTheFinestChartThatIsNotCrowded) {
    const struct {
        const char *last, *text;
    } kCases[] = {{"2020-01-01", "By the day of their start, on 2020-01-01"},
                  {"2020-02-29", "Sessions by day|60 columns, from 2020-01-01 to 2020-02-29; the"},
                  {"2020-03-01", "9 columns, from week of 2019-12-30 to week of 2020-02-24;"},
                  {"2021-03-01", "15 columns, from January 2020 to March 2021;"},
                  {"2026-01-01", "7 columns, from 2020 to 2026;"}};
    Make("first.xml", Whole("A", "2020-01-01T00:00:00Z", "2020-01-01T01:00:00Z"));
    for (const auto& [last, text] : kCases) {
        const std::string day(last);
        Make("last.xml", Whole("B", day + "T23:59:59Z", day + "T23:59:59Z"));
        EXPECT_EQ(Report("made").exit, 0);
        EXPECT_THAT(m_text, HasSubstr(text));
    }
}

TEST_F(ReportTest, StaysOfOneSizeWhateverTheDocuments) {
    const std::string start = "2025-03-04T10:00:00Z";
    std::string events;
    for (int i = 0; i < 10'100; ++i)
        events += Event("category=\"" + std::to_string(i % 20) + "\" subcategory=\"" +
                            std::string(1000, 'x') + "\" name=\"" + std::to_string(i) + "\"",
                        start);
    Make("events.xml", Opening("Z", start) + events + Closing("EndSession", "Z", start));
    for (int i = 0; i < 600; ++i)
        Make(std::to_string(i) + ".xml", Whole(std::to_string(i), start, start));
    EXPECT_EQ(Report("made").exit, 0);
    EXPECT_THAT(m_text, AllOf(HasSubstr("|Sessions|601|"), HasSubstr("|Events|10,100|"),
                              HasSubstr("The latest 500 of 601 sessions are listed."),
                              HasSubstr("|all others|4,100|"), HasSubstr("|other|475 kinds|475|"),
                              HasSubstr("100 events are counted without their kinds")));
    EXPECT_LT(Text("report.html").size(), 300'000U);
}

TEST_F(ReportTest, RefusesWhatWouldHarmAndTellsWhatIsMissing) {
    const std::string start = "2025-03-04T10:00:00Z";
    Make("1.xml", Whole("A", start, start));
    WriteText(Path("bad/ulog_2.xml"), "");
    WriteText(Path("empty/readme"), "");
    const struct {
        std::string arguments;
        int exit;
        const char* errors;
    } kCases[] = {
        {"made", 2, "--output is required"},
        {"-o report.html", 2, "FOLDER is required"},
        {"missing -o report.html", 3, "vistra: missing: does not exist\n"},
        {"made/ulog_1.xml -o report.html", 3, "ulog_1.xml: cannot be read as a folder\n"},
        {"made -o made", 4, "vistra: made: is not a file"},
        {"made -o made/../made/ulog_1.xml", 4, "is one of the documents"},
        {"made -o missing/report.html", 4, "vistra: missing/report.html: cannot be written\n"},
        {"made -o /dev/full", 4, "vistra: /dev/full: is not a file"}};
    for (const auto& [arguments, exit, errors] : kCases) {
        const VistraRun run = Vistra("report " + arguments);
        EXPECT_EQ(run.exit, exit) << arguments;
        EXPECT_THAT(run.errors, HasSubstr(errors)) << arguments;
    }
    EXPECT_THAT(NamesIn(Path(".")), Not(testing::Contains("report.html")));
    EXPECT_THAT(NamesIn(Path("made")), testing::ElementsAre("ulog_1.xml"));

    const VistraRun run = Vistra("report missing bad made -o -");
    EXPECT_EQ(run.exit, 3);
    EXPECT_THAT(run.errors, AllOf(HasSubstr("missing: does not exist"), HasSubstr("is empty")));
    EXPECT_THAT(run.output, AllOf(StartsWith("<!DOCTYPE html>"), HasSubstr("<dd>1<small>"),
                                  HasSubstr("1 of 2 documents could not be read")));
    EXPECT_EQ(Report("empty").exit, 0);
    EXPECT_THAT(m_text, HasSubstr("There are no usage documents there."));
}

/// Texts that would run, load, hide or turn something, wherever a document or a name can hold them.
TEST_F(ReportTest, ShowsHostileTextsAsTextInABrowser) {
    if (std::system("command -v chromium >/dev/null") != 0)
        GTEST_SKIP() << "chromium is not installed";
    const struct {
        std::string given, shown;
    } kTexts[] = {
        {"<script>document.title='ran'</script>",
         "&lt;script&gt;document.title='ran'&lt;/script&gt;"},
        {"\"'><img src=http://127.0.0.1:9/ onerror=f()>",
         "\"'&gt;&lt;img src=http://127.0.0.1:9/ "},
        {"</style><style>@import 'http://127.0.0.1:9/';", "&lt;/style&gt;&lt;style&gt;@import "},
        {"<!-- \u202Eturned\u202C \x01 \xFF &lt;b&gt;",
         "&lt;!-- \\u{202E}turned\\u{202C} \\x01 \\xFF &amp;lt;b&amp;gt;"}};
    for (const auto& [given, shown] : kTexts) {
        std::string text = std::regex_replace(given, std::regex("&"), "&#38;");
        text = std::regex_replace(text, std::regex("<"), "&#60;");
        text = std::regex_replace(text, std::regex(">"), "&#62;");
        text = std::regex_replace(text, std::regex("\""), "&#34;");
        std::string records =
            Opening(text, text) + "<NewGroup category=\"Vistra\" name=\"Session\" seq=\"1\" />\n";
        for (const char* name : {"ProductFamily", "ProductName", "ProductVersion"})
            records += "<DataRec name=\"" + std::string(name) + "\" data=\"" + text + "\" />\n";
        records += "<NewGroup category=\"Vistra\" name=\"ValidationErrors\" />\n"
                   "<DataRec name=\"ErrorType\" data=\"" +
                   text + "\" />\n";
        records += Event(
            "category=\"" + text + "\" subcategory=\"" + text + "\" name=\"" + text + "\"", text);
        Make(std::to_string(given.size()) + ".xml", records + Closing("EndSession", text, text));
    }
    WriteText(Path("made/ulog_<img src=x onerror=document.title='ran'>\n.xml"), "no document");
    EXPECT_EQ(Report("made").exit, 3);
    const std::string command =
        "cd '" + m_account.Root() +
        "'; timeout 120 chromium --headless=new --no-sandbox --disable-dev-shm-usage "
        "--disable-background-networking --disable-gpu --user-data-dir=profile "
        "--log-net-log=requests --dump-dom report.html >dom 2>chromium.log";
    ASSERT_EQ(std::system(command.c_str()), 0) << Text("chromium.log");
    const std::string dom = Text("dom");
    EXPECT_NE(dom.find("<title>Usage report</title>"), std::string::npos);
    const std::string body = dom.substr(dom.find("<body>"));
    for (const auto& [given, shown] : kTexts)
        for (const char* place : {"<th scope=\"row\" class=\"text\">", "<td class=\"text\">", ", ",
                                  "<summary>", "<td class=\"text spare\">"})
            EXPECT_THAT(body, HasSubstr(place + shown));
    EXPECT_THAT(body, HasSubstr("made/ulog_&lt;img src=x onerror=document.title='ran'&gt;\\n.xml"));
    EXPECT_THAT(body,
                Not(ContainsRegex("<(script|style|img|link|!--)|<[^>]* (on[a-z]*|src|href)=")));
    const std::string requests = Text("requests");
    EXPECT_NE(requests.find("report.html"), std::string::npos);
    EXPECT_EQ(requests.find("127.0.0.1:9"), std::string::npos);
}

} // namespace
