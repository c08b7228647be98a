#include "Tools/vistra/ErasePlan.h"

#include "Platform/FileReading.h"
#include "Tools/vistra/DocumentKey.h"
#include "Tools/vistra/SessionMarker.h"
#include "Utility/src/Mac/Preference.h"
#include "Utility/src/PreferenceKeys.h"

#include <algorithm>
#include <map>
#include <set>

namespace {

constexpr char kInUse[] = "is being written: close the program first";

using Kind = UsageFile::Kind;

/// The files of one session, and what is known about it.
struct Session {
    std::vector<UsageFile> documents;
    std::string product;
    std::optional<std::string> key;
    bool isOpen = false;
};

class Planner {
public:
    explicit Planner(const std::optional<std::string>& key) { m_plan.key = key; }

    ErasePlan Plan() {
        TakeRecords();
        UsageFiles found = FindUsageFiles();
        for (const std::string& link : found.links)
            m_plan.kept.push_back({link, "is a link, which is not followed"});
        for (const std::string& folder : found.unlisted)
            m_plan.unread.push_back({folder, "cannot be listed"});
        GroupDocuments(found.files);
        if (m_plan.key)
            FindKeys(found.files);
        for (const auto& session : m_sessions)
            TakeSession(session.second);
        for (const UsageFile& file : found.files)
            if (file.kind != Kind::Document)
                TakeOther(file);
        return std::move(m_plan);
    }

private:
    /// The session that a marker is for, of those that have documents; empty when it has none.
    std::string SessionOfMarker(const std::string& name) const {
        const std::string id = ParseSessionMarker(name).sessionId;
        return m_sessions.contains(id) ? id : std::string();
    }

    void TakeRecords() {
        const auto records = StoredRecords::ReadAll();
        if (!records) {
            m_plan.unread.push_back({StoredRecords::File(), "cannot be read"});
            return;
        }
        if (StoredRecords::IsFileBroken())
            m_plan.unread.push_back(
                {StoredRecords::File(), "cannot be understood, and stays as it is"});
        m_records = *records;
        for (const StoredRecord& record : m_records)
            if (m_plan.key ? IsOfKey(record) : record.kind != RecordKind::Setting)
                m_plan.records.push_back(record);
        m_plan.hasAnswersElsewhere = m_plan.key && m_plan.key->find('/') != std::string::npos &&
                                     StoredRecords::CountAnswers(*m_plan.key) > 0;
    }

    /// A key may have the name of something else that is stored, or be the beginning of one that is
    /// a path: that is not its own.
    bool IsOfKey(const StoredRecord& record) const {
        if (record.kind == RecordKind::VersionNote)
            return KeyBefore(record.name) == m_plan.key;
        return record.name == m_plan.key &&
               (record.kind == RecordKind::UsageKey || record.kind == RecordKind::DateOnly);
    }

    /// Whose a name "KEY_..." is; the key that was asked for may have no record.
    std::string KeyBefore(const std::string& name) const {
        std::string key = StoredRecords::KeyBefore(m_records, name);
        if (name.starts_with(*m_plan.key + "_") && m_plan.key->size() > key.size())
            key = *m_plan.key;
        return key;
    }

    void GroupDocuments(const std::vector<UsageFile>& files) {
        for (const UsageFile& file : files) {
            if (file.kind != Kind::Document)
                continue;
            const std::optional<DocumentName> name = ParseDocumentName(file.name);
            Session& session = m_sessions[name ? name->session : file.path];
            session.product = name ? name->product : std::string();
            session.isOpen = session.isOpen || Platform::IsHeldLocked(file.path);
            session.documents.push_back(file);
        }
    }

    void FindKeys(const std::vector<UsageFile>& files) {
        for (auto& session : m_sessions)
            ReadKey(session.second);
        for (const UsageFile& marker : files) {
            const std::string id =
                marker.kind == Kind::Marker ? SessionOfMarker(marker.name) : std::string();
            if (!id.empty() && !m_sessions[id].key)
                m_sessions[id].key = KeyOfMarker(marker.name);
        }
    }

