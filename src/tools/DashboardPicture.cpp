#include "tools/DashboardPicture.h"

#include "dashboard/DashboardArea.h"
#include "host/modUtilsExcel.h"
#include "panel/frmPanel.h"
#include "repository/clsPanelSource.h"
#include "repository/clsWorkspace.h"
#include "repository/clsWorkspacePanel.h"
#include "services/modMain.h"

#include <QApplication>
#include <QPainter>
#include <QPixmap>

namespace lumivane {

namespace {

constexpr int dashboardMargin = 12;
constexpr int mostPixels = 8192; ///< a panel dragged far away must not cost gigabytes

/// Large enough for any place of 16 bits, so that no panel is moved or cut while the windows are made.
constexpr QSize generousArea(4400, 4400);

/// The part of the dashboard that has been drawn so far.
class Canvas
{
public:
    explicit Canvas(const QColor& ground) : m_ground(ground) { reach({1, 1}); }

    /// In front of what has been drawn before.
    void add(frmPanel& panel)
    {
        const QRect place = panel.geometry().intersected(QRect(0, 0, mostPixels, mostPixels));
        reach(QSize(place.right() + 1, place.bottom() + 1));
        QPainter(&m_image).drawPixmap(place.topLeft(), panel.grab(place.translated(-panel.pos())));
    }

    const QImage& image() const { return m_image; }

private:
    void reach(QSize size)
    {
        size += QSize(dashboardMargin, dashboardMargin);
        size = size.boundedTo({mostPixels, mostPixels}).expandedTo(m_image.size());
        if (size == m_image.size())
            return;
        QImage larger(size, QImage::Format_RGB32);
        larger.fill(m_ground);
        QPainter(&larger).drawImage(0, 0, m_image);
        m_image = larger;
    }

    QColor m_ground;
    QImage m_image;
};

} // namespace

DashboardPicture drawDashboard()
{
    DashboardPicture result;
    DashboardArea area;
    area.resize(generousArea);
    area.show();
    QApplication::processEvents(); // it is activated now, and not while there is a panel that would look chosen
    gSources->ClearFlags();
    Canvas canvas(QColor::fromRgb(gDashboardColor));
    JobWorker worker;
    // The window makes its panels from the last to the first; later ones lie on top. Each goes when it has been drawn:
    // the pictures of many large ranges do not fit into the memory together.
    for (int index = gWorkspace->NumPanels(); index >= 1; --index) {
        const auto record = gWorkspace->Panels(index);
        auto* panel = new frmPanel([] { return false; });
        panel->Index = qint16(index);
        area.addSubWindow(panel);
        if (!panel->Panel_Load(worker.instance(), false))
            result.failedPanels.append(record->Caption);
        panel->setPlace(record->pLeft, record->pTop);
        panel->show();
        if (panel->geometry().right() >= mostPixels || panel->geometry().bottom() >= mostPixels)
            result.cutPanels.append(record->Caption);
        area.setActiveSubWindow(nullptr);
        QApplication::processEvents();
        canvas.add(*panel);
        area.removeSubWindow(panel);
        delete panel;
    }
    result.image = canvas.image();
    return result;
}

} // namespace lumivane
