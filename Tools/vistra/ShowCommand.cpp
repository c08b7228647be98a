#include "Platform/Terminal.h"
#include "Tools/vistra/Account.h"
#include "Tools/vistra/ClearText.h"
#include "Tools/vistra/Commands.h"
#include "Tools/vistra/DocumentEnd.h"
#include "Tools/vistra/DocumentHeading.h"
#include "Tools/vistra/Documents.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

namespace {

struct ShowOptions {
    std::vector<std::string> files;
    bool clear = false;
};

ExitCode ShowAccounts(const std::vector<std::string>& files) {
    Account account(std::cout);
    const char* gap = "";
    ExitCode exit = ExitCode::Done;
    for (const std::string& path : files) {
        const auto begin = [&](const DocumentHead& head) {
            const DocumentEnd end = ReadDocumentEnd(path, head.isObfuscated);
            std::cout << gap << HeadingOf(path, head, end) << '\n';
            account.Begin(head);
            gap = "\n";
        };
        const auto tell = [&](const Record& record, std::uint64_t) { account.Tell(record); };
        exit = Worse(exit, ReadDocuments({path}, {begin, tell, [&] { account.End(); }}));
    }
    return exit;
}

ExitCode ShowClearText(const std::vector<std::string>& files) {
    const bool isForTerminal = Platform::IsTerminal(Platform::StandardStream::Output);
    ExitCode exit = ExitCode::Done;
    for (const std::string& path : files)
        exit = Worse(exit, WriteClearText(path, std::cout, isForTerminal));
    return exit;
}

} // namespace

void AddShowCommand(CLI::App& vistra, ExitCode& exit) {
    const auto options = std::make_shared<ShowOptions>();
    CLI::App& command = *vistra.add_subcommand(
        "show", "Show documents, obfuscated or not, as a person reads them: groups and events");
    command.add_option("FILE", options->files, "Documents, in the order in which to tell of them")
        ->type_name("")
        ->required();
    command.add_flag("--clear", options->clear,
                     "Print the documents' own clear text instead, byte for byte");
    command.callback([options, &exit] {
        exit = Worse(exit,
                     options->clear ? ShowClearText(options->files) : ShowAccounts(options->files));
    });
}
