#include "Tests/Support/Sandbox.h"
#include "Utility/src/Mac/FileProxy.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <string>

using testing::ElementsAre;
using testing::EndsWith;
using testing::IsSupersetOf;

namespace {

/// Runs the agent in an account whose log folder holds a finished document.
class SampleAgentTest : public testing::Test {
protected:
    SampleAgentTest() { WriteText(Path("done.rdy"), "text"); }

    std::string Path(const std::string& name) const { return m_account.LogFolder() + "/" + name; }

    std::string CollectedFolder() const { return m_account.LogFolder() + "/../Collected"; }

    int Run() const { return std::system(SAMPLE_AGENT " --wait 0"); }

    Sandbox m_account;
};

TEST_F(SampleAgentTest, CollectsFinishedDocumentsAndNotesItsLaunch) {
    WriteText(Path("plain.xml"), "text");
    FileProxy writer;
    ASSERT_TRUE(writer.Open(Path("locked.rdy")));
    ASSERT_TRUE(writer.Write("half"));
    WriteText(Path("running.tmp"), "text");
    WriteText(Path("empty.xml"), "");
    WriteText(Path("collected.rdy"), "second");
    WriteText(CollectedFolder() + "/collected.rdy", "first");
    EXPECT_EQ(Run(), 0);
    writer.Close();
    EXPECT_THAT(NamesIn(m_account.LogFolder()),
                IsSupersetOf({"collected.rdy", "empty.xml", "locked.rdy", "running.tmp"}));
    EXPECT_THAT(NamesIn(CollectedFolder()),
                ElementsAre("collected.rdy", "done.rdy", "launches.txt", "plain.xml"));
    EXPECT_EQ(ReadText(CollectedFolder() + "/collected.rdy"), "first") << "never replaced";
    EXPECT_THAT(ReadText(CollectedFolder() + "/launches.txt"), EndsWith(" documents=2\n"));
}

TEST_F(SampleAgentTest, EndsAtOnceWhileAnotherAgentWorks) {
    FileProxy other;
    ASSERT_TRUE(other.Open(Path(".LogTransportAppLock")));
    EXPECT_EQ(Run(), 0);
    other.Close();
    EXPECT_THAT(NamesIn(CollectedFolder()), ElementsAre("launches.txt"));
    EXPECT_EQ(ReadText(Path("done.rdy")), "text");
}

} // namespace
