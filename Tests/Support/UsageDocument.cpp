#include "Tests/Support/UsageDocument.h"

#include "Tests/Support/Sandbox.h"

#include <expat.h>

#include <cstring>
#include <regex>
#include <stdexcept>

namespace {

const std::string kMarker = "Q-B$ko#$zRUd5wuxelin";
const std::string kHead =
    "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n\n<UsageDoc version=\"0.5.4\">\n";
const std::regex kGuid("[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}"), kNumber("0|[1-9]\\d*"),
    kTime("20\\d\\d-[01]\\d-[0-3]\\dT[0-2]\\d:[0-5]\\d:[0-6]\\dZ");

/// The attributes of each record, in order.
const std::map<std::string, std::string> kTemplates = {
    {"StartSession", " id time seq"},
    {"EndSession", " id time seq"},
    {"SplitSession", " id time seq"},
    {"ResumeSession", " id ProductFamily ProductName ProductVersion ProductBuild ProductLanguage"
                      " SessionStartTime User time seq"},
    {"DataRec", " time group name data seq"},
    {"EventRec", " doc category subcategory name time seq"},
    {"NewGroup", " category subcategory name time group doc seq"},
    {"NewDoc", " doc time seq"},
};

void Require(bool condition, const std::string& reason) {
    if (!condition)
        throw std::runtime_error(reason.substr(0, 2000));
}

bool IsValid(const std::string& name, const std::string& value) {
    if (name == "id" || name == "User")
        return std::regex_match(value, kGuid);
    if (name == "time" || name == "SessionStartTime")
        return std::regex_match(value, kTime);
    return name == "seq" || name == "group" ? std::regex_match(value, kNumber) : !value.empty();
}

std::string Escaped(const std::string& value) {
    std::string escaped;
    for (const char c : value)
        if (std::strchr("&<>\"'\\", c))
            escaped.append("&#").append(std::to_string(int{c})).append(";");
        else
            escaped.push_back(c);
    return escaped;
}

/// Composes the record of each element anew from what the parser understood; an invalid one with
/// a mark that no document holds.
void XMLCALL AddElement(void* records, const char* kind, const char** attributes) {
    DocumentRecord record{kind, {}, std::string("<") + kind, kind};
    std::string names, mark;
    for (; *attributes; attributes += 2) {
        const std::string name = attributes[0], value = attributes[1];
        record.attributes[name] = value;
        record.text += " " + name + "=\"" + Escaped(value) + "\"";
        names += " " + name;
        mark += IsValid(name, value) ? "" : "[wrong " + name + "]";
        if (!std::strstr(" id time seq User SessionStartTime", (" " + name).c_str()))
            record.brief += "|" + (value.size() == 20 && IsValid("time", value) ? "TIME" : value);
    }
    const auto form = kTemplates.find(kind);
    mark += form != kTemplates.end() && form->second == names ? "" : "[wrong attributes]";
    record.text += " />\n" + mark;
    static_cast<std::vector<DocumentRecord>*>(records)->push_back(record);
}

/// Whether a record goes on where the ones before it end.
bool Continues(const DocumentRecord& record, const std::vector<DocumentRecord>& before,
               int& nextGroup) {
    if (record["seq"] != std::to_string(before.size()))
        return false;
    if (record.kind == "NewGroup")
        return record["group"] == std::to_string(nextGroup++);
    if (record.kind == "DataRec")
        return std::stoi(record["group"]) < nextGroup;
    return !record.kind.ends_with("Session") || before.empty() || record["id"] == before[0]["id"];
}

} // namespace

std::string ClearText(const std::string& path) {
    std::string text = ReadText(path);
    const bool isObfuscated = text.starts_with(kMarker);
    Require(isObfuscated == path.ends_with(".rdy") || path.ends_with(".tmp"),
            path + ": wrong extension");
    if (!isObfuscated)
        return text;
    text.erase(0, kMarker.size());
    for (char& c : text)
        if (c >= '!' && c <= '~')
            c = static_cast<char>('!' + (c - '!' + 47) % 94);
    return text;
}

std::vector<DocumentRecord> ReadDocument(const std::string& path) {
    const std::string text = ClearText(path);
    std::vector<DocumentRecord> records;
    const XML_Parser parser = XML_ParserCreate(nullptr);
    XML_SetUserData(parser, &records);
    XML_SetStartElementHandler(parser, AddElement);
    const auto status = XML_Parse(parser, text.data(), static_cast<int>(text.size()), 1);
    XML_ParserFree(parser);
    Require(status == XML_STATUS_OK && records.size() > 1, path + ": malformed " + text);
    records.erase(records.begin()); // the root
    records.front().text.insert(0, kHead);
    records.back().text += "</UsageDoc>\n";
    std::string composed;
    for (const DocumentRecord& record : records)
        composed += record.text;
    const auto difference =
        std::mismatch(text.begin(), text.end(), composed.begin(), composed.end());
    Require(text == composed,
            path + ": should be " + std::string(difference.second, composed.end()));
    return records;
}

std::vector<DocumentRecord> ReadSession(const std::vector<std::string>& paths, int firstGroup) {
    std::vector<DocumentRecord> session;
    for (const std::string& path : paths) {
        const std::vector<DocumentRecord> records = ReadDocument(path);
        Require(records.front().kind == (session.empty() ? "StartSession" : "ResumeSession") &&
                    records.back().kind == (path == paths.back() ? "EndSession" : "SplitSession"),
                path + ": wrong first or last record");
        for (const DocumentRecord& record : records) {
            Require(Continues(record, session, firstGroup), path + ": a break at " + record.text);
            session.push_back(record);
        }
    }
    return session;
}
