#pragma once

#include "Tools/vistra/Html.h"
#include "Tools/vistra/ReportPage.h"

/// The parts of the report's page, in their order. Each adds nothing when it has nothing to tell.
namespace ReportSections {

void AddHeadline(Html::Writer& page, const UsageStatistics& usage, const ReportOrigin& origin);
void AddTimeline(Html::Writer& page, const UsageStatistics& usage, const ReportOrigin& origin);
void AddEvents(Html::Writer& page, const UsageStatistics& usage);
void AddLengths(Html::Writer& page, const UsageStatistics& usage);
void AddErrors(Html::Writer& page, const UsageStatistics& usage, const ReportOrigin& origin);
void AddProducts(Html::Writer& page, const UsageStatistics& usage);
void AddSessions(Html::Writer& page, const UsageStatistics& usage);

} // namespace ReportSections
