#pragma once

#include "Tools/vistra/ExitCode.h"
#include "Tools/vistra/Gates.h"

#include <vector>

/// Whether a session start would record, and why.
class Diagnosis {
public:
    /// Asks all gates.
    explicit Diagnosis(const SessionStart& start) : m_gates(AskAllGates(start)) {}

    /// Whether no gate refuses.
    bool IsOn() const { return m_gates.size() == Reason(); }

    void Print() const;
    void PrintAsJson() const;

    /// Done when recording is on, Findings when it is off, InputMissed when something that counts
    /// could not be looked at.
    ExitCode Exit() const;

private:
    /// Index of the first gate that refuses; their number when none does.
    std::size_t Reason() const;
    void PrintGate(std::size_t index) const;
    std::string Verdict() const;

    std::vector<Gate> m_gates;
};
