#include "Tools/vistra/ReportTable.h"

#include "Tools/vistra/ReportCharts.h"

#include <utility>

namespace {

/// Longer texts would make a table of one cell.
constexpr std::size_t kMostCharacters = 80;

} // namespace

ReportTable::ReportTable(Html::Writer& page, std::string_view caption,
                         std::vector<ReportColumn> columns)
    : m_page(page), m_columns(std::move(columns)) {
    m_page.Add("<div class=\"table\">\n<table>\n<caption>").Text(caption).Add("</caption>\n");
    m_page.Add("<thead><tr>");
    for (const ReportColumn& column : m_columns) {
        if (column.kind == ReportColumn::Kind::Bar) { // drawn for the eye alone
            m_page.Add("<td></td>");
            continue;
        }
        m_page.Add("<th scope=\"col\"");
        AddClass(column);
        m_page.Add(">").Text(column.head).Add("</th>");
    }
    m_page.Add("</tr></thead>\n<tbody>\n");
}

ReportTable::~ReportTable() {
    EndRow();
    m_page.Add("</tbody>\n</table>\n</div>\n");
}

void ReportTable::AddClass(const ReportColumn& column) {
    constexpr std::string_view kNames[] = {"text", "line", "number", "drawn"};
    m_page.Add(" class=\"").Text(kNames[static_cast<std::size_t>(column.kind)]);
    m_page.Text(column.isSpare ? " spare" : "").Add("\"");
}

ReportTable& ReportTable::Row(std::string_view heading) {
    EndRow();
    m_page.Add("<tr><th scope=\"row\"");
    AddClass(m_columns.front());
    m_page.Add(">").Text(Html::Shortened(heading, kMostCharacters));
    m_page.Add("</th>");
    m_next = 1;
    return *this;
}

void ReportTable::EndRow() {
    if (m_next > 0)
        m_page.Add("</tr>\n");
}

void ReportTable::BeginCell() {
    m_page.Add("<td");
    AddClass(m_columns.at(m_next++));
    m_page.Add(">");
}

ReportTable& ReportTable::Text(std::string_view text) {
    BeginCell();
    m_page.Text(Html::Shortened(text, kMostCharacters)).Add("</td>");
    return *this;
}

ReportTable& ReportTable::Number(std::uint64_t number) {
    BeginCell();
    m_page.Count(number).Add("</td>");
    return *this;
}

ReportTable& ReportTable::Bar(std::uint64_t value, std::uint64_t greatest, bool isRest) {
    BeginCell();
    ReportCharts::DrawBar(m_page, value, greatest, isRest);
    m_page.Add("</td>");
    return *this;
}
