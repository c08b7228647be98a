#include "Utility/src/ConfigFileContainer.h"
#include "Tests/Support/Sandbox.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using Entries = std::vector<ConfigFileContainer::Entry>;

namespace {

ConfigFileContainer Parsed(const std::string& text) {
    ConfigFileContainer config;
    config.Update(text);
    return config;
}

TEST(ConfigFileContainer, ReadsSectionsKeysAndValuesWithoutTheirBlanks) {
    const ConfigFileContainer config =
        Parsed("early=1\r\n# x=1\n ; y=1\n\n [ ULog ] rest \n Status = Active Now\t\r\nstatus=a=b\n"
               "Plain\n=no key\nempty=\n[open\nK=v\n[]\nlate=2\n[a/b]\nc=d");
    EXPECT_THAT(config.Entries(),
                ElementsAre(Pair("/early", "1"), Pair("/late", "2"), Pair("a/b/c", "d"),
                            Pair("open/k", "v"), Pair("ulog/", "no key"), Pair("ulog/empty", ""),
                            Pair("ulog/plain", "Plain"), Pair("ulog/status", "a=b")));
    EXPECT_EQ(config.GetValue(" ULog", "STATUS\n"), "a=b");
    EXPECT_EQ(config.GetValue("ulog", "absent"), "");
}

TEST(ConfigFileContainer, SettingKeepsTheBlanksOfAValueButBlankOnesRemoveIt) {
    ConfigFileContainer config;
    EXPECT_EQ(config.SetValue("ULog/Status ", " Hibernate "), " Hibernate ");
    EXPECT_EQ(config.GetValue("ulog", "status"), " Hibernate ");
    EXPECT_EQ(config.SetValue("ulog", "status", " \t\r\n"), "");
    for (const auto& [section, key] : Entries{{"", "k"}, {"s", " "}, {"s/t", "k"}, {"s", "k/l"}})
        EXPECT_EQ(config.SetValue(section, key, "v"), "") << section << " " << key;
    EXPECT_THAT(config.Entries(), IsEmpty());
}

TEST(ConfigFileContainer, ListsAndRemovesExactlyOneSection) {
    ConfigFileContainer config = Parsed("top=0\n[ulog]\nb=2\na=1\n[ulog!]\nx=3\n[ulog0]\ny=4");
    Entries entries{{"first", ""}};
    for (const char* section : {"ulog", "ULog", "ulog/a", ""})
        config.EnumSection(section, entries);
    EXPECT_THAT(entries,
                ElementsAre(Pair("first", ""), Pair("a", "1"), Pair("b", "2"), Pair("top", "0")));
    config.RemoveSection("ULog");
    config.RemoveSection("ulog/a");
    EXPECT_EQ(config.Entries().size(), 5u);
    config.RemoveSection("ulog");
    EXPECT_THAT(config.Entries(),
                ElementsAre(Pair("/top", "0"), Pair("ulog!/x", "3"), Pair("ulog0/y", "4")));
    config.RemoveSection("");
    EXPECT_THAT(config.Entries(), IsEmpty());
}

TEST(ConfigFileContainer, WritesANormalisedFileThatReadsTheSame) {
    const Sandbox sandbox;
    const std::string path = sandbox.Root() + "/file.cfg";
    ConfigFileContainer config = Parsed("[Z]\nKey = Value\n[a!]\nx=1\n[a]\n[]\nb=2\na=1\n");
    config.SetValue("z/padded", " v ");
    EXPECT_EQ(config.Write(path), 0u);
    EXPECT_EQ(ReadText(path), "[]\na=1\nb=2\n[a!]\nx=1\n[z]\nkey=Value\npadded= v \n");
    EXPECT_EQ(config.Read(path), 0u);
    EXPECT_EQ(config.GetValue("z", "padded"), "v");
    EXPECT_EQ(config.GetValue("", "b"), "2");
    EXPECT_EQ(config.Write(path + "/missing"), ConfigFileContainer::kFailure);
    EXPECT_EQ(config.Read(path + "/missing"), ConfigFileContainer::kFailure);
    EXPECT_THAT(config.Entries(), IsEmpty());
}

} // namespace
