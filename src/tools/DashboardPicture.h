#pragma once

#include <QImage>
#include <QStringList>

namespace lumivane {

struct DashboardPicture
{
    QImage image;
    QStringList failedPanels; ///< captions of the panels that say on the picture why they are not up to date
    QStringList cutPanels;    ///< captions of those that reach beyond the picture, which is bounded
};

/// The dashboard in gWorkspace as the program's window shows it, as large as its panels reach. Panels are loaded the
/// way the window loads them: a new version of a workbook is taken over, and missing pictures are drawn and kept.
/// Needs a QApplication with the program's look.
DashboardPicture drawDashboard();

} // namespace lumivane
