#include "Tests/Tools/VistraTest.h"
#include "Utility/src/Encryption.h"
#include "Utility/src/Mac/FileProxy.h"

#include <regex>

using namespace testing;
namespace fs = std::filesystem;

namespace {

/// Calls that fill more than one file, with what is hard for a reader.
const std::string kLongSession =
    kOpen +
    "UTNewDataGroup s Edit Filter Blur g doc 3\nUTAddToGroup s 1 Key \"two lines & more\"\n" +
    "UTAddToGroup s 77 Key value\nUTAddToSession s \"\" refused\n" +
    "repeat 1500 UTLogEvent s File \"<Open>\" \"Gr\u00F6\u00DFe\" NULL 0\n" + kClose;

class CheckTest : public VistraTest {
protected:
    /// Clear documents of one long session, copied to simple names.
    std::vector<std::string> PlayLongSession(const std::string& calls = kLongSession) {
        Prefer("obfuscate", 0);
        m_host.Play(calls);
        std::vector<std::string> names;
        for (const std::string& path : Files()) {
            names.push_back(std::to_string(names.size()).append(".xml"));
            fs::copy_file(path, Path(names.back()));
        }
        return names;
    }

    /// What the check finds in a document in which one text was changed: lines "LINE: WHAT".
    std::string Findings(std::string document, const std::string& from, const std::string& to) {
        const std::size_t at = document.find(from);
        EXPECT_NE(at, std::string::npos) << from;
        WriteText(Path("changed"), document.replace(at, from.size(), to));
        const VistraRun run = Vistra("check --quiet changed");
        EXPECT_EQ(run.exit, run.output.empty() ? 0 : 1) << run.output;
        return std::regex_replace(run.output, std::regex("changed:"), "");
    }
};

TEST_F(CheckTest, AcceptsWhatTheLibraryWritesInClearAndObfuscated) {
    for (const bool obfuscate : {false, true}) {
        Prefer("obfuscate", obfuscate);
        m_host.Play(kLongSession);
    }
    ASSERT_EQ(Files("ulog_").size(), 5U) << "two sessions in two files each, and a decision";
    const VistraRun run = Vistra("check $(ls -r " + m_account.LogFolder() + "/ulog_*)");
    EXPECT_EQ(run.exit, 0) << run.output;
    EXPECT_THAT(run.errors, IsEmpty());
    EXPECT_THAT(run.output, HasSubstr(" records, no departures\n"));
    EXPECT_THAT(run.output, Not(HasSubstr(": note: "))) << "the files were put in order";
}

TEST_F(CheckTest, NamesTheLineOfEachDeparture) {
    const std::string document = Text(PlayLongSession()[0]);
    struct Case {
        std::string from, to, finding;
    };
    const std::string group = "<NewGroup category=\"Edit\" subcategory=\"Filter\" ";
    const Case cases[] = {
        {" encoding=", " Encoding=",
         "1: the head has '<?xml version=\"1.0\" Encoding=\"utf-8\"?>'"},
        {"\n\n", "\n", "2: the head has '<UsageDoc"},
        {"0.5.4", "0.5.5", "3: the head has '<UsageDoc version=\"0.5.5\">'"},
        {"seq=\"0\"", "seq=\"00\"",
         "4: StartSession: its seq or group is missing, or is not a plain number"},
        {"name=\"ProductName\" data=\"Editor\"", "data=\"Editor\" name=\"ProductName\"",
         "7: DataRec: the attributes are time, group, data, name, seq; they should be time, group, "
         "name, data, seq"},
        {" group=\"1\" name=\"ProductBuild\"", " group=\"9\" name=\"ProductBuild\"",
         "9: group 9 is used before it is declared"},
        {"\"ProductFamily\"", "\"Family\"", "6: the standard groups: here stands ProductFamily"},
        {"group=\"1\" name=\"User\"", "group=\"0\" name=\"User\"",
         "11: the standard groups: here stands User of group 1\n"},
        {"NOVALUE\" name=\"SystemInfo\"", "X\" name=\"SystemInfo\"",
         ": the standard groups: here begins the group SystemInfo of category Vistra, subcategory"},
        {"ProductLanguage\" data=\"en_US\" seq=\"6\"", "ProductLanguage\" data=\"en_US\" seq=\"8\"",
         "10: seq 8 stands where 6 belongs\n11: seq 7 stands where 9 belongs"},
        {group, "<NewGroup subcategory=\"Filter\" category=\"Edit\" ",
         "34: NewGroup: the attributes"},
        {"two lines", "two\n\nli\x01nes", "37: XML cannot carry U+0001, at byte "},
        {"lines &#38;", "lines &#1;", "35: XML cannot carry a reference to U+0001"},
        {"\xC3\xB6", "\xC3", ": XML cannot carry bytes that are not UTF-8"},
        {" />\n" + group, ">\n" + group, "33: DataRec: at byte "},
        {group, "stray\n" + group, "34: text stands between the records"},
        {group, "<NewGroup cat\n" + group, "34: breaks off within a record"},
        {"&#60;Open&#62;", "&#x3C;Open&#62;", ": EventRec: at byte "},
        {group, "<Group />\n" + group, "34: no record is called 'Group'"},
        {"</UsageDoc>\n", "", ": the root has no end tag"},
        {"</UsageDoc>\n", "</UsageDoc>", ": no line ends behind </UsageDoc>"},
        {"</UsageDoc>\n", "</UsageDoc>\n<NewDoc />\n",
         ": NewDoc stands behind the end of the document"},
    };
    for (const Case& c : cases)
        EXPECT_THAT(Findings(document, c.from, c.to), HasSubstr(c.finding)) << c.from;
    EXPECT_EQ(Findings(document, "two lines", "two\nlines"), "") << "XML carries line feeds";
    const std::string timeless =
        std::regex_replace(document, std::regex(" time=\"[^\"]*\""), " time=\"\"");
    EXPECT_THAT(Findings(timeless, "", ""), StartsWith("4: '' is no time\n"));
    const std::string decision = ReadText(Files("ulog_VistraOptin")[0]);
    EXPECT_THAT(Findings(decision, "\"BaseCount\"", "\"Base\""),
                HasSubstr("15: the standard groups: here stands BaseCount of group 2\n"));
}

TEST_F(CheckTest, JudgesTheFilesOfASessionTogether) {
    PlayLongSession(kOpen + "repeat 3000 UTLogEvent s File Open Image NULL 0\n" + kClose);
    const VistraRun gap = Vistra("check 2.xml 0.xml");
    EXPECT_EQ(gap.exit, 1);
    EXPECT_THAT(gap.output, ContainsRegex("\n2.xml:4: seq [0-9]+ stands where [0-9]+ belongs\n"));
    EXPECT_THAT(Vistra("check 0.xml 0.xml").output, HasSubstr(":4: seq 0 stands where "));
    const std::string named = fs::path(Files()[1]).filename().string();
    fs::copy_file(Files()[1], Path(std::regex_replace(named, std::regex("_1.xml"), "_4.xml")));
    EXPECT_THAT(Vistra("check 0.xml " + Files()[0] + " ulog_*").output,
                HasSubstr("_4.xml:1: the name counts the file as 4 where 1 belongs\n"));
    WriteText(Path("1.xml"), std::regex_replace(Text("1.xml"), std::regex("\"Editor\""), "\"E\""));
    EXPECT_THAT(Vistra("check 0.xml 1.xml").output,
                HasSubstr("1.xml:4: ResumeSession differs from what the file before told"));
    const VistraRun alone = Vistra("check 1.xml");
    EXPECT_EQ(alone.exit, 0) << alone.output;
    EXPECT_THAT(alone.output, HasSubstr("1.xml:4: note: the session's files before this one were"));
}

TEST_F(CheckTest, RemarksOnWhatStrictParsersStopAt) {
    Prefer("obfuscate", 0);
    m_host.Play(kInitialize + "UTSetOptIn 1\nUTStartSession s \"a<b\" \"c & \\\"d\" 1 2 3\n" +
                "UTAddToGroup s 0 Key value\nrepeat 1500 UTLogEvent s A B C NULL 0\n" + kClose);
    const VistraRun run = Vistra("check '" + m_account.LogFolder() + "'/ulog_a*");
    EXPECT_EQ(run.exit, 0) << run.output;
    EXPECT_THAT(run.output, HasSubstr(": note: group 0 is used, which is never declared\n"));
    EXPECT_THAT(run.output, HasSubstr(": note: product texts that are not escaped: no XML parser"));
}

TEST_F(CheckTest, KnowsTheEndOfARecordFromOneInAProductText) {
    PlayLongSession();
    const auto rename = [this](const std::string& file, const std::string& from,
                               const std::string& to) {
        std::string document = Text(file);
        WriteText(Path(file), document.replace(document.find(from), from.size(), to));
    };
    rename("0.xml", "ProductBuild\" data=\"100\"",
           "ProductBuild\" data=\"&#34; /&#62;\n&#60;a&#62;\"");
    rename("1.xml", "ProductBuild=\"100\"", "ProductBuild=\"\" />\n<a>\"");
    const VistraRun run = Vistra("check 0.xml 1.xml");
    EXPECT_EQ(run.exit, 0) << run.output;
    EXPECT_THAT(run.output, HasSubstr("1.xml:4: note: product texts that are not escaped"));
    EXPECT_EQ(Vistra("export --format csv 1.xml").exit, 0);
}

/// A host may call its product like the library's own documents, and its records like the facts of
/// a session; and what stood in the way at a split may go.
TEST_F(CheckTest, KnowsAFileWithoutAHeadByItsName) {
    Prefer("obfuscate", 0);
    const auto shell = [this](const std::string& command) {
        return "host shell \"cd '" + m_account.LogFolder() + "'; " + command + "\"\n";
    };
    m_host.Play(kInitialize + "UTSetOptIn 1\nUTStartSession s Vistra AppCrash 1 2 3\n" +
                shell("for f in *_0.tmp; do mkdir \\\"${f%0.tmp}1.tmp\\\"; done") +
                "repeat 1100 UTLogEvent s A B C NULL 0\n" + shell("rmdir *_1.tmp") +
                "UTAddToSession s User nobody\nrepeat 1500 UTLogEvent s A B C NULL 0\n" + kClose);
    const VistraRun run = Vistra("check '" + m_account.LogFolder() + "'/ulog_Vistra_*");
    EXPECT_EQ(run.exit, 0) << run.output;
    EXPECT_THAT(run.output, HasSubstr("_1.xml:1: note: no head: the file could not be opened"));
    const std::string id =
        Files("ulog_Vistra_")[1].substr(Files("ulog_Vistra_")[1].size() - 42, 36);
    EXPECT_THAT(Vistra("export --format csv '" + Files("ulog_Vistra_")[1] + "'").output,
                HasSubstr("\n" + id + ",,,,,,,"));
}

TEST_F(CheckTest, SaysWhichFilesCannotBeReadAndGoesOnWithTheOthers) {
    const std::string document = Text(PlayLongSession()[0]);
    WriteText(Path("empty"), "");
    WriteText(Path("marker"), kObfuscationMarker);
    WriteText(Path("binary"), std::string("\x7F"
                                          "ELF\0\1\2",
                                          7) +
                                  std::string(3000, '\xFF'));
    WriteText(Path("e\x1B[31mvil"), "<html>");
    WriteText(Path("wrong.rdy"), document);
    FileProxy writer;
    ASSERT_TRUE(writer.Open(Path("open.tmp")));
    ASSERT_TRUE(writer.Write(document.substr(0, 4000).c_str()));
    const VistraRun run =
        Vistra("check none . empty marker binary e*vil open.tmp wrong.rdy 0.xml 1.xml");
    EXPECT_EQ(run.exit, 3);
    EXPECT_EQ(run.errors, "vistra: none: does not exist\n"
                          "vistra: .: is a folder\n"
                          "vistra: empty: is empty\n"
                          "vistra: marker: ends behind the marker\n"
                          "vistra: binary: is not a usage document\n"
                          "vistra: e\\x1B[31mvil: is not a usage document\n"
                          "vistra: open.tmp: is still being written; checked up to here\n");
    EXPECT_THAT(run.output, HasSubstr("wrong.rdy:1: the name does not fit a document that is in "));
    EXPECT_THAT(run.output, HasSubstr("\n1.xml: "));
}

TEST_F(CheckTest, PassesOverWhatIsTooLongToHold) {
    const std::string document = Text(PlayLongSession()[0]);
    EXPECT_THAT(Findings(document, "two lines", std::string(17 << 20, 'x')),
                HasSubstr("35: a record is too long to be checked\n36: seq "));
    EXPECT_THAT(Findings(document, "two lines", std::string(9 << 20, 'x')), IsEmpty());
}

/// The published schema knows every ordinary document, and nothing else.
TEST_F(CheckTest, AgreesWithTheSchemaOnOrdinaryDocuments) {
    const std::string document = Text(PlayLongSession().back());
    WriteText(Path("wrong.xml"), std::regex_replace(document, std::regex(" seq=\"1[0-9]+\""), ""));
    const auto validate = [this](const std::string& files) {
        return std::system(("cd '" + m_account.Root() +
                            "' && xmllint --noout --relaxng '" SCHEMA "' " + files +
                            " 2>schema.err")
                               .c_str());
    };
    EXPECT_EQ(validate("0.xml 1.xml '" + m_account.LogFolder() + "'/ulog_VistraOptin*"), 0)
        << Text("schema.err");
    EXPECT_NE(validate("wrong.xml"), 0);
}

} // namespace
