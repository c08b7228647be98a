#pragma once

#include "Tools/vistra/Html.h"

#include <vector>

struct ReportColumn {
    enum class Kind { Text, Line, Number, Bar }; ///< Line: a text that is not wrapped
    std::string_view head;
    Kind kind = Kind::Text;
    bool isSpare = false; ///< left out where the page is narrow
};

/// A table on the page, from its caption to its last row, for as long as the object lives. Each row
/// begins with its heading; its cells follow in the order of the columns.
class ReportTable {
public:
    ReportTable(Html::Writer& page, std::string_view caption, std::vector<ReportColumn> columns);
    ~ReportTable();
    ReportTable(const ReportTable&) = delete;
    ReportTable& operator=(const ReportTable&) = delete;

    ReportTable& Row(std::string_view heading);
    ReportTable& Text(std::string_view text);
    ReportTable& Number(std::uint64_t number);
    ReportTable& Bar(std::uint64_t value, std::uint64_t greatest, bool isRest = false);

private:
    void BeginCell();
    void AddClass(const ReportColumn& column);
    void EndRow();

    Html::Writer& m_page;
    std::vector<ReportColumn> m_columns;
    std::size_t m_next = 0; ///< column of the next cell; 0 before the first row
};
