#include "Tests/Tools/DocumentTest.h"

using namespace testing;
namespace fs = std::filesystem;

namespace {

class ShowTest : public DocumentTest {
protected:
    /// Records a session in two files with calls of all kinds. Returns their paths.
    std::vector<std::string> RecordSession() const {
        m_host.Play(kOpen +
                    "UTLogEvent s <File> \"\" \"a\\\\b\" abc 3\n"
                    "UTNewDataGroup s C S G g abc 3\nUTAddToGroup s g K \"Gr\u00F6\u00DFe & \"\n"
                    "repeat 1100 UTAddToSession s Theme dark\nUTAddToGroup s g Late 1\n"
                    "repeat 200 UTLogEvent s C S E NULL 0\nUTAddToGroup s 99 K V\n" +
                    kClose);
        return Files();
    }
};

/// What a line of an account has to hold of a record, in this order.
std::vector<std::string> Essence(const DocumentRecord& record) {
    std::vector<std::string> texts;
    for (const char* name : {"group", "category", "subcategory", "name", "data"}) {
        const auto found = record.attributes.find(name);
        const bool isOmitted = found == record.attributes.end() || found->second == "Vistra" ||
                               (record.kind == "DataRec" && found->first == "group");
        if (!isOmitted)
            texts.push_back(found->second == "NOVALUE" ? "" : found->second);
    }
    return texts;
}

TEST_F(ShowTest, AccountsForEveryRecordOfASessionInItsOrder) {
    const std::vector<std::string> paths = RecordSession();
    ASSERT_EQ(paths.size(), 2U);
    const std::vector<DocumentRecord> records = ReadSession(paths);
    const VistraRun run = Vistra("show '" + paths[0] + "' '" + paths[1] + "'");
    EXPECT_EQ(run.exit, 0) << run.errors;
    WriteText(Path("account"), run.output);
    std::size_t told = 0;
    for (const std::string& line : LinesOf(Path("account"))) {
        if (!line.starts_with("+") && !line.starts_with("    "))
            continue; // of the heading
        if (line.ends_with(", again"))
            continue;
        ASSERT_LT(told, records.size()) << line;
        std::size_t at = 0;
        for (const std::string& text : Essence(records[told]))
            ASSERT_NE(at = line.find(text, at), std::string::npos) << line << " / " << text;
        ++told;
    }
    EXPECT_EQ(told, records.size());
    EXPECT_THAT(run.output, HasSubstr("part        file 0, goes on in file 1\n"));
    EXPECT_THAT(run.output, HasSubstr("part        file 1, continued from file 0\n"));
    EXPECT_THAT(run.output, HasSubstr("  Group 1: Session, again\n             Theme"));
    EXPECT_THAT(run.output, HasSubstr(": ValidationErrors, what the library refused or cut\n"));
}

TEST_F(ShowTest, TellsADocumentOnATimeLine) {
    WriteText(Path("ulog_A_B_U_6F9619FF-8B86-D011-B42D-00C04FC964FF_0.xml"),
              kHead + ReadText(TEST_DATA "/Sessions/account.records") + kEnd);
    const VistraRun run = Vistra("show ulog_*.xml");
    EXPECT_EQ(run.output, ReadText(TEST_DATA "/Sessions/account.txt"));
    EXPECT_EQ(run.exit, 0);
}

TEST_F(ShowTest, PrintsTheClearTextByteForByte) {
    for (const std::string& path : RecordSession())
        EXPECT_TRUE(Vistra("show --clear '" + path + "'").output == ClearText(path)) << path;
    std::string text = kHead;
    while (text.size() < 300'000) // blocks end at every byte of the characters
        text += "\u00E4\u20AC\U0001F600\n";
    WriteText(Path("long.xml"), text + "\xF0\x9F");
    EXPECT_TRUE(Vistra("show --clear long.xml").output == text + "\xF0\x9F");
    const std::string shown = OnTerminal("show --clear long.xml");
    EXPECT_TRUE(shown == std::regex_replace(text, std::regex("\n"), "\r\n") + "\\xF0\\x9F")
        << shown.substr(shown.size() - 40);
}

TEST_F(ShowTest, LetsNoDocumentSpeakToTheTerminal) {
    const std::string name = "evil\033[2J\u202E\xFF.xml";
    const std::string all = "\"" + kHostile + "\" ";
    WriteDocument(name, "<NewGroup category=" + all + "subcategory=" + all + "name=" + all +
                            "time=" + all + "group=" + all + "doc=" + all + "seq=" + all +
                            "/>\n<DataRec time=" + all + "group=" + all + "name=" + all + "data=" +
                            all + "/>\n<EventRec doc=" + all + "name=\"&#27;&#155;&#0;\" />\n");
    WriteText(Path("resumed.xml"), "<ResumeSession id=" + all + "ProductFamily=" + all +
                                       "ProductName=" + all + "User=" + all + "time=" + all +
                                       "seq=\"1\" />\n");
    for (const char* options : {"", "--clear "}) {
        const std::string shown = OnTerminal(std::string("show ") + options + "*.xml || true");
        EXPECT_THAT(shown, HasSubstr("\\x1B[2J\\x07\\x0D\\x08\\x7F\\u{9B}31m\\u{202E}\\u{2066}"
                                     "\\xFF\\xC3("));
        EXPECT_TRUE(IsHarmless(shown)) << shown;
    }
}

TEST_F(ShowTest, ComplainsOfABadFileInOneLineAndShowsTheOthers) {
    WriteDocument("good.xml", "");
    fs::create_directory(Path("folder"));
    fs::create_symlink("nowhere", Path("link"));
    WriteText(Path("empty"), "");
    WriteText(Path("marker"), "Q-B$ko#$zRUd5wuxelin");
    WriteText(Path("binary"), std::string("\177ELF\0\0\0", 7) + std::string(100'000, '\xEE'));
    WriteText(Path("cut"), (kHead + "<NewDoc doc=\"1\" seq=\"1\" />\n<NewDoc do"));
    const std::pair<const char*, const char*> kBad[] = {
        {"missing", ": does not exist"},
        {"folder", ": is a folder"},
        {"link", ": does not exist"},
        {"/proc/self/mem", ": cannot be read any further"},
        {"/dev/null", ": cannot be read"},
        {"empty", ": is empty"},
        {"marker", ": ends behind the marker"},
        {"binary", ": is not a usage document"},
        {"cut", ":6: breaks off within a record"}};
    for (const auto& [name, problem] : kBad) {
        const VistraRun run = Vistra(std::string("show ") + name + " good.xml");
        EXPECT_THAT(run.errors, StartsWith(std::string("vistra: ") + name + problem));
        EXPECT_EQ(std::ranges::count(run.errors, '\n'), 1) << run.errors;
        EXPECT_THAT(run.output, HasSubstr("good.xml\n  session"));
        EXPECT_EQ(run.exit, 3) << name;
    }
}

TEST_F(ShowTest, ReadsASessionThatIsStillOpenAndOneThatBreaksOff) {
    const std::string show = "'" VISTRA "' show " + m_account.LogFolder() + "/*.tmp";
    m_host.Play(kOpen + "host shell \"" + show + " >open 2>open.errors; echo $? >>open\"\n");
    EXPECT_THAT(Text("open"), AllOf(HasSubstr("so far to"), EndsWith("0 events\n3\n")));
    EXPECT_THAT(Text("open.errors"), HasSubstr(": is still being written"));
    EXPECT_THAT(Vistra("show " + m_account.LogFolder() + "/*.tmp").output,
                HasSubstr("breaks off  20"));
}

} // namespace
