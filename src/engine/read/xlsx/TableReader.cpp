#include "engine/read/xlsx/TableReader.h"

#include "engine/read/package/AttributeValues.h"
#include "engine/read/package/SmallParts.h"
#include "engine/read/xlsx/FilterReader.h"

#include <algorithm>

namespace lumivane::engine {

namespace {

bool flag(pugi::xml_node node, std::string_view name, bool otherwise = false)
{
    return flagFrom(attributeOf(node, name), otherwise);
}

/// A count within bounds, also where a file claims anything else.
int count(pugi::xml_node node, std::string_view name, int otherwise, int most)
{
    return std::clamp(integerFrom(attributeOf(node, name)).value_or(otherwise), 0, std::max(most, 0));
}

/// The element of a level, of which styles have three; deeper levels begin anew.
TableElement ofLevel(TableElement first, int level)
{
    return static_cast<TableElement>(static_cast<int>(first) + std::max(level, 0) % 3);
}

/// What a row or column of a pivot table is, from its <i>: that counts the items which the line before has too, and
/// lists those that are new. One with fewer items than there are fields stands above its group.
TableElement lineKind(pugi::xml_node line, int fields, bool isRow)
{
    const std::string_view type = attributeOf(line, "t");
    const int repeated = std::clamp(integerFrom(attributeOf(line, "r")).value_or(0), 0, maxRow);
    const int depth = repeated + static_cast<int>(childrenNamed(line, "x").size());
    if (type == "grand")
        return isRow ? TableElement::GrandTotalRow : TableElement::GrandTotalColumn;
    if (type == "blank")
        return isRow ? TableElement::BlankRow : TableElement::WholeTable;
    if (!type.empty() && type != "data")
        return ofLevel(isRow ? TableElement::FirstSubtotalRow : TableElement::FirstSubtotalColumn, depth - 1);
    return isRow && depth > 0 && depth < fields ? ofLevel(TableElement::FirstRowSubheading, depth - 1)
                                                : TableElement::WholeTable;
}

int fieldsIn(pugi::xml_node list)
{
    return static_cast<int>(childrenNamed(list, "field").size());
}

/// Page fields stand above the table with a row left free, each a name and a value, in groups side by side.
void placePageFields(pugi::xml_node definition, PivotContent& pivot)
{
    const pugi::xml_node location = childNamed(definition, "location");
    int left = static_cast<int>(childrenNamed(childNamed(definition, "pageFields"), "pageField").size());
    const int rows = count(location, "rowPageCount", 0, pivot.area.firstRow - 2);
    for (int column = pivot.area.firstColumn; rows > 0 && left > 0 && column < maxColumn; column += 3, left -= rows) {
        const int first = pivot.area.firstRow - 1 - rows, last = first + std::min(rows, left) - 1;
        pivot.pageLabels.push_back({first, column, last, column});
        pivot.pageValues.push_back({first, column + 1, last, column + 1});
    }
}

} // namespace

std::shared_ptr<const TableStyle> TableReader::style(pugi::xml_node info)
{
    const std::string_view name = attributeOf(info, "name");
    return name.empty() ? nullptr : m_styles.find(name, m_palette);
}

void TableReader::readTable(pugi::xml_node node)
{
    readFilter(childNamed(node, "autoFilter"), m_content);
    const std::optional<CellArea> area = areaFrom(attributeOf(node, "ref"));
    if (!area || localName(node) != "table")
        return;
    TableContent table;
    table.name = textFrom(attributeOf(node, "displayName"));
    table.area = *area;
    table.headerRows = count(node, "headerRowCount", 1, area->rows());
    table.totalsRows = count(node, "totalsRowCount", 0, area->rows() - table.headerRows);
    const pugi::xml_node info = childNamed(node, "tableStyleInfo");
    table.showFirstColumn = flag(info, "showFirstColumn");
    table.showLastColumn = flag(info, "showLastColumn");
    table.showRowStripes = flag(info, "showRowStripes");
    table.showColumnStripes = flag(info, "showColumnStripes");
    table.style = style(info);
    m_content.tables.push_back(std::move(table));
}

void TableReader::readPivot(pugi::xml_node node)
{
    const pugi::xml_node location = childNamed(node, "location");
    const std::optional<CellArea> area = areaFrom(attributeOf(location, "ref"));
    if (!area || localName(node) != "pivotTableDefinition")
        return;
    PivotContent pivot;
    pivot.area = *area;
    pivot.headerRows = count(location, "firstDataRow", 1, area->rows());
    pivot.headingColumns = count(location, "firstDataCol", 1, area->columns());
    pivot.columnFields = std::min(fieldsIn(childNamed(node, "colFields")), pivot.headerRows);
    const pugi::xml_node info = childNamed(node, "pivotTableStyleInfo");
    pivot.showRowHeadings = flag(info, "showRowHeaders");
    pivot.showColumnHeadings = flag(info, "showColHeaders");
    pivot.showRowStripes = flag(info, "showRowStripes");
    pivot.showColumnStripes = flag(info, "showColStripes");
    pivot.showLastColumn = flag(info, "showLastColumn", true);
    pivot.style = style(info);
    const auto readLines = [&](const char* list, int fields, int most, bool isRow, std::vector<TableElement>& kinds) {
        for (const pugi::xml_node line : childrenNamed(childNamed(node, list), "i")) {
            if (kinds.size() >= static_cast<size_t>(std::max(most, 0)) || m_linesLeft == 0)
                return;
            kinds.push_back(lineKind(line, fields, isRow));
            --m_linesLeft;
        }
    };
    readLines("rowItems", fieldsIn(childNamed(node, "rowFields")), area->rows() - pivot.headerRows, true, pivot.rows);
    readLines("colItems", pivot.columnFields, area->columns() - pivot.headingColumns, false, pivot.columns);
    placePageFields(node, pivot);
    m_content.pivots.push_back(std::move(pivot));
}

} // namespace lumivane::engine
