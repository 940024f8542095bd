#include "range/PlaceDoubt.h"

#include "host/Host.h"
#include "host/modUtilsExcel.h"
#include "repository/clsWorkspacePanel.h"

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

/// The cells that the search for a value looks through: of one column, of one row or of the sheet.
CellArea searchedArea(const QString& anchor)
{
    bool rowFixed = false, columnFixed = false;
    ParseAnchorAddress(anchor, rowFixed, columnFixed);
    CellArea area = CellArea::wholeSheet();
    const auto place = CellArea::parse(anchor);
    if (!place)
        return area;
    if (columnFixed)
        area.firstColumn = area.lastColumn = place->firstColumn;
    else if (rowFixed)
        area.firstRow = area.lastRow = place->firstRow;
    return area;
}

bool uncomputedDecide(const clsWorkspacePanel& panel, Worksheet& sheet)
{
    if (panel.RelativeTo == "bottom"_L1)
        return sheet.contentArea(Uncomputed::Count) != sheet.contentArea(Uncomputed::LeaveOut);
    if (panel.RelativeTo != "contents"_L1)
        return false;
    QString bottom, anchor, content;
    panel.parseContentMatch(bottom, anchor, content);
    bool rowFixed = false, columnFixed = false;
    ParseAnchorAddress(anchor, rowFixed, columnFixed);
    const bool searched = !content.isEmpty() && !(rowFixed && columnFixed);
    return searched && sheet.uncomputedFormulas(searchedArea(anchor)) > 0;
}

} // namespace

QString placeDoubt(const clsWorkspacePanel& panel, Worksheet& sheet)
{
    if (!uncomputedDecide(panel, sheet))
        return {};
    return u"These may be the wrong cells: the file stores no results for some formulas among those by which they are "
           "found. Open the workbook in the program that made it and save it."_s;
}

} // namespace lumivane
