#include "Tools/vistra/Commands.h"
#include "Tools/vistra/Console.h"
#include "Tools/vistra/DocumentCheck.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <map>
#include <memory>
#include <vector>

namespace {

struct Options {
    std::vector<std::string> paths;
    std::uint64_t most = 100; ///< findings to show for a file
    bool isQuiet = false;
};

struct File {
    std::string path;
    DocumentHead head;
};

/// The documents, those of each session together and in order.
class Batch {
public:
    explicit Batch(const std::vector<std::string>& paths) {
        for (const std::string& path : paths)
            Add(path);
        std::ranges::stable_sort(m_files, {}, [this](const File& file) {
            return std::pair(m_ranks[file.head.session.id], file.head.firstSeq);
        });
    }
    const std::vector<File>& Files() const { return m_files; }
    ExitCode Exit() const { return m_exit; }

private:
    void Add(const std::string& path) {
        File file{path, ReadDocumentHead(path)};
        if (!file.head.problem.empty()) {
            Console::Complain(path, file.head.problem);
            m_exit = ExitCode::InputMissed;
            return;
        }
        m_ranks.emplace(file.head.session.id, m_ranks.size());
        m_files.push_back(std::move(file));
    }

    std::vector<File> m_files;
    std::map<std::string, std::size_t> m_ranks; ///< of sessions, as they were named first
    ExitCode m_exit = ExitCode::Done;
};

/// Shows what is found in one file.
class Findings {
public:
    Findings(const std::string& path, const Options& options) : m_path(path), m_options(options) {}

    void Show(std::uint64_t line, const char* kind, const std::string& what) {
        if (++m_shown > m_options.most)
            return;
        Console::ShowProgress("");
        std::cout << Console::Printable(m_path) << ':' << line << ": " << kind
                  << Console::Printable(what) << '\n';
    }
    void ShowDeparture(std::uint64_t line, const std::string& what) {
        ++m_departures;
        Show(line, "", what);
    }
    void ShowSum(std::uint64_t records) const {
        if (m_shown > m_options.most)
            std::cout << Console::Printable(m_path) << ": " << m_shown - m_options.most
                      << " more are not shown\n";
        if (m_options.isQuiet)
            return;
        const auto style = m_departures == 0 ? Console::Style::Good : Console::Style::Bad;
        std::string sum = std::to_string(records) + " records, ";
        sum += m_departures == 0 ? "no" : std::to_string(m_departures);
        sum += m_departures == 1 ? " departure" : " departures";
        std::cout << Console::Printable(m_path) << ": " << Console::Styled(style, sum) << '\n';
    }
    bool HasDepartures() const { return m_departures > 0; }

private:
    std::string m_path;
    const Options& m_options;
    std::uint64_t m_shown = 0;
    std::uint64_t m_departures = 0;
};

ExitCode CheckFile(const File& file, SessionState& session, const Options& options) {
    Findings findings(file.path, options);
    Console::ReadingProgress progress(file.path);
    const CheckReport report{
        [&](std::uint64_t line, const std::string& what) { findings.ShowDeparture(line, what); },
        [&](std::uint64_t line, const std::string& what) {
            if (!options.isQuiet)
                findings.Show(line, "note: ", what);
        },
        [&](std::uint64_t line) { progress.Reach(line); }};
    DocumentFile document(file.path);
    DocumentCheck check(file.head, session, report);
    const std::string problem = check.Run(document);
    Console::ShowProgress("");
    findings.ShowSum(check.Records());
    if (!problem.empty())
        Console::Complain(file.path, problem);
    return Worse(problem.empty() ? ExitCode::Done : ExitCode::InputMissed,
                 findings.HasDepartures() ? ExitCode::Findings : ExitCode::Done);
}

ExitCode Check(const Options& options) {
    const Batch batch(options.paths);
    ExitCode exit = batch.Exit();
    std::map<std::string, SessionState> sessions;
    for (const File& file : batch.Files())
        exit = Worse(exit, CheckFile(file, sessions[file.head.session.id], options));
    return exit;
}

} // namespace

void AddCheckCommand(CLI::App& vistra, ExitCode& exit) {
    const auto options = std::make_shared<Options>();
    CLI::App* const command = vistra.add_subcommand(
        "check", "Tell where documents depart from their format, as FILE:LINE: WHAT");
    command->add_option("FILE", options->paths, "Documents; those of a session in any order")
        ->type_name("")
        ->required();
    command->add_option("--most", options->most, "Findings to show for a file")
        ->capture_default_str();
    command->add_flag("-q,--quiet", options->isQuiet, "Show departures alone, no notes and sums");
    command->callback([options, &exit] { exit = Worse(exit, Check(*options)); });
}
