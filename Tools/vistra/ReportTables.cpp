#include "Tools/vistra/ReportFigures.h"
#include "Tools/vistra/ReportSections.h"
#include "Tools/vistra/ReportTable.h"

#include <algorithm>
#include <span>

using namespace ReportFigures;

namespace {

using Html::Writer;
using Kind = ReportColumn::Kind;

constexpr std::size_t kMostProducts = 100;
constexpr std::size_t kMostSessions = 500;

/// "The latest 500 of 1,234 sessions are listed."
void AddCut(Writer& page, const char* which, std::size_t shown, std::size_t all,
            const char* things) {
    if (all > shown)
        page.Add("<p>The ").Text(which).Add(" ").Count(shown).Add(" of ").Count(all).Add(" ").Text(
            things);
    if (all > shown)
        page.Add(" are listed.</p>\n");
}

std::string_view Meaning(const std::string& errorType) {
    if (errorType == "VS_INVALID_STRING")
        return "a text was too long, empty or not given";
    if (errorType == "VS_INVALID_GROUPID")
        return "data for a group that there is not";
    return "";
}

void AddRejected(Writer& page, const BoundedCounts<std::string>& rejected) {
    if (rejected.Total() == 0)
        return;
    ReportTable table(page, "Data that the library cut or refused",
                      {{"Kind of error"}, {"Meaning"}, {"Times", Kind::Number}});
    for (const auto& [type, count] : rejected.Counts())
        table.Row(type).Text(Meaning(type)).Number(count);
    if (rejected.Beyond() > 0)
        table.Row("others").Text("").Number(rejected.Beyond());
}

void AddEnds(Writer& page, const Sessions& sessions) {
    struct Row {
        SessionEnd end;
        const char* heading;
        const char* meaning;
    };
    constexpr Row kRows[] = {
        {SessionEnd::BrokenOff, "Left by a crash",
         "the program ended without closing its session: a crash, a kill, a power cut"},
        {SessionEnd::Elsewhere, "Goes on elsewhere",
         "the next document of the session is not here"},
        {SessionEnd::Open, "Open", "a program is still writing the document"}};
    if (CountOf(sessions, SessionEnd::Finished) == sessions.size())
        return;
    ReportTable table(page, "Sessions without an end",
                      {{"State"}, {"Meaning"}, {"Sessions", Kind::Number}});
    for (const Row& row : kRows)
        if (CountOf(sessions, row.end) > 0)
            table.Row(row.heading).Text(row.meaning).Number(CountOf(sessions, row.end));
}

void AddMissed(Writer& page, const ReportOrigin& origin) {
    if (origin.missed.empty())
        return;
    {
        ReportTable table(page, "Documents that could not be read", {{"Document"}, {"Problem"}});
        for (const MissedDocument& document : origin.missed)
            table.Row(document.path)
                .Text(document.isUnreadable ? "not read at all" : "read in parts");
    }
    AddCut(page, "first", origin.missed.size(), origin.unreadable + origin.damaged, "documents");
}

const char* NameOf(SessionEnd end) {
    switch (end) {
    case SessionEnd::Finished:
        return "finished";
    case SessionEnd::Open:
        return "open";
    case SessionEnd::Elsewhere:
        return "elsewhere";
    default:
        return "crash";
    }
}

std::string LengthText(const std::optional<std::chrono::seconds>& length) {
    return length ? RecordTime::LengthText(*length) : "unknown";
}

std::string NameOf(const Product& product) {
    if (product == Product())
        return "unknown";
    return product.family.empty() ? product.name : product.family + ", " + product.name;
}

} // namespace

void ReportSections::AddErrors(Writer& page, const UsageStatistics& usage,
                               const ReportOrigin& origin) {
    page.Add("<section>\n<h2>What went wrong</h2>\n");
    const Sessions& sessions = usage.Sessions();
    if (usage.Rejected().Total() == 0 && origin.missed.empty() &&
        CountOf(sessions, SessionEnd::Finished) == sessions.size())
        page.Add("<p>Nothing: every session has its end, no data was rejected, and every document "
                 "could be read.</p>\n");
    if (!origin.missed.empty())
        page.Add("<p>")
            .Count(origin.unreadable + origin.damaged)
            .Add(" of ")
            .Count(origin.documents)
            .Text(origin.documents == 1 ? " document" : " documents")
            .Add(" could not be read, or not all of it; what could be read is counted.</p>\n");
    page.Add("<div class=\"pair\">\n");
    AddEnds(page, sessions);
    AddRejected(page, usage.Rejected());
    page.Add("</div>\n");
    AddMissed(page, origin);
    page.Add("</section>\n");
}

void ReportSections::AddProducts(Writer& page, const UsageStatistics& usage) {
    const std::vector<ProductFigures> products = ByProduct(usage.Sessions());
    if (products.empty())
        return;
    const std::size_t shown = std::min(products.size(), kMostProducts);
    page.Add("<section>\n<h2>Products and versions</h2>\n");
    AddCut(page, "first", shown, products.size(), "versions");
    {
        ReportTable table(page, "Sessions by product and version, the most used first",
                          {{"Product"},
                           {"Version"},
                           {"Sessions", Kind::Number},
                           {"Left by a crash", Kind::Number},
                           {"Events", Kind::Number, true},
                           {"Rejected data", Kind::Number, true},
                           {"Median length", Kind::Number, true},
                           {"Last start", Kind::Line, true}});
        for (const ProductFigures& product : std::span(products).first(shown))
            table.Row(NameOf(product.product))
                .Text(product.product.version)
                .Number(product.sessions)
                .Number(product.brokenOff)
                .Number(product.events)
                .Number(product.rejected)
                .Text(LengthText(product.medianLength))
                .Text(product.lastStart ? RecordTime::DayText(*product.lastStart) : "unknown");
    }
    page.Add("</section>\n");
}

void ReportSections::AddSessions(Writer& page, const UsageStatistics& usage) {
    const std::vector<const SessionFigures*> sessions = LatestFirst(usage.Sessions());
    if (sessions.empty())
        return;
    const std::size_t shown = std::min(sessions.size(), kMostSessions);
    page.Add("<section>\n<h2>Sessions</h2>\n");
    AddCut(page, "latest", shown, sessions.size(), "sessions");
    {
        ReportTable table(page, "Sessions, the latest first; times in UTC",
                          {{"Start", Kind::Line},
                           {"Product"},
                           {"Version", Kind::Text, true},
                           {"Length", Kind::Number},
                           {"Events", Kind::Number, true},
                           {"Rejected data", Kind::Number, true},
                           {"End", Kind::Line},
                           {"Session", Kind::Line, true}});
        for (const SessionFigures* session : std::span(sessions).first(shown))
            table.Row(session->start ? RecordTime::MinuteText(*session->start) : "unknown")
                .Text(NameOf(session->product))
                .Text(session->product.version)
                .Text(LengthText(session->Length()))
                .Number(session->events)
                .Number(session->rejected)
                .Text(NameOf(session->end))
                .Text(session->id.substr(0, 8));
    }
    page.Add("</section>\n");
}
