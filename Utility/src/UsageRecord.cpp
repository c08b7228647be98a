#include "Utility/src/UsageRecord.h"

#include "Utility/src/RecordBuffer.h"
#include "Utility/src/StringUtils.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <limits>
#include <string_view>
#include <utility>

namespace UsageRecord {

namespace {

constexpr std::string_view kProlog = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n";
constexpr std::string_view kRootStart = "\n<UsageDoc version=\"";
constexpr std::string_view kDocumentVersion = "0.5.4";
constexpr std::string_view kRootStartEnd = "\">\n";
constexpr std::string_view kRootEnd = "</UsageDoc>\n";

/// Enough for the literal pieces, the numbers and the time of any record.
constexpr std::size_t kFixedBytes = 256;

/// A caller's text as it stands in a record, before escaping.
std::string_view TextOf(std::string_view text) {
    return text.empty() ? std::string_view(kNoValue) : text;
}

/// Writes the pieces of one record behind a text. Room for the longest outcome is made first, so
/// that each piece is a plain copy: a record costs the host little more than storing it.
class Writer {
public:
    Writer(RecordBuffer& out, std::size_t textBytes)
        : m_out(out), m_end(out.MakeRoom(kFixedBytes + textBytes)) {}
    ~Writer() { m_out.EndAt(m_end); }
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;

    template <std::size_t Size>
    Writer& Literal(const char (&text)[Size]) {
        std::memcpy(m_end, text, Size - 1);
        m_end += Size - 1;
        return *this;
    }
    Writer& Verbatim(std::string_view text) {
        m_end = std::copy(text.begin(), text.end(), m_end);
        return *this;
    }
    Writer& Escaped(std::string_view text) {
        m_end = StringUtils::WriteConformXMLString(m_end, text);
        return *this;
    }
    template <class Value>
    Writer& Number(Value value) {
        m_end = std::to_chars(m_end, m_end + std::numeric_limits<Value>::digits10 + 3, value).ptr;
        return *this;
    }
    Writer& TimeAndEnd(std::string_view time, std::uint32_t seq) {
        return Literal("\" time=\"").Verbatim(time).End(seq);
    }
    Writer& End(std::uint32_t seq) { return Literal("\" seq=\"").Number(seq).Literal("\" />\n"); }

private:
    RecordBuffer& m_out;
    char* m_end;
};

/// Room that texts may need when every character of theirs is escaped.
template <class... Texts>
std::size_t EscapedBytes(const Texts&... texts) {
    return (StringUtils::EscapedRoom(texts.size()) + ...);
}

/// The shape that the records at both ends of a file share.
template <std::size_t Size>
void AppendBoundary(RecordBuffer& out, const char (&opening)[Size], std::string_view id,
                    std::string_view time, std::uint32_t seq) {
    Writer(out, id.size() + time.size()).Literal(opening).Verbatim(id).TimeAndEnd(time, seq);
}

} // namespace

void AppendHead(RecordBuffer& out) {
    for (const std::string_view text : {kProlog, kRootStart, kDocumentVersion, kRootStartEnd})
        out.Append(text);
}

void AppendRootEnd(RecordBuffer& out) {
    out.Append(kRootEnd);
}

void AppendStartSession(RecordBuffer& out, std::string_view id, std::string_view time,
                        std::uint32_t seq) {
    AppendBoundary(out, "<StartSession id=\"", id, time, seq);
}

void AppendEndSession(RecordBuffer& out, std::string_view id, std::string_view time,
                      std::uint32_t seq) {
    AppendBoundary(out, "<EndSession id=\"", id, time, seq);
}

void AppendSplitSession(RecordBuffer& out, std::string_view id, std::string_view time,
                        std::uint32_t seq) {
    AppendBoundary(out, "<SplitSession id=\"", id, time, seq);
}

void AppendResumeSession(RecordBuffer& out, const Resumption& session, std::string_view time,
                         std::uint32_t seq) {
    const std::pair<const char*, const std::string&> attributes[] = {
        {"<ResumeSession id=\"", session.sessionId},   {"\" ProductFamily=\"", session.family},
        {"\" ProductName=\"", session.name},           {"\" ProductVersion=\"", session.version},
        {"\" ProductBuild=\"", session.build},         {"\" ProductLanguage=\"", session.language},
        {"\" SessionStartTime=\"", session.startTime}, {"\" User=\"", session.user},
    };
    for (const auto& [opening, text] : attributes) {
        out.Append(opening);
        out.Append(StringUtils::AsDocumentText(text));
    }
    Writer(out, time.size()).TimeAndEnd(time, seq);
}

void AppendDataRec(RecordBuffer& out, std::string_view time, int group, std::string_view name,
                   std::string_view data, std::uint32_t seq) {
    const std::string_view nameText = TextOf(name), dataText = TextOf(data);
    Writer(out, time.size() + EscapedBytes(nameText, dataText))
        .Literal("<DataRec time=\"")
        .Verbatim(time)
        .Literal("\" group=\"")
        .Number(group)
        .Literal("\" name=\"")
        .Escaped(nameText)
        .Literal("\" data=\"")
        .Escaped(dataText)
        .End(seq);
}

void AppendEventRec(RecordBuffer& out, const Subject& event, std::string_view time,
                    std::uint32_t seq) {
    const std::string_view document = TextOf(event.document), category = TextOf(event.category),
                           subcategory = TextOf(event.subcategory), name = TextOf(event.name);
    Writer(out, time.size() + EscapedBytes(document, category, subcategory, name))
        .Literal("<EventRec doc=\"")
        .Escaped(document)
        .Literal("\" category=\"")
        .Escaped(category)
        .Literal("\" subcategory=\"")
        .Escaped(subcategory)
        .Literal("\" name=\"")
        .Escaped(name)
        .TimeAndEnd(time, seq);
}

void AppendNewGroup(RecordBuffer& out, const Subject& subject, std::string_view time, int group,
                    std::uint32_t seq) {
    const std::string_view document = TextOf(subject.document), name = TextOf(subject.name),
                           category = TextOf(subject.category),
                           subcategory = TextOf(subject.subcategory);
    Writer(out, time.size() + EscapedBytes(document, category, subcategory, name))
        .Literal("<NewGroup category=\"")
        .Escaped(category)
        .Literal("\" subcategory=\"")
        .Escaped(subcategory)
        .Literal("\" name=\"")
        .Escaped(name)
        .Literal("\" time=\"")
        .Verbatim(time)
        .Literal("\" group=\"")
        .Number(group)
        .Literal("\" doc=\"")
        .Escaped(document)
        .End(seq);
}

void AppendNewDoc(RecordBuffer& out, std::string_view document, std::string_view time,
                  std::uint32_t seq) {
    const std::string_view text = TextOf(document);
    Writer(out, time.size() + EscapedBytes(text))
        .Literal("<NewDoc doc=\"")
        .Escaped(text)
        .TimeAndEnd(time, seq);
}

} // namespace UsageRecord
