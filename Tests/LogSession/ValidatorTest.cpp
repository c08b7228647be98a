#include "LogSession/LogDataValidator.h"
#include "LogSession/LogSessionManager.h"
#include "LogSession/OptInPolicy.h"
#include "Tests/Support/Sandbox.h"
#include "Utility/src/Mac/PreferenceUtil.h"

#include <gmock/gmock.h>

/// Code and accepted text of an input.
static std::string Verify(const char* input, int kind) {
    std::string text = "old";
    const int code = LogDataValidator::VerifyString(input, text, kind);
    return std::to_string(code) + " " + text;
}

TEST(Validator, TextIsTreatedByTheFirstFormatOfItsKind) {
    const std::string text = "9 \\\xC3" + std::string(600, 'x');
    const auto cut = [](const std::string& head, std::size_t size) {
        return "1 " + head + std::string(size - head.size(), 'x');
    };
    const std::string name = cut("VS_9___", 128), plain = cut("9 \\\xC3", 128);
    const std::pair<std::vector<int>, std::string> kCases[] = {
        {{0x1, 0x4, 0x100, 0x1 | 0x2}, name},
        {{0x2, 0x20, 0x80, 0x20000, 0x40000, 0x20 | 0x40}, plain},
        {{0x40000000, 0x40000000 | 0x20000}, cut("9 __", 64)},
        {{0x8, 0x8 | 0x40}, cut("9 \\\xC3", 512)},
        {{0x40}, cut("9 \\\xC3", 64)},
        {{0x10, 0x1 | 0x10}, "6 " + text},
        {{0, 0x2000000}, "0 " + text}};
    for (const auto& [kinds, result] : kCases)
        for (const int kind : kinds)
            EXPECT_EQ(Verify(text.c_str(), kind), result) << kind;
    EXPECT_EQ(Verify("_x", 0x4) + Verify("A\tb", 0x4), "0 VS__x0 A_b");
    EXPECT_EQ(Verify(nullptr, 0x4000000) + Verify("", 0x2000000), "3 VS_STR_NULL5 VS_STR_EMPTY");
    EXPECT_EQ(Verify(nullptr, 0x2000000) + Verify("", 0x4000000), "0 NOVALUE0 NOVALUE");
}

TEST(Validator, EnvironmentIsChecked) {
    const Sandbox sandbox;
    EXPECT_EQ(LogDataValidator::VerifyTransAgentExist(), 13);
    EXPECT_EQ(LogDataValidator::VerifyConfigStatus("ulog", "Fam", "App"), 0);
    WriteText(sandbox.UserConfigFile(), "[hibernate]\nFam_App=x|2999-01-01\n");
    EXPECT_EQ(LogDataValidator::VerifyConfigStatus("ulog", "Fam", "App"), 12);
    EXPECT_EQ(LogDataValidator::VerifyConfigStatus("ulog", "App", "Fam"), 0);
    EXPECT_EQ(LogDataValidator::VerifyGroupPolicy(), 0);
    PreferenceUtil::SetPreferenceValue("Enabled", "com.norvale.vistra.apip", 0,
                                       kCFPreferencesAnyUser, kCFPreferencesCurrentHost);
    EXPECT_EQ(LogDataValidator::VerifyGroupPolicy(), 14);
    EXPECT_EQ(LogDataValidator::VerifyOptinValue(2, 0, 1, -1), 9);
    EXPECT_EQ(LogDataValidator::VerifyOptinValue(-1, 0, 1, -1), 0);
}

TEST(ProcessObjects, AreRegisteredOnce) {
    LogSessionManager sessions;
    const int memory = 0;
    const auto* session = reinterpret_cast<const LogSession*>(&memory);
    for (const LogSession* added : {session, session, static_cast<const LogSession*>(nullptr)})
        sessions.Add(added);
    EXPECT_TRUE(sessions.ValidateSession(session) && !sessions.IsExist(nullptr));
    sessions.Remove(session);
    EXPECT_FALSE(sessions.IsExist(session));
    const std::string* text = GarbageCollection::CreateGlobalStr("text");
    EXPECT_NE(GarbageCollection::CreateGlobalStr("text"), text);
    EXPECT_THAT(GarbageCollection::pGC->Strings(), testing::Contains(text));
    EXPECT_THAT(GarbageCollection::pGC->Objects(), testing::Contains(OptInPolicy::GetInstance()));
}
