#pragma once

#include "Utility/src/Mac/FileProxy.h"
#include "Utility/src/RecordBuffer.h"
#include "Utility/src/TimeUtils.h"

#include <cstdint>
#include <string>
#include <string_view>

/// One usage session of a host product: writes its document into files in the user's log folder,
/// splits them at a size and hands them off. Nothing here reports or logs a failure: a failed
/// write deletes the file and disables the session. Relies on the API lock.
class LogSession : public FileProxy {
public:
    /// Writes the start of the document, unless there is too little free space; the session then
    /// writes nothing at all.
    LogSession(const char* family, const char* name, const char* version, const char* build,
               const char* language);
    /// Closes the file; writes no record.
    ~LogSession();

    const std::string& GetSessionId() const { return m_sessionId; }
    const std::string& GetProductFamily() const { return m_productFamily; }
    const std::string& GetProductName() const { return m_productName; }
    const std::string& GetProcessName() const { return m_processName; }

    // Files: LogSession.cpp.

    void InitLogFolder();
    /// The GUID that stands for the user; the same string for the life of the process.
    static const std::string& GetUserId();
    /// Path of the current file without extension.
    std::string GetCommonLogFileName() const;
    // Each sets the current path to the current file's name in one stage of its life.
    const std::string& GetInProgressLogFileName();
    const std::string& GetTransNormalLogFileName();
    const std::string& GetTransObfuscateLogFileName();
    const std::string& GetTransLogFileName();
    /// Writes text, opening the file first if needed; null is ignored.
    void WriteFile(const char* data);
    /// WriteFile, then counts `length` bytes and splits at the threshold.
    void AddDataToFile(const char* data, unsigned long length);
    void CloseFile();
    /// Closes and deletes the file in progress of a session that could not begin.
    void Discard();
    /// Deletes the current file and disables the session. Always 0.
    int HandleLogWrittingFailure();

    /// Sets `key` to the usage key and the three texts joined by "_".
    static void getProductIndividualOptinKey(const std::string& family, const std::string& name,
                                             const std::string& version, std::string& key);
    /// Stores a changed opt-in of the product and writes its document, whose path goes to `path`.
    /// False, with nothing written, when it is unknown or unchanged. One that cannot be kept is
    /// written anew each time.
    static bool GenerateOptInfoLogFile(const std::string& family, const std::string& name,
                                       const std::string& version, std::string& path);

    // Records: LogSessionRecords.cpp. None is written while the session is disabled.

    void LogStartSessionTag();
    void LogEndSessionTag();
    // What a host calls often takes views, too: nothing need be measured or copied for it again.

    /// Writes nothing for a null name or null data.
    void DataRecTag(int group, const char* name, const char* data);
    void DataRecTag(int group, std::string_view name, std::string_view data);
    void EventRecTag(const char* category, const char* subcategory, const char* name,
                     const char* doc);
    void EventRecTag(std::string_view category, std::string_view subcategory, std::string_view name,
                     std::string_view doc);
    /// The new group's number, or -1 while the session is disabled.
    int NewGroupTag(const char* category, const char* subcategory, const char* name,
                    const char* doc);
    void NewDocTag(const char* doc);
    void AddDataToSessionGroup(const char* name, const char* data);
    void AddDataToSessionGroup(std::string_view name, std::string_view data);
    /// Declares a group for rejected data; returns its number as NewGroupTag does.
    int GenerateInvalidGroup();
    /// True from 0 up to the number of the last declared group.
    bool VerifyGroupId(int id) const;
    /// The current sequence number, which is then advanced.
    std::uint32_t IncreaseSeq();

    // The start of the document: LogSessionStart.cpp. Each writes one group.

    /// Writes `StartSession` and all standard groups.
    void LogDefaultData();
    void LogSessionInfo(const char* family, const char* name, const char* version,
                        const char* build, const char* language);
    void LogSystemInfo();
    /// A group for each display.
    void LogScreenResolution();
    void LogSingleScreenResolution(long width, long height);
    void LogDemographicInfo(const std::string& usageKey);
    void LogExeInfo();
    void LogUsageVersionInfo();

    // Split and hand-off: LogSessionTransfer.cpp.

    /// Closes the current file as one part of the session and opens the next. Where memory runs
    /// out half-way, the next record goes on with it.
    void SplitLog();
    /// Gives the current file its final name and starts the agent; when sending is not allowed,
    /// deletes the documents of the log folder instead.
    void TransferFile();
    /// Ends the document and hands off its last file; does nothing while disabled. Where memory
    /// runs out half-way, a second call goes on with it, but does not start the agent again.
    void EndSession();

private:
    struct ProductTexts {
        const char *family, *name, *version, *build, *language;
    };
    /// A session that has done nothing yet. From here on the destructor runs whatever happens.
    explicit LogSession(const ProductTexts& product);

    void Begin();
    const std::string& SetCurrentPath(const char* extension);
    bool OpenCurrentFile();
    /// Writes the composed text, obfuscated where that is asked for.
    void WriteComposed();
    /// Composes the next record with `append(RecordBuffer&)`. Only then it takes its sequence
    /// number: composing may run out of memory.
    template <class Append>
    void Compose(Append append) {
        ForgetLastRecord();
        append(m_record);
        IncreaseSeq();
    }
    /// Writes the composed record, counts it, and splits at the threshold.
    void AddRecord();
    void CountBytes(unsigned long length);
    /// Makes place for a text, and gives back what an extraordinarily long one took.
    void ForgetLastRecord();

    /// Does what is left of a split and opens the file. False while the session is disabled. What
    /// can run out of memory happens here, before a record takes its sequence number.
    bool IsReady();
    bool HasFile() { return IsExist() || OpenCurrentFile(); }
    void ContinueSplit();
    void EndFile();
    void BeginNextFile();
    /// Gives the file its final name, or clears the folder. Whether there is a file to upload.
    bool HandOver();
    void Upload();

    /// What a split, or the end of the session, has to do next.
    enum class Step { Record, EndFile, HandOver, BeginNextFile };

    bool m_enabled = false;
    Step m_step = Step::Record;
    bool m_hasEnded = false; ///< `EndSession` is written
    std::int32_t m_startDay = 0;
    std::string m_sessionId;
    std::string m_currentPath;
    std::string m_logFolder; ///< ends in a path separator
    std::string m_processName;
    std::uint32_t m_fileIndex = 0;
    bool m_obfuscate = true;
    std::uint32_t m_sequence = 0;
    std::int32_t m_groupCounter = 0;
    std::uint32_t m_bytesInFile = 0;
    std::int32_t m_sessionGroup = 0;
    std::string m_productFamily;
    std::string m_productName;
    std::string m_productVersion;
    std::string m_productBuild;
    std::string m_productLanguage;
    std::string m_startTime;

    // Reused from record to record, so that recording needs no memory of its own.
    UtcClock m_clock;
    RecordBuffer m_record;
};
