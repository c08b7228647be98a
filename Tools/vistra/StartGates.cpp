// What a session start asks of its caller, of the preferences, and of the agent.

#include "LogSession/LogDataValidator.h"
#include "LogSession/OptInPolicy.h"
#include "Platform/PreferenceListing.h"
#include "Tools/vistra/Consent.h"
#include "Tools/vistra/Gates.h"
#include "Tools/vistra/StoredRecords.h"
#include "Utility/src/LogSessionUtils.h"
#include "Utility/src/Mac/LogTransUtilsMac.h"
#include "Utility/src/PreferenceKeys.h"

namespace {

using Platform::PreferenceFile;

/// Refuses a text that the validator does not accept; tells of one that it cuts.
void Verify(const char* name, const std::string& text, int kind, Gate& gate) {
    std::string usable;
    switch (LogDataValidator::VerifyString(text.c_str(), usable, kind)) {
    case kAccepted:
        return;
    case kShortened:
        gate.notes.push_back(std::string("the ") + name + " is cut to " + usable);
        return;
    case kBackslash:
        return gate.Refuse(std::string("the ") + name + " holds a backslash");
    default:
        return gate.Refuse(std::string("the ") + name + " is empty");
    }
}

/// Tells of preferences that cannot be read or understood.
void Note(const PreferenceFile& file, const char* consequence, Gate& gate) {
    if (file.condition == PreferenceFile::Condition::Unparsable)
        gate.notes.push_back(file.path + " cannot be understood, and counts as empty");
    if (file.condition == PreferenceFile::Condition::Unreadable)
        gate.notes.push_back(file.path + " cannot be read" + consequence);
    gate.isMissed = gate.isMissed || file.condition == PreferenceFile::Condition::Unparsable ||
                    file.condition == PreferenceFile::Condition::Unreadable;
}

std::string OptInCommand(const char* verb, const SessionStart& start) {
    return std::string("vistra opt-in ") + verb + " " +
           Consent::ShellWord(KeyOf(start).value_or(start.key));
}

/// The agent's program in a bundle, empty when it is not there. Notes where it was looked for.
std::string AgentIn(const std::string& bundle, Gate& gate) {
    std::string program = LogTransUtils::GetExePathFromLogTransportBundlePath(bundle);
    const std::string wanted = bundle + kTransportExecutableSubPath;
    gate.notes.push_back(wanted + (program.empty() ? " is not there" : " is there"));
    if (gate.file.empty())
        gate.file = wanted;
    return program;
}

std::string FindAgent(const SessionStart& start, Gate& gate) {
    if (start.agentFolder) {
        LogTransUtils::SetLogTransportInputPath(start.agentFolder->c_str());
        const std::string named = LogTransUtils::GetLogTransportInputPath();
        if (!named.starts_with('/'))
            gate.notes.push_back("a host takes this path from its own current folder");
        for (const std::string& bundle : {named, LogTransUtils::GetBundlePathBeside(named)})
            if (std::string program = AgentIn(bundle, gate); !program.empty())
                return program;
    }
    const CFBundleRef host = BundleOf(start);
    if (!host) {
        gate.notes.push_back(start.program.empty() ? "without --host, no host's bundle is looked at"
                                                   : "the host's bundle cannot be read");
        return std::string();
    }
    return AgentIn(host->location + kTransportBundlePath, gate);
}

} // namespace

CFBundleRef BundleOf(const SessionStart& start) {
    return start.program.empty() ? nullptr : Platform::BundleOfProgram(start.program);
}

std::optional<std::string> KeyOf(const SessionStart& start) {
    std::string key;
    const int code = LogDataValidator::VerifyString(start.key.c_str(), key, kUsageKeyKind);
    return code == kAccepted || code == kShortened ? std::optional(key) : std::nullopt;
}

std::optional<int> AnswerOf(const SessionStart& start) {
    const std::optional<std::string> key = KeyOf(start);
    int answer = kOptInUnknown;
    if (!key || !LogSessionUtils::ReadOptIn(key->c_str(), answer))
        return std::nullopt;
    return answer;
}

