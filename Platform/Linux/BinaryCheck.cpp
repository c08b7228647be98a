#include "Platform/Linux/PropertyListFile.h"

// A binary property list is a table of objects that refer to each other by number, followed by the
// table of their offsets and a trailer. References may form a circle, or unfold a few bytes into
// more values than memory holds, so they are followed once under limits before anybody else does.

namespace Platform {

namespace {

constexpr std::size_t kHeadBytes = 8;
constexpr std::size_t kTrailerBytes = 32;
constexpr std::uint64_t kMaximumValues = 1 << 20;
constexpr std::uint64_t kMaximumUnfoldedBytes = 4 * kMaximumPropertyListBytes;

/// High halves of the marker bytes that begin an object.
enum ObjectKind {
    Simple,
    Integer,
    Real,
    Date,
    Data,
    AsciiText,
    Utf16Text,
    Uid = 8,
    List = 10,
    Map = 13
};

class ObjectWalk {
public:
    explicit ObjectWalk(std::string_view bytes) : m_bytes(bytes) {}

    bool IsHarmless() { return ReadTrailer() && VisitObject(m_root, 1); }

private:
    std::uint64_t BigEndian(std::size_t at, std::size_t width) const {
        std::uint64_t value = 0;
        for (const char byte : m_bytes.substr(at, width))
            value = value << 8 | static_cast<unsigned char>(byte);
        return value;
    }

    bool ReadTrailer() {
        if (m_bytes.size() < kHeadBytes + kTrailerBytes)
            return false;
        const std::size_t trailer = m_bytes.size() - kTrailerBytes;
        m_offsetWidth = BigEndian(trailer + 6, 1);
        m_referenceWidth = BigEndian(trailer + 7, 1);
        m_count = BigEndian(trailer + 8, 8);
        m_root = BigEndian(trailer + 16, 8);
        m_table = BigEndian(trailer + 24, 8);
        return IsWidth(m_offsetWidth) && IsWidth(m_referenceWidth) && m_table >= kHeadBytes &&
               m_table <= trailer && m_count <= (trailer - m_table) / m_offsetWidth;
    }

    static bool IsWidth(std::uint64_t width) { return width >= 1 && width <= 8; }

    bool VisitObject(std::uint64_t number, int depth) {
        if (number >= m_count || depth > kMaximumPropertyListDepth || ++m_values > kMaximumValues)
            return false;
        const std::uint64_t entry = m_table + number * m_offsetWidth;
        const std::uint64_t offset = BigEndian(std::size_t(entry), std::size_t(m_offsetWidth));
        if (offset < kHeadBytes || offset >= m_table)
            return false;
        const std::uint64_t marker = BigEndian(std::size_t(offset), 1);
        return VisitContent(marker >> 4, marker & 15, offset + 1, depth);
    }

    bool VisitContent(std::uint64_t kind, std::uint64_t low, std::uint64_t at, int depth) {
        switch (kind) {
        case Simple:
            return low == 8 || low == 9; // false and true
        case Integer:
            return low <= 4 && Unfold(at, std::uint64_t{1} << low, 1);
        case Real:
        case Date:
            return low <= 3 && Unfold(at, std::uint64_t{1} << low, 1);
        case Uid:
            return low < 8 && Unfold(at, low + 1, 1);
        default:
            return ReadCount(low, at) && VisitCounted(kind, low, at, depth);
        }
    }

    bool VisitCounted(std::uint64_t kind, std::uint64_t count, std::uint64_t at, int depth) {
        switch (kind) {
        case Data:
            return Unfold(at, count, 1);
        case AsciiText:
            return VisitText(at, count, 1);
        case Utf16Text:
            return VisitText(at, count, 2);
        case List:
            return VisitReferences(at, count, depth);
        case Map:
            return count <= m_bytes.size() && VisitReferences(at, 2 * count, depth);
        default:
            return false;
        }
    }

    /// A count of 15 stands for an integer object that follows.
    bool ReadCount(std::uint64_t& count, std::uint64_t& at) const {
        if (count != 15)
            return true;
        const std::uint64_t marker = at < m_table ? BigEndian(std::size_t(at), 1) : 0;
        const std::uint64_t width = std::uint64_t{1} << (marker & 15);
        if (marker >> 4 != Integer || width > 8 || at + 1 + width > m_table)
            return false;
        count = BigEndian(std::size_t(at + 1), std::size_t(width));
        at += 1 + width;
        return true;
    }

    bool Unfold(std::uint64_t at, std::uint64_t count, std::uint64_t width) {
        if (at > m_table || count > (m_table - at) / width)
            return false;
        m_unfoldedBytes += count * width;
        return m_unfoldedBytes <= kMaximumUnfoldedBytes;
    }

    /// A NUL would end the program if the text is a key.
    bool VisitText(std::uint64_t at, std::uint64_t count, std::size_t width) {
        if (!Unfold(at, count, width))
            return false;
        for (std::uint64_t index = 0; index < count; ++index)
            if (BigEndian(std::size_t(at) + std::size_t(index) * width, width) == 0)
                return false;
        return true;
    }

    bool VisitReferences(std::uint64_t at, std::uint64_t count, int depth) {
        if (!Unfold(at, count, m_referenceWidth))
            return false;
        const std::size_t width = std::size_t(m_referenceWidth);
        for (std::uint64_t index = 0; index < count; ++index)
            if (!VisitObject(BigEndian(std::size_t(at) + std::size_t(index) * width, width),
                             depth + 1))
                return false;
        return true;
    }

    std::string_view m_bytes;
    std::uint64_t m_offsetWidth = 0;
    std::uint64_t m_referenceWidth = 0;
    std::uint64_t m_count = 0;
    std::uint64_t m_root = 0;
    std::uint64_t m_table = 0;
    std::uint64_t m_values = 0;
    std::uint64_t m_unfoldedBytes = 0;
};

} // namespace

bool IsHarmlessBinary(std::string_view bytes) {
    return ObjectWalk(bytes).IsHarmless();
}

} // namespace Platform
