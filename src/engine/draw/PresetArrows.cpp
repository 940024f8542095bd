#include "engine/draw/PresetPen.h"

#include <algorithm>
#include <cmath>
#include <numbers>

// Arrows that are more than a shaft with a head, and boxes with arrows.

namespace lumivane::engine {
namespace {

using Use = PresetPen::Use;

/// Draws with sides exchanged, as for an arrow down that is drawn to the right.
void transposed(PresetPen& p, void (*draw)(PresetPen&), bool mirrored = false)
{
    PresetPen other({p.h, p.w}, p.values());
    draw(other);
    p.take(other, QTransform(0, mirrored ? -1 : 1, 1, 0, 0, mirrored ? p.h : 0));
}

void mirrored(PresetPen& p, void (*draw)(PresetPen&))
{
    PresetPen other({p.w, p.h}, p.values());
    draw(other);
    p.take(other, QTransform(-1, 0, 0, 1, p.w, 0));
}

/// Measures of a head: the shaft is half as wide as `half`, at most as wide as the head.
struct Head
{
    double shaft, half, length; ///< half widths of shaft and head
};

Head headOf(const PresetPen& p, double otherwise, double most)
{
    const double half = p.share("adj2", otherwise, 0, 0.5);
    return {p.ss * p.share("adj1", otherwise, 0, 2 * half) / 2, p.ss * half,
            p.ss * p.share("adj3", otherwise, 0, most)};
}

void stripedRightArrow(PresetPen& p)
{
    const double w = p.w, h = p.h, middle = h / 2, half = h * p.share("adj1", 0.5) / 2;
    const double unit = p.ss / 32, head = std::min(p.ss * p.share("adj2", 0.5, 0, 100), w - 5 * unit);
    p.rect(0, middle - half, unit, middle + half).rect(2 * unit, middle - half, 4 * unit, middle + half);
    p.polygon({{5 * unit, middle - half},
               {w - head, middle - half},
               {w - head, 0},
               {w, middle},
               {w - head, h},
               {w - head, middle + half},
               {5 * unit, middle + half}})
        .end();
    p.text(5 * unit, middle - half, w - head + (middle > 0 ? head * half / middle : 0), middle + half);
}

/// A quarter of what reaches to all four sides, mirrored to the others.
void fourfold(PresetPen& p, std::initializer_list<QPointF> quarter)
{
    QPolygonF points;
    const auto add = [&](bool across, bool down, bool backwards) {
        QList<QPointF> some(quarter);
        if (backwards)
            std::reverse(some.begin(), some.end());
        for (const QPointF& point : some)
            points << QPointF(across ? p.w - point.x() : point.x(), down ? p.h - point.y() : point.y());
    };
    add(false, false, false);
    add(true, false, true);
    add(true, true, false);
    add(false, true, true);
    QPainterPath path;
    path.addPolygon(points);
    p.add(path).close().end();
}

void quadArrow(PresetPen& p)
{
    const double x = p.w / 2, y = p.h / 2;
    Head head = headOf(p, 0.225, 0.5);
    head.length = std::min(head.length, p.ss / 2 - head.half);
    fourfold(p, {{0, y},
                 {head.length, y - head.half},
                 {head.length, y - head.shaft},
                 {x - head.shaft, y - head.shaft},
                 {x - head.shaft, head.length},
                 {x - head.half, head.length},
                 {x, 0}});
    p.text(x - head.shaft, y - head.shaft, x + head.shaft, y + head.shaft);
}

void quadArrowCallout(PresetPen& p)
{
    const double x = p.w / 2, y = p.h / 2, box = p.share("adj4", 0.48123);
    Head head = headOf(p, 0.18515, 0.5);
    const double across = std::max(x * box, head.shaft), down = std::max(y * box, head.shaft);
    fourfold(p, {{0, y},
                 {head.length, y - head.half},
                 {head.length, y - head.shaft},
                 {x - across, y - head.shaft},
                 {x - across, y - down},
                 {x - head.shaft, y - down},
                 {x - head.shaft, head.length},
                 {x - head.half, head.length},
                 {x, 0}});
    p.text(x - across, y - down, x + across, y + down);
}

/// From the tip at the left along the upper side of its shaft to the tip at the top; the shafts meet in a corner.
QList<QPointF> leftAndUp(const Head& head, double x, double y)
{
    return {{0, y},
            {head.length, y - head.half},
            {head.length, y - head.shaft},
            {x - head.shaft, y - head.shaft},
            {x - head.shaft, head.length},
            {x - head.half, head.length},
            {x, 0}};
}

void leftUpArrow(PresetPen& p)
{
    const double w = p.w, h = p.h;
    const Head head = headOf(p, 0.25, 0.5);
    const double x = w - head.half, y = h - head.half; // the middles of both shafts
    p.polygon(leftAndUp(head, x, y) + QList<QPointF>{{w, head.length},
                                                     {x + head.shaft, head.length},
                                                     {x + head.shaft, y + head.shaft},
                                                     {head.length, y + head.shaft},
                                                     {head.length, h}})
        .end();
    p.text(head.length / 2, y - head.shaft, x + head.shaft, y + head.shaft);
}

void leftRightUpArrow(PresetPen& p)
{
    const double w = p.w, h = p.h, x = w / 2;
    const Head head = headOf(p, 0.25, 0.5);
    const double y = h - head.half;
    p.polygon(leftAndUp(head, x, y) + QList<QPointF>{{x + head.half, head.length},
                                                     {x + head.shaft, head.length},
                                                     {x + head.shaft, y - head.shaft},
                                                     {w - head.length, y - head.shaft},
                                                     {w - head.length, y - head.half},
                                                     {w, y},
                                                     {w - head.length, h},
                                                     {w - head.length, y + head.shaft},
                                                     {head.length, y + head.shaft},
                                                     {head.length, h}})
        .end();
    p.text(head.length / 2, y - head.shaft, w - head.length / 2, y + head.shaft);
}

void bentUpArrow(PresetPen& p)
{
    const double w = p.w, h = p.h;
    const Head head = headOf(p, 0.25, 0.5);
    const double x = w - head.half, top = h - 2 * head.shaft;
    p.polygon({{0, top},
               {x - head.shaft, top},
               {x - head.shaft, head.length},
               {w - 2 * head.half, head.length},
               {x, 0},
               {w, head.length},
               {x + head.shaft, head.length},
               {x + head.shaft, h},
               {0, h}})
        .end();
    p.text(0, top, x + head.shaft, h);
}

void bentArrow(PresetPen& p)
{
    const double w = p.w, h = p.h;
    const Head head = headOf(p, 0.25, 0.5);
    const double thick = 2 * head.shaft, top = head.half - head.shaft, end = w - head.length;
    const double bend = std::min({p.ss * p.share("adj4", 0.4375), end, h - top}), inner = std::max(bend - thick, 0.0);
    p.move(0, h).line(0, top + bend).arc(bend, bend, 180, 90).line(end, top).line(end, 0).line(w, head.half);
    p.line(end, 2 * head.half).line(end, top + thick).line(thick + inner, top + thick);
    p.arc(inner, inner, 270, -90).line(thick, h).close().end();
}

void uturnArrow(PresetPen& p)
{
    const double w = p.w, h = p.h;
    const Head head = headOf(p, 0.25, 1);
    const double thick = 2 * head.shaft, right = w - (head.half - head.shaft);
    const double tip = h * p.share("adj5", 0.75), base = std::max(tip - head.length, 0.0);
    const double bend = std::min({p.ss * p.share("adj4", 0.4375), right / 2, base}),
                 inner = std::max(bend - thick, 0.0);
    p.move(0, h).line(0, bend).arc(bend, bend, 180, 90).line(right - bend, 0).arc(bend, bend, 270, 90);
    p.line(right, base).line(w, base).line(w - head.half, tip).line(w - 2 * head.half, base).line(right - thick, base);
    p.line(right - thick, thick + inner).arc(inner, inner, 0, -90).line(thick + inner, thick);
    p.arc(inner, inner, 270, -90).line(thick, h).close().end();
}

/// A band that bends back: its far half is seen from behind.
void curvedRightArrow(PresetPen& p)
{
    const double w = p.w, h = p.h;
    const double wide = p.ss * p.share("adj2", 0.5, 0, h / std::max(p.ss, 1.0)),
                 thick = std::min(p.ss * p.share("adj1", 0.25), wide);
    const double length = std::min(p.ss * p.share("adj3", 0.25, 0, 100), w);
    const double down = h / 2 - (thick + wide) / 4; // of both its edges, which are ellipses
    const double end = std::acos(-length / std::max(w, 1.0)) * 180 / std::numbers::pi;
    p.move(0, down).arc(w, down, 180, 90).line(w, thick).arc(w, down, 270, -90).close().end(Use::Whole, -0.2);
    p.move(0, down).arc(w, down, 180, end - 180).line(w - length, h - wide).line(w, h - wide / 2).line(w - length, h);
    const double radians = end * std::numbers::pi / 180;
    p.line(w - length, down + thick + down * std::sin(radians)).arc(w, down, end, 180 - end).close().end();
}

/// Around the middle, with its head at the end.
void circular(PresetPen& p, bool clockwise)
{
    const double thick = p.ss * p.share("adj1", 0.125, 0, 0.25), half = p.ss * p.share("adj5", 0.125, 0, 0.25);
    const double headAngle = std::abs(p.angle("adj2", clockwise ? 19.04 : -19.04));
    const double end = p.angle("adj3", clockwise ? 340.96 : 19.04), start = p.angle("adj4", 180);
    double sweep = std::fmod(clockwise ? end - start : start - end, 360);
    if (sweep <= 0)
        sweep += 360;
    const double sign = clockwise ? 1 : -1, outside = half - thick / 2; // that the head reaches beyond the band
    const double across = p.w / 2 - outside, down = p.h / 2 - outside;
    const auto at = [&](double degrees, double inset) {
        const double angle = degrees * std::numbers::pi / 180;
        return QPointF(p.w / 2 + (across - inset) * std::cos(angle), p.h / 2 + (down - inset) * std::sin(angle));
    };
    const auto line = [&](const QPointF& to) { p.line(to.x(), to.y()); };
    const QPointF from = at(start, 0);
    p.move(from.x(), from.y()).arc(across, down, start, sign * sweep);
    line(at(end, thick / 2 - half));
    line(at(end + sign * headAngle, thick / 2));
    line(at(end, thick / 2 + half));
    line(at(end, thick));
    p.arc(across - thick, down - thick, end, -sign * sweep).close().end();
}

/// A box with an arrow to the right, or one to each side.
void arrowBox(PresetPen& p, bool bothEnds)
{
    const double w = p.w, h = p.h, y = h / 2;
    const Head head = headOf(p, 0.25, 1);
    const double length = std::min(head.length, bothEnds ? w / 2 : w);
    const double share = p.share("adj4", bothEnds ? 0.48123 : 0.64977);
    const double right = std::min(bothEnds ? w / 2 + w * share / 2 : w * share, w - length),
                 left = bothEnds ? w - right : 0;
    p.move(left, 0).line(right, 0).line(right, y - head.shaft).line(w - length, y - head.shaft);
    p.line(w - length, y - head.half).line(w, y).line(w - length, y + head.half).line(w - length, y + head.shaft);
    p.line(right, y + head.shaft).line(right, h).line(left, h);
    if (bothEnds) {
        p.line(left, y + head.shaft).line(length, y + head.shaft).line(length, y + head.half).line(0, y);
        p.line(length, y - head.half).line(length, y - head.shaft).line(left, y - head.shaft);
    }
    p.close().end();
    p.text(left, 0, right, h);
}

void rightArrowCallout(PresetPen& p)
{
    arrowBox(p, false);
}

void leftRightArrowCallout(PresetPen& p)
{
    arrowBox(p, true);
}

constexpr PresetRow rows[] = {
    {"stripedRightArrow", stripedRightArrow},
    {"quadArrow", quadArrow},
    {"quadArrowCallout", quadArrowCallout},
    {"leftUpArrow", leftUpArrow},
    {"leftRightUpArrow", leftRightUpArrow},
    {"bentUpArrow", bentUpArrow},
    {"bentArrow", bentArrow},
    {"uturnArrow", uturnArrow},
    {"curvedRightArrow", curvedRightArrow},
    {"curvedLeftArrow", [](PresetPen& p) { mirrored(p, curvedRightArrow); }},
    {"curvedDownArrow", [](PresetPen& p) { transposed(p, curvedRightArrow); }},
    {"curvedUpArrow", [](PresetPen& p) { transposed(p, curvedRightArrow, true); }},
    {"circularArrow", [](PresetPen& p) { circular(p, true); }},
    {"leftCircularArrow", [](PresetPen& p) { circular(p, false); }},
    {"rightArrowCallout", rightArrowCallout},
    {"leftArrowCallout", [](PresetPen& p) { mirrored(p, rightArrowCallout); }},
    {"downArrowCallout", [](PresetPen& p) { transposed(p, rightArrowCallout); }},
    {"upArrowCallout", [](PresetPen& p) { transposed(p, rightArrowCallout, true); }},
    {"leftRightArrowCallout", leftRightArrowCallout},
    {"upDownArrowCallout", [](PresetPen& p) { transposed(p, leftRightArrowCallout); }},
};

} // namespace

std::span<const PresetRow> arrowPresets()
{
    return rows;
}

} // namespace lumivane::engine
