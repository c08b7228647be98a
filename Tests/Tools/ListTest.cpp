#include "Tests/Tools/DocumentTest.h"
#include "Utility/src/MiniSession.h"

#include <nlohmann/json.hpp>

using namespace testing;
namespace fs = std::filesystem;
using Json = nlohmann::json;

namespace {

const std::string kWatched = "UTInitialize key 1 NULL\nUTSetOptIn 1\n" + kStart;
const std::string kId = "6F9619FF-8B86-D011-B42D-00C04FC964FF";

class ListTest : public DocumentTest {
protected:
    /// What a command line of it tells a program, which must be ASCII; the test fails with another
    /// exit code.
    Json Listed(const std::string& arguments = "", int exit = 0) const {
        const VistraRun run = Vistra("list --json " + arguments);
        EXPECT_EQ(run.exit, exit) << run.errors;
        EXPECT_TRUE(std::ranges::all_of(run.output, [](char c) { return c > 0 && c < 127; }));
        return Json::parse(run.output);
    }

    /// Writes a file of a session into `folder`.
    void WritePart(int index, const std::string& text, const std::string& id = kId,
                   const char* extension = ".xml") const {
        WriteText(Path("folder/ulog_A_B_C_USER_" + id + "_" + std::to_string(index) + extension),
                  text);
    }

    std::string Markers() const {
        return m_account.Home() + "/.local/state/Logs/Norvale/Vistra/SessionInfo/";
    }

