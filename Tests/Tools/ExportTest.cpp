#include "Tests/Tools/VistraTest.h"

#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

using namespace testing;
using nlohmann::json;

namespace {

/// The rows of a CSV text, each by the names of the first line.
std::vector<std::map<std::string, std::string>> ReadCsv(const std::string& text) {
    std::vector<std::vector<std::string>> lines(1, {""});
    bool isQuoted = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '"' && isQuoted && text[i + 1] == '"')
            lines.back().back() += text[++i];
        else if (c == '"')
            isQuoted = !isQuoted;
        else if (!isQuoted && c == ',')
            lines.back().emplace_back();
        else if (!isQuoted && c == '\n')
            lines.push_back({""});
        else
            lines.back().back() += c;
    }
    lines.pop_back();
    std::vector<std::map<std::string, std::string>> rows;
    for (std::size_t line = 1; line < lines.size(); ++line) {
        EXPECT_EQ(lines[line].size(), lines[0].size()) << line;
        rows.emplace_back();
        for (std::size_t i = 0; i < lines[line].size(); ++i)
            rows.back()[lines[0].at(i)] = lines[line][i];
    }
    return rows;
}

std::vector<json> ReadJsonLines(const std::string& text) {
    std::istringstream in(text);
    std::vector<json> rows;
    for (std::string line; std::getline(in, line);)
        rows.push_back(json::parse(line));
    return rows;
}

std::string TextOf(const json& value) {
    return value.is_string() ? value.get<std::string>() : value.dump();
}

class ExportTest : public VistraTest {};

TEST_F(ExportTest, GivesEachRecordARowWithTheIdentityOfItsSession) {
    m_host.Play(kOpen +
                "UTAddToSession s Markup \"<a> & 'b', \\\"c\\\" \\\\ d \u00E9=1+1\"\n"
                "repeat 2000 UTLogEvent s \"File, Edit\" Open Image document 8\n" +
                kClose);
    const auto records = ReadSession(Files());
    const std::string files = m_account.LogFolder() + "/ulog_Suite*_0.* " + m_account.LogFolder() +
                              "/ulog_Suite*_1.* " + m_account.LogFolder() + "/ulog_Suite*_2.*";
    const auto csv = ReadCsv(Vistra("export --format csv " + files).output);
    const auto lines = ReadJsonLines(Vistra("export --format jsonl " + files).output);
    ASSERT_EQ(csv.size(), records.size());
    ASSERT_EQ(lines.size(), records.size());
    for (std::size_t i = 0; i < records.size(); ++i) {
        EXPECT_EQ(csv[i].at("record"), records[i].kind);
        for (const char* name : {"seq", "time", "group", "category", "name", "data", "doc"}) {
            const std::string column = std::string(name) == "group" ? "group_id" : name;
            const bool bears = records[i].attributes.contains(name);
            EXPECT_EQ(csv[i].at(column), bears ? records[i][name] : "") << i;
            EXPECT_EQ(lines[i].contains(column), bears) << i;
        }
        for (const auto& [name, value] : lines[i].items())
            EXPECT_EQ(TextOf(value), csv[i].at(name)) << i;
        EXPECT_EQ(lines[i]["session"], records[0]["id"]);
        EXPECT_EQ(lines[i]["product_name"], "Editor") << "also before it was recorded";
    }
    EXPECT_TRUE(lines[1]["seq"].is_number());
}

TEST_F(ExportTest, KeepsItsRowsWholeWhateverADocumentHolds) {
    WriteText(Path("hostile.xml"), "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n\n<UsageDoc "
                                   "version=\"0.5.4\">\n<DataRec time=\"\x1B[2J\" group=\"x\" name="
                                   "\"a\xFF\n,b\" data=\"&#34;&#0;&bad;&#x1F600;\" seq=\"-1\" />\n"
                                   "<EventRec doc=\"cut");
    const VistraRun csv = Vistra("export --format csv hostile.xml none");
    const VistraRun lines = Vistra("export --format jsonl hostile.xml none");
    for (const VistraRun& run : {csv, lines}) {
        EXPECT_EQ(run.exit, 3);
        EXPECT_EQ(run.errors, "vistra: hostile.xml:6: breaks off within a record (the first of 2 "
                              "places)\nvistra: none: does not exist\n");
    }
    ASSERT_EQ(ReadCsv(csv.output).size(), 1U);
    ASSERT_EQ(ReadJsonLines(lines.output).size(), 1U);
    EXPECT_EQ(ReadCsv(csv.output)[0].at("name"), "a\uFFFD\n,b");
    EXPECT_EQ(ReadJsonLines(lines.output)[0]["name"], "a\uFFFD\n,b");
    EXPECT_EQ(ReadJsonLines(lines.output)[0]["data"], "\"&#0;&bad;\U0001F600");
    EXPECT_EQ(ReadJsonLines(lines.output)[0]["seq"], "-1");
}

TEST_F(ExportTest, SaysSoWhenItsOutputCannotBeStored) {
    m_host.Play(kOpen + kClose);
    const std::string command =
        VISTRA " export --format csv " + Files()[0] + " 2>" + Path("errors") + " >/dev/full";
    EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 4);
    EXPECT_EQ(Text("errors"), "vistra: standard output: cannot be written\n");
}

} // namespace
