// What becomes of a session that may start: its document, and what else is written.

#include "Platform/FileReading.h"
#include "Platform/UserFolders.h"
#include "Tools/vistra/FolderOutlook.h"
#include "Tools/vistra/Gates.h"
#include "Tools/vistra/StoredRecords.h"
#include "Utility/src/GUIDGen.h"
#include "Utility/src/LogSessionUtils.h"
#include "Utility/src/Mac/FileSystemUtils.h"
#include "Utility/src/PreferenceKeys.h"
#include "Utility/src/UsageFileNames.h"
#include "Utility/src/UsageFolders.h"

#include <cstdio>

namespace {

constexpr char kSampleGuid[] = "00000000-0000-0000-0000-000000000000";

FolderOutlook LookAtDocuments() {
    return LookAtFolder(kDomainLibraryFolderType, UsageFolders::kDocuments);
}

/// Name of a session's first file, as long as it would be.
std::string SampleName(const SessionStart& start) {
    const std::string user = GUIDGen::GetUsageUserGUID(true);
    return UsageFileNames::CommonName(start.family, start.product,
                                      user.empty() ? kSampleGuid : user, kSampleGuid) +
           "_0" + UsageFileNames::kInProgressExtension;
}

/// Whether the folder can hold the file: a long name is too much for the system, and a delimiter
/// in a name leads elsewhere.
bool CanHold(const std::string& folder, const std::string& name) {
    const std::string path = folder + "/" + name;
    return Platform::TypeOfItem(path) != Platform::ItemType::Unknown &&
           (name.find('/') == std::string::npos ||
            FileSystemUtils::IsDirectory(FileSystemUtils::GetParentPath(path)));
}

std::string Mebibytes(std::uint64_t bytes) {
    char text[32];
    std::snprintf(text, sizeof text, "%.1f MiB", static_cast<double>(bytes) / 1'048'576);
    return text;
}

Gate SwitchGate(const char* id, const char* title, const char* key, bool isOn, const char* on,
                const char* off) {
    Gate gate(id, title, isOn ? on : off);
    gate.file = StoredRecords::File();
    gate.change = std::string("set the top-level number ") + key + " to " + (isOn ? "0" : "1") +
                  " in that file";
    return gate;
}

} // namespace

Gate AskDocumentFolder(const SessionStart& start) {
    Gate gate("document-folder", "folder of documents");
    const FolderOutlook outlook = LookAtDocuments();
    gate.file = outlook.folder;
    const bool isThere = outlook.state == FolderOutlook::State::There;
    gate.why = isThere ? "the folder is there" : "a session start would make the folder";
    if (outlook.folder.empty()) {
        gate.Refuse("the user has no home folder");
    } else if (outlook.state == FolderOutlook::State::CannotBe) {
        gate.Refuse("the folder cannot be made: see " + outlook.obstacle);
        gate.change = "make room for the folder";
    } else if (isThere && !Platform::MayBeWritten(outlook.folder)) {
        gate.Refuse("the folder may not be written");
        gate.change = "make the folder writable for its user";
    } else if (!CanHold(outlook.nearest, SampleName(start))) {
        gate.Refuse("no file can have the name of the document: family or name are too long, or "
                    "hold a \"/\"");
        gate.change = "in the host: give UTStartSession other texts";
    }
    if (!isThere && !outlook.obstacle.empty() && gate.answer == Gate::Answer::Passes)
        gate.notes.push_back(outlook.obstacle + " would be deleted for it");
    return gate;
}

Gate AskFreeSpace() {
    Gate gate("free-space", "free space");
    const FolderOutlook outlook = LookAtDocuments();
    gate.file = outlook.nearest;
    if (outlook.state == FolderOutlook::State::CannotBe) {
        gate.answer = Gate::Answer::CannotBeTold;
        gate.why = "there is no folder to ask for";
        return gate;
    }
    const auto space = Platform::FreeBytes(outlook.nearest);
    gate.isMissed = !space;
    const std::string needed =
        "; more than " + Mebibytes(UsageFolders::kMinimumFreeBytes) + " are needed";
    gate.why = Mebibytes(space.value_or(0)) + " are free" + needed;
    if (space.value_or(0) <= UsageFolders::kMinimumFreeBytes) {
        gate.Refuse(space ? gate.why : "the file system does not tell what is free" + needed);
        gate.change = "free space on that file system";
    }
    return gate;
}

Gate AskObfuscation() {
    return SwitchGate("obfuscation", "obfuscation", PreferenceKeys::kObfuscate,
                      LogSessionUtils::UsageObfuscateFlag(), "documents are obfuscated (.rdy)",
                      "documents are in clear (.xml)");
}

Gate AskSending() {
    return SwitchGate("sending", "sending", PreferenceKeys::kSend, LogSessionUtils::UsageSendFlag(),
                      "the agent is started for each finished document",
                      "finished documents wait in the folder, and the agent is not started");
}

Gate AskMarker(const SessionStart& start) {
    Gate gate("marker", "crash marker");
    const FolderOutlook outlook = LookAtFolder(kDomainLibraryFolderType, UsageFolders::kMarkers);
    const std::string name = KeyOf(start).value_or(start.key) + "_" + start.family + "_" +
                             start.product + "_..." + UsageFolders::kMarkerExtension;
    gate.file = outlook.folder;
    gate.why = outlook.state == FolderOutlook::State::CannotBe
                   ? "no marker can be written; recording does not depend on it"
                   : "while the session is open, if the host has crash detection on: " + name;
    return gate;
}

std::vector<Gate> AskAllGates(const SessionStart& start) {
    return {AskProductTexts(start), AskConfiguration(start),
            AskUsageKey(start),     AskStoredAnswer(start),
            AskAgent(start),        AskEnablement(),
            AskConsent(start),      AskDocumentFolder(start),
            AskFreeSpace(),         AskObfuscation(),
            AskSending(),           AskMarker(start)};
}
