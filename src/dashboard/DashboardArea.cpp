#include "dashboard/DashboardArea.h"

#include "dashboard/PanelArrangement.h"

#include <QContextMenuEvent>
#include <QMdiSubWindow>
#include <QPainter>
#include <QScrollBar>
#include <cmath>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

constexpr double readableContrast = 4.5;
constexpr int hintGap = 10; ///< between lines, and between a key and what it does

/// How bright a colour is to the eye, 0 to 1.
double luminanceOf(const QColor& color)
{
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrastBetween(const QColor& a, const QColor& b)
{
    const auto [darker, brighter] = std::minmax({luminanceOf(a), luminanceOf(b)});
    return (brighter + 0.05) / (darker + 0.05);
}

QColor mixedColor(const QColor& a, const QColor& b, double partOfB)
{
    const auto mix = [partOfB](int x, int y) { return qRound(x + (y - x) * partOfB); };
    return QColor(mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue()));
}

} // namespace

QColor readableOn(const QColor& background)
{
    const QColor full =
        contrastBetween(background, Qt::black) >= contrastBetween(background, Qt::white) ? Qt::black : Qt::white;
    for (double part = 0.55; part < 1; part += 0.05) {
        const QColor soft = mixedColor(background, full, part);
        if (contrastBetween(background, soft) >= readableContrast)
            return soft;
    }
    return full;
}

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
    if (!subWindowList().isEmpty() || !m_hintWanted || !m_hintWanted())
        return;
    QPainter painter(viewport());
    paintHint(painter);
}

void DashboardArea::setHint(const QString& sentence, const QList<QPair<QString, QString>>& keys,
                            std::function<bool()> wanted)
{
    m_hintWanted = std::move(wanted);
    m_sentence = sentence;
    m_keys = keys;
    QStringList description{sentence};
    for (const auto& [key, effect] : keys)
        description.append(key + u": "_s + effect);
    setAccessibleDescription(description.join(u". "_s));
    viewport()->update();
}

void DashboardArea::paintHint(QPainter& painter) const
{
    painter.setPen(readableOn(background().color()));
    const QFont plain = painter.font();
    QFont large = plain;
    large.setPointSizeF(plain.pointSizeF() * 1.3);
    const QRect room = viewport()->rect().adjusted(hintGap, hintGap, -hintGap, -hintGap);
    const QRect sentence =
        QFontMetrics(large).boundingRect(QRect(0, 0, room.width(), 0), Qt::AlignHCenter | Qt::TextWordWrap, m_sentence);
    const int lineHeight = QFontMetrics(plain).height() + hintGap / 2;
    int top = room.center().y() - (sentence.height() + hintGap + lineHeight * static_cast<int>(m_keys.size())) / 2;

    painter.setFont(large);
    painter.drawText(QRect(room.left(), top, room.width(), sentence.height()), Qt::AlignHCenter | Qt::TextWordWrap,
                     m_sentence);
    top += sentence.height() + hintGap;
    QFont bold = plain;
    bold.setWeight(QFont::DemiBold);
    for (const auto& [key, effect] : m_keys) {
        // Keys end and effects begin at the middle, so that both form columns.
        painter.setFont(bold);
        painter.drawText(QRect(room.left(), top, room.width() / 2 - hintGap, lineHeight),
                         Qt::AlignRight | Qt::AlignVCenter, key);
        painter.setFont(plain);
        painter.drawText(QRect(room.left() + room.width() / 2, top, room.width() / 2, lineHeight),
                         Qt::AlignLeft | Qt::AlignVCenter, effect);
        top += lineHeight;
    }
}

QList<QMdiSubWindow*> DashboardArea::windowsToArrange(WindowOrder order, bool minimized) const
{
    QList<QMdiSubWindow*> windows = subWindowList(order);
    windows.removeIf([minimized](const QMdiSubWindow* window) { return window->isMinimized() != minimized; });
    return windows;
}

void DashboardArea::scrollToCorner()
{
    horizontalScrollBar()->setValue(0);
    verticalScrollBar()->setValue(0);
}

void DashboardArea::tile(QVector<QRect> (*places)(const QRect&, int))
{
    const QList<QMdiSubWindow*> windows = windowsToArrange(CreationOrder, false);
    scrollToCorner();
    const QVector<QRect> rects = places(viewport()->rect(), static_cast<int>(windows.size()));
    for (qsizetype i = 0; i < windows.size(); ++i)
        windows[i]->setGeometry(rects[i]);
}

void DashboardArea::stack()
{
    // In the order in which they lie, so that the topmost one stays on top.
    const QList<QMdiSubWindow*> windows = windowsToArrange(StackingOrder, false);
    if (windows.isEmpty())
        return;
    scrollToCorner();
    const int title = windows.first()->contentsMargins().top();
    const QVector<QPoint> corners = cascade(viewport()->rect(), title, static_cast<int>(windows.size()));
    for (qsizetype i = 0; i < windows.size(); ++i)
        windows[i]->move(corners[i]);
}

void DashboardArea::lineUpIcons()
{
    const QList<QMdiSubWindow*> windows = windowsToArrange(CreationOrder, true);
    if (windows.isEmpty())
        return;
    const QVector<QRect> rects =
        arrangeIcons(viewport()->rect(), windows.first()->size(), static_cast<int>(windows.size()));
    for (qsizetype i = 0; i < windows.size(); ++i)
        windows[i]->setGeometry(rects[i]);
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
