#include "Utility/src/MiniSession.h"
#include "Tests/Support/Sandbox.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <regex>

TEST(MiniSession, FileIsOpenedByTheFirstWriteThatCan) {
    const Sandbox sandbox;
    MiniSession session("F", "N", "I", "U", false, sandbox.Root() + "/later");
    EXPECT_EQ(session.Write(nullptr), -1);
    EXPECT_EQ(session.Write("lost"), -2);
    std::filesystem::create_directory(sandbox.Root() + "/later");
    session.CreateCrashFile();
    EXPECT_EQ(std::regex_replace(ReadText(sandbox.Root() + "/later/ulog_F_N_U_I.xml"),
                                 std::regex("[0-9-]{10}T[0-9:]{8}Z"), "TIME"),
              ReadText(TEST_DATA "/Sessions/crash.xml"));
}

TEST(MiniSession, StateIsNamedIfItIsKnown) {
    for (const auto& [state, text] :
         {std::pair(-1, "NOVALUE"), {3, "SharedComponent"}, {4, "NOVALUE"}}) {
        std::string name;
        MiniSession::SerilizationStatusToString(state, name, "NOVALUE");
        EXPECT_EQ(name, text);
    }
}
