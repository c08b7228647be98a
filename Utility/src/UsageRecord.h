#pragma once

#include <cstdint>
#include <string>
#include <string_view>

class RecordBuffer;

/// Composes the text of usage documents. Every function appends to `out`; texts of callers are
/// escaped, and empty ones become "NOVALUE". Times are UTC texts; ids are GUIDs. Throws when there
/// is no memory for a record.
namespace UsageRecord {

/// The four texts that name a group or an event.
struct Subject {
    std::string_view category;
    std::string_view subcategory;
    std::string_view name;
    std::string_view document;
};

/// Who resumes: repeated at the head of every file of a session but the first. The texts are
/// written as they are, without escaping.
struct Resumption {
    const std::string& sessionId;
    const std::string& family;
    const std::string& name;
    const std::string& version;
    const std::string& build;
    const std::string& language;
    const std::string& startTime;
    const std::string& user;
};

/// Prolog and root start tag.
void AppendHead(RecordBuffer& out);
/// Root end tag.
void AppendRootEnd(RecordBuffer& out);

void AppendStartSession(RecordBuffer& out, std::string_view id, std::string_view time,
                        std::uint32_t seq);
void AppendEndSession(RecordBuffer& out, std::string_view id, std::string_view time,
                      std::uint32_t seq);
void AppendSplitSession(RecordBuffer& out, std::string_view id, std::string_view time,
                        std::uint32_t seq);
void AppendResumeSession(RecordBuffer& out, const Resumption& session, std::string_view time,
                         std::uint32_t seq);
void AppendDataRec(RecordBuffer& out, std::string_view time, int group, std::string_view name,
                   std::string_view data, std::uint32_t seq);
void AppendEventRec(RecordBuffer& out, const Subject& event, std::string_view time,
                    std::uint32_t seq);
void AppendNewGroup(RecordBuffer& out, const Subject& subject, std::string_view time, int group,
                    std::uint32_t seq);
void AppendNewDoc(RecordBuffer& out, std::string_view document, std::string_view time,
                  std::uint32_t seq);

} // namespace UsageRecord
