#include "Tools/vistra/ReportSections.h"

#include "Tools/vistra/ReportCharts.h"
#include "Tools/vistra/ReportTable.h"

#include <algorithm>
#include <numeric>
#include <span>

using namespace ReportFigures;

namespace {

using Html::Writer;
using std::chrono::seconds;
using Kind = ReportColumn::Kind;

constexpr std::size_t kMostCategories = 12;
constexpr std::size_t kMostKinds = 25; ///< of one category

std::string NumberOf(std::uint64_t count, const char* one, const char* several) {
    return Html::Grouped(count) + " " + (count == 1 ? one : several);
}

void AddFact(Writer& page, const char* name, std::string_view value, std::string_view remark) {
    page.Add("<div><dt>").Text(name).Add("</dt><dd>").Text(value).Add("<small>").Text(remark);
    page.Add("</small></dd></div>\n");
}

std::string Percentage(std::uint64_t part, std::uint64_t whole) {
    const std::uint64_t rounded = (100 * part + whole / 2) / whole;
    if (part > 0 && rounded == 0)
        return "less than 1 %";
    return std::to_string(rounded) + " %";
}

std::string Period(const Timeline& timeline) {
    if (timeline.bins.empty())
        return "at times unknown";
    const std::string first = RecordTime::DayText(timeline.first);
    const std::string last = RecordTime::DayText(timeline.last);
    return first == last ? "on " + first : first + " to " + last;
}

void AddProductFact(Writer& page, const std::vector<SessionFigures>& sessions) {
    std::set<std::pair<std::string, std::string>> products;
    std::set<Product> versions;
    for (const SessionFigures& session : sessions) {
        products.emplace(session.product.family, session.product.name);
        versions.insert(session.product);
    }
    AddFact(page, "Products", Html::Grouped(products.size()),
            "in " + NumberOf(versions.size(), "version", "versions"));
}

/// Hours say more of a sum than days of 24 hours.
std::string TotalText(seconds total) {
    using std::chrono::hours;
    return total < hours(1) ? RecordTime::LengthText(total)
                            : Html::Grouped(static_cast<std::uint64_t>(total / hours(1))) + " h";
}

void AddLengthFact(Writer& page, const std::vector<SessionFigures>& sessions) {
    const std::vector<seconds> lengths = SortedLengths(sessions);
    const seconds total = std::accumulate(lengths.begin(), lengths.end(), seconds(0));
    if (const auto median = Median(lengths))
        AddFact(page, "Recorded time", TotalText(total),
                RecordTime::LengthText(*median) + " in the median session");
}

void AddOtherDocuments(Writer& page, const UsageStatistics& usage) {
    if (usage.Users() > 1)
        page.Add("<p>The sessions are of ").Count(usage.Users()).Add(" users.</p>\n");
    const auto [in, out] = usage.Decisions();
    if (in + out > 0)
        page.Add("<p>Not counted as sessions: ")
            .Text(NumberOf(in + out, "document", "documents"))
            .Add(" about decisions (")
            .Count(in)
            .Add(" for being recorded, ")
            .Count(out)
            .Add(" against it).</p>\n");
    if (usage.CrashReports() > 0)
        page.Add("<p>An agent has written ")
            .Text(NumberOf(usage.CrashReports(), "report", "reports"))
            .Add(" about crashed programs.</p>\n");
    if (usage.Copies() > 0)
        page.Add("<p>Left out: ")
            .Text(NumberOf(usage.Copies(), "document that is a copy", "documents that are copies"))
            .Add(" of another one.</p>\n");
}

void AddTimelineTable(Writer& page, const Timeline& timeline) {
    page.Add("<details>\n<summary>The numbers of this chart</summary>\n");
    {
        ReportTable table(
            page, "Sessions by their start",
            {{"Start"}, {"Sessions", Kind::Number}, {"Left by a crash", Kind::Number}});
        for (const TimeBin& bin : timeline.bins)
            table.Row(ReportCharts::BinName(bin, timeline.span))
                .Number(bin.sessions)
                .Number(bin.brokenOff);
    }
    page.Add("</details>\n");
}

/// A text of an event as a person reads it.
std::string_view Readable(std::string_view text) {
    return text == "NOVALUE" ? "–" : text;
}

using Categories = std::vector<CategoryFigures>;

void AddCategories(Writer& page, const Categories& categories, std::uint64_t beyond) {
    const std::size_t shown = std::min(categories.size(), kMostCategories);
    std::uint64_t rest = beyond;
    for (std::size_t i = shown; i < categories.size(); ++i)
        rest += categories[i].events;
    const std::uint64_t greatest = std::max(rest, categories.front().events);
    ReportTable table(page, "Events by category",
                      {{"Category"}, {"", Kind::Bar}, {"Events", Kind::Number}});
    for (std::size_t i = 0; i < shown; ++i)
        table.Row(Readable(categories[i].category))
            .Bar(categories[i].events, greatest)
            .Number(categories[i].events);
    if (rest > 0)
        table
            .Row(beyond > 0 ? "all others" : NumberOf(categories.size() - shown, "other", "others"))
            .Bar(rest, greatest, true)
            .Number(rest);
}

void AddKinds(Writer& page, const CategoryFigures& category) {
    const std::string name(Readable(category.category));
    page.Add("<details>\n<summary>").Text(Html::Shortened(name, 60)).Add(" <span>");
    page.Text(NumberOf(category.kinds.size(), "kind", "kinds")).Add("</span></summary>\n");
    {
        ReportTable table(page, "Events of the category " + name,
                          {{"Subcategory"}, {"Name"}, {"Events", Kind::Number}});
        std::uint64_t rest = 0;
        for (std::size_t i = 0; i < category.kinds.size(); ++i) {
            const auto& [kind, count] = category.kinds[i];
            if (i < kMostKinds)
                table.Row(Readable(kind.subcategory)).Text(Readable(kind.name)).Number(count);
            else
                rest += count;
        }
        if (rest > 0)
            table.Row("other")
                .Text(NumberOf(category.kinds.size() - kMostKinds, "kind", "kinds"))
                .Number(rest);
    }
    page.Add("</details>\n");
}

} // namespace