    /// The last file of a session tells its key. A document that is being written is not disturbed,
    /// and does not tell it yet.
    void ReadKey(Session& session) {
        std::ranges::sort(session.documents, [](const UsageFile& a, const UsageFile& b) {
            return std::pair(b.name.size(), b.name) < std::pair(a.name.size(), a.name);
        });
        for (const UsageFile& document : session.documents) {
            if (session.key || Platform::IsHeldLocked(document.path))
                continue;
            const DocumentKey found = ReadDocumentKey(document.path);
            if (!found.problem.empty())
                m_plan.unread.push_back({document.path, found.problem});
            if (!found.key.empty())
                session.key = found.key;
        }
    }

    /// Where the session's documents tell the product, exactly what stands before that.
    std::string KeyOfMarker(const std::string& name) const {
        const std::string id = SessionOfMarker(name);
        if (!id.empty() && !m_sessions.at(id).product.empty()) {
            const std::size_t end = name.find("_" + m_sessions.at(id).product + "_" + id + "_");
            if (end != std::string::npos)
                return name.substr(0, end);
        }
        return KeyBefore(name);
    }

    void TakeSession(const Session& session) {
        if (m_plan.key && session.key && session.key != m_plan.key)
            return;
        for (const UsageFile& document : session.documents) {
            if (Platform::IsHeldLocked(document.path))
                m_plan.kept.push_back({document.path, kInUse});
            else if (m_plan.key && !session.key)
                m_plan.kept.push_back({document.path, "does not tell its key"});
            else
                m_plan.files.push_back(document);
        }
    }

    void TakeOther(const UsageFile& file) {
        if (file.kind == Kind::Marker)
            return TakeMarker(file);
        if (m_plan.key)
            m_plan.kept.push_back({file.path, "may name the key among others"});
        else
            m_plan.files.push_back(file);
    }

    void TakeMarker(const UsageFile& marker) {
        if (m_plan.key && KeyOfMarker(marker.name) != m_plan.key)
            return;
        const std::string id = SessionOfMarker(marker.name);
        if (!id.empty() && m_sessions[id].isOpen)
            m_plan.kept.push_back({marker.path, "its session is open: close the program first"});
        else
            m_plan.files.push_back(marker);
    }

    ErasePlan m_plan;
    std::vector<StoredRecord> m_records;
    std::map<std::string, Session> m_sessions;
};

void EraseFile(const UsageFile& file, std::vector<KeptItem>& left) {
    if (file.kind == Kind::Document && Platform::IsHeldLocked(file.path))
        left.push_back({file.path, kInUse});
    else if (!Platform::DeleteFile(file.path) &&
             Platform::TypeOfItem(file.path) != Platform::ItemType::Missing)
        left.push_back({file.path, "cannot be deleted"});
}

} // namespace

ErasePlan PlanErasure(const std::optional<std::string>& key) {
    return Planner(key).Plan();
}

std::vector<KeptItem> Erase(const ErasePlan& plan) {
    std::vector<KeptItem> left;
    for (const UsageFile& file : plan.files)
        EraseFile(file, left);
    for (const StoredRecord& record : plan.records)
        if (!StoredRecords::Remove(record))
            left.push_back({StoredRecords::File(),
                            "\"" + record.name + "\" has changed meanwhile, or cannot be removed"});
    if (plan.hasAnswersElsewhere) {
        Preference(PreferenceKeys::kDomain, kCFPreferencesCurrentUser, kCFPreferencesCurrentHost)
            .DeleteValue(*plan.key + "/" + PreferenceKeys::kDemographic);
        if (StoredRecords::CountAnswers(*plan.key) > 0)
            left.push_back({StoredRecords::File(), "the demographic answers cannot be removed"});
    }
    return left;
}
