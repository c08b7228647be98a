#include "Platform/Terminal.h"
#include "Tools/vistra/Commands.h"
#include "Tools/vistra/Documents.h"
#include "Tools/vistra/RowWriter.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

constexpr char kJsonLines[] = "jsonl";
constexpr char kCsv[] = "csv";

struct Options {
    std::string format;
    std::vector<std::string> paths;
};

/// Hands rows on in large pieces.
class Output {
public:
    std::string& Rows() { return m_rows; }

    void WriteIfFull() {
        constexpr std::size_t kEnough = 64 * 1024;
        if (m_rows.size() >= kEnough)
            Write();
    }

    void Write() {
        std::cout.write(m_rows.data(), static_cast<std::streamsize>(m_rows.size()));
        m_rows.clear();
        if (!std::cout)
            throw std::runtime_error("standard output cannot be written");
    }

private:
    std::string m_rows;
};

ExitCode Export(const Options& options) {
    const bool isShown = Platform::IsTerminal(Platform::StandardStream::Output);
    const auto writer =
        options.format == kCsv ? MakeCsvWriter(isShown) : MakeJsonLinesWriter(isShown);
    Output output;
    writer->AppendStart(output.Rows());
    const DocumentHandler handler{
        [&](const DocumentHead& head) { writer->SetSession(head.session); },
        [&](const Record& record, std::uint64_t) {
            writer->AppendRow(output.Rows(), record);
            output.WriteIfFull();
        },
        {}};
    const ExitCode exit = ReadDocuments(options.paths, handler);
    output.Write();
    return exit;
}

} // namespace

void AddExportCommand(CLI::App& vistra, ExitCode& exit) {
    const auto options = std::make_shared<Options>();
    CLI::App* const command = vistra.add_subcommand(
        "export", "Write documents as rows of data to standard output, one row a record");
    command->add_option("--format", options->format, "jsonl or csv")
        ->required()
        ->check(CLI::IsMember({kJsonLines, kCsv}));
    command->add_option("FILE", options->paths, "Documents")->type_name("")->required();
    command->callback([options, &exit] { exit = Worse(exit, Export(*options)); });
}
