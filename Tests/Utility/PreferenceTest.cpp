#include "Utility/src/Mac/Preference.h"
#include "Tests/Support/Sandbox.h"
#include "Utility/src/DemographicNode.h"
#include "Utility/src/GUIDGen.h"
#include "Utility/src/LogSessionUtils.h"
#include "Utility/src/Mac/PreferenceUtil.h"

#include <gmock/gmock.h>

using Utils = LogSessionUtils;
static constexpr char kDomain[] = "com.norvale.vistra";

/// Both ways into the preferences of one domain, in an account of its own.
struct PreferenceTree : public testing::Test {
    template <class Value>
    bool Set(const std::string& key, const std::string& subKey, const Value& value) {
        return PreferenceUtil::SetPreferenceValue(key, subKey, kDomain, value, m_user, m_host);
    }
    bool Delete(const std::string& key, const std::string& subKey) {
        return PreferenceUtil::DeletePreferenceValue(key, subKey, kDomain, m_user, m_host);
    }
    std::string At(const std::string& path) const {
        int number = 0;
        std::string text = m_tree.GetValue(path, number) ? std::to_string(number) : "none";
        m_tree.GetValue(path, text);
        return text;
    }
    Sandbox m_sandbox;
    CFStringRef m_user = kCFPreferencesCurrentUser;
    CFStringRef m_host = kCFPreferencesCurrentHost;
    Preference m_tree{kDomain, m_user, m_host};
};
using Consent = PreferenceTree;

TEST_F(PreferenceTree, PathsLeadThroughNestedDictionaries) {
    EXPECT_TRUE(m_tree.SetValue("A//B/C/", -5) && m_tree.SetValue("A/B/E", std::string("text")));
    EXPECT_EQ(At("/A/B//C") + At("A/B/E") + At("A/B"), "-5textnone");
    EXPECT_TRUE(m_tree.SetValue("A/B/C/D", 6)) << "a leaf gives way to a dictionary";
    m_tree.DeleteValue("A/B/E");
    EXPECT_EQ(At("A/B/C/D") + At("A/B/E"), "6none");
    EXPECT_FALSE(m_tree.SetValue("//", 1) || Set("", "s", 1) || Set("k", "", 1));
}

TEST_F(PreferenceTree, OnlyPathsReplaceATopLevelText) {
    EXPECT_TRUE(m_tree.SetValue("A", std::string("text")));
    EXPECT_FALSE(Set("A", "B", 1) || Delete("A", "B"));
    EXPECT_EQ(At("A"), "text");
    EXPECT_TRUE(m_tree.SetValue("A/B", 1) && Set("A", "C", 2) && Delete("A", "B"));
    EXPECT_EQ(At("A/B") + At("A/C"), "none2");
    std::vector<std::pair<std::string, std::string>> texts;
    EXPECT_TRUE(Set("A", "x", std::string("1")) && m_tree.EnumSubKeyAndVals("A", texts));
    EXPECT_THAT(texts, testing::ElementsAre(testing::Pair("x", "1")));
}

TEST_F(Consent, SwitchesAreOnUnlessZeroIsStored) {
    const auto states = [] {
        return Utils::UsageObfuscateFlag() * 100 + Utils::UsageSendFlag() * 10 +
               Utils::IsVistraEnabled();
    };
    EXPECT_EQ(states(), 111);
    EXPECT_TRUE(m_tree.SetValue("obfuscate", 0) && m_tree.SetValue("Enabled", 0));
    EXPECT_EQ(states(), 11) << "one key is of another domain";
    EXPECT_TRUE(m_tree.SetValue("obfuscate", std::string("0")) && m_tree.SetValue("send", 0));
    WriteText(m_sandbox.Root() + "/etc/xdg/preferences/com.norvale.vistra.apip.plist",
              "<plist><dict><key>Enabled</key><integer>0</integer></dict></plist>");
    EXPECT_EQ(states(), 100) << "a text is no switch";
}

TEST_F(Consent, ResetForgetsOptInAndAnswersButNeitherDateNorOtherProducts) {
    for (const char* product : {"P", "Q"}) {
        EXPECT_EQ(Utils::GetOptIn(product), -1);
        EXPECT_TRUE(Utils::SetOptIn(product, 1) && Utils::SetOptIn(product, 2));
        EXPECT_TRUE(Utils::SetOptIn(product, "Date", "then") && Utils::CheckOptDate(product) == 0);
        EXPECT_TRUE(DemographicNode(product).SetValue("age", "7"));
    }
    EXPECT_TRUE(Utils::SetOptIn("P", -1));
    EXPECT_EQ(At("P/OptIn") + At("P/Demographic/age") + At("P/Date"), "nonenonethen");
    EXPECT_EQ(At("Q/OptIn") + At("Q/Demographic/age"), "17");
    EXPECT_EQ(Utils::CheckOptDate("") + Utils::CheckOptDate("new"), -1);
    EXPECT_THAT(At("new/Date"), testing::MatchesRegex("....-..-..T..:..:..Z"));
    EXPECT_EQ(GUIDGen::GetUsageUserGUID(true), "");
    const std::string guid = GUIDGen::GetUsageUserGUID(false);
    EXPECT_EQ(At("GUID"), guid);
}
