#include "Platform/Linux/PropertyListFile.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <random>

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

/// A binary property list of objects that begin at the front, with one-byte references.
std::string Binary(const std::vector<std::string>& objects) {
    std::string bytes = "bplist00";
    std::string table;
    for (const std::string& object : objects) {
        table += {char(bytes.size() >> 8), char(bytes.size())};
        bytes += object;
    }
    const std::size_t tableStart = bytes.size();
    bytes += table + std::string(6, '\0') + "\x02\x01" + std::string(7, '\0');
    bytes += char(objects.size()) + std::string(8, '\0') + std::string(6, '\0');
    return bytes + char(tableStart >> 8) + char(tableStart);
}

std::string ListOf(std::initializer_list<char> references) {
    return char(0xA0 + references.size()) + std::string(references);
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

TEST(HostilePropertyList, HarmlessMarkupIsRead) {
    const auto list = ParsePropertyList("\xEF\xBB\xBF<?xml version='1.0'?><!-- <array> \" ' -->"
                                        "<!DOCTYPE plist PUBLIC \"a\" \"b\"><plist><dict ><key>k"
                                        "</key><string>a<![CDATA[<dict>]]></string ></dict>"
                                        "</plist>");
    ASSERT_TRUE(list);
    EXPECT_EQ(*list->Find("k")->AsString(), "a<dict>");
}

TEST(HostilePropertyList, LargeOrMalformedBytesAreRefused) {
    const std::string padding(std::size_t{17} * 1024 * 1024, ' ');
    EXPECT_FALSE(ParsePropertyList("<plist><dict/></plist>" + padding));
    EXPECT_FALSE(ParsePropertyList("<plist><string>\xFF</string></plist>"));
    EXPECT_FALSE(ParsePropertyList("<plist><string>&#xD800;</string></plist>"));
    EXPECT_FALSE(ParsePropertyList(std::string("<plist><string>a\0b</string></plist>", 34)));
    EXPECT_FALSE(
        ParsePropertyList("<plist><string>" + Repeated("&amp;", 3'000'000) + "</string></plist>"))
        << "takes the parser minutes";
    EXPECT_FALSE(ParsePropertyList("<plist><dict><key>a</key>"));
    EXPECT_FALSE(ParsePropertyList(""));
    EXPECT_FALSE(ParsePropertyList("bplist00"));
}

TEST(HostilePropertyList, BinaryFormIsRead) {
    const auto list = ParsePropertyList(
        Binary({"\xD1\x01\x02", "\x51k", ListOf({3, 4, 5}), "\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFE",
                "\x09", std::string("\x61\x00\xE9", 3)}));
    ASSERT_TRUE(list && list->Find("k"));
    const PropertyList::Array& items = *list->Find("k")->AsArray();
    EXPECT_EQ(items.at(0), PropertyList(-2));
    EXPECT_EQ(items.at(1).GetKind(), PropertyList::Kind::Other);
    EXPECT_EQ(*items.at(2).AsString(), "\xC3\xA9");
}

TEST(HostilePropertyList, BinaryReferencesAreFollowedUnderLimits) {
    EXPECT_FALSE(ParsePropertyList(Binary({ListOf({0})}))) << "holds itself";
    EXPECT_FALSE(ParsePropertyList(Binary({ListOf({1}), ListOf({0})}))) << "a circle";
    EXPECT_FALSE(ParsePropertyList(Binary({ListOf({7})}))) << "no such object";
    EXPECT_FALSE(ParsePropertyList(Binary({"\x5F\x13\x7F\xFF\xFF\xFF\xFF\xFF\xFF\xFF"})));

    for (const int levels : {22, 40}) {
        std::vector<std::string> doubling;
        for (int next = 1; next < levels; ++next)
            doubling.push_back(ListOf({char(next), char(next)}));
        doubling.push_back("\x09");
        EXPECT_FALSE(ParsePropertyList(Binary(doubling))) << "unfolds to millions of values";
    }
}

TEST(HostilePropertyList, DamagedFilesNeitherCrashNorPassTheLimits) {
    const std::string binary =
        Binary({"\xD1\x01\x02", "\x51k", ListOf({3, 4}), "\x10\x07", "\x09"});
    const std::string xml = "<plist><dict><key>k</key><array><real>1</real></array></dict></plist>";
    std::mt19937 random(42);
    for (int round = 0; round < 20'000; ++round) {
        std::string bytes = round % 2 == 0 ? binary : xml;
        for (int change = 0; change < 3; ++change)
            bytes[random() % bytes.size()] = static_cast<char>(random());
        if (const auto list = ParsePropertyList(bytes))
            Platform::SerializePropertyList(*list);
    }
}
