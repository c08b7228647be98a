#pragma once

#include "Tools/vistra/BoundedCounts.h"
#include "Tools/vistra/DocumentHead.h"
#include "Tools/vistra/Record.h"
#include "Tools/vistra/RecordTime.h"

#include <compare>
#include <set>
#include <unordered_map>
#include <vector>

struct Product {
    std::string family, name, version;
    auto operator<=>(const Product&) const = default;
};

struct EventKind {
    std::string category, subcategory, name;
    auto operator<=>(const EventKind&) const = default;
};

/// How far the documents at hand tell of a session.
enum class SessionEnd {
    Finished,
    Open,      ///< a host has its document open
    Elsewhere, ///< the next document is not here
    BrokenOff, ///< the program died, or the document was cut
};

/// What is kept of a session, which any number of documents may tell of.
struct SessionFigures {
    std::string id;
    Product product;
    std::optional<RecordTime::Moment> start, last;
    std::uint64_t events = 0, rejected = 0, documents = 0;
    SessionEnd end = SessionEnd::BrokenOff;
    std::uint32_t lastSeq = 0; ///< of the record that `last` and `end` are from

    /// From the first record to the last. Nothing when a time cannot be read; never negative,
    /// though clocks are set back.
    std::optional<std::chrono::seconds> Length() const;
};

/// What small documents about changed decisions tell.
struct Decisions {
    std::uint64_t in = 0, out = 0;
};

/// Counts what documents tell, in any order of the documents of a session. What it remembers grows
/// with the number of documents, and not with their size.
class UsageStatistics {
public:
    /// Takes a document, between Begin and End. `isOpen`: a host is still writing it.
    void Begin(const DocumentHead& head, bool isOpen);
    void Take(const Record& record);
    void End();

    /// Whether the document last taken ends as one does whose session goes on or has ended.
    bool LastIsClosed() const { return IsClosing(m_lastType); }

    const std::vector<SessionFigures>& Sessions() const { return m_sessions; }
    const BoundedCounts<EventKind>& Events() const { return m_events; }
    /// Rejected texts and groups by the kind of error.
    const BoundedCounts<std::string>& Rejected() const { return m_rejected; }
    const ::Decisions& Decisions() const { return m_decisions; }
    std::uint64_t CrashReports() const { return m_crashReports; }
    /// How many people's sessions there are.
    std::size_t Users() const { return m_users.size(); }
    /// Documents that say again what another one has said, and were left out.
    std::uint64_t Copies() const { return m_copies; }

private:
    enum class Kind { Session, Decision, CrashReport, Copy };

    Kind KindOf(const DocumentHead& head);
    void TakeData(const Record& record);
    void TakeEvent(const Record& record);
    SessionFigures& Known(const std::string& id);

    Kind m_kind = Kind::Session;
    SessionFigures m_document;
    bool m_isOpen = false;
    bool m_isFinished = false;
    bool m_isRejection = false; ///< whether the group declared last tells of rejected data
    bool m_hasGroup = false;
    std::string m_lastTime;
    RecordType m_lastType = RecordType::Other;

    std::vector<SessionFigures> m_sessions;
    std::unordered_map<std::string, std::size_t> m_places;  ///< of the sessions, by id
    std::set<std::pair<std::string, std::uint32_t>> m_seen; ///< documents, by id and first seq
    std::set<std::string> m_users;
    BoundedCounts<EventKind> m_events{10'000};
    BoundedCounts<std::string> m_rejected{100};
    ::Decisions m_decisions;
    std::uint64_t m_crashReports = 0, m_copies = 0;
};
