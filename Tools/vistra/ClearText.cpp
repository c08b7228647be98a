#include "Tools/vistra/ClearText.h"

#include "Tools/vistra/Console.h"
#include "Tools/vistra/DocumentFile.h"
#include "Tools/vistra/DocumentHead.h"

#include <string_view>

namespace {

constexpr std::size_t kBlock = 64 * 1024;

/// Where a character begins of which the text may hold only the start; else where the text ends.
std::size_t EndOfWholeCharacters(std::string_view text) {
    for (std::size_t back = 1; back <= 3 && back <= text.size(); ++back)
        if (static_cast<unsigned char>(text[text.size() - back]) >= 0xC0)
            return text.size() - back;
    return text.size();
}

void WritePrintable(std::string_view text, std::ostream& out) {
    for (std::size_t end = text.find('\n'); end != std::string_view::npos; end = text.find('\n')) {
        out << Console::Printable(text.substr(0, end)) << '\n';
        text.remove_prefix(end + 1);
    }
    out << Console::Printable(text);
}

void WriteAll(DocumentFile& file, std::ostream& out, bool isForTerminal) {
    std::string block(kBlock, '\0');
    std::size_t kept = 0; // of the last block: the start of a character
    while (const std::size_t count = file.Read(block.data() + kept, kBlock - kept)) {
        const std::string_view text(block.data(), kept + count);
        if (!isForTerminal) {
            out << text;
            continue;
        }
        const std::size_t end = EndOfWholeCharacters(text);
        WritePrintable(text.substr(0, end), out);
        kept = text.size() - end;
        block.replace(0, kept, text.substr(end));
    }
    out << Console::Printable(std::string_view(block).substr(0, kept));
}

} // namespace

ExitCode WriteClearText(const std::string& path, std::ostream& out, bool isForTerminal) {
    std::string problem = ReadDocumentHead(path).problem;
    if (problem.empty()) {
        DocumentFile file(path);
        WriteAll(file, out, isForTerminal);
        problem = file.Problem();
    }
    if (problem.empty())
        return ExitCode::Done;
    Console::Complain(path, problem);
    return ExitCode::InputMissed;
}
