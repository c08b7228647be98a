#pragma once

#include "Tools/vistra/UsageStatistics.h"

#include <string>
#include <vector>

/// A document that did not tell all that it should.
struct MissedDocument {
    std::string path;
    bool isUnreadable = false; ///< nothing of it could be read; otherwise a part
};

/// Where a report comes from.
struct ReportOrigin {
    std::vector<std::string> folders;
    RecordTime::Moment made;
    std::uint64_t documents = 0;               ///< that were found
    std::vector<MissedDocument> missed;        ///< the first of them
    std::uint64_t unreadable = 0, damaged = 0; ///< how many of each kind there are
};

/// The whole page: one HTML document that loads nothing, runs nothing, and shows what documents
/// say as text alone.
std::string ReportPage(const UsageStatistics& usage, const ReportOrigin& origin);
