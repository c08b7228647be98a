#pragma once

#include "Tools/vistra/DocumentHead.h"
#include "Tools/vistra/PieceReader.h"
#include "Tools/vistra/RecordCheck.h"
#include "Tools/vistra/StartBlock.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>

/// Where what is found in a document goes. A remark tells of what a document may be, though a
/// strict XML parser or a reader may stumble over it.
struct CheckReport {
    std::function<void(std::uint64_t line, const std::string& what)> departure;
    std::function<void(std::uint64_t line, const std::string& what)> remark;
    std::function<void(std::uint64_t line)> progress; ///< behind each record; may be empty
};

/// What is known of a session from one of its files to the next.
struct SessionState {
    std::optional<std::uint32_t> nextSeq;
    std::optional<std::uint32_t> nextGroup; ///< nothing where earlier files were not seen
    std::string time;                       ///< of the last record
    SessionIdentity identity;
    std::optional<StartBlock> startBlock;   ///< nothing where the session's start was not seen
    std::optional<std::uint32_t> nextIndex; ///< in the name of a file
    bool hasEnded = false;

    /// What is declared can no longer be told, for records are missing.
    void LoseTrack() {
        nextGroup.reset();
        startBlock.reset();
    }
};

/// Checks one file of a session against the format of usage documents.
class DocumentCheck {
public:
    /// `state` is that of the session, and goes on to its next file.
    DocumentCheck(const DocumentHead& head, SessionState& state, const CheckReport& report);

    /// Reads the file to its end. Returns why it could not be read so far; empty if it could.
    std::string Run(DocumentFile& file);

    std::uint64_t Records() const { return m_records; }

private:
    void CheckName(const std::string& path);
    void CheckIndex(std::uint32_t index);
    void CheckBroken();
    void Handle(const Piece& piece);
    void HandleFrame(const Piece& piece);
    void HandleRootEnd(const Piece& piece);
    void HandleRecord(const Piece& piece);
    void CheckCharacters(const Piece& piece);
    void CheckTime(const Piece& piece, const Record& record);
    void CheckSeq(const Piece& piece, const Record& record);
    void CheckPlace(const Piece& piece, const Record& record);
    void CheckIdentity(const Piece& piece, const Record& record);
    void CheckStart(const Piece& piece, const Record& record);
    void CheckResumption(const Piece& piece, const Record& record);
    void CheckGroup(const Piece& piece, const Record& record);
    void CheckStandardGroups(const Piece& piece, const Record& record);
    void CheckEnd(std::uint64_t line);

    bool IsSmall() const { return m_kind != SmallDocument::Kind::None; }
    void Depart(std::uint64_t line, const std::string& what) { m_report.departure(line, what); }
    void RemarkOnce(std::uint64_t line, const std::string& what);

    const DocumentHead& m_head;
    const SmallDocument::Kind m_kind; ///< none for the document of a session
    SessionState& m_state;
    const CheckReport& m_report;
    RecordCheck m_recordCheck;
    std::set<std::string> m_remarks;
    std::size_t m_frameLines = 0;
    bool m_isHeadWhole = false;
    std::uint64_t m_records = 0;
    RecordType m_last = RecordType::Other;
    bool m_isClosed = false;   ///< by its root end
    bool m_isFollowUp = false; ///< of a file that was seen
    bool m_hadEnded;           ///< the session, in a file before this one
    bool m_isInProgress = false;
    std::uint64_t m_brokenLine = 0; ///< of a piece that breaks off; 0 for none
};
