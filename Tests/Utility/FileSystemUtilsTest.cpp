#include "Utility/src/Mac/FileSystemUtils.h"
#include "Platform/Files.h"
#include "Tests/Support/Sandbox.h"
#include "Utility/src/Mac/FileProxy.h"

#include <gmock/gmock.h>

#include <chrono>
#include <filesystem>
#include <thread>

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

TEST(FileSystemUtilsPaths, AreTakenApartAtTheirDelimiters) {
    const struct {
        const char *path, *trimmed, *parent, *last, *name;
    } cases[] = {
        {"/a/b/", "/a/b", "/a", "b", ""},
        {"/a/b", "/a/b", "/a", "b", "b"},
        {"/a", "/a", "/", "a", "a"},
        {"a", "a", "", "a", "a"},
        {"/", "/", "/", "/", ""},
        {"///", "///", "//", "/", ""},
        {"", "", "", "", ""},
    };
    for (const auto& expected : cases) {
        SCOPED_TRACE(expected.path);
        EXPECT_EQ(FileSystemUtils::RightTrimPathByDelimiter(expected.path), expected.trimmed);
        EXPECT_EQ(FileSystemUtils::GetParentPath(expected.path), expected.parent);
        EXPECT_EQ(FileSystemUtils::GetPathLastComponent(expected.path), expected.last);
        EXPECT_EQ(FileSystemUtils::GetFileName(expected.path), expected.name);
    }
}

TEST(FileSystemUtilsPaths, AreJoinedByOneDelimiter) {
    EXPECT_EQ(FileSystemUtils::AppendPathElement("/a", "b"), "/a/b");
    EXPECT_EQ(FileSystemUtils::AppendPathElement("/a//", "/b/"), "/a/b/");
    EXPECT_EQ(FileSystemUtils::AppendPathElement("/", "b"), "/b");
    EXPECT_EQ(FileSystemUtils::AppendPathElement("", "b"), "b");
    EXPECT_EQ(FileSystemUtils::AppendPathElement("/a", ""), "/a");
    EXPECT_EQ(FileSystemUtils::AppendPathElement("/a"), "/a/");
    EXPECT_EQ(FileSystemUtils::AppendPathElement("/a/"), "/a/");
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
    EXPECT_FALSE(FileSystemUtils::CreateLocalDirectory(Path(std::string(300, 'x'))));
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
    EXPECT_FALSE(FileSystemUtils::CopyLocalFile(file, Path("tree")));
    EXPECT_FALSE(FileSystemUtils::CopyLocalFile(Path("tree"), Path("tree/copy")));
    fs::create_symlink(file, Path("target/link2"));
    EXPECT_TRUE(FileSystemUtils::CopyLocalFile(file, Path("target/link2")));
    EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(Path("target/link2"))));
    EXPECT_EQ(ReadText(file), "new");
}

