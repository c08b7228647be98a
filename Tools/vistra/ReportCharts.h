#pragma once

#include "Tools/vistra/Html.h"
#include "Tools/vistra/ReportFigures.h"

/// Drawings of the report. They are as wide as the page gives them room, with texts that keep
/// their size; colours are the style sheet's.
namespace ReportCharts {

/// Columns of sessions over time; of each the part that a crash left stands out.
void DrawTimeline(Html::Writer& page, const ReportFigures::Timeline& timeline);

/// One bar, as long as the value is great beside the greatest; the bar of a rest stands back.
void DrawBar(Html::Writer& page, std::uint64_t value, std::uint64_t greatest, bool isRest);

/// "day", "week", "month" or "year".
const char* NameOf(ReportFigures::Span span);

/// What a bin of the span covers, as "week of 2026-03-02" or "March 2026".
std::string BinName(const ReportFigures::TimeBin& bin, ReportFigures::Span span);

} // namespace ReportCharts
