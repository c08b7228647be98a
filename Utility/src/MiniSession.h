#pragma once

#include "Utility/src/Mac/FileProxy.h"
#include "Utility/src/RecordBuffer.h"

#include <string>

/// Writes one small, complete usage document outside any host session, straight under its final
/// name. The builders ignore failed writes; this module's diagnostics are always dropped.
class MiniSession {
public:
    MiniSession(const std::string& productFamily, const std::string& productName,
                const std::string& sessionId, const std::string& userId, bool obfuscate,
                const std::string& folder);
    ~MiniSession();
    MiniSession(const MiniSession&) = delete;
    MiniSession& operator=(const MiniSession&) = delete;

    /// Appends text, opening the file first if needed. 0, -1 for null, -2 when the file cannot be
    /// opened, -3 when the write fails.
    int Write(const char* text);
    /// Writes the marker of an obfuscated file. Always 0.
    int WriteHeader();
    /// Turns the folder into the file's path, once; without a folder there is none.
    void GenerateFilePath();

    /// Each writes one record with the result of Write; NewGroup returns the new group's id.
    int LogStartTag();
    int NewGroup(const std::string& category, const std::string& subcategory,
                 const std::string& name, const std::string& doc);
    int LogData(int group, const std::string& name, const std::string& data);
    int LogEndTag();

    /// `fallback` when the value has no text.
    static void IntegterToString(const int& value, std::string& out, const std::string& fallback);
    static void SerilizationStatusToString(const int& state, std::string& out,
                                           const std::string& fallback);

    // When memory runs out, neither leaves a document behind.

    /// Writes the document about a changed opt-in; `outPath` receives its path. Always 0.
    int CreateOptInRateFile(const std::string& optInKey, const int& baseCount,
                            const int& optInCount, const int& serializationState,
                            const std::string& optInProductFamily,
                            const std::string& optInProductName,
                            const std::string& optInProductVersion, std::string& outPath);

    /// Writes the document about an application that ended by crashing. Always 0.
    int CreateCrashFile();

private:
    template <class Records>
    void WriteWhole(Records records);
    int WriteRecord();

    std::string m_path; ///< the folder, until the file is first written
    bool m_isNamed = false;
    std::string m_productFamily;
    std::string m_productName;
    std::string m_sessionId;
    std::string m_userId;
    bool m_obfuscate;
    int m_sequence = -1;
    int m_group = -1;
    FileProxy m_file;
    RecordBuffer m_record;
};
