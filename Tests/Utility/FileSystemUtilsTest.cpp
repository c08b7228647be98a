#include "Utility/src/Mac/FileSystemUtils.h"
#include "Platform/Files.h"
#include "Tests/Support/Sandbox.h"

#include <gmock/gmock.h>

#include <chrono>
#include <filesystem>

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

namespace {

class FileSystemUtilsTest : public testing::Test {
protected:
    /// A file of the sandbox.
    std::string File(const std::string& name, const std::string& text = "text") {
        WriteText(Path(name), text);
        return Path(name);
    }
    std::string Path(const std::string& name) const { return m_sandbox.Root() + "/" + name; }

    Sandbox m_sandbox;
};

TEST(FileSystemUtilsPaths, AreTakenApartAndJoinedAtTheirDelimiters) {
    const struct {
        const char *path, *trimmed, *parent, *last, *name;
    } cases[] = {
        {"/a/b/", "/a/b", "/a", "b", ""}, {"/a", "/a", "/", "a", "a"}, {"a", "a", "", "a", "a"},
        {"///", "///", "//", "/", ""},    {"", "", "", "", ""},
    };
    for (const auto& expected : cases) {
        SCOPED_TRACE(expected.path);
        EXPECT_EQ(FileSystemUtils::RightTrimPathByDelimiter(expected.path), expected.trimmed);
        EXPECT_EQ(FileSystemUtils::GetParentPath(expected.path), expected.parent);
        EXPECT_EQ(FileSystemUtils::GetPathLastComponent(expected.path), expected.last);
        EXPECT_EQ(FileSystemUtils::GetFileName(expected.path), expected.name);
    }
    EXPECT_EQ(FileSystemUtils::AppendPathElement("/a//", "/b/"), "/a/b/");
    EXPECT_EQ(FileSystemUtils::AppendPathElement("/", "b"), "/b");
    EXPECT_EQ(FileSystemUtils::AppendPathElement("", "b"), "b");
    EXPECT_EQ(FileSystemUtils::AppendPathElement("/a"), "/a/");
}

TEST_F(FileSystemUtilsTest, FoldersAreCreatedWithTheirParentsInPlaceOfFilesAndDeadLinks) {
    File("a/b");
    fs::create_symlink(Path("nowhere"), Path("link"));
    EXPECT_TRUE(FileSystemUtils::CreateLocalDirectory(Path("a/b/c/d/")));
    EXPECT_TRUE(FileSystemUtils::CreateLocalDirectory(Path("link")));
    EXPECT_TRUE(fs::is_directory(Path("a/b/c/d")));
    EXPECT_TRUE(fs::is_directory(fs::symlink_status(Path("link"))));
    EXPECT_TRUE(FileSystemUtils::CreateLocalDirectory(Path("a")));
    EXPECT_TRUE(fs::exists(Path("a/b/c/d"))) << "kept";
    EXPECT_FALSE(FileSystemUtils::CreateLocalDirectory(""));
}

TEST_F(FileSystemUtilsTest, ListsFilesWithoutFollowingLinksToFolders) {
    const std::string inner = File("tree/sub/inner"), outer = File("tree/outer");
    fs::create_directory_symlink("..", Path("tree/sub/loop"));
    std::vector<std::string> files{"first"};
    EXPECT_TRUE(FileSystemUtils::GetFilesInDirectory(Path("tree/"), files, false));
    EXPECT_THAT(files, ElementsAre("first", outer));
    EXPECT_TRUE(FileSystemUtils::GetFilesInDirectory(Path("tree"), files, true));
    EXPECT_THAT(files, UnorderedElementsAre("first", outer, outer, inner));
}

TEST_F(FileSystemUtilsTest, CopiesReplaceTheDestinationButNeverThemselves) {
    const std::string file = File("tree/file", "new");
    File("tree/sub/deep");
    fs::create_directory_symlink(".", Path("tree/link"));
    EXPECT_TRUE(FileSystemUtils::CopyLocalFile(file, File("target/old")));
    EXPECT_EQ(ReadText(Path("target/old")), "new");
    EXPECT_TRUE(FileSystemUtils::CopyLocalFile(Path("tree"), Path("target/")));
    EXPECT_THAT(NamesIn(Path("target")), ElementsAre("file", "link", "sub"));
    EXPECT_EQ(fs::read_symlink(Path("target/link")), ".");
    EXPECT_EQ(ReadText(Path("target/sub/deep")), "text");
    EXPECT_FALSE(FileSystemUtils::CopyLocalFile(Path("missing"), file));
    EXPECT_FALSE(FileSystemUtils::CopyLocalFile(file, Path("tree/link/file")));
    EXPECT_FALSE(FileSystemUtils::CopyLocalFile(Path("tree"), Path("tree/copy")));
    fs::create_symlink(file, Path("target/link2"));
    EXPECT_TRUE(FileSystemUtils::CopyLocalFile(file, Path("target/link2")));
    EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(Path("target/link2"))));
    EXPECT_EQ(ReadText(file), "new");
}

