#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

enum class RecordType {
    StartSession,
    EndSession,
    SplitSession,
    ResumeSession,
    DataRec,
    EventRec,
    NewGroup,
    NewDoc,
    Other,
};

/// Whether a record of the type stands first in its file, or last.
constexpr bool IsOpening(RecordType type) {
    return type == RecordType::StartSession || type == RecordType::ResumeSession;
}
constexpr bool IsClosing(RecordType type) {
    return type == RecordType::EndSession || type == RecordType::SplitSession;
}

/// Names of the attributes that records share.
namespace AttributeName {
inline constexpr std::string_view kId = "id";
inline constexpr std::string_view kTime = "time";
inline constexpr std::string_view kSeq = "seq";
inline constexpr std::string_view kGroup = "group";
inline constexpr std::string_view kName = "name";
inline constexpr std::string_view kData = "data";
inline constexpr std::string_view kDoc = "doc";
inline constexpr std::string_view kCategory = "category";
inline constexpr std::string_view kSubcategory = "subcategory";
inline constexpr std::string_view kSessionStartTime = "SessionStartTime";
inline constexpr std::string_view kUser = "User";

/// What a ResumeSession repeats of its session, in order; "time" and "seq" follow.
inline constexpr std::array<std::string_view, 8> kResumptionAttributes{
    "id",           "ProductFamily",   "ProductName",     "ProductVersion",
    "ProductBuild", "ProductLanguage", kSessionStartTime, kUser};
} // namespace AttributeName

struct Attribute {
    std::string_view name;
    std::string_view written; ///< the value as it stands in the document
};

/// One record, read as far as it can be. All texts lie in the text that was parsed.
class Record {
public:
    /// Reads a tag. Attributes that cannot be read end it; IsWhole tells then.
    explicit Record(std::string_view text);

    RecordType Type() const { return m_type; }
    std::string_view Tag() const { return m_tag; }
    std::string_view Text() const { return m_text; }
    std::span<const Attribute> Attributes() const { return {m_attributes.data(), m_count}; }
    bool IsWhole() const { return m_isWhole; }

    /// The value as written; empty when the record has no such attribute.
    std::string_view Written(std::string_view name) const;
    /// The value with its references resolved; empty when there is no such attribute. In a
    /// ResumeSession, whose texts are never escaped, the value as it stands.
    std::string Value(std::string_view name) const;
    /// The same, in `room` where it is not written as it is.
    std::string_view Value(std::string_view name, std::string& room) const;
    /// A decimal number without sign and padding; nothing for anything else.
    std::optional<std::uint32_t> Number(std::string_view name) const;

private:
    static constexpr std::size_t kMostAttributes = 16;

    bool ParseAttribute(std::string_view& rest);
    std::size_t EndOfValue(std::string_view rest) const;

    std::string_view m_text;
    std::string_view m_tag;
    RecordType m_type = RecordType::Other;
    std::array<Attribute, kMostAttributes> m_attributes;
    std::size_t m_count = 0;
    bool m_isWhole = false;
};

/// Appends the text with its character references, and the five names that XML knows, resolved;
/// what is no reference stays as it is.
void AppendResolved(std::string& out, std::string_view written);
