#include "Tools/vistra/Commands.h"
#include "Tools/vistra/Consent.h"
#include "Tools/vistra/Console.h"
#include "Tools/vistra/JsonOutput.h"
#include "Tools/vistra/StoredRecords.h"
#include "Utility/src/LogSessionUtils.h"

#include <CLI/CLI.hpp>
#include <iomanip>
#include <iostream>
#include <memory>
#include <nlohmann/json.hpp>

namespace {

using Json = nlohmann::ordered_json;

struct Options {
    std::string key;
    bool json = false;
};

constexpr char kWhenItCounts[] =
    "Running programs heed it when they next start a session; one that is open goes on. Documents\n"
    "that are waiting are not deleted by this: see vistra erase.\n";

const char* KindName(const StoredRecord& record) {
    switch (record.kind) {
    case RecordKind::VersionNote:
        return "last told of a version";
    case RecordKind::DateOnly:
        return "family, or no answer";
    default:
        return "usage key";
    }
}

bool IsShown(const StoredRecord& record) {
    return record.kind == RecordKind::UsageKey || record.kind == RecordKind::VersionNote ||
           record.kind == RecordKind::DateOnly;
}

Json JsonOf(const StoredRecord& record) {
    return {{"key", record.name},
            {"kind", KindName(record)},
            {"answer", Consent::Name(record.optIn.value_or(kOptInUnknown))},
            {"date", record.date.empty() ? Json() : Json(record.date)},
            {"demographicAnswers", record.answers}};
}

void PrintRow(const std::string& answer, const std::string& since, const std::string& answers,
              const std::string& kind, const std::string& key) {
    std::cout << std::left << std::setw(11) << answer << std::setw(22) << since << std::setw(13)
              << answers << std::setw(24) << kind << key << "\n";
}

void PrintAll(const std::vector<StoredRecord>& records) {
    if (records.empty()) {
        std::cout << "No answer is stored.\n";
        return;
    }
    PrintRow("ANSWER", "SINCE (UTC)", "DEMOGRAPHIC", "KIND", "KEY");
    for (const StoredRecord& record : records)
        PrintRow(Consent::Name(record.optIn.value_or(kOptInUnknown)),
                 record.date.empty() ? "-" : Console::Printable(record.date),
                 std::to_string(record.answers), KindName(record), Console::Printable(record.name));
}

void PrintOne(const StoredRecord& record) {
    std::cout << "Usage key:           " << Console::Printable(record.name)
              << "\nAnswer:              " << Consent::Name(record.optIn.value_or(kOptInUnknown))
              << "\nFirst met:           "
              << (record.date.empty() ? "-" : Console::Printable(record.date))
              << "\nDemographic answers: " << record.answers
              << "\nStored in:           " << Console::Printable(StoredRecords::File()) << "\n";
}

StoredRecord RecordOf(const std::vector<StoredRecord>& records, const std::string& key) {
    for (const StoredRecord& record : records)
        if (record.name == key)
            return record;
    StoredRecord none;
    none.name = key;
    none.answers = StoredRecords::CountAnswers(key);
    return none;
}

/// Whether the preferences could be read and understood; complains of what could not.
bool WasRead(bool couldBeRead) {
    if (!couldBeRead || StoredRecords::IsFileBroken())
        Console::Complain(StoredRecords::File(), couldBeRead
                                                     ? "cannot be understood, and counts as empty"
                                                     : "cannot be read");
    return couldBeRead && !StoredRecords::IsFileBroken();
}

ExitCode ShowStatus(const Options& options) {
    auto records = StoredRecords::ReadAll();
    const ExitCode exit = WasRead(records.has_value()) ? ExitCode::Done : ExitCode::InputMissed;
    if (!records)
        return exit;
    if (options.key.empty()) {
        std::erase_if(*records, [](const StoredRecord& record) { return !IsShown(record); });
        Json list = Json::array();
        for (const StoredRecord& record : *records)
            list.push_back(JsonOf(record));
        options.json ? PrintJson({{"file", StoredRecords::File()}, {"records", list}})
                     : PrintAll(*records);
        return exit;
    }
    const StoredRecord record = RecordOf(*records, options.key);
    Json json = JsonOf(record);
    json["file"] = StoredRecords::File();
    options.json ? PrintJson(json) : PrintOne(record);
    return exit;
}

/// Complains of a key that no host can have.
bool IsKey(const std::string& key) {
    const std::string why = Consent::WhyNoKey(key);
    if (!why.empty())
        Console::Complain("usage key \"" + key + "\"", why);
    return why.empty();
}

ExitCode Change(const Options& options, int optIn) {
    if (!IsKey(options.key))
        return ExitCode::WrongUsage;
    const std::string why = Consent::Store(options.key, optIn);
    if (!why.empty()) {
        Console::Complain(StoredRecords::File(), why);
        return ExitCode::NotDone;
    }
    const ExitCode exit = ShowStatus(options);
    if (options.json)
        return exit;
    if (optIn == kOptInUnknown)
        std::cout << "The demographic answers of the key are forgotten, too.\n";
    std::cout << kWhenItCounts;
    return exit;
}

struct Verb {
    const char* name;
    const char* description;
    int optIn;
};

constexpr Verb kVerbs[] = {
    {"in", "Agree to recording for the key", kOptedIn},
    {"out", "Refuse recording for the key", kOptedOut},
    {"reset", "Forget the answer and the demographic answers, as if never asked", kOptInUnknown},
};

void AddStatus(CLI::App& command, const std::shared_ptr<Options>& options, ExitCode& exit) {
    CLI::App* status = command.add_subcommand("status", "Show the stored answers");
    status->add_option("KEY", options->key, "Usage key of the product; all of them without it");
    status->add_flag("--json", options->json, "Print JSON");
    status->callback([options, &exit] {
        const bool isGood = options->key.empty() || IsKey(options->key);
        exit = Worse(exit, isGood ? ShowStatus(*options) : ExitCode::WrongUsage);
    });
}

} // namespace

void AddOptInCommand(CLI::App& vistra, ExitCode& exit) {
    CLI::App* command =
        vistra.add_subcommand("opt-in", "Show or change a user's consent to being recorded");
    const auto options = std::make_shared<Options>();
    command->require_subcommand(1);
    AddStatus(*command, options, exit);
    for (const Verb& verb : kVerbs) {
        CLI::App* change = command->add_subcommand(verb.name, verb.description);
        change->add_option("KEY", options->key, "Usage key of the product")->required();
        change->add_flag("--json", options->json, "Print JSON");
        change->callback(
            [options, &exit, optIn = verb.optIn] { exit = Worse(exit, Change(*options, optIn)); });
    }
}
