#include "Tests/Tools/VistraTest.h"

using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

class CommandLineTest : public VistraTest {};

TEST_F(CommandLineTest, ExplainsItselfAndRefusesWhatItDoesNotKnow) {
    const VistraRun help = Vistra("--help");
    EXPECT_EQ(help.exit, 0);
    EXPECT_THAT(help.output, HasSubstr("Exit codes: 0 done;"));
    EXPECT_THAT(help.errors, IsEmpty());
    EXPECT_THAT(Vistra("--version").output, StartsWith("vistra "));
    for (const char* wrong : {"", "fly", "--fast"}) {
        const VistraRun run = Vistra(wrong);
        EXPECT_EQ(run.exit, 2) << wrong;
        EXPECT_THAT(run.errors, testing::Not(IsEmpty())) << wrong;
    }
}

} // namespace
