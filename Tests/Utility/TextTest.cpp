#include "Tests/Support/Sandbox.h"
#include "Utility/src/Encryption.h"
#include "Utility/src/RecordBuffer.h"
#include "Utility/src/StringUtils.h"
#include "Utility/src/TimeUtils.h"
#include "Utility/src/UsageRecord.h"

#include <gmock/gmock.h>

#include <random>

static std::string HashOf(const std::string& a, const std::string& b) {
    return StringUtils::Hash(a.data(), a.size(), b.data(), b.size());
}

TEST(Text, HashIsSevenDigitsOfBothInputs) {
    EXPECT_EQ(HashOf("", ""), "2907308");
    EXPECT_EQ(HashOf("The quick brown fox ", "jumps over the lazy dog"), "8657532");
    EXPECT_EQ(StringUtils::Hash(nullptr, 0, "b", 1) + StringUtils::Hash("a", 1, nullptr, 0), "");
}

TEST(Text, ObfuscationChangesPrintableCharactersOnlyAndUndoesItself) {
    for (int byte = 0; byte < 256; ++byte) {
        const char plain = static_cast<char>(byte);
        EXPECT_EQ(Encryption::Rot47(plain) != plain, byte >= 33 && byte <= 126) << byte;
        EXPECT_EQ(Encryption::Rot47(Encryption::Rot47(plain)), plain) << byte;
    }
    std::string text = "<?xml \xC3\xA4\n";
    Encryption::Rot47(text);
    EXPECT_EQ(text, "knI>= \xC3\xA4\n");
}

TEST(Text, BecomesAnAttributeValue) {
    const std::pair<const char*, const char*> kCases[] = {
        {nullptr, "NOVALUE"},
        {"", "NOVALUE"},
        {"\x01\xC3\xA9<b & \"'>\\&#38;", "\x01\xC3\xA9&#60;b &#38; &#34;&#39;&#62;&#92;&#38;#38;"},
        {"\xE2&x\xC0\xAF", "\xEF\xBF\xBD&#38;x\xEF\xBF\xBD"},
        {"\xF0\x9F\x98", "\xEF\xBF\xBD"},
        {"\xEF\xBF\xBE\xEF\xBF\xBF", "\xEF\xBF\xBD\xEF\xBF\xBD"}};
    for (const auto& [text, value] : kCases)
        EXPECT_EQ(StringUtils::ConformXMLString(text), value);
    RecordBuffer record;
    const std::string text = "<\xFF";
    UsageRecord::AppendResumeSession(record, {text, text, text, text, text, text, text, text}, "",
                                     7);
    EXPECT_THAT(std::string(record.View()),
                testing::ContainsRegex("Build=\"<\xEF\xBF\xBD\" ProductLanguage=\"<\xEF"));
}

TEST(Text, IsEscapedPieceByPieceWhateverTheirOrder) {
    const std::pair<std::string_view, std::string_view> kPieces[] = {
        {"a", "a"},
        {"plain text ", "plain text "},
        {"<", "&#60;"},
        {"&\"'", "&#38;&#34;&#39;"},
        {"\x7F\x01", "\x7F\x01"},
        {"\xC3\xA9\xF0\x9F\x98\x80", "\xC3\xA9\xF0\x9F\x98\x80"},
        {"\xEF\xBF\xBD", "\xEF\xBF\xBD"},
        {"\xEF\xBF\xBF", "\xEF\xBF\xBD"},
        {"\xFF", "\xEF\xBF\xBD"}};
    std::minstd_rand random(1);
    RecordBuffer record; // reused, as a session does it
    for (std::size_t pieces = 1; pieces < 300; ++pieces) {
        std::string text, expected;
        for (std::size_t i = 0; i < pieces; ++i) {
            const auto& [piece, written] = kPieces[random() % std::size(kPieces)];
            text += piece;
            expected += written;
        }
        ASSERT_EQ(StringUtils::ConformXMLString(text.c_str()), expected);
        record.Clear();
        UsageRecord::AppendNewDoc(record, text, "T", 7);
        ASSERT_EQ(record.View(), "<NewDoc doc=\"" + expected + "\" time=\"T\" seq=\"7\" />\n");
    }
}

TEST(Text, TimeIsUniversalWhateverTheZone) {
    Sandbox sandbox;
    sandbox.SetVariable("TZ", "XYZ-14");
    std::tm time = {};
    EXPECT_EQ(*::strptime(TimeUtils::CalcTime().c_str(), "%Y-%m-%dT%H:%M:%SZ", &time), '\0');
    EXPECT_NEAR(std::difftime(std::time(nullptr), ::timegm(&time)), 0, 60);
}