void ReportSections::AddHeadline(Writer& page, const UsageStatistics& usage,
                                 const ReportOrigin& origin) {
    const auto& sessions = usage.Sessions();
    const std::uint64_t broken = CountOf(sessions, SessionEnd::BrokenOff);
    const auto rejecting = std::ranges::count_if(
        sessions, [](const SessionFigures& session) { return session.rejected > 0; });
    page.Add("<section aria-label=\"At a glance\">\n<dl class=\"facts\">\n");
    AddFact(page, "Sessions", Html::Grouped(sessions.size()),
            Period(MakeTimeline(sessions, origin.made)));
    AddProductFact(page, sessions);
    AddFact(page, "Events", Html::Grouped(usage.Events().Total()),
            Html::Grouped(usage.Events().Total() / sessions.size()) + " in a session on average");
    AddLengthFact(page, sessions);
    AddFact(page, "Left by a crash", Html::Grouped(broken),
            Percentage(broken, sessions.size()) + " of the sessions");
    AddFact(page, "Rejected data", Html::Grouped(usage.Rejected().Total()),
            "in " + NumberOf(static_cast<std::uint64_t>(rejecting), "session", "sessions"));
    page.Add("</dl>\n");
    AddOtherDocuments(page, usage);
    page.Add("</section>\n");
}

void ReportSections::AddTimeline(Writer& page, const UsageStatistics& usage,
                                 const ReportOrigin& origin) {
    const Timeline timeline = MakeTimeline(usage.Sessions(), origin.made);
    if (timeline.bins.empty())
        return;
    page.Add("<section>\n<h2>Sessions over time</h2>\n<figure>\n"
             "<figcaption>By the ");
    page.Text(ReportCharts::NameOf(timeline.span)).Add(" of their start, ");
    page.Text(Period(timeline))
        .Add(" <span class=\"key\">sessions</span> "
             "<span class=\"key broken\">of these left by a crash</span></figcaption>\n");
    ReportCharts::DrawTimeline(page, timeline);
    page.Add("</figure>\n");
    if (timeline.leftOut > 0)
        page.Add("<p>Not in the chart: ")
            .Text(NumberOf(timeline.leftOut, "session", "sessions"))
            .Add(" with a start that cannot be read, lies before the year 2000, or lies in the "
                 "future.</p>\n");
    AddTimelineTable(page, timeline);
    page.Add("</section>\n");
}

void ReportSections::AddEvents(Writer& page, const UsageStatistics& usage) {
    const Categories categories = ByCategory(usage.Events());
    if (categories.empty())
        return;
    page.Add("<section>\n<h2>What was done</h2>\n<div class=\"pair\">\n<div>\n");
    AddCategories(page, categories, usage.Events().Beyond());
    page.Add("</div>\n<div>\n<h3>In detail</h3>\n");
    for (const CategoryFigures& category :
         std::span(categories).first(std::min(categories.size(), kMostCategories)))
        AddKinds(page, category);
    if (usage.Events().Beyond() > 0)
        page.Add("<p>")
            .Count(usage.Events().Beyond())
            .Add(" events are counted without their "
                 "kinds: there are too many kinds.</p>\n");
    page.Add("</div>\n</div>\n</section>\n");
}

void ReportSections::AddLengths(Writer& page, const UsageStatistics& usage) {
    const std::vector<LengthBin> bins = MakeLengthBins(usage.Sessions());
    const std::uint64_t greatest =
        std::ranges::max_element(bins, {}, &LengthBin::sessions)->sessions;
    if (greatest == 0)
        return;
    const std::vector<seconds> lengths = SortedLengths(usage.Sessions());
    page.Add("<section>\n<h2>How long sessions lasted</h2>\n<p>Half of the sessions lasted no "
             "longer than ");
    page.Text(RecordTime::LengthText(Median(lengths).value_or(seconds(0))));
    page.Add(", nine of ten no longer than ");
    page.Text(RecordTime::LengthText(lengths[(lengths.size() - 1) * 9 / 10]));
    page.Add("; the longest took ").Text(RecordTime::LengthText(lengths.back())).Add(".</p>\n");
    {
        ReportTable table(page, "Sessions by their length, from the first record to the last",
                          {{"Length"}, {"", Kind::Bar}, {"Sessions", Kind::Number}});
        for (const LengthBin& bin : bins)
            table.Row(bin.label).Bar(bin.sessions, greatest).Number(bin.sessions);
    }
    page.Add("</section>\n");
}
