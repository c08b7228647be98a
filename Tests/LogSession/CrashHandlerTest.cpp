#include "LogSession/CrashHandler.h"
#include "LogSession/LogSession.h"
#include "Tests/Support/Sandbox.h"
#include "Utility/src/Mac/PreferenceUtil.h"

#include <gtest/gtest.h>

TEST(CrashHandler, WithoutAnAgentKeepsNoMarkerAndPrunesNothing) {
    const Sandbox account;
    const std::string folder = account.Home() + "/.local/state/Logs/Norvale/Vistra/SessionInfo/";
    for (int i = 0; i < 60; ++i)
        WriteText(folder + std::to_string(i) + ".sif", "");
    LogSession session("Suite", "Editor", "1.0", "100", "en_US");
    EXPECT_TRUE(CrashHandler::SetCrashHandler(&session, "Suite"));
    EXPECT_EQ(CrashHandler::gpLogSession, &session);
    EXPECT_EQ(NamesIn(folder).size(), 60U);
    EXPECT_FALSE(CrashHandler::RemoveSessionInfo(&session));
    EXPECT_EQ(NamesIn(folder).size(), 60U);
    std::string agent = "unknown";
    EXPECT_TRUE(PreferenceUtil::GetPreferenceValue(
        "CRProcessor", session.GetProcessName(), "com.norvale.vistra", agent,
        kCFPreferencesCurrentUser, kCFPreferencesCurrentHost));
    EXPECT_TRUE(CrashHandler::RecordSessionInfo(&session));
    EXPECT_EQ(NamesIn(folder).back().substr(0, 14), "_Suite_Editor_") << "there is no usage key";
    EXPECT_TRUE(CrashHandler::RemoveSessionInfo(&session));
    EXPECT_EQ(NamesIn(folder).size(), 50U);
    EXPECT_FALSE(CrashHandler::RecordSessionInfo(nullptr));
    EXPECT_FALSE(CrashHandler::RemoveSessionInfo(nullptr));
    EXPECT_TRUE(CrashHandler::SetCrashHandler(nullptr, ""));
}
