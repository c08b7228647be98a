#include "Platform/Files.h"

#include "Tests/Support/Sandbox.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;
using Platform::Access;
using Platform::kNoFile;

namespace {

class Files : public testing::Test {
protected:
    std::string Path(const std::string& name) const { return m_sandbox.Root() + "/" + name; }

    Sandbox m_sandbox;
};

bool IsCloseOnExec(int file) {
    return (::fcntl(file, F_GETFD) & FD_CLOEXEC) != 0;
}

} // namespace

TEST_F(Files, OpeningModesDoWhatTheySay) {
    EXPECT_EQ(Platform::OpenFile(Path("new"), Access::Read), kNoFile);
    EXPECT_EQ(Platform::OpenFile(Path("new"), Access::ReadWrite), kNoFile);
    const struct {
        Access access;
        const char* text;
        const char* content;
    } steps[] = {{Access::Append, "ab", "ab"},
                 {Access::Append, "cd", "abcd"},
                 {Access::ReadWrite, "X", "Xbcd"},
                 {Access::Truncate, "e", "e"}};
    for (const auto& step : steps) {
        const Platform::FileHandle file = Platform::OpenFile(Path("new"), step.access);
        EXPECT_TRUE(IsCloseOnExec(file));
        EXPECT_TRUE(Platform::WriteToFile(file, step.text));
        Platform::CloseFile(file);
        EXPECT_EQ(Platform::ReadFile(Path("new")), step.content);
    }
    EXPECT_EQ(fs::status(Path("new")).permissions(), fs::perms(0600));
    EXPECT_FALSE(Platform::WriteToFile(kNoFile, "x"));
}

TEST_F(Files, OnlyRegularFilesOfTheAllowedSizeAreRead) {
    ASSERT_EQ(::mkfifo(Path("pipe").c_str(), 0600), 0);
    for (const std::string& path : {Path("pipe"), std::string("/dev/zero"), m_sandbox.Root()}) {
        EXPECT_EQ(Platform::ReadFile(path), std::nullopt) << path;
        EXPECT_EQ(Platform::OpenFile(path, Access::Append), kNoFile) << path;
        EXPECT_EQ(Platform::OpenLockedFile(path), kNoFile) << path;
    }
    WriteText(Path("four"), "four");
    EXPECT_EQ(Platform::ReadFile(Path("four"), 4), "four");
    EXPECT_EQ(Platform::ReadFile(Path("four"), 3), std::nullopt);
    EXPECT_TRUE(Platform::ReadFile("/proc/self/status")) << "has no size, but content";
    EXPECT_FALSE(Platform::ReadFile("/proc/self/status", 10));
}

TEST_F(Files, LockIsExclusiveUntilClosed) {
    const Platform::FileHandle first = Platform::OpenLockedFile(Path("locked"));
    ASSERT_NE(first, kNoFile);
    EXPECT_EQ(Platform::OpenLockedFile(Path("locked")), kNoFile);
    Platform::CloseFile(first);
    const Platform::FileHandle second = Platform::OpenLockedFile(Path("locked"));
    EXPECT_NE(second, kNoFile);
    Platform::CloseFile(second);
    fs::create_symlink(Path("locked"), Path("link"));
    EXPECT_EQ(Platform::OpenLockedFile(Path("link")), kNoFile);
}

TEST_F(Files, ReplacingKeepsPermissionsAndTheUnwritable) {
    EXPECT_TRUE(Platform::ReplaceFile(Path("file"), "one"));
    EXPECT_EQ(fs::status(Path("file")).permissions(), fs::perms(0600));
    fs::permissions(Path("file"), fs::perms(0640));
    fs::last_write_time(Path("file"), fs::file_time_type::clock::now() - std::chrono::hours(1));
    const auto old = Platform::ModificationTime(Path("file"));
    EXPECT_TRUE(Platform::ReplaceFile(Path("file"), "one"));
    EXPECT_GT(Platform::ModificationTime(Path("file")), old);
    EXPECT_TRUE(Platform::ReplaceFile(Path("file"), "two"));
    EXPECT_EQ(ReadText(Path("file")), "two");
    EXPECT_EQ(fs::status(Path("file")).permissions(), fs::perms(0640));
    fs::permissions(Path("file"), fs::perms(0400));
    const bool privileged = ::geteuid() == 0;
    EXPECT_EQ(Platform::ReplaceFile(Path("file"), "three"), privileged);
    EXPECT_FALSE(Platform::ReplaceFile(Path("missing/file"), "x"));
    EXPECT_FALSE(Platform::ReplaceFile(m_sandbox.Home(), "x"));
    ASSERT_EQ(::mkfifo(Path("pipe").c_str(), 0600), 0);
    EXPECT_FALSE(Platform::ReplaceFile(Path("pipe"), "x"));
    EXPECT_EQ(NamesIn(m_sandbox.Root()), (std::vector<std::string>{"file", "home", "pipe"}));
}

TEST_F(Files, MovesAndCopiesRefuseAnExistingTarget) {
    WriteText(Path("a"), "a");
    WriteText(Path("b"), "b");
    EXPECT_FALSE(Platform::RenameWithoutReplacing(Path("a"), Path("b")));
    EXPECT_FALSE(Platform::CopyFile(Path("a"), Path("b")));
    EXPECT_FALSE(Platform::RenameWithoutReplacing(m_sandbox.Home(), Path("b")));
    EXPECT_FALSE(Platform::CopyFile(m_sandbox.Home(), Path("c")));
    EXPECT_EQ(ReadText(Path("b")), "b");
    EXPECT_TRUE(Platform::CopyFile(Path("a"), Path("c")));
    EXPECT_TRUE(Platform::RenameWithoutReplacing(Path("a"), Path("d")));
    EXPECT_TRUE(Platform::RenameWithoutReplacing(m_sandbox.Home(), Path("house")));
    EXPECT_EQ(NamesIn(m_sandbox.Root()), (std::vector<std::string>{"b", "c", "d", "house"}));
    EXPECT_EQ(ReadText(Path("c")) + ReadText(Path("d")), "aa");
}
