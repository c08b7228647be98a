#include "Tools/vistra/ReportCharts.h"

#include <algorithm>
#include <array>

namespace {

using Html::Writer;
using ReportFigures::Span;
using ReportFigures::TimeBin;
using ReportFigures::Timeline;

constexpr double kTop = 24, kHeight = 180, kBase = kTop + kHeight;
/// So many digits stand side by side on a narrow page.
constexpr std::size_t kMostDigits = 40;
constexpr std::size_t kMostDates = 8;

constexpr const char* kMonths[] = {"January",   "February", "March",    "April",
                                   "May",       "June",     "July",     "August",
                                   "September", "October",  "November", "December"};

double Share(std::uint64_t value, std::uint64_t greatest) {
    return greatest == 0 ? 0 : static_cast<double>(value) / static_cast<double>(greatest);
}

/// The distance between lines of the scale: 1, 2 or 5 with zeros, so that there are at most five.
std::uint64_t ScaleStep(std::uint64_t greatest) {
    for (std::uint64_t power = 1;; power *= 10)
        for (const std::uint64_t digit : {1U, 2U, 5U})
            if (greatest <= 5 * digit * power)
                return digit * power;
}

std::uint64_t GreatestBin(const Timeline& timeline) {
    return std::ranges::max_element(timeline.bins, {}, &TimeBin::sessions)->sessions;
}

/// What stands below a column.
std::string ShortName(const TimeBin& bin, Span span) {
    const std::string day = RecordTime::DayText(bin.from);
    const std::string month = std::string(kMonths[std::stoul(day.substr(5, 2)) - 1], 0, 3);
    if (span == Span::Year)
        return day.substr(0, 4);
    if (span == Span::Month)
        return month + " " + day.substr(0, 4);
    return std::to_string(std::stoul(day.substr(8, 2))) + " " + month;
}

void DrawScale(Writer& page, std::uint64_t step, std::uint64_t top) {
    for (std::uint64_t value = step; value <= top; value += step) {
        const double y = kBase - kHeight * Share(value, top);
        page.Add("<line class=\"grid\" x1=\"0\" x2=\"100%\" y1=\"").Coordinate(y);
        page.Add("\" y2=\"").Coordinate(y).Add("\"/><text class=\"scale\" x=\"-8\" y=\"");
        page.Coordinate(y + 4).Add("\">").Count(value).Add("</text>");
    }
}

void DrawColumnPart(Writer& page, Html::Markup start, double left, double width, double bottom,
                    double height) {
    page.Add(start).Add(" x=\"").Coordinate(left).Add("%\" width=\"").Coordinate(width);
    page.Add("%\" y=\"").Coordinate(bottom - height).Add("\" height=\"").Coordinate(height);
    page.Add("\"/>");
}

void DrawColumn(Writer& page, const TimeBin& bin, double left, double width, std::uint64_t top) {
    const double whole = kHeight * Share(bin.sessions - bin.brokenOff, top);
    const double broken = kHeight * Share(bin.brokenOff, top);
    if (bin.sessions > bin.brokenOff)
        DrawColumnPart(page, "<rect class=\"bar\"", left, width, kBase, whole);
    if (bin.brokenOff > 0)
        DrawColumnPart(page, "<rect class=\"bar broken\"", left, width, kBase - whole, broken);
}

void DrawNumber(Writer& page, const TimeBin& bin, double middle, std::uint64_t top) {
    page.Add("<text class=\"value\" x=\"").Coordinate(middle).Add("%\" y=\"");
    page.Coordinate(kBase - kHeight * Share(bin.sessions, top) - 6).Add("\">");
    page.Count(bin.sessions).Add("</text>");
}

/// The date below a column. On a narrow page there is room for every other one.
void DrawDate(Writer& page, const std::string& date, double middle, bool isSpare) {
    page.Add("<text class=\"date").Text(isSpare ? " spare" : "").Add("\" x=\"");
    page.Coordinate(middle).Add("%\" y=\"").Coordinate(kBase + 20).Add("\">");
    page.Text(date).Add("</text>");
}

void DrawColumns(Writer& page, const Timeline& timeline, std::uint64_t top, bool isNumbered) {
    const double step = 100.0 / static_cast<double>(timeline.bins.size());
    const double width = std::min(step * 0.78, 12.0);
    const std::size_t between = (timeline.bins.size() + kMostDates - 1) / kMostDates;
    double middle = step / 2;
    for (std::size_t i = 0; i < timeline.bins.size(); ++i, middle += step) {
        const TimeBin& bin = timeline.bins[i];
        page.Add("<g><title>").Text(ReportCharts::BinName(bin, timeline.span)).Add(": ");
        page.Count(bin.sessions).Text(bin.sessions == 1 ? " session, " : " sessions, ");
        page.Count(bin.brokenOff).Add(" left by a crash</title>");
        DrawColumn(page, bin, middle - width / 2, width, top);
        if (isNumbered && bin.sessions > 0)
            DrawNumber(page, bin, middle, top);
        page.Add("</g>");
        if (i % between == 0)
            DrawDate(page, ShortName(bin, timeline.span), middle, i / between % 2 == 1);
    }
}

} // namespace

const char* ReportCharts::NameOf(Span span) {
    constexpr std::array kNames{"day", "week", "month", "year"};
    return kNames[static_cast<std::size_t>(span)];
}

std::string ReportCharts::BinName(const TimeBin& bin, Span span) {
    const std::string day = RecordTime::DayText(bin.from);
    if (span == Span::Day)
        return day;
    if (span == Span::Week)
        return "week of " + day;
    const std::string year = day.substr(0, 4);
    return span == Span::Year ? year : kMonths[std::stoul(day.substr(5, 2)) - 1] + (" " + year);
}

void ReportCharts::DrawTimeline(Writer& page, const Timeline& timeline) {
    const std::uint64_t greatest = GreatestBin(timeline);
    // Where each column can bear its own number, no scale is needed.
    const bool isNumbered = timeline.bins.size() * Html::Grouped(greatest).size() <= kMostDigits;
    const std::uint64_t step = ScaleStep(greatest);
    const std::uint64_t top = isNumbered ? greatest : (greatest + step - 1) / step * step;
    page.Add("<svg class=\"columns").Text(isNumbered ? "" : " scaled");
    page.Add("\" role=\"img\" aria-labelledby=\"over-time over-time-text\">"
             "<title id=\"over-time\">Sessions by ");
    page.Text(NameOf(timeline.span)).Add("</title><desc id=\"over-time-text\">");
    page.Count(timeline.bins.size()).Add(" columns, from ");
    page.Text(BinName(timeline.bins.front(), timeline.span)).Add(" to ");
    page.Text(BinName(timeline.bins.back(), timeline.span)).Add("; the highest stands for ");
    page.Count(greatest).Add(" sessions. The table below has all numbers.</desc>");
    if (!isNumbered)
        DrawScale(page, step, top);
    DrawColumns(page, timeline, top, isNumbered);
    page.Add("<line class=\"base\" x1=\"0\" x2=\"100%\" y1=\"").Coordinate(kBase);
    page.Add("\" y2=\"").Coordinate(kBase).Add("\"/></svg>\n");
}

void ReportCharts::DrawBar(Writer& page, std::uint64_t value, std::uint64_t greatest, bool isRest) {
    page.Add("<svg class=\"row\" aria-hidden=\"true\"><rect class=\"bar")
        .Text(isRest ? " rest" : "");
    page.Add("\" height=\"100%\" "
             "width=\"");
    page.Coordinate(100 * Share(value, greatest)).Add("%\"/></svg>");
}
