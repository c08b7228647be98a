#include "Tests/Tools/VistraTest.h"

#include <nlohmann/json.hpp>

using testing::HasSubstr;
namespace fs = std::filesystem;

namespace {

using OptInTest = VistraTest;

TEST_F(OptInTest, StoresWhatHostsFindAndForgetsWithTheAnswerWhatWasAnswered) {
    EXPECT_EQ(Vistra("opt-in in key").exit, 0);
    const std::string date =
        nlohmann::json::parse(Vistra("opt-in status key --json").output)["date"];
    EXPECT_EQ(m_host.Play("UTOptInGet key\nUTOptInSet key 0\n"
                          "UTSetNonDefaultDemographic key Colour red\n"),
              "1\n");
    const VistraRun out = Vistra("opt-in out key --json");
    EXPECT_EQ(out.exit, 0);
    const auto json = nlohmann::json::parse(out.output);
    EXPECT_EQ(json["answer"], "out");
    EXPECT_EQ(json["demographicAnswers"], 1);
    EXPECT_EQ(json["file"], m_account.UserPreferences());
    const VistraRun reset = Vistra("opt-in reset key");
    EXPECT_EQ(reset.exit, 0);
    EXPECT_THAT(reset.output, HasSubstr("Demographic answers: 0\n"));
    EXPECT_THAT(reset.output, HasSubstr("forgotten, too"));
    EXPECT_THAT(reset.output, HasSubstr(date)) << "the first date stays";
    EXPECT_EQ(m_host.Play("UTOptInGet key\n"), "-1\n");
}

TEST_F(OptInTest, ListsEveryRecordByItsKind) {
    EXPECT_EQ(Vistra("opt-in status").output, "No answer is stored.\n");
    m_host.Play("UTInitialize key 1 NULL\nUTSetOptIn 1\nUTStartSession s Suite Editor 1 1 en\n"
                "UTSetNonDefaultDemographic key_2 Colour red\n");
    const auto json = nlohmann::json::parse(Vistra("opt-in status --json").output);
    std::string kinds;
    for (const auto& record : json["records"])
        kinds += record["key"].get<std::string>() + ": " + record["kind"].get<std::string>() +
                 ", " + record["answer"].get<std::string>() + "\n";
    EXPECT_EQ(kinds, "Suite: family, or no answer, not asked\n"
                     "key: usage key, in\n"
                     "key_2: usage key, not asked\n"
                     "key_Suite_Editor_1: last told of a version, in\n");
}

TEST_F(OptInTest, RefusesKeysThatNoHostCanHave) {
    for (const std::string& key : {std::string("''"), std::string("'a\\b'"), std::string(65, 'k')})
        for (const char* verb : {"in", "out", "reset"}) {
            EXPECT_EQ(Vistra(std::string("opt-in ") + verb + " " + key).exit, 2) << key;
            EXPECT_TRUE(NamesIn(m_account.Home()).empty()) << key;
        }
    EXPECT_EQ(Vistra("opt-in in " + std::string(64, 'k')).exit, 0);
    EXPECT_THAT(Vistra("opt-in in \"$(printf 'k\\377\\033')\"").errors,
                HasSubstr("k\\xFF\\x1B\": is not UTF-8"));
}

TEST_F(OptInTest, TellsWhenTheAnswerCouldNotBeStored) {
    Vistra("opt-in in key");
    const std::string file = m_account.UserPreferences();
    fs::remove(file + ".lock");
    fs::create_directory(file + ".lock"); // nobody can write
    EXPECT_EQ(Vistra("opt-in out key").exit, 4);
    EXPECT_THAT(Vistra("opt-in reset key").errors, HasSubstr(file + ": could not be changed"));
    fs::remove(file + ".lock");
    WriteText(file, "<plist><dict><key>key</key><string>no record</string></dict></plist>");
    for (const bool isReadable : {true, false}) {
        if (!isReadable) {
            fs::remove(file);
            fs::create_directory(file);
        }
        const VistraRun run = Vistra("opt-in out key");
        EXPECT_EQ(run.exit, 4);
        EXPECT_THAT(run.errors, HasSubstr(file));
        EXPECT_EQ(Vistra("opt-in status key").exit, isReadable ? 0 : 3);
    }
}

} // namespace
