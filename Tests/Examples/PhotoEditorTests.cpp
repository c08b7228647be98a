#include "Tests/Support/Sandbox.h"
#include "Tests/Support/UsageDocument.h"

#include <gmock/gmock.h>

#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <regex>

using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

/// Runs the host in an account of its own, with an agent that does nothing.
class PhotoEditorTest : public testing::Test {
protected:
    PhotoEditorTest() {
        const std::string agent = AgentFolder() + "/LogTransport2.app/Contents/MacOS/LogTransport2";
        WriteText(agent, "#!/bin/sh\n");
        std::filesystem::permissions(agent, std::filesystem::perms::owner_all);
    }

    std::string AgentFolder() const { return m_account.Root() + "/agent"; }

    /// Returns the exit code; what the host said on standard error is kept.
    int Run(const std::string& arguments, const std::string& trace) {
        const std::string input = m_account.Root() + "/input.trace";
        const std::string output = m_account.Root() + "/output";
        WriteText(input, trace);
        const std::string command = PHOTO_EDITOR " --opt-in 1 --agent '" + AgentFolder() + "' " +
                                    arguments + " <'" + input + "' >/dev/null 2>'" + output + "'";
        const int status = std::system(command.c_str());
        m_errors = ReadText(output);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    Sandbox m_account;
    std::string m_errors;
};

TEST_F(PhotoEditorTest, PlaysEveryVerbInEverySpelling) {
    EXPECT_EQ(Run("", ReadText(TEST_DATA "/Traces/every-verb.trace")), 0);
    EXPECT_THAT(m_errors, IsEmpty());
    std::string played;
    for (const std::string& name : NamesIn(m_account.LogFolder()))
        if (name.starts_with("ulog_Photo Suite_"))
            played += ClearText(m_account.LogFolder() + "/" + name);
    const std::regex varying(" (time|seq)=\"[^\"]+\"|[0-9]{7}"); // hashes have seven digits
    EXPECT_THAT(std::regex_replace(played, varying, ""),
                HasSubstr(ReadText(TEST_DATA "/Traces/every-verb.records")));
}

TEST_F(PhotoEditorTest, ReportsAWrongLineWithItsNumberAndPlaysTheRest) {
    const std::pair<std::string, const char*> kWrong[] = {
        {"nonsense", "unknown verb"},
        {"event A B", "too few words"},
        {"value A B C", "too many words"},
        {"add g K V 1 2 3 4", "too many words"},
        {"value A \"open", "unclosed quote"},
        {"value A \"open\\", "unclosed quote"},
        {"value A \"b\"c", "no blank after a closing quote"},
        {"value A b\"c", "quote inside a word"},
        {"value A \"\\t\"", "unknown escape"},
        {"add nowhere Key Value", "unknown group"},
        {"value - V", "\"-\" where a text is required"},
        {"group g \"\" B Name", "the group was refused"},
        {std::string("value A b\0c", 11), "NUL byte"},
        {"value A " + std::string(20000, 'x'), "line too long"}};
    std::string trace = "value Before 1\n", errors;
    int number = 1;
    for (const auto& [line, reason] : kWrong) {
        trace += line + "\n";
        errors += "standard input:" + std::to_string(++number) + ": " + reason + "\n";
    }
    EXPECT_EQ(Run("-", trace), 2);
    EXPECT_EQ(m_errors, errors);
}

TEST_F(PhotoEditorTest, TellsWhenTheTraceCannotBeRead) {
    EXPECT_EQ(Run("/no/such/file", ""), 1);
    EXPECT_THAT(m_errors, HasSubstr("/no/such/file"));
    EXPECT_EQ(Run("/", ""), 1);
    EXPECT_THAT(m_errors, EndsWith("the trace could not be read to its end\n"));
}

TEST_F(PhotoEditorTest, RefusesAWrongCommandLine) {
    for (const char* arguments : {"--opt-in 2", "--state x", "--state ''", "--bogus", "a b"}) {
        EXPECT_EQ(Run(arguments, ""), 1) << arguments;
        EXPECT_THAT(m_errors, Not(IsEmpty())) << arguments;
    }
}

TEST_F(PhotoEditorTest, SaysThatNoSessionIsRecorded) {
    EXPECT_EQ(Run("--opt-in 0", "value A B\n"), 3);
    EXPECT_EQ(m_errors, "PhotoEditor: no session is recorded\n");
}

} // namespace
