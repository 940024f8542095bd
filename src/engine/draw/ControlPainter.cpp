#include "engine/draw/ControlPainter.h"

#include "engine/draw/ShapeTexts.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>

namespace lumivane::engine {
namespace {

constexpr QColor face(0xf0, 0xf0, 0xf0), edge(0xad, 0xad, 0xad), ink(0x40, 0x40, 0x40), track(0xe8, 0xe8, 0xe8),
    thumb(0xcd, 0xcd, 0xcd), chosenFill(0x33, 0x99, 0xff);
constexpr double boxSide = 11, textStart = 16, arrowSide = 17, leastSlider = 8, titleStart = 8; // pixels at scale 1

/// Of entries, which have none of their own.
FontStyle listFont()
{
    FontStyle font;
    font.family = QStringLiteral("Segoe UI");
    font.points = 8;
    return font;
}

void paintBox(QPainter& painter, const QRectF& place, const QColor& fill, double scale)
{
    painter.setPen(QPen(edge, scale));
    painter.setBrush(fill);
    painter.drawRect(place.adjusted(scale / 2, scale / 2, -scale / 2, -scale / 2));
}

enum class Towards { Up, Down, Left, Right };

/// A small button with an arrow.
void paintArrowButton(QPainter& painter, const QRectF& place, Towards towards, double scale)
{
    paintBox(painter, place, face, scale);
    const double half = std::min({place.width() / 4, place.height() / 4, 4 * scale});
    painter.save();
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink);
    painter.translate(place.center());
    painter.rotate(towards == Towards::Up ? 180 : towards == Towards::Left ? 90 : towards == Towards::Right ? -90 : 0);
    painter.drawPolygon(QPolygonF(QList<QPointF>{{-half, -half / 2}, {half, -half / 2}, {0, half / 2}}));
    painter.restore();
}

/// Two buttons at the ends, and on a scroll bar a slider where its value lies between its bounds.
void paintScroll(QPainter& painter, const ControlContent& control, const QRectF& place, double scale)
{
    const bool isSpin = control.kind == ControlKind::Spin, level = control.level;
    const double length = level ? place.width() : place.height();
    const double button = isSpin ? length / 2 : std::min(arrowSide * scale, length / 2);
    const auto stretch = [&](double from, double size) {
        return level ? QRectF(place.left() + from, place.top(), size, place.height())
                     : QRectF(place.left(), place.top() + from, place.width(), size);
    };
    paintBox(painter, place, isSpin ? face : track, scale);
    paintArrowButton(painter, stretch(0, button), level ? Towards::Left : Towards::Up, scale);
    paintArrowButton(painter, stretch(length - button, button), level ? Towards::Right : Towards::Down, scale);
    const double range = double(control.most) - control.least, room = length - 2 * button;
    const double page = std::max(double(control.page), 0.0);
    const double slider = range > 0 ? std::max(room * page / (range + page), leastSlider * scale) : room;
    if (isSpin || slider >= room)
        return;
    const double share = std::clamp((double(control.value) - control.least) / range, 0.0, 1.0);
    paintBox(painter, stretch(button + share * (room - slider), slider), thumb, scale);
}

/// An entry as a text of one line.
ShapeText lineOf(const QString& entry, QRgb color)
{
    constexpr qsizetype longest = 255;
    ShapeText text;
    text.wrapped = false;
    text.anchor = TextAnchor::Middle;
    text.top = text.bottom = 0;
    text.left = text.right = 2 * emuPerPixel;
    ShapeTextRun run{entry.left(longest), listFont()};
    run.font.color = color;
    text.paragraphs.push_back({});
    text.paragraphs.back().runs.push_back(std::move(run));
    return text;
}

/// The entries of a list from the first one on that shows, or the chosen one of a drop-down.
void paintEntries(QPainter& painter, const ControlContent& control, const QRectF& place, const Fonts& fonts,
                  const ShownSheet& sheet)
{
    if (control.entries.isEmpty())
        return;
    const bool isList = control.kind == ControlKind::List;
    const double scale = fonts.scale(), row = isList ? fonts.face(listFont()).lineHeight() : place.height() - 2 * scale;
    if (row <= 0 || (!isList && control.chosen < 1))
        return;
    const QRectF inner = place.adjusted(scale, scale, -scale, -scale);
    const int first = isList ? std::max(control.value, 0) : control.chosen - 1;
    const int most = isList ? static_cast<int>(std::min(inner.height() / row + 1, 1000.0)) : 1;
    const QStringList entries = sheet.listEntries(control.entries, first, most);
    painter.save();
    painter.setClipRect(inner, Qt::IntersectClip);
    for (qsizetype i = 0; i < entries.size(); ++i) {
        const QRectF line(inner.left(), inner.top() + double(i) * row, inner.width(), row);
        const bool isChosen = isList && first + i + 1 == control.chosen;
        if (isChosen)
            painter.fillRect(line, chosenFill);
        paintShapeText(painter, lineOf(entries[i], isChosen ? 0xffffffff : 0xff000000), line, fonts);
    }
    painter.restore();
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
void paintGroupFrame(QPainter& painter, const ShapeText& text, const QRectF& place, const Fonts& fonts)
{
    const double scale = fonts.scale();
    double width = 0;
    if (!text.paragraphs.empty()) {
        for (const ShapeTextRun& run : text.paragraphs.front().runs)
            width += fonts.face(run.font).advance(run.text);
    }
    const QRectF frame = place.adjusted(scale / 2, 6.5 * scale, -scale / 2, -scale / 2);
    const double from = std::min(frame.left() + (width > 0 ? titleStart * scale : 0), frame.right());
    const double to = std::min(from + (width > 0 ? width + 4 * scale : 0), frame.right());
    QPainterPath path(QPointF(to, frame.top()));
    path.lineTo(frame.topRight());
    path.lineTo(frame.bottomRight());
    path.lineTo(frame.bottomLeft());
    path.lineTo(frame.topLeft());
    path.lineTo(from, frame.top());
    painter.setPen(QPen(edge, scale));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(path);
}

} // namespace

void paintControl(QPainter& painter, const ShapeContent& shape, const QRectF& place, const Fonts& fonts,
                  const ShownSheet& sheet)
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
        paintEntries(painter, shape.control, place.adjusted(0, 0, -width, 0), fonts, sheet);
        paintArrowButton(painter, QRectF(place.right() - width, place.top(), width, place.height()), Towards::Down,
                         scale);
        break;
    }
    case ControlKind::Spin:
    case ControlKind::ScrollBar:
        paintScroll(painter, shape.control, place, scale);
        break;
    case ControlKind::Group:
        paintGroupFrame(painter, shape.text, place, fonts);
        textPlace.setLeft(place.left() + titleStart * scale);
        break;
    case ControlKind::List:
        paintBox(painter, place, Qt::white, scale);
        paintEntries(painter, shape.control, place, fonts, sheet);
        break;
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
