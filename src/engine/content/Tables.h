#pragma once

#include "engine/content/Styles.h"
#include "platform/CellArea.h"

#include <array>
#include <memory>
#include <vector>

// Tables and pivot tables as a sheet stores them. Which look their cells have is found out when the sheet is shown.

namespace lumivane::engine {

/// A part of a table that its style gives a look to. Where several hold for a cell, the later one is stronger.
enum class TableElement : quint8 {
    WholeTable,
    PageLabels, ///< names of the fields above a pivot table
    PageValues,
    FirstColumnStripe,
    SecondColumnStripe,
    FirstRowStripe,
    SecondRowStripe,
    LastColumn,
    FirstColumn,
    HeaderRow,
    TotalRow,
    FirstHeaderCell,
    LastHeaderCell,
    FirstTotalCell,
    LastTotalCell,
    // Of pivot tables. First to third go by level, outermost first.
    FirstSubtotalColumn,
    SecondSubtotalColumn,
    ThirdSubtotalColumn,
    BlankRow,
    FirstSubtotalRow,
    SecondSubtotalRow,
    ThirdSubtotalRow,
    FirstColumnSubheading,
    SecondColumnSubheading,
    ThirdColumnSubheading,
    FirstRowSubheading,
    SecondRowSubheading,
    ThirdRowSubheading,
    GrandTotalColumn, ///< styles name it as the last column
    GrandTotalRow,    ///< styles name it as the total row
};
inline constexpr size_t tableElements = static_cast<size_t>(TableElement::GrandTotalRow) + 1;

/// A style of tables or pivot tables.
struct TableStyle
{
    std::array<std::shared_ptr<const DifferentialStyle>, tableElements> looks; ///< null: none
    // How many rows or columns a stripe takes, from 1.
    int firstRowStripe = 1, secondRowStripe = 1;
    int firstColumnStripe = 1, secondColumnStripe = 1;

    const DifferentialStyle* look(TableElement element) const { return looks[static_cast<size_t>(element)].get(); }
};

struct TableContent
{
    QString name;
    CellArea area; ///< header and totals included
    int headerRows = 1;
    int totalsRows = 0;
    bool showFirstColumn = false, showLastColumn = false;
    bool showRowStripes = false, showColumnStripes = false;
    std::shared_ptr<const TableStyle> style = nullptr; ///< null: without a look of its own
};

struct PivotContent
{
    CellArea area; ///< without the page fields above it
    int headerRows = 1;
    int headingColumns = 1; ///< left of the values
    bool showRowHeadings = true, showColumnHeadings = true;
    bool showRowStripes = false, showColumnStripes = false;
    bool showLastColumn = true;
    int columnFields = 0;
    // What the rows and columns of values are, in their order; WholeTable for those with nothing special.
    std::vector<TableElement> rows, columns;
    std::vector<CellArea> pageLabels, pageValues;
    std::shared_ptr<const TableStyle> style = nullptr;
};

} // namespace lumivane::engine
