#include "Tools/vistra/Documents.h"

#include "Platform/FileReading.h"
#include "Platform/Terminal.h"
#include "Tools/vistra/Console.h"
#include "Tools/vistra/PieceReader.h"
#include "Utility/src/UsageFileNames.h"

namespace {

/// Remembers the first thing that is wrong with a document, and how many there are.
class Trouble {
public:
    void Note(std::uint64_t line, const std::string& what) {
        if (m_count++ > 0)
            return;
        m_line = line;
        m_what = what;
    }
    bool Any() const { return m_count > 0; }

    void Tell(const std::string& path) const {
        const std::string more =
            m_count == 1
                ? ""
                : std::string(" (the first of ").append(std::to_string(m_count)) + " places)";
        Console::Complain(std::string(path).append(":").append(std::to_string(m_line)),
                          m_what + more);
    }

private:
    std::uint64_t m_line = 0;
    std::uint64_t m_count = 0;
    std::string m_what;
};

const char* WhatIsWrong(Piece::Kind kind) {
    switch (kind) {
    case Piece::Kind::Broken:
        return "breaks off within a record";
    case Piece::Kind::TooLong:
        return "a record is too long to be read";
    default:
        return "holds something that is not a record";
    }
}

/// Goes through one document.
class Reading {
public:
    Reading(const std::string& path, const DocumentHandler& handler)
        : m_isInProgress(path.ends_with(UsageFileNames::kInProgressExtension)),
          m_isHeld(m_isInProgress && Platform::IsHeldLocked(path)), m_file(path), m_reader(m_file),
          m_handler(handler) {}

    void Read() {
        Console::ReadingProgress progress(m_file.Path());
        const bool isWatched = !Platform::IsTerminal(Platform::StandardStream::Output);
        for (Piece piece; m_reader.Next(piece);) {
            Handle(piece);
            if (isWatched) // else the output itself shows how far it is
                progress.Reach(m_reader.Line());
        }
        if (!m_file.Problem().empty())
            m_trouble.Note(m_reader.Line(), m_file.Problem());
        else if (!m_isClosed && !IsLeftover())
            m_trouble.Note(m_reader.Line(), m_isHeld ? "is still being written; read up to here"
                                                     : "ends before its session does");
    }

    bool Succeeded() const {
        if (m_trouble.Any())
            m_trouble.Tell(m_file.Path());
        return !m_trouble.Any();
    }

private:
    /// A session whose end filled its file leaves another one, which only resumes it.
    bool IsLeftover() const { return m_onlyResumes && !m_isInProgress; }

    void Handle(const Piece& piece) {
        switch (piece.kind) {
        case Piece::Kind::Record:
            return HandleRecord(piece);
        case Piece::Kind::RootEnd:
            m_isClosed = m_lastCloses;
            return;
        case Piece::Kind::Prolog:
        case Piece::Kind::RootStart:
        case Piece::Kind::EmptyLine:
            return;
        default:
            m_trouble.Note(piece.line, WhatIsWrong(piece.kind));
        }
    }

    void HandleRecord(const Piece& piece) {
        const Record record(piece.text);
        if (!record.IsWhole() || record.Type() == RecordType::Other)
            return m_trouble.Note(piece.line, "holds something that is not a record");
        m_onlyResumes = m_isFirst && record.Type() == RecordType::ResumeSession;
        m_isFirst = false;
        m_lastCloses = IsClosing(record.Type());
        m_isClosed = false;
        m_handler.record(record, piece.line);
    }

    const bool m_isInProgress;
    const bool m_isHeld; ///< as it was before the reading: its writer may be done meanwhile
    DocumentFile m_file;
    PieceReader m_reader;
    const DocumentHandler& m_handler;
    Trouble m_trouble;
    bool m_isFirst = true;
    bool m_onlyResumes = false;
    bool m_lastCloses = false;
    bool m_isClosed = false;
};

ExitCode ReadDocument(const std::string& path, const DocumentHandler& handler) {
    const DocumentHead head = ReadDocumentHead(path);
    if (!head.problem.empty()) {
        Console::Complain(path, head.problem);
        return ExitCode::InputMissed;
    }
    if (handler.begin)
        handler.begin(head);
    Reading reading(path, handler);
    reading.Read();
    if (handler.end)
        handler.end();
    return reading.Succeeded() ? ExitCode::Done : ExitCode::InputMissed;
}

} // namespace

ExitCode ReadDocuments(const std::vector<std::string>& paths, const DocumentHandler& handler) {
    ExitCode exit = ExitCode::Done;
    for (const std::string& path : paths)
        exit = Worse(exit, ReadDocument(path, handler));
    return exit;
}
