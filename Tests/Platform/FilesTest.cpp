#include "Platform/Files.h"

#include "Tests/Support/Sandbox.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;
using Platform::kNoFile;

namespace {

class Files : public testing::Test {
protected:
    std::string Path(const std::string& name) const { return m_sandbox.Root() + "/" + name; }

    Sandbox m_sandbox;
};

} // namespace

TEST_F(Files, OnlyRegularFilesOfTheAllowedSizeAreRead) {
    ASSERT_EQ(::mkfifo(Path("pipe").c_str(), 0600), 0);
    for (const std::string& path : {Path("pipe"), std::string("/dev/zero"), m_sandbox.Root()}) {
        EXPECT_EQ(Platform::ReadFile(path), std::nullopt) << path;
        EXPECT_EQ(Platform::OpenFile(path, Platform::Access::Append), kNoFile) << path;
        EXPECT_EQ(Platform::OpenLockedFile(path), kNoFile) << path;
    }
    WriteText(Path("four"), "four");
    fs::create_symlink(Path("four"), Path("link"));
    EXPECT_EQ(Platform::OpenLockedFile(Path("link")), kNoFile);
    EXPECT_EQ(Platform::ReadFile(Path("four"), 4), "four");
    EXPECT_EQ(Platform::ReadFile(Path("four"), 3), std::nullopt);
    EXPECT_TRUE(Platform::ReadFile("/proc/self/status")) << "has no size, but content";
    EXPECT_FALSE(Platform::ReadFile("/proc/self/status", 10));
}

TEST_F(Files, ReplacingKeepsPermissionsAndTheUnwritable) {
    EXPECT_TRUE(Platform::ReplaceFile(Path("file"), "one"));
    EXPECT_EQ(fs::status(Path("file")).permissions(), fs::perms(0600));
    fs::permissions(Path("file"), fs::perms(0640));
    EXPECT_TRUE(Platform::ReplaceFile(Path("file"), "two"));
    EXPECT_EQ(ReadText(Path("file")), "two");
    EXPECT_EQ(fs::status(Path("file")).permissions(), fs::perms(0640));
    fs::permissions(Path("file"), fs::perms(0400));
    const bool privileged = ::geteuid() == 0;
    EXPECT_EQ(Platform::ReplaceFile(Path("file"), "three"), privileged);
    EXPECT_FALSE(Platform::ReplaceFile(Path("missing/file"), "x"));
    EXPECT_FALSE(Platform::ReplaceFile(m_sandbox.Home(), "x"));
    EXPECT_EQ(NamesIn(m_sandbox.Root()), (std::vector<std::string>{"file", "home"}));
}
