#include "Tools/vistra/Commands.h"
#include "Tools/vistra/Diagnosis.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <memory>

namespace {

struct Options {
    SessionStart start;
    std::string agentFolder, program;
    bool json = false;
};

/// The file of the program as the system names a running one.
std::string RealPath(const std::string& program) {
    std::error_code failure;
    const auto path = std::filesystem::canonical(program, failure);
    return failure ? program : path.string();
}

ExitCode Diagnose(Options options, bool namesAgent) {
    if (namesAgent)
        options.start.agentFolder = options.agentFolder;
    if (!options.program.empty())
        options.start.program = RealPath(options.program);
    const Diagnosis diagnosis(options.start);
    options.json ? diagnosis.PrintAsJson() : diagnosis.Print();
    return diagnosis.Exit();
}

} // namespace

void AddDoctorCommand(CLI::App& vistra, ExitCode& exit) {
    CLI::App* command =
        vistra.add_subcommand("doctor", "Tell why recording is on or off, changing nothing");
    const auto options = std::make_shared<Options>();
    command->add_option("--family", options->start.family, "Product family, as the host names it")
        ->required();
    command->add_option("--product", options->start.product, "Product name, as the host names it")
        ->required();
    command->add_option("--key", options->start.key, "Usage key of the product")->required();
    command->add_option("--host", options->program, "The host's program: its bundle is looked at")
        ->check(CLI::ExistingFile);
    CLI::Option* agent = command->add_option("--agent", options->agentFolder,
                                             "Folder of the agent that the host names");
    command
        ->add_option("--state", options->start.serializationState,
                     "Serialization state that the host tells: 0 pre-release, 1 trial, "
                     "2 serialized, 3 shared")
        ->check(CLI::Range(0, 3))
        ->capture_default_str();
    command->add_flag("--json", options->json, "Print JSON");
    command->callback(
        [options, agent, &exit] { exit = Worse(exit, Diagnose(*options, agent->count() > 0)); });
    command->footer("Exit codes: 0 recording is on; 1 it is off; 3 something could not be looked "
                    "at.");
}
