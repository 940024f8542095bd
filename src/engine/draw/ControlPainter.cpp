#include "engine/draw/ControlPainter.h"

#include "engine/draw/ShapeTexts.h"

#include <QPainter>
#include <algorithm>

namespace lumivane::engine {
namespace {

constexpr QColor face(0xf0, 0xf0, 0xf0), edge(0xad, 0xad, 0xad), ink(0x40, 0x40, 0x40);
constexpr double boxSide = 11, textStart = 16, arrowSide = 17; // pixels at scale 1

void paintBox(QPainter& painter, const QRectF& place, const QColor& fill, double scale)
{
    painter.setPen(QPen(edge, scale));
    painter.setBrush(fill);
    painter.drawRect(place.adjusted(scale / 2, scale / 2, -scale / 2, -scale / 2));
}

/// A small button with an arrow that points down, or up.
void paintArrowButton(QPainter& painter, const QRectF& place, bool down, double scale)
{
    paintBox(painter, place, face, scale);
    const QPointF center = place.center();
    const double half = std::min({place.width() / 4, place.height() / 4, 4 * scale}), tip = down ? half / 2 : -half / 2;
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink);
    painter.drawPolygon(QPolygonF(
        QList<QPointF>{center + QPointF(-half, -tip), center + QPointF(half, -tip), center + QPointF(0, tip)}));
}

/// The box of a check box or the ring of a radio button, at the left and half way down.
void paintMark(QPainter& painter, const ControlContent& control, const QRectF& place, double scale)
{
    const double side = boxSide * scale;
    const QRectF box(place.left() + 2 * scale, std::round(place.center().y() - side / 2), side, side);
    const bool isRadio = control.kind == ControlKind::Radio;
    painter.setPen(QPen(ink, scale));
    painter.setBrush(control.state == 2 ? QColor(Qt::lightGray) : QColor(Qt::white));
    const QRectF frame = box.adjusted(scale / 2, scale / 2, -scale / 2, -scale / 2);
    isRadio ? painter.drawEllipse(frame) : painter.drawRect(frame);
    if (control.state != 1)
        return;
    if (isRadio) {
        painter.setBrush(Qt::black);
        painter.drawEllipse(box.center(), side / 5, side / 5);
    } else {
        painter.setPen(QPen(Qt::black, 1.5 * scale));
        painter.drawPolyline(QPolygonF(QList<QPointF>{box.topLeft() + QPointF(0.2, 0.5) * side,
                                                      box.topLeft() + QPointF(0.42, 0.72) * side,
                                                      box.topLeft() + QPointF(0.8, 0.25) * side}));
    }
}

/// A frame whose upper line leaves room for the text on it.
void paintGroupFrame(QPainter& painter, const QRectF& place, double scale)
{
    painter.setPen(QPen(edge, scale));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(place.adjusted(scale / 2, 6.5 * scale, -scale / 2, -scale / 2));
}

} // namespace

void paintControl(QPainter& painter, const ShapeContent& shape, const QRectF& place, const Fonts& fonts)
{
    const double scale = fonts.scale();
    QRectF textPlace = place;
    painter.save();
    painter.setClipRect(place, Qt::IntersectClip);
    switch (shape.control.kind) {
    case ControlKind::Button:
        paintBox(painter, place, face, scale);
        break;
    case ControlKind::CheckBox:
    case ControlKind::Radio:
        paintMark(painter, shape.control, place, scale);
        textPlace.setLeft(place.left() + textStart * scale);
        break;
    case ControlKind::DropDown: {
        paintBox(painter, place, Qt::white, scale);
        const double width = std::min(arrowSide * scale, place.width());
        paintArrowButton(painter, QRectF(place.right() - width, place.top(), width, place.height()), true, scale);
        break;
    }
    case ControlKind::Spin:
    case ControlKind::ScrollBar: {
        paintBox(painter, place, face, scale);
        const bool isSpin = shape.control.kind == ControlKind::Spin;
        const double height = isSpin ? place.height() / 2 : std::min(arrowSide * scale, place.height() / 2);
        paintArrowButton(painter, QRectF(place.topLeft(), QSizeF(place.width(), height)), false, scale);
        paintArrowButton(painter, QRectF(place.left(), place.bottom() - height, place.width(), height), true, scale);
        break;
    }
    case ControlKind::Group:
        paintGroupFrame(painter, place, scale);
        textPlace.setLeft(place.left() + 8 * scale);
        break;
    case ControlKind::List:
    case ControlKind::Edit:
        paintBox(painter, place, Qt::white, scale);
        break;
    case ControlKind::Label:
        break;
    }
    paintShapeText(painter, shape.text, textPlace, fonts);
    painter.restore();
}

} // namespace lumivane::engine
