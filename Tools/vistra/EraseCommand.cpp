#include "Platform/Terminal.h"
#include "Tools/vistra/Commands.h"
#include "Tools/vistra/Consent.h"
#include "Tools/vistra/Console.h"
#include "Tools/vistra/ErasePlan.h"
#include "Utility/src/LogSessionUtils.h"
#include "Utility/src/PreferenceKeys.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

namespace {

struct Options {
    std::string key;
    bool isDryRun = false;
    bool isAgreed = false;
};

constexpr const char* kFileTitles[] = {"Documents", "Markers of sessions", "The library's log",
                                       "Copies of preferences that could not be understood"};

constexpr char kSettingsStay[] =
    "The settings obfuscate and send, what your administrator has set, and the agent's\n"
    "configuration stay: they are no data about your use.\n";
constexpr char kSharedStays[] =
    "What belongs to no single key stays: the number that stands for you, the answers of no\n"
    "product, the dates of product families, and the settings.\n";
constexpr char kNeverAsked[] =
    "You then count as never asked: a product that says it is a pre-release records again. To\n"
    "refuse, or to keep a refusal, afterwards:\n";

std::string Count(std::size_t number, const char* what) {
    return std::to_string(number) + " " + what + (number == 1 ? "" : "s");
}

void PrintFiles(const ErasePlan& plan, UsageFile::Kind kind) {
    std::uint64_t bytes = 0;
    std::size_t count = 0;
    for (const UsageFile& file : plan.files)
        if (file.kind == kind) {
            ++count;
            bytes += file.bytes;
        }
    if (count == 0)
        return;
    std::cout << kFileTitles[static_cast<std::size_t>(kind)] << ": " << Count(count, "file") << ", "
              << bytes << " bytes\n";
    for (const UsageFile& file : plan.files)
        if (file.kind == kind)
            std::cout << "  " << Console::Printable(file.path) << "  " << file.bytes << " bytes\n";
}

std::string Describe(const StoredRecord& record) {
    switch (record.kind) {
    case RecordKind::UsageKey:
        return std::string("answer: ") + Consent::Name(record.optIn.value_or(kOptInUnknown)) +
               ", " + Count(record.answers, "demographic answer");
    case RecordKind::VersionNote:
        return "the answer last told of a version";
    case RecordKind::DateOnly:
        return "a date alone";
    case RecordKind::Identity:
        return "the number that stands for you";
    default:
        return record.name == PreferenceKeys::kDemographic ? "demographic answers of no product"
                                                           : "notes of the library";
    }
}

void PrintRecords(const ErasePlan& plan) {
    const std::size_t count = plan.records.size() + (plan.hasAnswersElsewhere ? 1 : 0);
    if (count == 0)
        return;
    std::cout << "Preferences: " << Count(count, "record") << " of "
              << Console::Printable(StoredRecords::File()) << "\n";
    for (const StoredRecord& record : plan.records)
        std::cout << "  " << Console::Printable(record.name) << "  (" << Describe(record) << ")\n";
    if (plan.hasAnswersElsewhere)
        std::cout << "  " << Console::Printable(*plan.key) << "  (demographic answers)\n";
}

void PrintConsequences(const ErasePlan& plan) {
    std::cout << (plan.key ? kSharedStays : kSettingsStay);
    std::string commands;
    for (const StoredRecord& record : plan.records)
        if (record.kind == RecordKind::UsageKey && record.optIn)
            commands +=
                "  vistra opt-in out " + Console::Printable(Consent::ShellWord(record.name)) + "\n";
    if (!commands.empty())
        std::cout << kNeverAsked << commands;
}

void PrintPlan(const ErasePlan& plan) {
    if (plan.IsEmpty())
        std::cout << "There is nothing to erase.\n";
    else
        std::cout << Console::Styled(Console::Style::Heading, "To be erased") << "\n";
    for (const UsageFile::Kind kind : {UsageFile::Kind::Document, UsageFile::Kind::Marker,
                                       UsageFile::Kind::Log, UsageFile::Kind::KeptCopy})
        PrintFiles(plan, kind);
    PrintRecords(plan);
    if (!plan.kept.empty())
        std::cout << Console::Styled(Console::Style::Heading, "Kept") << "\n";
    for (const KeptItem& item : plan.kept)
        std::cout << "  " << Console::Printable(item.path) << "  " << item.why << "\n";
    if (plan.key && !plan.kept.empty())
        std::cout << "What does not tell its key goes with everything only: vistra erase\n";
    if (!plan.IsEmpty())
        PrintConsequences(plan);
    std::cout << std::flush;
}

ExitCode ComplainOf(const std::vector<KeptItem>& items, ExitCode exit) {
    for (const KeptItem& item : items)
        Console::Complain(item.path, item.why);
    return items.empty() ? ExitCode::Done : exit;
}

/// Asks the person at the terminal.
bool IsAgreed() {
    std::cout << "Erase? [y/N] " << std::flush;
    std::string answer;
    std::getline(std::cin, answer);
    return answer == "y" || answer == "Y" || answer == "yes";
}

ExitCode CarryOut(const ErasePlan& plan, const Options& options) {
    if (!options.isAgreed && !Platform::IsTerminal(Platform::StandardStream::Input)) {
        Console::Complain("erase", "nothing was erased: there is nobody to ask; see --yes");
        return ExitCode::WrongUsage;
    }
    if (!options.isAgreed && !IsAgreed()) {
        std::cout << "Nothing was erased.\n";
        return ExitCode::NotDone;
    }
    const std::vector<KeptItem> left = Erase(plan);
    std::cout << (left.empty() ? "Erased.\n" : "Erased, but not all.\n");
    return ComplainOf(left, ExitCode::NotDone);
}

ExitCode EraseAsAsked(const Options& options, bool namesKey) {
    const std::string why = namesKey ? Consent::WhyNoKey(options.key) : std::string();
    if (!why.empty()) {
        Console::Complain("usage key \"" + options.key + "\"", why);
        return ExitCode::WrongUsage;
    }
    const ErasePlan plan = PlanErasure(namesKey ? std::optional(options.key) : std::nullopt);
    PrintPlan(plan);
    ExitCode exit = plan.kept.empty() ? ExitCode::Done : ExitCode::Findings;
    exit = Worse(exit, ComplainOf(plan.unread, ExitCode::InputMissed));
    if (options.isDryRun || plan.IsEmpty())
        return exit;
    const ExitCode carried = CarryOut(plan, options);
    return carried == ExitCode::WrongUsage ? carried : Worse(exit, carried);
}

} // namespace

void AddEraseCommand(CLI::App& vistra, ExitCode& exit) {
    CLI::App* command =
        vistra.add_subcommand("erase", "Erase what is stored, after telling what will go");
    const auto options = std::make_shared<Options>();
    CLI::Option* key = command->add_option("--key", options->key,
                                           "Usage key: only what belongs to it; else everything");
    command->add_flag("--dry-run", options->isDryRun, "Only tell");
    command->add_flag("--yes", options->isAgreed, "Do not ask");
    command->callback(
        [options, key, &exit] { exit = Worse(exit, EraseAsAsked(*options, key->count() > 0)); });
    command->footer("Exit codes: 0 all is erased; 1 something was kept, and named; 2 wrong command "
                    "line,\nor nobody to ask and no --yes; 3 something could not be read; 4 not "
                    "erased, or not all.");
}
