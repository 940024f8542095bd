#include "dashboard/PanelAlignment.h"

#include "panel/Twips.h"
#include "panel/frmPanel.h"
#include "platform/Checked.h"
#include "repository/clsWorkspacePanel.h"

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

void placeAcross(frmPanel& panel, clsWorkspacePanel& record, float left)
{
    panel.setPlace(left, panel.Top());
    record.pLeft = toStoredTwips(panel.Left());
}

void placeDown(frmPanel& panel, clsWorkspacePanel& record, float top)
{
    panel.setPlace(panel.Left(), top);
    record.pTop = toStoredTwips(panel.Top());
}

} // namespace

void alignLeft(frmPanel& panel, clsWorkspacePanel& record, const frmPanel& base)
{
    placeAcross(panel, record, base.Left());
}

void alignRight(frmPanel& panel, clsWorkspacePanel& record, const frmPanel& base)
{
    placeAcross(panel, record, base.Left() + base.Width() - panel.Width());
}

void alignTop(frmPanel& panel, clsWorkspacePanel& record, const frmPanel& base)
{
    placeDown(panel, record, base.Top());
}

void alignBottom(frmPanel& panel, clsWorkspacePanel& record, const frmPanel& base)
{
    placeDown(panel, record, base.Top() + base.Height() - panel.Height());
}

void takeWidth(frmPanel& panel, clsWorkspacePanel& record, const frmPanel& base)
{
    record.ViewType = u"C"_s;
    panel.setWindowSize(base.Width(), panel.Height());
    record.pWidth = toStoredTwips(panel.Width());
}

void takeHeight(frmPanel& panel, clsWorkspacePanel& record, const frmPanel& base)
{
    record.ViewType = u"C"_s;
    panel.setWindowSize(panel.Width(), base.Height());
    record.pHeight = toStoredTwips(panel.Height());
}

void takeSize(frmPanel& panel, clsWorkspacePanel& record, const frmPanel& base)
{
    takeWidth(panel, record, base);
    takeHeight(panel, record, base);
}

void nudge(frmPanel& panel, clsWorkspacePanel& record, const QPoint& pixels)
{
    placeAcross(panel, record, panel.Left() + toTwips(pixels.x()));
    placeDown(panel, record, panel.Top() + toTwips(pixels.y()));
}

} // namespace lumivane
