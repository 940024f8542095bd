#include "range/RangeFit.h"

#include "host/Host.h"
#include "host/modUtilsExcel.h"
#include "platform/RuntimeError.h"
#include "repository/clsWorkspacePanel.h"

#include <QScopeGuard>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

bool findsPlace(clsWorkspacePanel& panel, Worksheet& ws)
{
    try {
        panel.GetAdjRange(ws);
    } catch (const RuntimeError&) {
        return false;
    }
    return CellArea::parse(panel.adjMovRange()).has_value();
}

} // namespace

QString locateRange(clsWorkspacePanel& panel, Worksheet& ws)
{
    const QString rule = panel.RelativeTo;
    const bool byBottom = rule == "bottom"_L1;
    if (!byBottom && rule != "contents"_L1) {
        panel.GetAdjRange(ws);
        return {};
    }
    if (!findsPlace(panel, ws)) {
        {
            const auto back = qScopeGuard([&] { panel.RelativeTo = rule; });
            panel.RelativeTo = u"top"_s;
            panel.GetAdjRange(ws);
        }
        return u"The rule of this panel finds no place for its range on the sheet %1. The range is shown where it was "
               "last."_s.arg(ws.Name());
    }
    QString bottom, anchor, content;
    panel.parseContentMatch(bottom, anchor, content);
    const auto from = CellArea::parse(byBottom ? bottom : anchor);
    const auto to = CellArea::parse(byBottom ? LastFilledCell(ws) : panel.NewCell);
    if (from && to &&
        (to->firstRow - from->firstRow != panel.rowOffset() ||
         to->firstColumn - from->firstColumn != panel.columnOffset()))
        return u"The rule of this panel leads beyond the edge of the sheet %1. The range is shown at the edge."_s.arg(
            ws.Name());
    return {};
}

} // namespace lumivane
