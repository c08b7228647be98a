#include "Tests/EndToEnd/EndToEndTest.h"
#include "Tests/Support/XServer.h"

#include <regex>
#include <set>

using namespace testing;

TEST_F(EndToEndTest, WhatIsRecordedIsListedForTheUserNameByName) {
    const std::string project = std::filesystem::path(__FILE__).parent_path() / "../../";
    const XServer screen;
    m_account.SetVariable("DISPLAY", screen.Name());
    PreferenceUtil::SetPreferenceValue("UserType", PreferenceKeys::kDomain, std::string("tester"),
                                       kCFPreferencesCurrentUser, kCFPreferencesCurrentHost);
    // A name that the host chooses begins with "Host" here, and need not be listed.
    m_host.Play(kInitialize + "UTSetNonDefaultDemographic key HostAge old\nUTSetOptIn 1\n" +
                kStart + "UTLogEvent s HostCategory HostSub HostEvent NULL 0\n" +
                "UTAddToSession s \"\" V\nUTAddToGroup s 77 HostKey V\nrepeat 200 UTAddToSession " +
                "s HostKey " + std::string(500, 'x') + "\n" + kClose);
    std::string texts = ReadText(project + "Utility/src/RecordNames.h");
    for (const std::string& name : NamesIn(m_account.LogFolder()))
        texts += ClearText(m_account.LogFolder() + "/" + name);
    std::set<std::string> names;
    for (const char* pattern : {"= \"([^\"]+)\";", "<([A-Z]\\w+)", " (\\w+)=\"[^\"]*\"(?=[ >])",
                                " (?:category|subcategory|name)=\"(?!Host)([^\"]+)"}) {
        const std::regex expression(pattern);
        for (std::sregex_iterator i(texts.begin(), texts.end(), expression), end; i != end; ++i)
            names.insert((*i)[1]);
    }
    EXPECT_THAT(names, IsSupersetOf({"ResumeSession", "EventRec", "UserType", "width", "ErrorType",
                                     "LogSession.dll", "BaseCount", "UserID"}));
    const std::string page = ReadText(project + "docs/recorded-data.md");
    for (const std::string& name : names)
        EXPECT_NE(page.find("`" + name + "`"), page.npos) << name << " is not listed";
}
