#pragma once

#include <cstdint>
#include <string>

/// Composes the text of usage documents. Every function appends to `out`; texts of callers are
/// escaped, and null ones become "NOVALUE". Times are UTC texts; ids are GUIDs. Throws when there
/// is no memory for a record.
namespace UsageRecord {

/// The four texts that name a group or an event.
struct Subject {
    const char* category;
    const char* subcategory;
    const char* name;
    const char* document;
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
void AppendHead(std::string& out);
/// Root end tag.
void AppendRootEnd(std::string& out);

void AppendStartSession(std::string& out, const std::string& id, const std::string& time,
                        std::uint32_t seq);
void AppendEndSession(std::string& out, const std::string& id, const std::string& time,
                      std::uint32_t seq);
void AppendSplitSession(std::string& out, const std::string& id, const std::string& time,
                        std::uint32_t seq);
void AppendResumeSession(std::string& out, const Resumption& session, const std::string& time,
                         std::uint32_t seq);
void AppendDataRec(std::string& out, const std::string& time, int group, const char* name,
                   const char* data, std::uint32_t seq);
void AppendEventRec(std::string& out, const Subject& event, const std::string& time,
                    std::uint32_t seq);
void AppendNewGroup(std::string& out, const Subject& subject, const std::string& time, int group,
                    std::uint32_t seq);
void AppendNewDoc(std::string& out, const char* document, const std::string& time,
                  std::uint32_t seq);

} // namespace UsageRecord
