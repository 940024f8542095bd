#include "controls/DrawnIcon.h"

#include "controls/PanelStyle.h"

#include <QBuffer>
#include <QGuiApplication>
#include <QImageReader>
#include <QPainter>
#include <QPixmapCache>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

/// Lines, accents and the grounds of the signs in boxes, as drawn and as seen on a dark window.
constexpr struct
{
    const char *light, *dark;
} counterparts[] = {
    {"#41566b", "#c3ced9"}, {"#2f7fb8", "#63b1e6"}, {"#e3eff8", "#24394a"}, {"#fbe7e3", "#4a2a25"},
    {"#fdf2d8", "#463a1c"}, {"#b8503f", "#e07a68"}, {"#b4760a", "#e0a63c"},
};

QByteArray drawingFor(QByteArray drawing, bool dark, QIcon::Mode mode)
{
    if (dark) {
        for (const auto& color : counterparts)
            drawing.replace(color.light, color.dark);
    }
    if (mode == QIcon::Disabled)
        drawing.replace("<svg ", "<svg opacity=\"0.4\" ");
    return drawing;
}

QPixmap renderedDrawing(const QByteArray& drawing, const QSize& size)
{
    const QString key = u"drawing %1 %2"_s.arg(size.width()).arg(qHash(drawing), 0, 16);
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap))
        return pixmap;
    QBuffer buffer;
    buffer.setData(drawing);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, "svg");
    reader.setScaledSize(size);
    pixmap = QPixmap::fromImage(reader.read());
    QPixmapCache::insert(key, pixmap);
    return pixmap;
}

} // namespace

DrawnIcon::DrawnIcon(QByteArray drawing) : m_drawing(std::move(drawing)) {}

QPixmap DrawnIcon::pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state)
{
    const bool dark = PanelStyle::isDark(QGuiApplication::palette());
    return renderedDrawing(drawingFor(m_drawing, dark, mode), actualSize(size, mode, state));
}

void DrawnIcon::paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state)
{
    const qreal scale = painter->device()->devicePixelRatioF();
    QPixmap drawn = pixmap((QSizeF(rect.size()) * scale).toSize(), mode, state);
    drawn.setDevicePixelRatio(scale);
    QRectF place(QPointF(), drawn.deviceIndependentSize());
    place.moveCenter(QRectF(rect).center());
    painter->drawPixmap(place.topLeft(), drawn);
}

QSize DrawnIcon::actualSize(const QSize& size, QIcon::Mode, QIcon::State)
{
    const int side = qMin(size.width(), size.height());
    return {side, side};
}

QIconEngine* DrawnIcon::clone() const
{
    return new DrawnIcon(m_drawing);
}

bool DrawnIcon::isNull()
{
    return m_drawing.isEmpty();
}

} // namespace lumivane
