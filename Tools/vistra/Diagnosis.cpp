#include "Tools/vistra/Diagnosis.h"

#include "Platform/Files.h"
#include "Tools/vistra/Console.h"
#include "Tools/vistra/JsonOutput.h"

#include <algorithm>
#include <iomanip>
#include <iostream>
#include <nlohmann/json.hpp>

namespace {

using Json = nlohmann::ordered_json;

constexpr int kTitleWidth = 24;

const char* Word(Gate::Answer answer) {
    switch (answer) {
    case Gate::Answer::Passes:
        return "passes";
    case Gate::Answer::Refuses:
        return "refuses";
    default:
        return "cannot be told";
    }
}

const char* UnreachedWord(Gate::Answer answer) {
    switch (answer) {
    case Gate::Answer::Passes:
        return "not reached, but would pass";
    case Gate::Answer::Refuses:
        return "not reached, but would refuse";
    default:
        return "not reached, cannot be told";
    }
}

Console::Style StyleOf(Gate::Answer answer) {
    return answer == Gate::Answer::Passes ? Console::Style::Good : Console::Style::Bad;
}

bool IsThere(const std::string& path) {
    return Platform::TypeOfItem(path) != Platform::ItemType::Missing;
}

void PrintDetail(const char* label, const std::string& text) {
    std::cout << "    " << std::left << std::setw(8) << label << Console::Printable(text) << "\n";
}

} // namespace

std::size_t Diagnosis::Reason() const {
    const auto refusing = std::ranges::find(m_gates, Gate::Answer::Refuses, &Gate::answer);
    return static_cast<std::size_t>(refusing - m_gates.begin());
}

void Diagnosis::PrintGate(std::size_t index) const {
    const Gate& gate = m_gates[index];
    const bool isReached = index <= Reason();
    const std::string word = isReached ? Word(gate.answer) : UnreachedWord(gate.answer);
    std::cout << std::right << std::setw(2) << index + 1 << "  " << std::left
              << std::setw(kTitleWidth) << gate.title
              << Console::Styled(isReached ? StyleOf(gate.answer) : Console::Style::Faint, word)
              << (index == Reason() ? "  <-- the reason" : "") << "\n";
    PrintDetail("why", gate.why);
    for (const std::string& note : gate.notes)
        PrintDetail("note", note);
    if (!gate.file.empty())
        PrintDetail("file", gate.file + (IsThere(gate.file) ? "" : "  (does not exist)"));
    if (!gate.change.empty())
        PrintDetail("change", gate.change);
}

std::string Diagnosis::Verdict() const {
    if (IsOn())
        return "Recording is on: no gate refuses.";
    const Gate& gate = m_gates[Reason()];
    return "Recording is off: " + gate.title + ": " + gate.why + ".";
}

void Diagnosis::Print() const {
    for (std::size_t index = 0; index < m_gates.size(); ++index)
        PrintGate(index);
    std::cout << Console::Styled(IsOn() ? Console::Style::Good : Console::Style::Bad,
                                 Console::Printable(Verdict()))
              << "\n";
}

void Diagnosis::PrintAsJson() const {
    Json gates = Json::array();
    for (const Gate& gate : m_gates)
        gates.push_back({{"gate", gate.id},
                         {"answer", Word(gate.answer)},
                         {"reached", gates.size() <= Reason()},
                         {"why", gate.why},
                         {"notes", gate.notes},
                         {"file", gate.file.empty() ? Json() : Json(gate.file)},
                         {"fileExists", !gate.file.empty() && IsThere(gate.file)},
                         {"change", gate.change.empty() ? Json() : Json(gate.change)},
                         {"missed", gate.isMissed}});
    PrintJson({{"recording", IsOn()},
               {"reason", IsOn() ? Json() : Json(m_gates[Reason()].id)},
               {"verdict", Verdict()},
               {"gates", gates}});
}

ExitCode Diagnosis::Exit() const {
    if (std::ranges::any_of(m_gates, &Gate::isMissed))
        return ExitCode::InputMissed;
    return IsOn() ? ExitCode::Done : ExitCode::Findings;
}
