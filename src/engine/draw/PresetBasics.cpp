#include "engine/draw/PresetPen.h"

#include <algorithm>
#include <cmath>
#include <numbers>

// Boxes, regular polygons and other plain bodies.

namespace lumivane::engine {
namespace {

using Use = PresetPen::Use;

constexpr double quarterInset = 1 - std::numbers::sqrt2 / 2; ///< of a square in a quarter of a circle

void textInEllipse(PresetPen& p)
{
    const double x = p.w / 2 * quarterInset, y = p.h / 2 * quarterInset;
    p.text(x, y, p.w - x, p.h - y);
}

/// A regular polygon, stretched until it touches all sides of its place.
void regular(PresetPen& p, int corners, double firstAngle)
{
    QPolygonF points;
    for (int i = 0; i < corners; ++i) {
        const double angle = (firstAngle + 360.0 * i / corners) * std::numbers::pi / 180;
        points << QPointF(std::cos(angle), std::sin(angle));
    }
    const QRectF own = points.boundingRect();
    QPainterPath path;
    path.addPolygon(
        (QTransform::fromTranslate(-own.x(), -own.y()) * QTransform::fromScale(p.w / own.width(), p.h / own.height()))
            .map(points));
    path.closeSubpath();
    p.add(path).end();
    textInEllipse(p);
}

void plaque(PresetPen& p)
{
    const double r = p.ss * p.share("adj", 0.16667, 0, 0.5), inset = r * std::numbers::sqrt2 / 2;
    p.move(0, r).arc(r, r, 90, -90).line(p.w - r, 0).arc(r, r, 180, -90).line(p.w, p.h - r);
    p.arc(r, r, 270, -90).line(r, p.h).arc(r, r, 0, -90).close().end();
    p.text(inset, inset, p.w - inset, p.h - inset);
}

void foldedCorner(PresetPen& p)
{
    const double w = p.w, h = p.h, fold = p.ss * p.share("adj", 0.16667, 0, 0.5);
    p.polygon({{0, 0}, {w, 0}, {w, h - fold}, {w - fold, h}, {0, h}}).end();
    p.polygon({{w - fold, h}, {w - fold * 0.8, h - fold * 0.8}, {w, h - fold}}).end(Use::Whole, -0.2);
    p.text(0, 0, w, h - fold);
}

void snip2DiagRect(PresetPen& p)
{
    const double w = p.w, h = p.h, a = p.ss * p.share("adj1", 0, 0, 0.5), b = p.ss * p.share("adj2", 0.16667, 0, 0.5);
    p.polygon({{a, 0}, {w - b, 0}, {w, b}, {w, h - a}, {w - a, h}, {b, h}, {0, h - b}, {0, a}}).end();
    const double inset = std::max(a, b) / 2;
    p.text(inset, inset, w - inset, h - inset);
}

void snipRoundRect(PresetPen& p)
{
    const double round = p.ss * p.share("adj1", 0.16667, 0, 0.5), cut = p.ss * p.share("adj2", 0.16667, 0, 0.5);
    p.move(0, round).arc(round, round, 180, 90).line(p.w - cut, 0).line(p.w, cut).line(p.w, p.h).line(0, p.h);
    p.close().end();
    p.text(round * quarterInset, round * quarterInset, p.w - cut / 2, p.h);
}

void cube(PresetPen& p)
{
    const double w = p.w, h = p.h, deep = p.ss * p.share("adj", 0.25);
    p.rect(0, deep, w - deep, h).end();
    p.polygon({{0, deep}, {deep, 0}, {w, 0}, {w - deep, deep}}).end(Use::Whole, 0.2);
    p.polygon({{w - deep, deep}, {w, 0}, {w, h - deep}, {w - deep, h}}).end(Use::Whole, -0.2);
    p.text(0, deep, w - deep, h);
}

void bevel(PresetPen& p)
{
    const double w = p.w, h = p.h, edge = p.ss * p.share("adj", 0.125, 0, 0.5);
    const double right = w - edge, bottom = h - edge;
    p.rect(edge, edge, right, bottom).end();
    p.polygon({{0, 0}, {w, 0}, {right, edge}, {edge, edge}}).end(Use::Whole, 0.2);
    p.polygon({{0, 0}, {edge, edge}, {edge, bottom}, {0, h}}).end(Use::Whole, 0.4);
    p.polygon({{0, h}, {edge, bottom}, {right, bottom}, {w, h}}).end(Use::Whole, -0.2);
    p.polygon({{w, 0}, {w, h}, {right, bottom}, {right, edge}}).end(Use::Whole, -0.4);
    p.text(edge, edge, right, bottom);
}

void halfFrame(PresetPen& p)
{
    const double w = p.w, h = p.h;
    const double left = p.ss * p.share("adj2", 0.33333, 0, w / std::max(p.ss, 1.0));
    const double top = std::min(p.ss * p.share("adj1", 0.33333, 0, 100), h - left * h / std::max(w, 1.0));
    p.polygon({{0, 0},
               {w, 0},
               {w - top * w / std::max(h, 1.0), top},
               {left, top},
               {left, h - left * h / std::max(w, 1.0)},
               {0, h}})
        .end();
    p.text(0, 0, w - top * w / std::max(h, 1.0) / 2, top);
}

void corner(PresetPen& p)
{
    const double w = p.w, h = p.h;
    const double right = std::min(p.ss * p.share("adj2", 0.5, 0, 100), w);
    const double top = h - std::min(p.ss * p.share("adj1", 0.5, 0, 100), h);
    p.polygon({{0, 0}, {right, 0}, {right, top}, {w, top}, {w, h}, {0, h}}).end();
    p.text(0, top, w, h);
}

void diagStripe(PresetPen& p)
{
    const double x = p.w * p.share("adj", 0.5), y = p.h * p.share("adj", 0.5);
    p.polygon({{0, y}, {x, 0}, {p.w, 0}, {0, p.h}}).end();
    p.text(0, 0, (x + p.w) / 2, (y + p.h) / 2);
}

void teardrop(PresetPen& p)
{
    const double reach = p.share("adj", 1, 0, 2), x = p.w / 2 * (1 + reach), y = p.h / 2 * (1 - reach);
    p.move(0, p.h / 2).arc(p.w / 2, p.h / 2, 180, 90).bow((p.w / 2 + x) / 2, 0, x, y);
    p.bow(p.w, (p.h / 2 + y) / 2, p.w, p.h / 2).arc(p.w / 2, p.h / 2, 0, 180).close().end();
    textInEllipse(p);
}

void nonIsoscelesTrapezoid(PresetPen& p)
{
    const double w = p.w, left = std::min(p.ss * p.share("adj1", 0.25, 0, 100), w / 2),
                 right = std::min(p.ss * p.share("adj2", 0.25, 0, 100), w / 2);
    p.polygon({{left, 0}, {w - right, 0}, {w, p.h}, {0, p.h}}).end();
    p.text(left / 2, p.h / 6, w - right / 2, p.h);
}

void pieWedge(PresetPen& p)
{
    p.move(0, p.h).arc(p.w, p.h, 180, 90).line(p.w, p.h).close().end();
    p.text(p.w * quarterInset, p.h * quarterInset, p.w, p.h);
}

void blockArc(PresetPen& p)
{
    const double from = p.angle("adj1", 180), to = p.angle("adj2", 0);
    double sweep = std::fmod(to - from, 360);
    if (sweep <= 0)
        sweep += 360;
    const double thick = p.ss * p.share("adj3", 0.25, 0, 0.5), radians = from * std::numbers::pi / 180;
    const double across = p.w / 2, down = p.h / 2, innerAcross = across - thick, innerDown = down - thick;
    const double end = (from + sweep) * std::numbers::pi / 180;
    p.move(across + across * std::cos(radians), down + down * std::sin(radians)).arc(across, down, from, sweep);
    p.line(across + innerAcross * std::cos(end), down + innerDown * std::sin(end));
    p.arc(innerAcross, innerDown, from + sweep, -sweep).close().end();
}

void noSmoking(PresetPen& p)
{
    const double ring = p.ss * p.share("adj", 0.1875, 0, 0.5), length = std::hypot(p.w, p.h);
    QPainterPath hole, bar;
    hole.addEllipse(p.center(), p.w / 2 - ring, p.h / 2 - ring);
    bar.addRect(-length, -ring / 2, 2 * length, ring);
    QTransform turn = QTransform::fromTranslate(p.w / 2, p.h / 2);
    turn.rotateRadians(std::atan2(p.h, p.w));
    p.ellipse(p.center(), p.w / 2, p.h / 2).add(hole.subtracted(turn.map(bar))).end();
    textInEllipse(p);
}

void bracePair(PresetPen& p)
{
    const double w = p.w, h = p.h, r = p.ss * p.share("adj", 0.08333, 0, 0.25);
    const auto sides = [&](bool joined) {
        p.move(2 * r, h).arc(r, r, 90, 90).line(r, h / 2 + r).arc(r, r, 0, -90).arc(r, r, 90, -90).line(r, r);
        p.arc(r, r, 180, 90);
        joined ? p.line(w - 2 * r, 0) : p.move(w - 2 * r, 0);
        p.arc(r, r, 270, 90).line(w - r, h / 2 - r).arc(r, r, 180, -90).arc(r, r, 270, -90).line(w - r, h - r);
        p.arc(r, r, 0, 90);
    };
    sides(true);
    p.close().end(Use::Fill);
    sides(false);
    p.end(Use::Lines);
    p.text(r * 1.3, r * 0.3, w - r * 1.3, h - r * 0.3);
}

constexpr PresetRow rows[] = {
    {"heptagon", [](PresetPen& p) { regular(p, 7, -90); }},
    {"decagon", [](PresetPen& p) { regular(p, 10, 0); }},
    {"dodecagon", [](PresetPen& p) { regular(p, 12, 15); }},
    {"plaque", plaque},
    {"foldedCorner", foldedCorner},
    {"snip2DiagRect", snip2DiagRect},
    {"snipRoundRect", snipRoundRect},
    {"cube", cube},
    {"bevel", bevel},
    {"halfFrame", halfFrame},
    {"corner", corner},
    {"diagStripe", diagStripe},
    {"teardrop", teardrop},
    {"nonIsoscelesTrapezoid", nonIsoscelesTrapezoid},
    {"pieWedge", pieWedge},
    {"blockArc", blockArc},
    {"noSmoking", noSmoking},
    {"bracePair", bracePair},
    {"lineInv", [](PresetPen& p) { p.move(0, p.h).line(p.w, 0).end(Use::Lines); }},
};

} // namespace

std::span<const PresetRow> basicPresets()
{
    return rows;
}

} // namespace lumivane::engine
