#include "Tests/Tools/VistraTest.h"

#include <regex>

using testing::Contains;
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

/// What the manual and the completion leave out, nobody finds.
TEST_F(CommandLineTest, OffersEveryOptionInItsManualAndItsCompletion) {
    const std::string manual =
        std::regex_replace(ReadText(VISTRA_MAN), std::regex("Fl (. \\| )?-"), "--");
    for (const char* command : {"", "list", "show", "check", "export", "report", "doctor", "opt-in",
                                "opt-in status", "opt-in reset", "erase"}) {
        const std::string help = Vistra(std::string(command) + " --help").output;
        const std::string complete =
            std::string("bash -c '. " VISTRA_COMPLETION "; COMP_WORDS=(vistra ") + command +
            " --); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); " +
            "_vistra; printf \"%s\\n\" \"${COMPREPLY[@]}\"' >" + Path("completed");
        ASSERT_EQ(std::system(complete.c_str()), 0);
        const std::vector<std::string> completed = LinesOf(Path("completed"));
        const std::regex option("--[a-z][a-z-]+");
        for (std::sregex_iterator at(help.begin(), help.end(), option), end; at != end; ++at) {
            EXPECT_THAT(completed, Contains(at->str())) << command;
            EXPECT_NE(manual.find(at->str()), std::string::npos) << at->str();
        }
    }
}

} // namespace
