#include "Tools/vistra/PieceReader.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr std::size_t kBlock = 64 * 1024;
constexpr std::size_t kNowhere = std::string_view::npos;

constexpr std::string_view kRecordEnd = "\" />\n";
constexpr std::string_view kResumeStart = "<ResumeSession ";

Piece::Kind KindOf(std::string_view tag) {
    if (tag.starts_with("<?"))
        return Piece::Kind::Prolog;
    if (tag.starts_with("<UsageDoc"))
        return Piece::Kind::RootStart;
    return tag.starts_with("</") ? Piece::Kind::RootEnd : Piece::Kind::Record;
}

/// Whether a text before a record's end is the whole of a ResumeSession: its last attribute is a
/// number. Product texts may hold what looks like the end.
bool IsWholeResumption(std::string_view text) {
    constexpr std::string_view kLastAttribute = "\" seq=\"";
    const std::size_t digits = text.find_last_not_of("0123456789") + 1;
    return digits < text.size() && text.substr(0, digits).ends_with(kLastAttribute);
}

std::uint64_t LineFeedsIn(std::string_view text) {
    std::uint64_t count = 0;
    for (std::size_t at = text.find('\n'); at != kNowhere; at = text.find('\n', at + 1))
        ++count;
    return count;
}

} // namespace

/// Reads another block behind what is there. False at the end, and when the piece is long enough.
bool PieceReader::Fill() {
    if (m_isAtEnd || m_end - m_at > kLongestPiece)
        return false;
    if (m_at > 0)
        std::memmove(m_buffer.data(), m_buffer.data() + m_at, m_end - m_at);
    m_end -= m_at;
    m_at = 0;
    if (m_buffer.size() < m_end + kBlock)
        m_buffer.resize(std::max(m_end + kBlock, 2 * m_buffer.size()));
    const std::size_t count = m_file.Read(m_buffer.data() + m_end, kBlock);
    m_end += count;
    m_isAtEnd = count == 0;
    return count > 0;
}

bool PieceReader::Has(std::size_t count) {
    while (m_end - m_at < count)
        if (!Fill())
            return false;
    return true;
}

/// Where the text stands behind the present place, npos when it does not.
std::size_t PieceReader::FindFrom(std::size_t from, std::string_view wanted) {
    for (;;) {
        const std::size_t found = Rest().find(wanted, from);
        if (found != kNowhere)
            return found;
        from = std::max(from, Rest().size() - std::min(Rest().size(), wanted.size() - 1));
        if (!Fill())
            return kNowhere;
    }
}

/// The nearer of two characters; npos when neither follows.
std::size_t PieceReader::FindEither(std::size_t from, char a, char b) {
    for (;;) {
        const std::size_t first = Rest().find(a, from);
        const std::size_t second = Rest().substr(0, first).find(b, from);
        if (std::min(first, second) != kNowhere)
            return std::min(first, second);
        from = Rest().size();
        if (!Fill())
            return kNowhere;
    }
}

void PieceReader::Take(Piece& piece, Piece::Kind kind, std::size_t length) {
    piece.isEnded = Has(length + 1) && Rest()[length] == '\n';
    piece.kind = kind;
    piece.text = Rest().substr(0, length);
    piece.line = m_line;
    m_line += LineFeedsIn(piece.text) + (piece.isEnded ? 1 : 0);
    m_at += length + (piece.isEnded ? 1 : 0);
}

/// Takes the whole of a ResumeSession, with any mark-up that is in it. False, with nothing taken,
/// where its end is not to be found.
bool PieceReader::TakeResumption(Piece& piece) {
    if (!Has(kResumeStart.size()) || !Rest().starts_with(kResumeStart))
        return false;
    std::size_t end = FindFrom(0, kRecordEnd);
    while (end != kNowhere && !IsWholeResumption(Rest().substr(0, end)))
        end = FindFrom(end + 1, kRecordEnd);
    if (end == kNowhere)
        return false;
    Take(piece, Piece::Kind::Record, end + kRecordEnd.size() - 1);
    return true;
}

void PieceReader::TakeTag(Piece& piece) {
    // It is the first record of a file. To look further for each that is not could take very long.
    if (!m_hasRecord && TakeResumption(piece)) {
        m_hasRecord = true;
        return;
    }
    const std::size_t end = FindEither(1, '>', '<');
    if (end == kNowhere)
        return Rest().size() > kLongestPiece ? BeginTooLong(piece)
                                             : Take(piece, Piece::Kind::Broken, Rest().size());
    if (Rest()[end] == '<')
        return Take(piece, Piece::Kind::Broken, end);
    Take(piece, KindOf(Rest()), end + 1);
    m_hasRecord = m_hasRecord || piece.kind == Piece::Kind::Record;
}

/// Shows the start of a piece that is too long. The rest is read only when the next one is wanted:
/// what begins so may be no document at all, and of any size.
void PieceReader::BeginTooLong(Piece& piece) {
    constexpr std::size_t kShown = 80;
    m_tooLong = Rest().substr(0, kShown);
    piece = {Piece::Kind::TooLong, m_tooLong, m_line, false};
    m_at += 1;
    m_isInTooLong = true;
}

/// Goes on at the next tag.
void PieceReader::PassOver() {
    m_isInTooLong = false;
    std::size_t tag = 0;
    do {
        tag = Rest().find('<');
        const std::size_t passed = std::min(tag, Rest().size());
        m_line += LineFeedsIn(Rest().substr(0, passed));
        m_at += passed;
    } while (tag == kNowhere && Fill());
}

bool PieceReader::Next(Piece& piece) {
    if (m_isInTooLong)
        PassOver();
    if (!Has(1))
        return false;
    if (Rest().front() == '<') {
        TakeTag(piece);
    } else if (Rest().front() == '\n') {
        Take(piece, Piece::Kind::EmptyLine, 0);
    } else {
        const std::size_t end = FindEither(0, '\n', '<');
        if (end == kNowhere && Rest().size() > kLongestPiece)
            BeginTooLong(piece);
        else
            Take(piece, Piece::Kind::Text, std::min(end, Rest().size()));
    }
    return true;
}
