#include "engine/show/TableLooks.h"

#include <algorithm>

namespace lumivane::engine {

namespace {

/// Rows of an area from one to another, counted from its first.
CellArea rowsOf(const CellArea& area, int first, int last)
{
    return {area.firstRow + first, area.firstColumn, area.firstRow + last, area.lastColumn};
}

/// The stripe of two alternating sizes that a place lies in.
struct Stripe
{
    bool isFirst = true;
    int start = 0, size = 1; ///< in places

    Stripe(int place, int firstSize, int secondSize)
    {
        const int within = place % (firstSize + secondSize);
        isFirst = within < firstSize;
        size = isFirst ? firstSize : secondSize;
        start = place - (isFirst ? within : within - firstSize);
    }
};

} // namespace

std::unique_ptr<TableLooks> TableLooks::of(const SheetContent& sheet)
{
    std::unique_ptr<TableLooks> looks(new TableLooks(sheet));
    for (const TableContent& table : sheet.tables) {
        if (table.style)
            looks->add(table);
    }
    for (const PivotContent& pivot : sheet.pivots) {
        if (pivot.style)
            looks->add(pivot);
    }
    if (looks->m_regions.empty())
        return nullptr;
    CellArea& bounds = looks->m_bounds = looks->m_regions.front().area;
    for (const Region& region : looks->m_regions) {
        bounds = {std::min(bounds.firstRow, region.area.firstRow),
                  std::min(bounds.firstColumn, region.area.firstColumn), std::max(bounds.lastRow, region.area.lastRow),
                  std::max(bounds.lastColumn, region.area.lastColumn)};
    }
    return looks;
}

void TableLooks::add(const TableContent& table)
{
    using Element = TableElement;
    const CellArea& area = table.area;
    const int right = area.lastColumn, bottom = area.lastRow;
    Region region{area, table.style.get()};
    region.parts.push_back({Element::WholeTable, area});
    if (table.showLastColumn)
        region.parts.push_back({Element::LastColumn, {area.firstRow, right, bottom, right}});
    if (table.showFirstColumn)
        region.parts.push_back({Element::FirstColumn, {area.firstRow, area.firstColumn, bottom, area.firstColumn}});
    const auto addEnd = [&](const CellArea& rows, Element whole, Element first, Element last) {
        region.parts.push_back({whole, rows});
        if (table.showFirstColumn)
            region.parts.push_back({first, {rows.firstRow, area.firstColumn, rows.lastRow, area.firstColumn}});
        if (table.showLastColumn)
            region.parts.push_back({last, {rows.firstRow, right, rows.lastRow, right}});
    };
    if (table.headerRows > 0)
        addEnd(rowsOf(area, 0, table.headerRows - 1), Element::HeaderRow, Element::FirstHeaderCell,
               Element::LastHeaderCell);
    if (table.totalsRows > 0)
        addEnd(rowsOf(area, area.rows() - table.totalsRows, area.rows() - 1), Element::TotalRow,
               Element::FirstTotalCell, Element::LastTotalCell);
    const CellArea values = rowsOf(area, table.headerRows, area.rows() - table.totalsRows - 1);
    if (table.showRowStripes)
        region.stripedRows = values;
    if (table.showColumnStripes)
        region.stripedColumns = values;
    m_regions.push_back(std::move(region));
}

void TableLooks::add(const PivotContent& pivot)
{
    using Element = TableElement;
    const CellArea& area = pivot.area;
    const int valuesRow = area.firstRow + pivot.headerRows, valuesColumn = area.firstColumn + pivot.headingColumns;
    Region region{area, pivot.style.get()};
    region.pivot = &pivot;
    region.parts.push_back({Element::WholeTable, area});
    if (pivot.showRowHeadings)
        region.parts.push_back({Element::FirstColumn, {valuesRow, area.firstColumn, area.lastRow, valuesColumn - 1}});
    if (pivot.showColumnHeadings) {
        region.parts.push_back({Element::HeaderRow, {area.firstRow, area.firstColumn, valuesRow - 1, area.lastColumn}});
        region.parts.push_back({Element::FirstHeaderCell, CellArea::cell(area.firstRow, area.firstColumn)});
        // Each field of columns has a row of its own; the innermost one heads the values.
        for (int level = 0; level + 1 < pivot.columnFields; ++level) {
            const int row = valuesRow - pivot.columnFields + level;
            const Element element = static_cast<Element>(static_cast<int>(Element::FirstColumnSubheading) + level % 3);
            region.parts.push_back({element, {row, valuesColumn, row, area.lastColumn}});
        }
    }
    if (pivot.showRowStripes)
        region.stripedRows = rowsOf(area, pivot.headerRows, area.rows() - 1);
    if (pivot.showColumnStripes)
        region.stripedColumns = {valuesRow, valuesColumn, area.lastRow, area.lastColumn};
    m_regions.push_back(std::move(region));
    const auto addFields = [&](const std::vector<CellArea>& fields, Element element) {
        for (const CellArea& field : fields)
            m_regions.push_back({field, pivot.style.get(), {{element, field}}});
    };
    addFields(pivot.pageLabels, Element::PageLabels);
    addFields(pivot.pageValues, Element::PageValues);
}

const DifferentialStyle* TableLooks::at(int row, int column)
{
    m_layers.clear();
    if (!m_bounds.contains(row, column))
        return nullptr;
    for (Region& region : m_regions) {
        if (!region.area.contains(row, column))
            continue;
        for (const Part& part : region.parts)
            addLayer(region, part.element, row, column, part.area);
        addRowStripe(region, row, column);
        addColumnStripe(region, row, column);
        addPivotLines(region, row, column);
        break; // tables do not overlap
    }
    if (m_layers.empty())
        return nullptr;
    std::sort(m_layers.begin(), m_layers.end());
    auto known = m_merged.find(m_layers);
    if (known == m_merged.end())
        known = m_merged.emplace(m_layers, merged(m_layers)).first;
    return &known->second;
}

/// Where the cell lies in a part that the style gives a look to.
void TableLooks::addLayer(const Region& region, TableElement element, int row, int column, const CellArea& area)
{
    const DifferentialStyle* look = region.style->look(element);
    if (!look || !area.contains(row, column))
        return;
    const int edges = (column == area.firstColumn ? Left : 0) | (column == area.lastColumn ? Right : 0) |
                      (row == area.firstRow ? Top : 0) | (row == area.lastRow ? Bottom : 0);
    m_layers.push_back({element, static_cast<quint8>(edges), look});
}

void TableLooks::addRowStripe(Region& region, int row, int column)
{
    if (!region.stripedRows || !region.stripedRows->contains(row, column))
        return;
    // Stripes count the rows that are left visible, so that those of a filtered table take turns.
    const int place = visibleRowsBefore(region, row);
    const Stripe stripe(place, region.style->firstRowStripe, region.style->secondRowStripe);
    CellArea area = *region.stripedRows;
    area.firstRow = row - (place - stripe.start);
    area.lastRow = std::min(area.firstRow + stripe.size - 1, area.lastRow);
    addLayer(region, stripe.isFirst ? TableElement::FirstRowStripe : TableElement::SecondRowStripe, row, column, area);
}

void TableLooks::addColumnStripe(const Region& region, int row, int column)
{
    if (!region.stripedColumns || !region.stripedColumns->contains(row, column))
        return;
    CellArea area = *region.stripedColumns;
    const Stripe stripe(column - area.firstColumn, region.style->firstColumnStripe, region.style->secondColumnStripe);
    area.firstColumn += stripe.start;
    area.lastColumn = std::min(area.firstColumn + stripe.size - 1, area.lastColumn);
    addLayer(region, stripe.isFirst ? TableElement::FirstColumnStripe : TableElement::SecondColumnStripe, row, column,
             area);
}

/// What the row and the column of a cell are in a pivot table: a total, a subtotal, a subheading.
void TableLooks::addPivotLines(const Region& region, int row, int column)
{
    const PivotContent* pivot = region.pivot;
    if (!pivot)
        return;
    const CellArea& area = region.area;
    const auto kindOf = [](const std::vector<TableElement>& kinds, int place) {
        return place >= 0 && place < static_cast<int>(kinds.size()) ? kinds[static_cast<size_t>(place)]
                                                                    : TableElement::WholeTable;
    };
    const TableElement rowKind = kindOf(pivot->rows, row - area.firstRow - pivot->headerRows);
    const bool isSubheading =
        rowKind >= TableElement::FirstRowSubheading && rowKind <= TableElement::ThirdRowSubheading;
    if (rowKind != TableElement::WholeTable && (pivot->showRowHeadings || !isSubheading))
        addLayer(region, rowKind, row, column, {row, area.firstColumn, row, area.lastColumn});
    // A column of totals begins with its heading.
    const TableElement columnKind = kindOf(pivot->columns, column - area.firstColumn - pivot->headingColumns);
    const int firstHeading = area.firstRow + pivot->headerRows - pivot->columnFields;
    if (columnKind != TableElement::WholeTable &&
        (pivot->showLastColumn || columnKind != TableElement::GrandTotalColumn))
        addLayer(region, columnKind, row, column, {firstHeading, column, area.lastRow, column});
}

int TableLooks::visibleRowsBefore(Region& region, int row)
{
    const CellArea& striped = *region.stripedRows;
    if (!region.hiddenRows) {
        region.hiddenRows.emplace();
        const auto [begin, end] = m_sheet.rowIndices(striped);
        for (size_t i = begin; i < end; ++i) {
            if (m_sheet.rows[i].hidden)
                region.hiddenRows->push_back(m_sheet.rows[i].row);
        }
    }
    const std::vector<int>& hidden = *region.hiddenRows;
    return row - striped.firstRow -
           static_cast<int>(std::lower_bound(hidden.begin(), hidden.end(), row) - hidden.begin());
}

/// Each property from the strongest look that sets it. Inside of its part a cell has the lines between cells.
DifferentialStyle TableLooks::merged(const std::vector<Layer>& layers)
{
    DifferentialStyle all;
    for (auto layer = layers.rbegin(); layer != layers.rend(); ++layer) {
        DifferentialStyle look = *layer->look;
        if (!(layer->edges & Left))
            look.left = look.vertical;
        if (!(layer->edges & Right))
            look.right = look.vertical;
        if (!(layer->edges & Top))
            look.top = look.horizontal;
        if (!(layer->edges & Bottom))
            look.bottom = look.horizontal;
        all.fillFrom(look);
    }
    all.vertical.reset();
    all.horizontal.reset();
    all.numberFormat.clear(); // cells have theirs
    return all;
}

} // namespace lumivane::engine
