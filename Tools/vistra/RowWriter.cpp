#include "Tools/vistra/RowWriter.h"

#include "Tools/vistra/Console.h"
#include "Tools/vistra/TextCheck.h"
#include "Utility/src/StringUtils.h"

#include <array>
#include <nlohmann/json.hpp>
#include <utility>

using nlohmann::json;

namespace {

using SessionColumn = std::pair<const char*, std::string SessionIdentity::*>;

constexpr SessionColumn kSessionColumns[] = {
    {"session", &SessionIdentity::id},
    {"session_start", &SessionIdentity::start},
    {"product_family", &SessionIdentity::family},
    {"product_name", &SessionIdentity::name},
    {"product_version", &SessionIdentity::version},
    {"product_build", &SessionIdentity::build},
    {"product_language", &SessionIdentity::language},
    {"user_id", &SessionIdentity::user},
};

constexpr char kTypeColumn[] = "record";

struct RecordColumn {
    std::string_view name;
    std::string_view attribute;
    bool isNumber = false;
};

/// Of a record's attributes those that are not its session's. No name is a word of SQL.
constexpr RecordColumn kRecordColumns[] = {
    {"seq", AttributeName::kSeq, true},
    {"time", AttributeName::kTime},
    {"group_id", AttributeName::kGroup, true},
    {"category", AttributeName::kCategory},
    {"subcategory", AttributeName::kSubcategory},
    {"name", AttributeName::kName},
    {"data", AttributeName::kData},
    {"doc", AttributeName::kDoc},
};

class JsonLinesWriter : public RowWriter {
public:
    explicit JsonLinesWriter(bool asciiOnly) : m_asciiOnly(asciiOnly) {}

    void AppendStart(std::string&) const override {}

    void SetSession(const SessionIdentity& session) override {
        m_session.clear();
        for (const auto& [name, text] : kSessionColumns) {
            AppendName(m_session, name);
            AppendText(m_session, session.*text);
        }
        m_session[0] = '{';
    }

    void AppendRow(std::string& out, const Record& record) override {
        out += m_session;
        AppendName(out, kTypeColumn);
        AppendText(out, record.Tag());
        for (const RecordColumn& column : kRecordColumns)
            AppendAttribute(out, record, column);
        out += "}\n";
    }

private:
    static void AppendName(std::string& out, std::string_view name) {
        out.append(",\"").append(name).append("\":");
    }

    void AppendAttribute(std::string& out, const Record& record, const RecordColumn& column) {
        const std::string_view value = record.Value(column.attribute, m_room);
        if (value.data() == nullptr)
            return;
        AppendName(out, column.name);
        if (column.isNumber && record.Number(column.attribute))
            out += value;
        else
            AppendText(out, value);
    }

    void AppendText(std::string& out, std::string_view text) const {
        if (IsPlainAscii(text) && text.find_first_of("\"\\") == std::string_view::npos)
            out.append("\"").append(text).append("\"");
        else
            out += json(text).dump(-1, ' ', m_asciiOnly, json::error_handler_t::replace);
    }

    bool m_asciiOnly;
    std::string m_session;
    std::string m_room;
};

class CsvWriter : public RowWriter {
public:
    explicit CsvWriter(bool printable) : m_printable(printable) {}

    void AppendStart(std::string& out) const override {
        for (const auto& [name, text] : kSessionColumns)
            out.append(name) += ',';
        out.append(kTypeColumn);
        for (const RecordColumn& column : kRecordColumns)
            (out += ',').append(column.name);
        out += '\n';
    }

    void SetSession(const SessionIdentity& session) override {
        m_session.clear();
        for (const auto& [name, text] : kSessionColumns) {
            AppendValue(m_session, session.*text);
            m_session += ',';
        }
    }

    void AppendRow(std::string& out, const Record& record) override {
        out.append(m_session).append(record.Tag());
        for (const RecordColumn& column : kRecordColumns) {
            out += ',';
            AppendValue(out, record.Value(column.attribute, m_room));
        }
        out += '\n';
    }

private:
    void AppendValue(std::string& out, std::string_view value) const {
        if (IsPlainAscii(value))
            AppendQuoted(out, value);
        else if (m_printable)
            AppendQuoted(out, Console::Printable(value));
        else
            AppendQuoted(out, StringUtils::AsDocumentText(value));
    }

    static void AppendQuoted(std::string& out, std::string_view value) {
        if (value.find_first_of(",\"\r\n") == std::string_view::npos) {
            out += value;
            return;
        }
        out += '"';
        for (const char character : value)
            out.append(character == '"' ? 2 : 1, character);
        out += '"';
    }

    bool m_printable;
    std::string m_session;
    std::string m_room;
};

} // namespace

std::unique_ptr<RowWriter> MakeJsonLinesWriter(bool asciiOnly) {
    return std::make_unique<JsonLinesWriter>(asciiOnly);
}

std::unique_ptr<RowWriter> MakeCsvWriter(bool printable) {
    return std::make_unique<CsvWriter>(printable);
}
