#include "LogSession/LogSession.h"
#include "Utility/src/RecordNames.h"
#include "Utility/src/UsageRecord.h"

using namespace RecordNames;

namespace {

/// A null text counts as an empty one.
std::string_view TextOf(const char* text) {
    return text ? std::string_view(text) : std::string_view();
}

} // namespace

void LogSession::LogStartSessionTag() {
    if (!IsReady())
        return;
    m_startTime = m_clock.Now();
    Compose([this](RecordBuffer& record) {
        UsageRecord::AppendHead(record);
        UsageRecord::AppendStartSession(record, m_sessionId, m_startTime, m_sequence);
    });
    AddRecord();
}

void LogSession::LogEndSessionTag() {
    if (!IsReady())
        return;
    Compose([this](RecordBuffer& record) {
        UsageRecord::AppendEndSession(record, m_sessionId, m_clock.Now(), m_sequence);
        UsageRecord::AppendRootEnd(record);
    });
    m_hasEnded = true;
    AddRecord();
}

void LogSession::DataRecTag(int group, const char* name, const char* data) {
    if (name && data)
        DataRecTag(group, std::string_view(name), std::string_view(data));
}

void LogSession::DataRecTag(int group, std::string_view name, std::string_view data) {
    if (!IsReady())
        return;
    Compose([=, this](RecordBuffer& record) {
        UsageRecord::AppendDataRec(record, m_clock.Now(), group, name, data, m_sequence);
    });
    AddRecord();
}

void LogSession::EventRecTag(const char* category, const char* subcategory, const char* name,
                             const char* doc) {
    EventRecTag(TextOf(category), TextOf(subcategory), TextOf(name), TextOf(doc));
}

void LogSession::EventRecTag(std::string_view category, std::string_view subcategory,
                             std::string_view name, std::string_view doc) {
    if (!IsReady())
        return;
    Compose([=, this](RecordBuffer& record) {
        UsageRecord::AppendEventRec(record, {category, subcategory, name, doc}, m_clock.Now(),
                                    m_sequence);
    });
    AddRecord();
}

int LogSession::NewGroupTag(const char* category, const char* subcategory, const char* name,
                            const char* doc) {
    if (!IsReady())
        return -1;
    Compose([=, this](RecordBuffer& record) {
        UsageRecord::AppendNewGroup(
            record, {TextOf(category), TextOf(subcategory), TextOf(name), TextOf(doc)},
            m_clock.Now(), m_groupCounter + 1, m_sequence);
    });
    ++m_groupCounter;
    AddRecord();
    return m_groupCounter;
}

void LogSession::NewDocTag(const char* doc) {
    if (!IsReady())
        return;
    Compose([=, this](RecordBuffer& record) {
        UsageRecord::AppendNewDoc(record, TextOf(doc), m_clock.Now(), m_sequence);
    });
    AddRecord();
}

void LogSession::AddDataToSessionGroup(const char* name, const char* data) {
    DataRecTag(m_sessionGroup, name, data);
}

void LogSession::AddDataToSessionGroup(std::string_view name, std::string_view data) {
    DataRecTag(m_sessionGroup, name, data);
}

int LogSession::GenerateInvalidGroup() {
    return NewGroupTag(kVistraCategory, "", kValidationErrorsGroup, kNoDocument);
}

bool LogSession::VerifyGroupId(int id) const {
    return id >= 0 && id <= m_groupCounter;
}

std::uint32_t LogSession::IncreaseSeq() {
    return m_sequence++;
}
