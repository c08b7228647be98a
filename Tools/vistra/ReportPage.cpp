#include "Tools/vistra/ReportPage.h"

#include "Tools/vistra/ReportSections.h"
#include "Tools/vistra/ReportStyle.h"

namespace {

using Html::Writer;

void AddHead(Writer& page) {
    page.Add("<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
             "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; "
             "style-src 'unsafe-inline'; img-src data:\">\n"
             "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
             "<meta name=\"color-scheme\" content=\"light dark\">\n"
             "<meta name=\"referrer\" content=\"no-referrer\">\n"
             "<title>Usage report</title>\n<style>\n");
    page.Add(kReportStyle).Add("</style>\n</head>\n<body>\n");
}

void AddFolders(Writer& page, const ReportOrigin& origin) {
    for (std::size_t i = 0; i < origin.folders.size(); ++i) {
        page.Text(i == 0 ? "" : i + 1 < origin.folders.size() ? ", " : " and ");
        page.Add("<code>").Text(origin.folders[i]).Add("</code>");
    }
}

void AddIntroduction(Writer& page, const ReportOrigin& origin) {
    page.Add(
        "<header>\n<h1>Usage report</h1>\n<p class=\"lead\">Programs wrote down how they were "
        "used: when a session began and ended, and what was done in it. This page sums up the ");
    page.Count(origin.documents).Text(origin.documents == 1 ? " document" : " documents");
    page.Add(" of this kind found in ");
    AddFolders(page, origin);
    page.Add(".</p>\n<p class=\"made\">Made on <time datetime=\"");
    page.Text(RecordTime::DayText(origin.made)).Add("\">");
    page.Text(RecordTime::MinuteText(origin.made));
    page.Add("</time> UTC. All times on this page are in UTC.</p>\n</header>\n");
}

void AddNothing(Writer& page, const ReportOrigin& origin) {
    page.Add("<section>\n<h2>Nothing to report</h2>\n<p>");
    page.Text(origin.documents == 0 ? "There are no usage documents there."
                                    : "No session can be told from the documents there.");
    page.Add("</p>\n</section>\n");
}

void AddFoot(Writer& page) {
    page.Add("<footer>\n<p>Made by vistra " VISTRA_VERSION " from the documents alone. The page "
             "holds no scripts and loads nothing; making it sent nothing anywhere. It may tell "
             "personal things: mind whom you give it to.</p>\n</footer>\n</body>\n</html>\n");
}

} // namespace

std::string ReportPage(const UsageStatistics& usage, const ReportOrigin& origin) {
    Writer page;
    AddHead(page);
    AddIntroduction(page, origin);
    page.Add("<main>\n");
    if (usage.Sessions().empty())
        AddNothing(page, origin);
    else
        ReportSections::AddHeadline(page, usage, origin);
    ReportSections::AddTimeline(page, usage, origin);
    ReportSections::AddEvents(page, usage);
    ReportSections::AddLengths(page, usage);
    ReportSections::AddErrors(page, usage, origin);
    ReportSections::AddProducts(page, usage);
    ReportSections::AddSessions(page, usage);
    page.Add("</main>\n");
    AddFoot(page);
    return page.Page();
}
