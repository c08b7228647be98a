#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// What a person sees. Nothing that comes from a file or a name reaches the terminal unchecked.
namespace Console {

/// The text on one line, fit for a terminal: control characters, those that turn the direction of
/// writing, and bytes that are no UTF-8 are written as \n, \t, \xHH or \u{HEX}.
std::string Printable(std::string_view text);

enum class Style { Heading, Good, Bad, Faint };

/// The text in the style, where standard output is a terminal that shows colours.
std::string Styled(Style style, std::string_view text);

/// One line "vistra: WHERE: WHAT" on standard error, made printable. `where` names a file, with the
/// place in it if there is one ("FILE:LINE").
void Complain(std::string_view where, std::string_view what);

/// Tells from time to time, by ShowProgress, how far a long document has been read. To be called
/// for each of its records.
class ReadingProgress {
public:
    explicit ReadingProgress(std::string_view path) : m_path(path) {}
    ~ReadingProgress();
    ReadingProgress(const ReadingProgress&) = delete;
    ReadingProgress& operator=(const ReadingProgress&) = delete;

    void Reach(std::uint64_t line) {
        if (++m_records % kRecordsBetween == 0)
            Show(line);
    }

private:
    static constexpr std::uint64_t kRecordsBetween = 1 << 18; // a fraction of a second

    void Show(std::uint64_t line) const;

    std::string m_path;
    std::uint64_t m_records = 0;
};

/// Shows a line of progress on standard error, in place of the last one, when that is a terminal;
/// an empty text takes it away.
void ShowProgress(std::string_view text);

} // namespace Console
