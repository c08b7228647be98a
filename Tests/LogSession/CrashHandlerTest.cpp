#include "LogSession/CrashHandler.h"
#include "LogSession/LogSession.h"
#include "Tests/Support/Sandbox.h"

#include <gtest/gtest.h>

TEST(CrashHandler, WithoutAnAgentKeepsNoMarkerAndPrunesNothing) {
    const Sandbox account;
    const std::string folder = account.Home() + "/.local/state/Logs/Norvale/Vistra/SessionInfo/";
    for (int i = 0; i < 60; ++i)
        WriteText(folder + std::to_string(i) + ".sif", "");
    LogSession session("Suite", "Editor", "1.0", "100", "en_US");
    EXPECT_TRUE(CrashHandler::SetCrashHandler(&session, "Suite"));
    EXPECT_EQ(CrashHandler::gpLogSession, &session);
    EXPECT_FALSE(CrashHandler::RemoveSessionInfo(&session));
    EXPECT_EQ(NamesIn(folder).size(), 60U);
    EXPECT_FALSE(CrashHandler::RecordSessionInfo(nullptr));
    EXPECT_FALSE(CrashHandler::RemoveSessionInfo(nullptr));
    EXPECT_TRUE(CrashHandler::SetCrashHandler(nullptr, ""));
}