    std::string Collected() const { return m_account.LogFolder() + "/../Collected"; }
};

std::string WithId(std::string text, const std::string& id = kId) {
    return text.replace(text.find("id=\"I\"") + 4, 1, id);
}

const std::string kResumed = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n\n<UsageDoc version=\""
                             "0.5.4\">\n<ResumeSession id=\"" +
                             kId +
                             "\" ProductFamily=\"F\" ProductName=\"<N>\" ProductVersion=\"1\" "
                             "ProductBuild=\"\" ProductLanguage=\"\" SessionStartTime=\"2026-12-31T"
                             "23:59:58Z\" User=\"U\" time=\"2027-01-01T00:30:00Z\" seq=\"5\" />\n";
const std::string kSplit =
    "<SplitSession id=\"" + kId + "\" time=\"2027-01-01T00:40:00Z\" seq=\"8\" />\n</UsageDoc>\n";

TEST_F(ListTest, FollowsASessionThroughItsStates) {
    const std::string list = "host shell \"'" VISTRA "' list --json >open.json\"\n";
    m_host.Play(kWatched + list + kClose);
    const Json open = Json::parse(Text("open.json"))["sessions"];
    ASSERT_EQ(open.size(), 1U);
    EXPECT_EQ(open[0]["state"], "open");
    EXPECT_EQ(open[0]["marker"]["program"], "Host");
    EXPECT_EQ(open[0]["marker"]["running"], true);
    EXPECT_EQ(open[0]["name"], "Editor");
    Json closed = Listed()["sessions"];
    EXPECT_EQ(closed[0]["state"], "waiting");
    EXPECT_EQ(closed[0]["marker"], nullptr);
    EXPECT_EQ(closed[0]["id"], open[0]["id"]);
    EXPECT_EQ(closed[0]["bytes"], fs::file_size(Files()[0]));
    EXPECT_EQ(Listed(m_account.LogFolder())["sessions"][0]["state"], "finished");
    fs::create_directory(Collected());
    fs::rename(Files()[0], Collected() + "/" + fs::path(Files()[0]).filename().string());
    EXPECT_EQ(Listed()["sessions"][0]["state"], "collected");
}

TEST_F(ListTest, KnowsAnOpenSessionBetweenTwoOfItsFiles) {
    m_host.Play(kWatched + "host shell \"cd '" + m_account.LogFolder() +
                "'; for f in *_0.tmp; do mv $f ${f%tmp}xml; done; '" VISTRA "' list --json >'" +
                Path("moved.json") + "'\"\n" + kClose);
    EXPECT_EQ(Json::parse(Text("moved.json"))["sessions"][0]["state"], "open");
    EXPECT_EQ(Listed()["sessions"][0]["state"], "waiting");
}

TEST_F(ListTest, TellsWhatACrashLeftAndWhatStandsForItself) {
    m_host.Play(kWatched); // ends without closing its session
    MiniSession("Suite", "Editor", kId, "user", true, m_account.LogFolder()).CreateCrashFile();
    WriteText(Markers() + "a_key_F_N_" + kId + "_1_my_program.sif", "");
    WriteText(Markers() + "odd.sif", "");
    const Json listed = Listed();
    ASSERT_EQ(listed["sessions"].size(), 1U);
    EXPECT_EQ(listed["sessions"][0]["state"], "crashed");
    EXPECT_EQ(listed["sessions"][0]["marker"]["running"], false);
    std::map<std::string, Json> documents;
    for (const Json& document : listed["documents"])
        documents[document["kind"]] = document;
    EXPECT_EQ(documents["decision"]["change"], "agreed");
    EXPECT_EQ(documents["decision"]["version"], "1.0");
    EXPECT_EQ(documents["crash"]["name"], "Editor");
    ASSERT_EQ(listed["markers"].size(), 2U);
    EXPECT_EQ(listed["markers"][0]["owner"], "a_key_F_N");
    EXPECT_EQ(listed["markers"][0]["program"], "my_program");
    EXPECT_EQ(listed["markers"][0]["running"], false);
    EXPECT_EQ(listed["markers"][1]["owner"], "odd");
    EXPECT_THAT(Vistra("list").output,
                AllOf(HasSubstr("  left by a crash      1  "), HasSubstr("Suite / Editor 1.0\n"),
                      HasSubstr("    marker of Host, process "), HasSubstr("  agreed      waiting"),
                      HasSubstr("  a marker of unknown form  (odd)\n")));
}

TEST_F(ListTest, PutsTheFilesOfASessionTogetherAndMissesOthers) {
    WritePart(11, kResumed + kEnd);
    WritePart(4, kResumed + kSplit, kId, ".rdy");
    WritePart(3, kResumed + kSplit);
    WritePart(0, WithId(kHead) + kSplit);
    WritePart(5, ""); // is here, though it cannot be read
    const Json listed = Listed("folder", 3)["sessions"];
    ASSERT_EQ(listed.size(), 1U);
    EXPECT_EQ(listed[0]["name"], "<N>");
    EXPECT_EQ(listed[0]["state"], "finished");
    EXPECT_EQ(listed[0]["files"].size(), 4U);
    EXPECT_EQ(listed[0]["files"][3]["index"], 11);
    EXPECT_EQ(listed[0]["missing"],
              Json::parse(R"([{"first": 1, "last": 2}, {"first": 6, "last": 10}])"));
    EXPECT_THAT(Vistra("list --files folder").output,
                AllOf(HasSubstr("2026-12-31 23:59:58  01:00:02  finished             4 "),
                      HasSubstr("    files 6 to 10 are not here\n"), HasSubstr("_11.xml\n")));
    const std::string last = Path("folder/ulog_A_B_C_USER_" + kId + "_11");
    WritePart(11, kResumed + kSplit);
    EXPECT_EQ(Listed("folder", 3)["sessions"][0]["state"], "end missing") << "goes on";
    WritePart(11, kResumed);
    EXPECT_EQ(Listed("folder", 3)["sessions"][0]["state"], "end missing") << "cut short";
    WritePart(4, kResumed + kEnd + kSplit, kId, ".rdy");
    EXPECT_EQ(Listed("folder", 3)["sessions"][0]["state"], "finished") << "its end filled a file";
    fs::rename(last + ".xml", last + ".tmp");
    EXPECT_EQ(Listed("folder", 3)["sessions"][0]["state"], "crashed");
}

TEST_F(ListTest, OrdersSessionsByTheirStartAndNamesBadFiles) {
    const std::string later = "00000000-0000-0000-0000-000000000001";
    WritePart(0, WithId(kHead, later) + kEnd, later);
    WriteText(Path("folder/renamed.xml"),
              std::regex_replace(WithId(kHead), std::regex("2026-12-31"), "2025-01-01") + kEnd);
    WriteText(Path("folder/binary.rdy"), std::string(300, '\0'));
    WriteText(Path("folder/notes.txt"), "of no concern");
    fs::create_directory(Path("folder/folder.xml"));
    const VistraRun run = Vistra("list folder");
    EXPECT_EQ(run.exit, 3);
    EXPECT_EQ(run.errors, "vistra: folder/binary.rdy: is not a usage document\n");
    EXPECT_LT(run.output.find("2025-01-01"), run.output.find("2026-12-31"));
    for (const char* wrong : {"missing: does not exist", "folder/notes.txt: is not a folder"}) {
        const std::string path = std::string(wrong).substr(0, std::string(wrong).find(':'));
        EXPECT_EQ(Vistra("list " + path).errors, "vistra: " + std::string(wrong) + "\n");
        EXPECT_EQ(Vistra("list " + path).exit, 3);
    }
}

TEST_F(ListTest, MakesNothingWhereNothingIs) {
    const VistraRun run = Vistra("list");
    EXPECT_EQ(run.output, "No sessions.\n");
    EXPECT_EQ(run.exit, 0) << run.errors;
    EXPECT_THAT(NamesIn(m_account.Home()), IsEmpty());
    EXPECT_EQ(Listed()["sessions"], Json::array());
}

TEST_F(ListTest, LetsNoNameSpeakToTheTerminal) {
    const std::string evil = "\033[2J\u202E\n\xC2\x9B\xFF";
    WriteText(m_account.LogFolder() + "/" + evil + ".xml",
              "<ResumeSession id=\"" + kHostile + "\" ProductFamily=\"" + kHostile +
                  "\" ProductName=\"" + kHostile + "\" ProductVersion=\"" + kHostile +
                  "\" ProductBuild=\"\" ProductLanguage=\"\" SessionStartTime=\"" + kHostile +
                  "\" User=\"\" time=\"\" seq=\"\" />\n");
    WriteText(m_account.LogFolder() + "/bad" + evil + ".xml", "");
    WriteText(Markers() + evil + "_" + kId + "_7_" + evil + ".sif", "");
    const std::string shown = OnTerminal("list --files; true");
    EXPECT_THAT(shown, HasSubstr("bad\\x1B[2J\\u{202E}\\n\\u{9B}\\xFF.xml: is empty"));
    EXPECT_THAT(shown, HasSubstr("marker of \\x1B[2J"));
    EXPECT_TRUE(IsHarmless(shown)) << shown;
    EXPECT_EQ(Listed("", 3)["sessions"].size(), 1U);
}

} // namespace
