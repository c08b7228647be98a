#include "Utility/src/MiniSession.h"
#include "Tests/Support/Sandbox.h"
#include "Utility/src/Encryption.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <regex>

/// The attribute values of a document, without times and root.
static std::string Values(const std::string& document) {
    const std::regex markup("<.*(\\?>|UsageDoc.*)\n|\n|<\\w+| \\w+=|\"[-\\dT:]{19}Z\"|\" />");
    return std::regex_replace(std::regex_replace(document, markup, ""), std::regex("\"+"), " ");
}

TEST(MiniSession, OptInDocumentIsWrittenWholeUnderItsFinalName) {
    const Sandbox sandbox;
    for (const bool obfuscate : {false, true}) {
        std::string path;
        MiniSession("F", "N", "I", "U", obfuscate, sandbox.Root())
            .CreateOptInRateFile("key", 1, -1, 7, "A&", "", "V", path);
        EXPECT_EQ(path, sandbox.Root() + "/ulog_F_N_U_I" + (obfuscate ? ".rdy" : ".xml"));
        std::string text = ReadText(path);
        if (obfuscate) {
            EXPECT_EQ(text.substr(0, 20), "Q-B$ko#$zRUd5wuxelin");
            Encryption::Rot47(text.erase(0, 20));
        }
        EXPECT_EQ(Values(text),
                  " I 0 Vistra OptinRate Session 0 NOVALUE 1"
                  " 0 ProductFamily VistraOptinProductFamily 2 0 ProductName VistraOptinProduct 3"
                  " OptinProductInfo OptinProductInfo OptinProductInfo 1 NOVALUE 4"
                  " 1 OptinProductFamily A&#38; 5 1 OptinProductName NOVALUE 6"
                  " 1 OptinProductVersion V 7 1 OptinProductSerializationState NOVALUE 8"
                  " 1 OptinKey key 9 OptInInfo OptInInfo OptInInfo 2 NOVALUE 10"
                  " 2 BaseCount 1 11 2 OptInCount -1 12 I 13");
    }
}

TEST(MiniSession, FileIsOpenedByTheFirstWriteThatCan) {
    const Sandbox sandbox;
    MiniSession session("F", "N", "I", "U", false, sandbox.Root() + "/later");
    EXPECT_EQ(session.Write(nullptr), -1);
    EXPECT_EQ(session.Write("lost"), -2);
    std::filesystem::create_directory(sandbox.Root() + "/later");
    session.CreateCrashFile();
    EXPECT_EQ(Values(ReadText(sandbox.Root() + "/later/ulog_F_N_U_I.xml")),
              " I 0 Vistra Crash Session 0 NOVALUE 1 0 ProductFamily Vistra 2 0 ProductName"
              " AppCrash 3 AppExit Crash ExitInfo 1 NOVALUE 4 1 ExitType Crash 5"
              " 1 CrashProductName N 6 1 CrashProductFamily F 7 1 UserID U 8 I 9");
}
