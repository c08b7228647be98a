#include "LogSession/LogDataValidator.h"

#include <gtest/gtest.h>

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

TEST(Validator, TextThatStandsAsItIsWouldBeAcceptedUntouched) {
    constexpr int kKinds[] = {0,    0x1,   0x2,     0x4,     0x8,        0x10,      0x20,     0x40,
                              0x80, 0x100, 0x20000, 0x40000, 0x40000000, 0x2 | 0x4, 0x1 | 0x8};
    constexpr std::size_t kSizes[] = {0, 5, 64, 65, 128, 129, 512, 513};
    int standing = 0;
    for (const char* head : {"", "a", "a_9Z", "_", "9", "a b", "a\\", "a\xC3\xA9", "a\x01", "Z<"})
        for (const std::size_t size : kSizes)
            for (const int kind : kKinds) {
                std::string text = head;
                text.resize(std::max(size, text.size()), 'x');
                const bool stands = LogDataValidator::StandsAsItIs(text, kind | kOptional);
                if (stands) {
                    EXPECT_EQ(Verify(text.c_str(), kind), "0 " + text) << kind;
                }
                standing += stands;
            }
    EXPECT_GT(standing, 200); // else everything is copied
    EXPECT_FALSE(LogDataValidator::StandsAsItIs("", kValueKind | kOptional)); // to be NOVALUE
}
