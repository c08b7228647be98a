#pragma once

#include "Tools/vistra/DocumentFile.h"

#include <cstdint>
#include <string>
#include <string_view>

/// A stretch of a document: a tag, an empty line, or text where none belongs.
struct Piece {
    enum class Kind {
        Record,    ///< one whole tag that is none of the next three
        Prolog,    ///< begins with "<?"
        RootStart, ///< begins with "<UsageDoc"
        RootEnd,   ///< begins with "</"
        EmptyLine,
        Broken,  ///< a tag that another one, or the end of the file, interrupts
        Text,    ///< no tag
        TooLong, ///< a tag or text beyond what is kept in memory; only its start is here
    };
    Kind kind = Kind::Text;
    std::string_view text;  ///< without the line feed behind it
    std::uint64_t line = 1; ///< of its first character
    bool isEnded = false;   ///< whether a line feed follows at once
};

/// Cuts a document into pieces, whatever stands in it, in constant memory: a text of a host may
/// hold control characters and line feeds, and the texts of a resumed session any mark-up.
class PieceReader {
public:
    /// Longer pieces are told of and passed over.
    static constexpr std::size_t kLongestPiece = 16 * 1024 * 1024;

    explicit PieceReader(DocumentFile& file) : m_file(file) {}

    /// The next piece, whose text is good until the next call. False at the end of the file, and
    /// where it cannot be read any further.
    bool Next(Piece& piece);

    /// The line that the reading has come to.
    std::uint64_t Line() const { return m_line; }

private:
    bool Fill();
    bool Has(std::size_t count);
    std::string_view Rest() const { return {m_buffer.data() + m_at, m_end - m_at}; }
    std::size_t FindFrom(std::size_t from, std::string_view wanted);
    std::size_t FindEither(std::size_t from, char a, char b);
    void Take(Piece& piece, Piece::Kind kind, std::size_t length);
    bool TakeResumption(Piece& piece);
    void TakeTag(Piece& piece);
    void BeginTooLong(Piece& piece);
    void PassOver();

    DocumentFile& m_file;
    std::string m_buffer;
    std::string m_tooLong; ///< the start of such a piece
    std::size_t m_at = 0;
    std::size_t m_end = 0;
    std::uint64_t m_line = 1;
    bool m_isAtEnd = false;
    bool m_isInTooLong = false;
    bool m_hasRecord = false; ///< one has been taken
};
