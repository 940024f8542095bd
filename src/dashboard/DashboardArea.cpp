#include "dashboard/DashboardArea.h"

#include <QContextMenuEvent>
#include <QPainter>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

constexpr int lightBackground = 128;

QColor hintColor(const QColor& background)
{
    return background.lightness() >= lightBackground ? QColor(0x7a, 0x86, 0x94) : QColor(0xe3, 0xe8, 0xee);
}

} // namespace

DashboardArea::DashboardArea(QWidget* parent) : QMdiArea(parent)
{
    setObjectName(u"dashboardArea"_s);
    setAccessibleName(u"Panels of the dashboard"_s);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setActivationOrder(QMdiArea::ActivationHistoryOrder);
    viewport()->installEventFilter(this);
}

void DashboardArea::paintEvent(QPaintEvent* event)
{
    QMdiArea::paintEvent(event);
    if (!subWindowList().isEmpty())
        return;
    QPainter painter(viewport());
    painter.setPen(hintColor(background().color()));
    QFont font = painter.font();
    font.setPointSizeF(font.pointSizeF() * 1.15);
    painter.setFont(font);
    painter.drawText(viewport()->rect(), Qt::AlignCenter, u"This dashboard has no panels."_s);
}

bool DashboardArea::eventFilter(QObject* watched, QEvent* event)
{
    // The last window that goes only uncovers its own part of the hint.
    if (watched == viewport() && (event->type() == QEvent::ChildAdded || event->type() == QEvent::ChildRemoved))
        viewport()->update();
    return QMdiArea::eventFilter(watched, event);
}

bool DashboardArea::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::ContextMenu) {
        const auto* request = static_cast<QContextMenuEvent*>(event);
        if (!viewport()->childAt(request->pos())) {
            Q_EMIT menuRequested(request->pos(), request->globalPos());
            return true;
        }
    }
    return QMdiArea::viewportEvent(event);
}

} // namespace lumivane