TEST_F(FileSystemUtilsTest, NewerIsTheLaterModificationOrAFreshFolderButNotAnEqualOne) {
    const std::string a = File("folder/a"), b = File("folder/b");
    const auto later = fs::file_time_type::clock::now() + 1h; // than the folder's creation
    fs::last_write_time(a, later + 1ns);
    fs::last_write_time(b, later);
    EXPECT_TRUE(FileSystemUtils::IsFileNewer(a, b));
    for (const auto& [item, other] :
         {std::pair(b, a), {b, b}, {Path("none"), b}, {a, Path("none")}})
        EXPECT_FALSE(FileSystemUtils::IsFileNewer(item, other)) << item << " " << other;
    fs::last_write_time(a, later - 48h);
    fs::last_write_time(b, later - 24h);
    EXPECT_EQ(FileSystemUtils::IsFileNewer(a, b),
              Platform::CreationTime(Path("folder")).has_value());
}

TEST_F(FileSystemUtilsTest, DeletingSparesFullFoldersAndWhatLinksLeadTo) {
    const std::string file = File("folder/file");
    fs::create_symlink("folder", Path("toFolder"));
    fs::create_symlink("nowhere", Path("dead"));
    EXPECT_FALSE(FileSystemUtils::DeleteDirectory(Path("toFolder"), true));
    EXPECT_TRUE(FileSystemUtils::DeleteLocalFile(Path("toFolder/")));
    EXPECT_TRUE(FileSystemUtils::CleanPath(Path("dead")));
    EXPECT_TRUE(FileSystemUtils::DeleteLocalFile(file + std::string("\0x", 2)));
    EXPECT_FALSE(FileSystemUtils::DeleteDirectory(Path("folder"), false));
    EXPECT_TRUE(fs::exists(file));
    EXPECT_TRUE(FileSystemUtils::DeleteDirectory(Path("folder"), true));
    EXPECT_THAT(NamesIn(m_sandbox.Root()), ElementsAre("home"));
}

TEST_F(FileSystemUtilsTest, PatternsDeleteVisibleFilesOnly) {
    for (const char* name : {"x.xml", "y.rdy", "a.xml.bak", ".hidden", "README", "sub.d/z.xml"})
        File(std::string("logs/") + name);
    FileSystemUtils::DeleteFiles(Path("logs"), "*.xml", false);
    EXPECT_THAT(NamesIn(Path("logs")), ElementsAre(".hidden", "README", "sub.d", "y.rdy"));
    FileSystemUtils::DeleteFiles(Path("logs"), "(*", false); // no valid expression
    FileSystemUtils::DeleteFiles(Path("logs/"), "*.*", false);
    EXPECT_THAT(NamesIn(Path("logs")), ElementsAre(".hidden", "README", "sub.d"));
    File("logs/other.README"); // a plain pattern names what is kept
    FileSystemUtils::DeleteFiles(Path("logs"), "READ", false);
    EXPECT_THAT(NamesIn(Path("logs")), ElementsAre(".hidden", "README", "sub.d"));
    EXPECT_THAT(NamesIn(Path("logs/sub.d")), ElementsAre("z.xml"));
}

} // namespace
