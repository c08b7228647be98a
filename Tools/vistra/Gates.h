#pragma once

#include "Platform/Bundle.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

/// The session start that is asked about.
struct SessionStart {
    std::string family, product, key;
    std::optional<std::string> agentFolder; ///< as the host names it to the library
    std::string program;                    ///< file of the host; empty when not known
    int serializationState = 2;
};

/// One thing that a session start asks, and what it would find. Finding it out changes nothing.
struct Gate {
    enum class Answer { Passes, Refuses, CannotBeTold };

    Gate(std::string gateId, std::string gateTitle, std::string whyItPasses = std::string())
        : id(std::move(gateId)), title(std::move(gateTitle)), why(std::move(whyItPasses)) {}

    std::string id; ///< for scripts
    std::string title;
    Answer answer = Answer::Passes;
    std::string why;
    std::string file;   ///< what decides it; empty when no file does
    std::string change; ///< how to have it otherwise; empty when there is nothing to change
    std::vector<std::string> notes;
    bool isMissed = false; ///< something that counts could not be looked at

    void Refuse(const std::string& reason) {
        answer = Answer::Refuses;
        why = reason;
    }
};

// The gates of a start, StartGates.cpp and ConfigGate.cpp.

Gate AskProductTexts(const SessionStart& start);
Gate AskConfiguration(const SessionStart& start);
Gate AskUsageKey(const SessionStart& start);
Gate AskStoredAnswer(const SessionStart& start);
Gate AskAgent(const SessionStart& start);
Gate AskEnablement();
Gate AskConsent(const SessionStart& start);

// What follows a yes, DocumentGates.cpp: where one refuses, the host has a session that records
// nothing.

Gate AskDocumentFolder(const SessionStart& start);
Gate AskFreeSpace();
Gate AskObfuscation();
Gate AskSending();
Gate AskMarker(const SessionStart& start);

/// All of them, in the order in which a session start comes to them.
std::vector<Gate> AskAllGates(const SessionStart& start);

/// The host's bundle; null when the host is not known, or its bundle cannot be read.
CFBundleRef BundleOf(const SessionStart& start);

/// The usage key as the library keeps it, and the answer stored for it; nothing when it refuses the
/// key, or what is stored cannot be read.
std::optional<std::string> KeyOf(const SessionStart& start);
std::optional<int> AnswerOf(const SessionStart& start);
