#include "Utility/src/TransConfigUtils.h"
#include "Tests/Support/Sandbox.h"
#include "Utility/src/ConfigFileContainer.h"
#include "Utility/src/ConfigFileInfo.h"

#include <gmock/gmock.h>

#include <ctime>
#include <filesystem>
#include <map>

using testing::ElementsAre;
using testing::Pair;

namespace {

constexpr char kBaseUrl[] = "https://receive.norvale.example/vistra";

/// The local date so many days from now, year first.
std::string DateAfter(int days) {
    const std::time_t now = std::time(nullptr);
    std::tm date = *std::localtime(&now);
    date.tm_mday += days;
    date.tm_hour = 12;
    std::mktime(&date);
    char text[32];
    std::strftime(text, sizeof text, "%Y-%m-%d", &date);
    return text;
}

/// A configuration file and the state of the product "Fam_App" by it.
class ConfigStatus : public testing::Test {
protected:
    int StatusOf(const std::string& text) {
        WriteText(m_path, text);
        return Status();
    }
    int Status() {
        VS_CONFIG_STATE state = VS_CONFIG_DISABLED;
        EXPECT_EQ(TransConfigUtils::GetStatus("Fam", "App", m_path, "ulog", &state, nullptr), 0);
        return state;
    }
    std::string Content() const { return ReadText(m_path); }

