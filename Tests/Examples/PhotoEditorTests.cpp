#include "Tests/Support/Sandbox.h"
#include "Utility/src/Encryption.h"

#include <gmock/gmock.h>

#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <ostream>
#include <string>

using testing::ContainsRegex;
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

    /// The finished document of the session in clear text; empty when there is none.
    std::string Document() const {
        for (const std::string& name : NamesIn(m_account.LogFolder()))
            if (name.starts_with("ulog_Photo Suite_") && name.ends_with(".rdy"))
                return InClear(ReadText(m_account.LogFolder() + "/" + name));
        return "";
    }

    static std::string InClear(std::string document) {
        Encryption::Rot47(document);
        return document;
    }

    Sandbox m_account;
    std::string m_errors;
};

TEST_F(PhotoEditorTest, PlaysEveryVerbInEverySpelling) {
    const std::string trace = "# a comment\n\n"
                              " \tvalue Key \"two words\"\r\n"
                              "value Key -\n"
                              "event A B C\n"
                              "event - - - \"\"\n"
                              "group g Cat - Name doc-1\n"
                              "add g Key \"\\\"quoted\\\" \\\\ and\\nmore\"\n"
                              "add g Last value";
    EXPECT_EQ(Run("", trace), 0);
    EXPECT_THAT(m_errors, IsEmpty());
    const std::string document = Document();
    EXPECT_THAT(document, HasSubstr("name=\"Key\" data=\"two words\""));
    EXPECT_THAT(document, HasSubstr("name=\"Key\" data=\"NOVALUE\""));
    EXPECT_THAT(document, HasSubstr("category=\"A\" subcategory=\"B\" name=\"C\""));
    EXPECT_THAT(document, HasSubstr("category=\"Cat\" subcategory=\"NOVALUE\" name=\"Name\""));
    EXPECT_THAT(document, HasSubstr("data=\"&#34;quoted&#34; &#92; and\nmore\""));
    EXPECT_THAT(document, HasSubstr("name=\"Last\" data=\"value\""));
}

struct WrongLine {
    std::string line;
    std::string reason;
};

void PrintTo(const WrongLine& wrong, std::ostream* out) {
    *out << wrong.reason;
}

class WrongLineTest : public PhotoEditorTest, public testing::WithParamInterface<WrongLine> {};

TEST_P(WrongLineTest, IsReportedWithItsNumberAndTheRestIsPlayed) {
    const std::string trace = "value Before 1\n" + GetParam().line + "\nnonsense\n";
    EXPECT_EQ(Run("-", trace), 2);
    EXPECT_EQ(m_errors,
              "standard input:2: " + GetParam().reason + "\nstandard input:3: unknown verb\n");
}

INSTANTIATE_TEST_SUITE_P(
    Reasons, WrongLineTest,
    testing::Values(WrongLine{"nonsense", "unknown verb"}, WrongLine{"event A B", "too few words"},
                    WrongLine{"value A B C", "too many words"},
                    WrongLine{"add g K V 1 2 3 4", "too many words"},
                    WrongLine{"value A \"open", "unclosed quote"},
                    WrongLine{"value A \"open\\", "unclosed quote"},
                    WrongLine{"value A \"b\"c", "no blank after a closing quote"},
                    WrongLine{"value A b\"c", "quote inside a word"},
                    WrongLine{"value A \"\\t\"", "unknown escape"},
                    WrongLine{"add nowhere Key Value", "unknown group"},
                    WrongLine{"value - V", "\"-\" where a text is required"},
                    WrongLine{"group g \"\" B Name", "the group was refused"},
                    WrongLine{std::string("value A b\0c", 11), "NUL byte"},
                    WrongLine{"value A " + std::string(20000, 'x'), "line too long"}));

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