Gate AskProductTexts(const SessionStart& start) {
    Gate gate("product-texts", "product texts", "family and name are usable");
    gate.notes.push_back("the host's version must not be empty, either");
    Verify("family", start.family, kValueKind, gate);
    if (gate.answer == Gate::Answer::Passes)
        Verify("name", start.product, kValueKind, gate);
    if (gate.answer == Gate::Answer::Refuses)
        gate.change = "in the host: give UTStartSession a text";
    return gate;
}

Gate AskUsageKey(const SessionStart& start) {
    Gate gate("usage-key", "usage key", "the key is usable");
    Verify("key", start.key, kUsageKeyKind, gate);
    if (gate.answer == Gate::Answer::Refuses) {
        gate.why += ", so that the library counts as never initialised";
        gate.change = "in the host: give UTInitialize another key";
    }
    return gate;
}

Gate AskStoredAnswer(const SessionStart& start) {
    Gate gate("stored-answer", "the user's answer");
    gate.file = StoredRecords::File();
    const std::optional<int> answer = AnswerOf(start);
    if (answer) {
        gate.why = std::string("the stored answer is: ") + Consent::Name(*answer);
        if (StoredRecords::IsFileBroken()) {
            gate.notes.push_back(gate.file + " cannot be understood, and counts as empty");
            gate.isMissed = true;
        }
    } else if (KeyOf(start) && StoredRecords::ReadAll()) {
        gate.Refuse("the key is no UTF-8 text, so nothing can be stored under it");
    } else if (KeyOf(start)) {
        gate.Refuse("the preferences cannot be read, and no session starts meanwhile");
        gate.change = "make the file readable for its user";
        gate.isMissed = true;
    } else {
        gate.answer = Gate::Answer::CannotBeTold;
        gate.why = "there is no key to look for";
    }
    return gate;
}

Gate AskAgent(const SessionStart& start) {
    Gate gate("agent", "agent");
    const std::string program = FindAgent(start, gate);
    if (!program.empty()) {
        gate.file = program;
        gate.why = "the agent is there";
        return gate;
    }
    gate.Refuse(gate.file.empty() ? "neither --agent nor --host tells where an agent may be"
                                  : "the agent is in none of the places");
    gate.change = gate.file.empty() ? "name the folder of the agent, or the host"
                                    : "install the agent's program as that file";
    return gate;
}

Gate AskEnablement() {
    Gate gate("enablement", "switch for all users", "recording is enabled on this machine");
    const Platform::String domain{PreferenceKeys::kEnablementDomain};
    for (const PreferenceFile& file :
         Platform::PreferenceFiles(&domain, kCFPreferencesAnyUser, kCFPreferencesCurrentHost)) {
        const bool isThere = file.condition != PreferenceFile::Condition::Missing;
        if (gate.file.empty() || isThere)
            gate.file = file.path;
        Note(file, ", and the switch counts as on", gate);
        if (isThere)
            break;
    }
    gate.change = "as administrator: set Enabled to 0 in that file to switch recording off";
    if (!LogSessionUtils::IsVistraEnabled()) {
        gate.Refuse("an administrator has switched recording off: Enabled is 0");
        gate.change = "as administrator: set Enabled to 1 in that file";
    }
    return gate;
}

Gate AskConsent(const SessionStart& start) {
    Gate gate("consent", "consent");
    gate.file = StoredRecords::File();
    const std::optional<int> answer = AnswerOf(start);
    if (!answer) {
        gate.answer = Gate::Answer::CannotBeTold;
        gate.why = "the user's answer is not known";
        return gate;
    }
    OptInPolicy policy;
    policy.SetOptIn(*answer);
    policy.SetSerializationState(start.serializationState);
    if (policy.AllowsRecording()) {
        gate.why = *answer == kOptedIn ? "the user has agreed"
                                       : "the user has not been asked, and the product is a "
                                         "pre-release (state 0)";
        gate.change = "to refuse: " + OptInCommand("out", start);
        return gate;
    }
    if (*answer == kOptInUnknown)
        gate.Refuse("the user has not been asked, and the product is no pre-release (state " +
                    std::to_string(start.serializationState) + ")");
    else
        gate.Refuse(*answer == kOptedOut
                        ? "the user has refused"
                        : "the stored answer is neither 1 nor 0: " + std::to_string(*answer));
    gate.change = "to agree: " + OptInCommand("in", start);
    return gate;
}