    Sandbox m_sandbox;
    std::string m_path = m_sandbox.Root() + "/file.cfg";
};

TEST_F(ConfigStatus, AMissingFileIsActiveAndCreated) {
    EXPECT_EQ(TransConfigUtils::GetStatus("f", "n", m_path, "ulog", nullptr, nullptr), 1);
    EXPECT_FALSE(std::filesystem::exists(m_path));
    EXPECT_EQ(Status(), VS_CONFIG_ACTIVE);
    EXPECT_EQ(Content(), "[ulog]\nstatus=Active\n");
}

TEST_F(ConfigStatus, HibernatesUntilTheWakeUpDate) {
    const std::string hibernate = "[ulog]\nstatus=Hibernate\nwakeupdate=";
    EXPECT_EQ(StatusOf(hibernate + DateAfter(1)), VS_CONFIG_HIBERNATE);
    EXPECT_EQ(Content(), hibernate + DateAfter(1) + "\n");
    EXPECT_EQ(StatusOf(hibernate + DateAfter(1) + " 10:00 +0000 (!)"), VS_CONFIG_HIBERNATE);
    for (const std::string& date :
         {DateAfter(0), DateAfter(-1), std::string("soon"), std::string()}) {
        EXPECT_EQ(StatusOf(hibernate + date), VS_CONFIG_ACTIVE) << date;
        EXPECT_EQ(Content(), "[ulog]\nstatus=Active\n") << date;
    }
}

TEST_F(ConfigStatus, OtherStatesAreKeptOrRepaired) {
    EXPECT_EQ(StatusOf("[ulog]\nstatus=Disabled\nwakeupdate=x\n[hibernate]\nfam_app=x"),
              VS_CONFIG_DISABLED);
    EXPECT_EQ(Content(), "[hibernate]\nfam_app=x\n[ulog]\nstatus=Disabled\nwakeupdate=x\n");
    EXPECT_EQ(StatusOf("[ulog]\nstatus=disabled\nwakeupdate=x"), VS_CONFIG_ACTIVE);
    EXPECT_EQ(Content(), "[ulog]\nstatus=Active\nwakeupdate=x\n");
}

TEST_F(ConfigStatus, AProductMayHibernateAlone) {
    const std::string others = "[hibernate]\nfam_other=x|2999-01-01\n";
    EXPECT_EQ(StatusOf(others), VS_CONFIG_ACTIVE);
    EXPECT_EQ(StatusOf(others + "Fam_App = x|2999-01-01"), VS_CONFIG_HIBERNATE);
    EXPECT_THAT(Content(), testing::HasSubstr("fam_app=x|2999-01-01\n"));
    for (const std::string& entry : {std::string("2999-01-01"), "x|" + DateAfter(0),
                                     std::string("x|y|2999-01-01"), std::string("x|")}) {
        EXPECT_EQ(StatusOf(others + "fam_app=" + entry), VS_CONFIG_ACTIVE) << entry;
        EXPECT_EQ(Content(), others + "[ulog]\nstatus=Active\n") << entry;
    }
}

TEST_F(ConfigStatus, DefaultAndReplacedFilesAreActive) {
    TransConfigUtils::CreateDefaultConfig(m_path);
    EXPECT_EQ(Content(), std::string("[settings]\nmaxdiskspace=10\nmaxretries=3\nretryinterval=10\n"
                                     "url=") +
                             kBaseUrl + "\n[ulog]\nstatus=Active\n");
    const std::string source = m_sandbox.Root() + "/source.cfg";
    WriteText(source, "[Own]\nKey=v\n[ulog]\nstatus=Hibernate\nwakeupdate=2999-01-01");
    TransConfigUtils::ReplaceConfig(source, m_path);
    EXPECT_EQ(Content(), "[own]\nkey=v\n[ulog]\nstatus=Active\n");
    TransConfigUtils::ReplaceConfig(source + "missing", m_path);
    EXPECT_EQ(Content(), "[ulog]\nstatus=Active\n");
}

TEST(TransConfigUtils, ReadsDatesYearFirst) {
    for (const char* date : {"2999-01-01", "2999/1/1", " 2999.Jan.1", "2999-january-01 x"})
        EXPECT_EQ(TransConfigUtils::GetHibernateState(date), VS_CONFIG_HIBERNATE) << date;
    for (const char* date : {"", "|", "2999", "2999-13-01", "2999-02-30", "01-01-2999", "29990101",
                             "99999999999-1-1", "+infinity", "not-a-date-time", "2999-\xff-01"})
        EXPECT_EQ(TransConfigUtils::GetHibernateState(date), VS_CONFIG_ACTIVE) << date;
}

TEST(TransConfigUtils, NumbersOutsideTheirRangeAreRepaired) {
    const auto check = [](const char* key, int (*get)(ConfigFileContainer&),
                          const std::map<std::string, int>& cases) {
        for (const auto& [text, expected] : cases) {
            ConfigFileContainer config;
            config.SetValue("settings", key, text);
            EXPECT_EQ(get(config), expected) << key << "=" << text;
            EXPECT_EQ(std::stoi(config.GetValue("settings", key)), expected) << key << "=" << text;
        }
    };
    check("maxdiskspace", TransConfigUtils::GetMaxDiskSpace,
          {{"4", 10}, {"5", 5}, {"100", 100}, {"101", 10}, {"12abc", 12}, {"4294967316", 10}});
    check("retryinterval", TransConfigUtils::GetRetryInterval,
          {{"0", 10}, {"1", 1}, {"60", 60}, {"61", 10}, {"text", 10}});
    check("maxretries", TransConfigUtils::GetMaxRetries,
          {{"0", 3}, {"1", 1}, {"5", 5}, {"6", 3}, {"", 3}});
}

TEST(TransConfigUtils, OnlyTheMakersHostsAndTheLocalEndpointAreAcceptable) {
    for (const char* url : {"http://localhost/vistra", "http://a.norvale.example/",
                            "https://a.b.norvale.example/x", "see https://x.norvale.example/"})
        EXPECT_TRUE(TransConfigUtils::ValidUrl(url)) << url;
    for (const char* url : {"", "https://localhost/vistra", "https://norvale.example/x",
                            "https://a.norvale.example", "https://a.norvalexexample/x",
                            "https://evil/a.norvale.example/x", "HTTPS://a.norvale.example/"})
        EXPECT_FALSE(TransConfigUtils::ValidUrl(url)) << url;
}

TEST(TransConfigUtils, AnUpdateMergesMarkedSectionsAndReplacesOthers) {
    ConfigFileContainer config;
    config.Update("[kept]\nk=1\n[merged]\na=1\nb=1\n[replaced]\na=1\nb=1");
    TransConfigUtils::Process(config, "[merged]\noperation=Merge\nb=2\na=\n"
                                      "[replaced]\noperation=merge\nb=2\n[new]\nn=1");
    EXPECT_THAT(config.Entries(),
                ElementsAre(Pair("kept/k", "1"), Pair("merged/b", "2"),
                            Pair("merged/operation", "Merge"), Pair("new/n", "1"),
                            Pair("replaced/b", "2"), Pair("replaced/operation", "merge")));
}

TEST(ConfigFileInfo, SummarisesAndRepairsTheConfiguration) {
    ConfigFileContainer config;
    config.Update("[settings]\nmaxretries=2\nurl=http://else.example/\n[ulog]\nstatus=Disabled\n"
                  "[hibernate]\noperation=Merge\nfam_app=x|2999-01-01\na/b_c=y");
    ConfigFileInfo info;
    info.GetConfigInfo(config);
    EXPECT_THAT((std::vector{info.maxDiskSpace, info.retryInterval, info.maxRetries}),
                ElementsAre(10, 10, 2));
    const std::string base = kBaseUrl;
    EXPECT_THAT(
        (std::vector{info.baseUrl, info.uploadUrl, info.configUrl, info.fathomUrl}),
        ElementsAre(base, base + "/UploadFile/", base + "/GetConfig/", base + "/GetFathom.aspx"));
    EXPECT_EQ(info.ulogStatus, "Disabled");
    EXPECT_EQ(config.GetValue("settings", "url"), base);
    std::vector<std::string> products;
    EXPECT_TRUE(info.GetHibernateProducts(products));
    EXPECT_THAT(products, ElementsAre("b_c", "fam_app"));
}

} // namespace
