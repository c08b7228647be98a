#pragma once

#include "Tests/Tools/VistraTest.h"

#include <regex>

inline const std::string kHead =
    "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n\n<UsageDoc version=\"0.5.4\">\n"
    "<StartSession id=\"I\" time=\"2026-12-31T23:59:58Z\" seq=\"0\" />\n";
inline const std::string kEnd = "<EndSession id=\"I\" time=\"2027-01-01T01:00:00Z\" seq=\"9\" />\n"
                                "</UsageDoc>\n";
/// What moves a cursor, turns the direction of writing, ends a text, or is no text; a NUL is its
/// last.
inline const std::string kHostile("\033[2J\a\r\b\x7F\xC2\x9B"
                                  "31m\u202E\u2066\xFF\xC3(\u2028",
                                  26);

/// Whether nothing of it is in what reached a terminal, apart from colours.
inline bool IsHarmless(std::string text) {
    text = std::regex_replace(text, std::regex("\033\\[([012]|3[12])m|\r\n"), "\n");
    for (const char* turning : {"\xC2\x9B", "\u202E", "\u2066", "\xFF", "\u2028"})
        if (text.find(turning) != std::string::npos)
            return false;
    return text.find_first_of(std::string("\0\033\a\b\r\x7F", 6)) == std::string::npos;
}

/// Commands about documents, of a real host or made by the test.
class DocumentTest : public VistraTest {
protected:
    /// Writes a document whose records are those.
    void WriteDocument(const std::string& name, const std::string& records) const {
        WriteText(Path(name), kHead + records + kEnd);
    }

    /// What a terminal would get.
    std::string OnTerminal(const std::string& arguments) const {
        WriteText(Path("run"), "cd '" + m_account.Root() + "'; '" VISTRA "' " + arguments);
        const std::string command = "TERM=xterm script -qec 'sh \"" + Path("run") + "\"' '" +
                                    Path("terminal") + "' >/dev/null </dev/null";
        EXPECT_EQ(std::system(command.c_str()), 0);
        const std::string text = Text("terminal");
        return text.substr(text.find('\n') + 1, text.rfind("\nScript done") - text.find('\n') - 1);
    }
};
