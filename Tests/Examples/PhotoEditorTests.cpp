#include "Tests/Support/Sandbox.h"
#include "Tests/Support/UsageDocument.h"

#include <gmock/gmock.h>

#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <regex>
#include <tuple>

using testing::HasSubstr;
using testing::IsEmpty;

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

TEST_F(PhotoEditorTest, RefusesWhatItCannotPlayAndSaysWhy) {
    const std::tuple<const char*, int, const char*> kCases[] = {
        {"--opt-in 2", 1, "--opt-in takes -1 to 1"},
        {"--state ''", 1, "--state takes 0 to 3"},
        {"--bogus", 1, "Usage"},
        {"a b", 1, "Usage"},
        {"/no/such/file", 1, "/no/such/file"},
        {"/", 1, "the trace could not be read to its end\n"},
        {"--opt-in 0", 3, "PhotoEditor: no session is recorded\n"}};
    for (const auto& [arguments, code, message] : kCases) {
        EXPECT_EQ(Run(arguments, "value A B\n"), code) << arguments;
        EXPECT_THAT(m_errors, HasSubstr(message));
    }
}

} // namespace
