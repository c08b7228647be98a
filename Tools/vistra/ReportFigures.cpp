#include "Tools/vistra/ReportFigures.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <limits>

using namespace std::chrono;

namespace {

using RecordTime::Moment;
using ReportFigures::CategoryFigures;
using ReportFigures::ProductFigures;
using ReportFigures::Span;
using ReportFigures::TimeBin;
using ReportFigures::Timeline;

constexpr std::size_t kMostBins = 60;

/// First day of the stretch of time that the day is in.
sys_days StartOf(sys_days day, Span span) {
    const year_month_day date(day);
    switch (span) {
    case Span::Day:
        return day;
    case Span::Week:
        return day - (weekday(day) - Monday);
    case Span::Month:
        return sys_days(date.year() / date.month() / 1);
    default:
        return sys_days(date.year() / January / 1);
    }
}

sys_days NextStart(sys_days start, Span span) {
    constexpr std::array kLongest{1, 7, 31, 366};
    return StartOf(start + days(kLongest[static_cast<std::size_t>(span)]), span);
}

/// Chooses the span, and makes the bins from the first start to the last.
void MakeEmptyBins(Timeline& timeline) {
    const sys_days last = floor<days>(timeline.last);
    for (const Span span : {Span::Day, Span::Week, Span::Month, Span::Year}) {
        timeline.span = span;
        timeline.bins.clear();
        sys_days start = StartOf(floor<days>(timeline.first), span);
        for (; start <= last; start = NextStart(start, span))
            timeline.bins.push_back({start, 0, 0});
        if (timeline.bins.size() <= kMostBins)
            return;
    }
}

TimeBin& BinOf(std::vector<TimeBin>& bins, Moment moment) {
    return *std::prev(std::ranges::upper_bound(bins, moment, {}, &TimeBin::from));
}

/// Orders by count, the greatest first; equal ones stay in the order that they have.
constexpr auto kMostFirst = std::ranges::greater();

} // namespace

bool ReportFigures::IsPlausible(const std::optional<Moment>& start, Moment now) {
    return start && *start >= sys_days(2000y / January / 1) && *start <= now + days(1);
}

ReportFigures::Timeline ReportFigures::MakeTimeline(const Sessions& sessions, Moment now) {
    Timeline timeline;
    std::vector<const SessionFigures*> plausible;
    for (const SessionFigures& session : sessions)
        if (IsPlausible(session.start, now))
            plausible.push_back(&session);
    timeline.leftOut = sessions.size() - plausible.size();
    if (plausible.empty())
        return timeline;
    const auto start = [](const SessionFigures* session) { return *session->start; };
    timeline.first = start(*std::ranges::min_element(plausible, {}, start));
    timeline.last = start(*std::ranges::max_element(plausible, {}, start));
    MakeEmptyBins(timeline);
    for (const SessionFigures* session : plausible) {
        TimeBin& bin = BinOf(timeline.bins, *session->start);
        ++bin.sessions;
        bin.brokenOff += session->end == SessionEnd::BrokenOff;
    }
    return timeline;
}

std::vector<ReportFigures::LengthBin> ReportFigures::MakeLengthBins(const Sessions& sessions) {
    struct Limit {
        seconds below;
        const char* label;
    };
    constexpr Limit kLimits[] = {{minutes(1), "under 1 min"}, {minutes(5), "1–5 min"},
                                 {minutes(15), "5–15 min"},   {minutes(30), "15–30 min"},
                                 {hours(1), "30–60 min"},     {hours(2), "1–2 hours"},
                                 {hours(4), "2–4 hours"},     {hours(8), "4–8 hours"},
                                 {hours(24), "8–24 hours"},   {seconds::max(), "a day or more"}};
    std::vector<LengthBin> bins;
    for (const Limit& limit : kLimits)
        bins.push_back({limit.label, 0});
    for (const seconds length : SortedLengths(sessions))
        ++bins[static_cast<std::size_t>(
                   std::ranges::upper_bound(kLimits, length, {}, &Limit::below) - kLimits)]
              .sessions;
    return bins;
}

std::vector<seconds> ReportFigures::SortedLengths(const Sessions& sessions) {
    std::vector<seconds> lengths;
    for (const SessionFigures& session : sessions)
        if (const auto length = session.Length())
            lengths.push_back(*length);
    std::ranges::sort(lengths);
    return lengths;
}

std::optional<seconds> ReportFigures::Median(const std::vector<seconds>& sorted) {
    if (sorted.empty())
        return std::nullopt;
    return sorted[(sorted.size() - 1) / 2];
}

std::vector<CategoryFigures> ReportFigures::ByCategory(const BoundedCounts<EventKind>& events) {
    std::vector<CategoryFigures> categories;
    for (const auto& kind : events.Counts()) { // in the order of their categories
        if (categories.empty() || categories.back().category != kind.first.category)
            categories.push_back({kind.first.category, 0, {}});
        categories.back().events += kind.second;
        categories.back().kinds.emplace_back(kind);
    }
    std::ranges::stable_sort(categories, kMostFirst, &CategoryFigures::events);
    for (CategoryFigures& category : categories)
        std::ranges::stable_sort(category.kinds, kMostFirst,
                                 &std::pair<EventKind, std::uint64_t>::second);
    return categories;
}

std::vector<ProductFigures> ReportFigures::ByProduct(const Sessions& sessions) {
    std::map<Product, Sessions> byProduct;
    for (const SessionFigures& session : sessions)
        byProduct[session.product].push_back(session);
    std::vector<ProductFigures> products;
    for (const auto& [product, itsSessions] : byProduct) {
        ProductFigures& figures = products.emplace_back();
        figures.product = product;
        figures.sessions = itsSessions.size();
        figures.brokenOff = CountOf(itsSessions, SessionEnd::BrokenOff);
        figures.medianLength = Median(SortedLengths(itsSessions));
        for (const SessionFigures& session : itsSessions) {
            figures.events += session.events;
            figures.rejected += session.rejected;
            figures.lastStart = std::max(figures.lastStart, session.start);
        }
    }
    std::ranges::stable_sort(products, kMostFirst, &ProductFigures::sessions);
    return products;
}

std::vector<const SessionFigures*> ReportFigures::LatestFirst(const Sessions& sessions) {
    std::vector<const SessionFigures*> latest;
    for (const SessionFigures& session : sessions)
        latest.push_back(&session);
    std::ranges::sort(latest, [](const SessionFigures* a, const SessionFigures* b) {
        return std::tie(b->start, b->id) < std::tie(a->start, a->id);
    });
    return latest;
}

std::uint64_t ReportFigures::CountOf(const Sessions& sessions, SessionEnd end) {
    return static_cast<std::uint64_t>(std::ranges::count(sessions, end, &SessionFigures::end));
}
