#include "Platform/Linux/PropertyListFile.h"
#include "Tests/Support/Sandbox.h"

#include <gtest/gtest.h>

using Platform::ParsePropertyList;
using Platform::PropertyList;

namespace {

std::string Repeated(const std::string& text, int times) {
    std::string all;
    while (times-- > 0)
        all += text;
    return all;
}

std::string Nested(int depth) {
    return "<plist>" + Repeated("<array>", depth) + Repeated("</array>", depth) + "</plist>";
}

} // namespace

TEST(HostilePropertyList, DepthIsLimited) {
    EXPECT_TRUE(ParsePropertyList(Nested(64)));
    EXPECT_FALSE(ParsePropertyList(Nested(65)));
    EXPECT_FALSE(ParsePropertyList(Nested(1'000'000)));
    EXPECT_FALSE(ParsePropertyList("<plist>" + Repeated("<dict><key>a</key>", 500'000)));
}

TEST(HostilePropertyList, DepthCannotHideInAmbiguousMarkup) {
    const std::string head = "<plist>";
    for (const char* disguise :
         {"<array a=\"></array>\">", "<array><!--></array>-->", "<array><!---></array>-->",
          "<array><?x \"?></array><?x\" ?>", "<array><?x \" ' \" '?></array><?x'?>",
          "<array><!DOCTYPE x [ > </array> ]>", "<array><x</array>>"})
        EXPECT_FALSE(ParsePropertyList(head + Repeated(disguise, 200'000))) << disguise;
}

TEST(HostilePropertyList, FilesThatNoProgramWritesAreRefused) {
    const std::string folder = TEST_DATA "/PropertyLists/Refused/";
    EXPECT_EQ(NamesIn(folder).size(), 13U);
    for (const std::string& name : NamesIn(folder))
        EXPECT_FALSE(ParsePropertyList(ReadText(folder + name))) << name;
    const std::string padding(std::size_t{17} * 1024 * 1024, ' ');
    EXPECT_FALSE(ParsePropertyList("<plist><dict/></plist>" + padding));
    EXPECT_FALSE(
        ParsePropertyList("<plist><string>" + Repeated("&amp;", 3'000'000) + "</string></plist>"))
        << "takes the parser minutes";
}

TEST(HostilePropertyList, HarmlessFilesOfBothFormsAreRead) {
    const auto markup = ParsePropertyList(ReadText(TEST_DATA "/PropertyLists/markup.plist"));
    EXPECT_EQ(*markup.value().Find("k")->AsString(), "a<dict>");
    const auto binary = ParsePropertyList(ReadText(TEST_DATA "/PropertyLists/binary.plist"));
    const PropertyList::Array& items = *binary.value().Find("k")->AsArray();
    EXPECT_EQ(items.at(0), PropertyList(-2));
    EXPECT_EQ(items.at(1).GetKind(), PropertyList::Kind::Other);
    EXPECT_EQ(*items.at(2).AsString(), "\xC3\xA9");
}
