#include "Utility/src/UsageRecord.h"

#include "Utility/src/StringUtils.h"

#include <charconv>
#include <limits>
#include <string_view>

namespace UsageRecord {

namespace {

constexpr char kProlog[] = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n";
constexpr char kRootStart[] = "\n<UsageDoc version=\"";
constexpr char kDocumentVersion[] = "0.5.4";
constexpr char kRootStartEnd[] = "\">\n";
constexpr char kRootEnd[] = "</UsageDoc>\n";
constexpr char kRecordEnd[] = "\" />\n";

constexpr std::string_view kStartSession = "<StartSession id=\"";
constexpr std::string_view kEndSession = "<EndSession id=\"";
constexpr std::string_view kSplitSession = "<SplitSession id=\"";
constexpr std::string_view kResumeSession = "<ResumeSession id=\"";

template <class Number>
void AppendNumber(std::string& out, Number number) {
    char digits[std::numeric_limits<Number>::digits10 + 3];
    out.append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
}

void AppendEscaped(std::string& out, std::string_view opening, const char* text) {
    out.append(opening);
    StringUtils::AppendConformXMLString(out, text);
}

void AppendVerbatim(std::string& out, std::string_view opening, const std::string& text) {
    out.append(opening).append(text);
}

void AppendSequence(std::string& out, std::uint32_t seq) {
    out.append("\" seq=\"");
    AppendNumber(out, seq);
    out.append(kRecordEnd);
}

/// The shape that the records at both ends of a file share.
void AppendBoundary(std::string& out, std::string_view opening, const std::string& id,
                    const std::string& time, std::uint32_t seq) {
    AppendVerbatim(out, opening, id);
    AppendVerbatim(out, "\" time=\"", time);
    AppendSequence(out, seq);
}

} // namespace

void AppendHead(std::string& out) {
    out.append(kProlog).append(kRootStart).append(kDocumentVersion).append(kRootStartEnd);
}

void AppendRootEnd(std::string& out) {
    out.append(kRootEnd);
}

void AppendStartSession(std::string& out, const std::string& id, const std::string& time,
                        std::uint32_t seq) {
    AppendBoundary(out, kStartSession, id, time, seq);
}

void AppendEndSession(std::string& out, const std::string& id, const std::string& time,
                      std::uint32_t seq) {
    AppendBoundary(out, kEndSession, id, time, seq);
}

void AppendSplitSession(std::string& out, const std::string& id, const std::string& time,
                        std::uint32_t seq) {
    AppendBoundary(out, kSplitSession, id, time, seq);
}

void AppendResumeSession(std::string& out, const Resumption& session, const std::string& time,
                         std::uint32_t seq) {
    AppendVerbatim(out, kResumeSession, session.sessionId);
    AppendVerbatim(out, "\" ProductFamily=\"", session.family);
    AppendVerbatim(out, "\" ProductName=\"", session.name);
    AppendVerbatim(out, "\" ProductVersion=\"", session.version);
    AppendVerbatim(out, "\" ProductBuild=\"", session.build);
    AppendVerbatim(out, "\" ProductLanguage=\"", session.language);
    AppendVerbatim(out, "\" SessionStartTime=\"", session.startTime);
    AppendVerbatim(out, "\" User=\"", session.user);
    AppendVerbatim(out, "\" time=\"", time);
    AppendSequence(out, seq);
}

void AppendDataRec(std::string& out, const std::string& time, int group, const char* name,
                   const char* data, std::uint32_t seq) {
    AppendVerbatim(out, "<DataRec time=\"", time);
    out.append("\" group=\"");
    AppendNumber(out, group);
    AppendEscaped(out, "\" name=\"", name);
    AppendEscaped(out, "\" data=\"", data);
    AppendSequence(out, seq);
}

void AppendEventRec(std::string& out, const Subject& event, const std::string& time,
                    std::uint32_t seq) {
    AppendEscaped(out, "<EventRec doc=\"", event.document);
    AppendEscaped(out, "\" category=\"", event.category);
    AppendEscaped(out, "\" subcategory=\"", event.subcategory);
    AppendEscaped(out, "\" name=\"", event.name);
    AppendVerbatim(out, "\" time=\"", time);
    AppendSequence(out, seq);
}

void AppendNewGroup(std::string& out, const Subject& subject, const std::string& time, int group,
                    std::uint32_t seq) {
    AppendEscaped(out, "<NewGroup category=\"", subject.category);
    AppendEscaped(out, "\" subcategory=\"", subject.subcategory);
    AppendEscaped(out, "\" name=\"", subject.name);
    AppendVerbatim(out, "\" time=\"", time);
    out.append("\" group=\"");
    AppendNumber(out, group);
    AppendEscaped(out, "\" doc=\"", subject.document);
    AppendSequence(out, seq);
}

void AppendNewDoc(std::string& out, const char* document, const std::string& time,
                  std::uint32_t seq) {
    AppendEscaped(out, "<NewDoc doc=\"", document);
    AppendVerbatim(out, "\" time=\"", time);
    AppendSequence(out, seq);
}

} // namespace UsageRecord
