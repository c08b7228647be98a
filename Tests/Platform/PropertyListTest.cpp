#include "Platform/Linux/PropertyListFile.h"
#include "Tests/Support/Sandbox.h"

#include <gtest/gtest.h>

using Platform::ParsePropertyList;
using Platform::PropertyList;
using Platform::SerializePropertyList;
using Kind = PropertyList::Kind;

namespace {

PropertyList Parsed(const std::string& value) {
    const std::optional<PropertyList> list = ParsePropertyList("<plist>" + value + "</plist>");
    EXPECT_TRUE(list) << value;
    return list.value_or(PropertyList());
}

} // namespace

TEST(PropertyListFile, ForeignValuesComeOutAsTheyWentIn) {
    const std::string text = ReadText(TEST_DATA "/PropertyLists/foreign-values.plist");
    EXPECT_EQ(SerializePropertyList(ParsePropertyList(text).value()), text);
}

TEST(PropertyListFile, NumbersReadAsSigned32BitOnlyWhereTheyAre) {
    EXPECT_EQ(Parsed("<integer>-2147483648</integer>"), PropertyList(INT32_MIN));
    EXPECT_EQ(Parsed("<real>-2147483648.9</real>").AsNumber(), INT32_MIN);
    EXPECT_EQ(Parsed("<real>2.99</real>").AsNumber(), 2);
    for (const char* value : {"<integer>18446744073709551615</integer>", "<real>nan</real>",
                              "<real>2147483648</real>", "<integer>2147483648</integer>"}) {
        EXPECT_EQ(Parsed(value).GetKind(), Kind::Number) << value;
        EXPECT_EQ(Parsed(value).AsNumber(), std::nullopt) << value;
    }
    EXPECT_EQ(Parsed("<true/>").GetKind(), Kind::Other);
}

TEST(PropertyListFile, AnyTextSurvivesInKeysAndValues) {
    PropertyList::Dictionary texts;
    for (const char* text : {"", " both ends ", "\n", "a\r\nb\rc", "\t", "<&>\"'", "]]>", "&amp;",
                             "&#13;", "<date>5-1-1</date>", "CF$UID", "\xF0\x9F\x98\x80"})
        texts.emplace(text, PropertyList(std::string(text)));
    for (char c = 1; c < 32; ++c)
        texts.emplace(std::string(2, c), PropertyList(std::string(1, c)));
    texts.emplace("number", PropertyList(INT32_MIN));
    texts.emplace("list", PropertyList(PropertyList::Array{PropertyList(), PropertyList(-1)}));
    const PropertyList stored(texts);
    const std::string xml = SerializePropertyList(stored).value();
    EXPECT_EQ(ParsePropertyList(xml), stored);
    EXPECT_EQ(xml.find('\r'), std::string::npos) << "other readers would take it for a line feed";
}

TEST(PropertyListFile, RefusesToWriteWhatItCouldNotRead) {
    PropertyList::Dictionary invalidKey;
    invalidKey.emplace("\xC3", PropertyList(1));
    EXPECT_EQ(SerializePropertyList(PropertyList(invalidKey)), std::nullopt);
    EXPECT_EQ(SerializePropertyList(PropertyList(std::string("\xED\xA0\x80"))), std::nullopt);
    EXPECT_EQ(SerializePropertyList(PropertyList(std::string("a\0b", 3))), std::nullopt);
    const std::size_t tooLong = Platform::kMaximumPropertyListBytes;
    EXPECT_EQ(SerializePropertyList(PropertyList(std::string(tooLong, 'x'))), std::nullopt);

    PropertyList deepest;
    for (int depth = 1; depth < Platform::kMaximumPropertyListDepth; ++depth)
        deepest = PropertyList(PropertyList::Array{deepest});
    EXPECT_TRUE(SerializePropertyList(deepest));
    EXPECT_FALSE(SerializePropertyList(PropertyList(PropertyList::Array{deepest})));
}
