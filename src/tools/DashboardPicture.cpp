#include "tools/DashboardPicture.h"

#include "dashboard/DashboardArea.h"
#include "host/modUtilsExcel.h"
#include "panel/Twips.h"
#include "panel/frmPanel.h"
#include "repository/clsPanelSource.h"
#include "repository/clsWorkspace.h"
#include "repository/clsWorkspacePanel.h"
#include "services/modMain.h"

#include <QApplication>
#include <QPixmap>

namespace lumivane {

namespace {

constexpr int dashboardMargin = 12;
constexpr int mostPixels = 8192; ///< a panel dragged far away must not cost gigabytes

/// Large enough for any stored place, so that no panel is moved or cut while the windows are made.
constexpr QSize generousArea(4400, 4400);

QRect placeAllPanels(DashboardArea& area, QStringList& failedPanels)
{
    XLInstance worker;
    Excel_Init(worker);
    QRect reached;
    // The window makes its panels from the last to the first; later ones lie on top.
    for (int index = gWorkspace->NumPanels(); index >= 1; --index) {
        const auto record = gWorkspace->Panels(index);
        auto* panel = new frmPanel([] { return false; });
        panel->Index = qint16(index);
        area.addSubWindow(panel);
        if (!panel->Panel_Load(worker, false))
            failedPanels.append(record->Caption);
        panel->setPlace(record->pLeft, record->pTop);
        panel->show();
        reached |= panel->geometry();
    }
    Excel_Exit(worker);
    return reached;
}

} // namespace

DashboardPicture drawDashboard()
{
    DashboardPicture result;
    DashboardArea area;
    area.setFrameShape(QFrame::NoFrame);
    area.setBackground(QColor::fromRgb(gDashboardColor));
    area.resize(generousArea);
    area.show();
    gSources->ClearFlags();
    QRect reached = placeAllPanels(area, result.failedPanels);
    area.setActiveSubWindow(nullptr);
    QApplication::processEvents();
    reached |= QRect(0, 0, 1, 1);
    reached.adjust(0, 0, dashboardMargin, dashboardMargin);
    reached.setSize(reached.size().boundedTo({mostPixels, mostPixels}));
    result.image = area.viewport()->grab(reached).toImage();
    return result;
}

} // namespace lumivane
