#pragma once

#include "Tools/vistra/UsageStatistics.h"

#include <string>
#include <utility>
#include <vector>

/// What the report shows, derived from what was counted.
namespace ReportFigures {

using RecordTime::Moment;
using Sessions = std::vector<SessionFigures>;

/// Sessions whose time tells something: in this century and not in the future.
bool IsPlausible(const std::optional<Moment>& start, Moment now);

enum class Span { Day, Week, Month, Year };

struct TimeBin {
    Moment from; ///< its first day
    std::uint64_t sessions = 0;
    std::uint64_t brokenOff = 0;
};

/// Sessions by the day, week, month or year in which they began: the finest of them that makes no
/// more than sixty bins.
struct Timeline {
    Span span = Span::Day;
    std::vector<TimeBin> bins; ///< without a gap; empty when no session has a plausible time
    Moment first, last;        ///< the earliest and the latest start
    std::uint64_t leftOut = 0; ///< sessions without a plausible time
};
Timeline MakeTimeline(const Sessions& sessions, Moment now);

/// Sessions by their length, from the shortest bin to the longest.
struct LengthBin {
    std::string label;
    std::uint64_t sessions = 0;
};
std::vector<LengthBin> MakeLengthBins(const Sessions& sessions);

/// The lengths that are known, in order.
std::vector<std::chrono::seconds> SortedLengths(const Sessions& sessions);

/// The one in the middle; nothing when there is none.
std::optional<std::chrono::seconds> Median(const std::vector<std::chrono::seconds>& sorted);

/// Kinds of events of one category, the most frequent first.
struct CategoryFigures {
    std::string category;
    std::uint64_t events = 0;
    std::vector<std::pair<EventKind, std::uint64_t>> kinds;
};
std::vector<CategoryFigures> ByCategory(const BoundedCounts<EventKind>& events);

struct ProductFigures {
    Product product;
    std::uint64_t sessions = 0, brokenOff = 0, events = 0, rejected = 0;
    std::optional<std::chrono::seconds> medianLength;
    std::optional<Moment> lastStart;
};
/// The product with the most sessions first.
std::vector<ProductFigures> ByProduct(const Sessions& sessions);

/// The sessions from the latest start to the earliest; those without a start come last.
std::vector<const SessionFigures*> LatestFirst(const Sessions& sessions);

std::uint64_t CountOf(const Sessions& sessions, SessionEnd end);

} // namespace ReportFigures