TEST_F(FileSystemUtilsTest, ListsAndMeasuresFilesWithoutFollowingLinksToFolders) {
    const std::string inner = File("tree/sub/inner", std::string(7, 'x'));
    const std::string outer = File("tree/outer", std::string(5000, 'x'));
    fs::create_directory_symlink("..", Path("tree/sub/loop"));
    std::vector<std::string> files{"first"};
    EXPECT_TRUE(FileSystemUtils::GetFilesInDirectory(Path("tree/"), files, false));
    EXPECT_THAT(files, ElementsAre("first", outer));
    EXPECT_TRUE(FileSystemUtils::GetFilesInDirectory(Path("tree"), files, true));
    EXPECT_THAT(files, UnorderedElementsAre("first", outer, outer, inner));
    EXPECT_FALSE(FileSystemUtils::GetFilesInDirectory(outer, files, false));

    std::uint64_t logical = 1, physical = 1;
    EXPECT_TRUE(FileSystemUtils::GetFileSize(Path("tree"), logical, physical));
    EXPECT_EQ(logical, 5007u + 2u); // the link's own two bytes
    EXPECT_EQ(physical % 512, 0u);
    EXPECT_FALSE(FileSystemUtils::GetFileSize(Path("missing"), logical, physical));
    EXPECT_EQ(logical, 0u);
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

TEST_F(FileSystemUtilsTest, AMissingFileHasNoBytesAndNoDate) {
    const std::string file = File("file", "12345");
    EXPECT_TRUE(FileSystemUtils::IsFileSizeValid(file, 5));
    EXPECT_FALSE(FileSystemUtils::IsFileSizeValid(file, 4));
    EXPECT_TRUE(FileSystemUtils::IsFileSizeValid(Path("missing"), 0));
    const std::chrono::sys_time<std::chrono::milliseconds> time(1234567890999ms);
    fs::last_write_time(file, std::chrono::file_clock::from_sys(time));
    std::uint64_t seconds = 0;
    EXPECT_TRUE(FileSystemUtils::GetFileLastModifiedTime(file, seconds));
    EXPECT_EQ(seconds, 1234567890u);
    EXPECT_FALSE(FileSystemUtils::GetFileLastModifiedTime(Path("missing"), seconds));
}

TEST_F(FileSystemUtilsTest, AnOpenProxyLocksItsFileAgainstOthers) {
    const std::string path = Path("document");
    EXPECT_FALSE(FileSystemUtils::IsWriteLocked(path));
    EXPECT_EQ(ReadText(path), "");
    FileProxy proxy, second;
    EXPECT_FALSE(proxy.Write("too early"));
    ASSERT_TRUE(proxy.Open(path));
    EXPECT_TRUE(proxy.Write("some "));
    EXPECT_TRUE(proxy.Write("text"));
    EXPECT_TRUE(FileSystemUtils::IsWriteLocked(path));
    EXPECT_FALSE(second.Open(path));
    proxy.Close();
    EXPECT_FALSE(FileSystemUtils::IsWriteLocked(path));
    EXPECT_EQ(ReadText(path), "some text");
    EXPECT_TRUE(FileProxy::IsValidPath(path) && !FileProxy::IsValidPath(m_sandbox.Root()));
}

TEST_F(FileSystemUtilsTest, DeletingSparesFullFoldersAndWhatLinksLeadTo) {
    const std::string file = File("folder/file");
    fs::create_symlink("folder", Path("toFolder"));
    fs::create_symlink("nowhere", Path("dead"));
    EXPECT_FALSE(FileSystemUtils::DeleteDirectory(Path("toFolder"), true));
    EXPECT_TRUE(FileSystemUtils::DeleteLocalFile(Path("toFolder/")));
    EXPECT_TRUE(FileSystemUtils::CleanPath(Path("dead")));
    EXPECT_TRUE(FileSystemUtils::DeleteLocalFile(file + std::string("\0x", 2)));
    EXPECT_FALSE(FileSystemUtils::DeleteDirectory(file, true));
    EXPECT_FALSE(FileSystemUtils::DeleteDirectory(Path("folder"), false));
    EXPECT_TRUE(fs::exists(file));
    EXPECT_TRUE(FileSystemUtils::DeleteDirectory(Path("folder"), true));
    EXPECT_THAT(NamesIn(m_sandbox.Root()), ElementsAre("home"));
    EXPECT_FALSE(FileSystemUtils::DeleteDirectory("", true));
}

TEST_F(FileSystemUtilsTest, PatternsDeleteVisibleFilesOnly) {
    for (const char* name : {"x.xml", "y.rdy", "a.xml.bak", ".hidden", "README", "sub.d/z.xml"})
        File(std::string("logs/") + name);
    FileSystemUtils::DeleteFiles(Path("logs"), "*.xml", false);
    EXPECT_THAT(NamesIn(Path("logs")), ElementsAre(".hidden", "README", "sub.d", "y.rdy"));
    FileSystemUtils::DeleteFiles(Path("logs"), "(*", false); // no valid expression
    FileSystemUtils::DeleteFiles(Path("logs/"), "*.*", false);
    EXPECT_THAT(NamesIn(Path("logs")), ElementsAre(".hidden", "README", "sub.d"));
    FileSystemUtils::DeleteFiles(Path("logs"), "d/?.x", true);
    EXPECT_THAT(NamesIn(Path("logs/sub.d")), ElementsAre());

    File("logs/other.README"); // a plain pattern names what is kept
    FileSystemUtils::DeleteFiles(Path("logs"), "READ", true);
    EXPECT_THAT(NamesIn(Path("logs")), ElementsAre(".hidden", "README", "sub.d"));
}

TEST_F(FileSystemUtilsTest, LaunchesProgramsAndHandsOthersToTheShell) {
    // Without its first line only the shell can run the second one.
    for (const char* interpreter : {"#!/bin/sh\n", ""}) {
        const std::string program =
            File("it's a program", std::string(interpreter) + "echo ran > \"$0.out\"\n");
        fs::permissions(program, fs::perms(0700));
        EXPECT_TRUE(FileSystemUtils::LaunchPath(program));
        for (int i = 0; i < 500 && !fs::exists(program + ".out"); ++i)
            std::this_thread::sleep_for(10ms);
        EXPECT_TRUE(fs::remove(program + ".out")) << interpreter;
    }
    EXPECT_TRUE(FileSystemUtils::LaunchPath("exit 0"));
    EXPECT_FALSE(FileSystemUtils::LaunchPath("exit 3"));
}

} // namespace
