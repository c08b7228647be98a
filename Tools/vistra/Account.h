#pragma once

#include "Tools/vistra/DocumentHead.h"
#include "Tools/vistra/GroupNames.h"
#include "Tools/vistra/Record.h"

#include <array>
#include <cstdint>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>

/// Tells a person what documents hold, a line for each record, on a time line that begins with the
/// session. Keeps of a document only the names of its groups.
class Account {
public:
    explicit Account(std::ostream& out) : m_out(out) {}

    /// Of a document that goes on with the session of the last one, the groups are still known.
    void Begin(const DocumentHead& head);
    void Tell(const Record& record);
    /// Adds how many records there were, of each kind.
    void End();

private:
    void TellGroup(const Record& record);
    void TellValue(const Record& record);
    void AnnounceGroup(const Record& record);
    void TellMoment(const Record& record, const std::string& what);
    std::string TimeColumn(const Record& record, bool mayBeBlank);

    std::ostream& m_out;
    std::string m_session;
    std::optional<std::int64_t> m_start;
    std::string m_time; ///< of the last line that shows one
    GroupNames m_groups;
    std::string m_unknown; ///< what to say of a group that is not among them
    std::string m_group;   ///< number of the one whose values are being told; empty for none
    bool m_isRejectedData = false;
    std::array<std::uint64_t, 9> m_counts{}; ///< by type of record
};
