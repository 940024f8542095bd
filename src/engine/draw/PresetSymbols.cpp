#include "engine/draw/PresetPen.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

// Sun, moon and clouds, hearts, faces, bursts, wheels and signs of arithmetic.

namespace lumivane::engine {
namespace {

using Use = PresetPen::Use;

QPointF onEllipse(const PresetPen& p, double degrees, double radius)
{
    const double angle = degrees * std::numbers::pi / 180;
    return {p.w * (0.5 + radius * std::cos(angle)), p.h * (0.5 + radius * std::sin(angle))};
}

void addPolygon(PresetPen& p, const QPolygonF& points)
{
    QPainterPath path;
    path.addPolygon(points);
    p.add(path).close();
}

void sun(PresetPen& p)
{
    const double radius = 0.5 - p.share("adj", 0.25, 0.125, 0.46875);
    const double base = radius + (0.5 - radius) * 0.22;
    constexpr double halfBase = 17; // degrees
    for (int ray = 0; ray < 8; ++ray) {
        const double angle = ray * 45;
        addPolygon(
            p, {onEllipse(p, angle - halfBase, base), onEllipse(p, angle, 0.5), onEllipse(p, angle + halfBase, base)});
    }
    p.ellipse(p.center(), p.w * radius, p.h * radius).end();
    const double inset = 0.5 - radius * std::numbers::sqrt2 / 2;
    p.text(p.w * inset, p.h * inset, p.w * (1 - inset), p.h * (1 - inset));
}

void moon(PresetPen& p)
{
    const double thick = p.share("adj", 0.5, 0, 0.875);
    p.move(p.w, p.h).arc(p.w, p.h / 2, 90, 180).arc(p.w * (1 - thick), p.h / 2, 270, -180).close().end();
    p.text(p.w * thick * 0.29, p.h * 0.25, p.w * thick, p.h * 0.75);
}

void heart(PresetPen& p)
{
    const double w = p.w, h = p.h, middle = w / 2, notch = h / 4;
    p.move(middle, notch).curve(w * 0.71, -h / 3, w * 1.52, notch, middle, h);
    p.curve(-w * 0.52, notch, w * 0.29, -h / 3, middle, notch).close().end();
    p.text(w / 6, h / 4, w * 5 / 6, h * 2 / 3);
}

void lightningBolt(PresetPen& p)
{
    static constexpr QPointF corners[] = {{0, 0.18},      {0.39, 0},     {0.595, 0.28}, {0.51, 0.315},
                                          {0.765, 0.555}, {0.68, 0.595}, {1, 1},        {0.465, 0.69},
                                          {0.565, 0.65},  {0.235, 0.45}, {0.355, 0.385}};
    QPolygonF points;
    for (const QPointF& corner : corners)
        points << QPointF(corner.x() * p.w, corner.y() * p.h);
    addPolygon(p, points);
    p.end();
    p.text(p.w * 0.4, p.h * 0.35, p.w * 0.65, p.h * 0.65);
}

void smileyFace(PresetPen& p)
{
    const double w = p.w, h = p.h, smile = h * p.share("adj", 0.04653, -0.04653, 0.04653), mouth = h * 0.765;
    p.ellipse(p.center(), w / 2, h / 2).end();
    for (const double x : {0.34, 0.66})
        p.ellipse({w * x, h * 0.35}, w * 0.052, h * 0.052);
    p.end(Use::Whole, -0.2);
    p.move(w * 0.23, mouth - smile).bow(w / 2, mouth + 3 * smile, w * 0.77, mouth - smile).end(Use::Lines);
    p.text(w * 0.15, h * 0.15, w * 0.85, h * 0.85);
}

/// Puffs around an ellipse.
QPainterPath cloudPath(const PresetPen& p)
{
    struct Puff
    {
        double angle, bulge; ///< where it begins, in degrees; how far it bulges
    };
    static constexpr std::array<Puff, 11> puffs{{{-163, 0.17},
                                                 {-122, 0.15},
                                                 {-88, 0.13},
                                                 {-58, 0.15},
                                                 {-22, 0.13},
                                                 {8, 0.19},
                                                 {52, 0.15},
                                                 {84, 0.14},
                                                 {112, 0.14},
                                                 {140, 0.11},
                                                 {168, 0.13}}};
    constexpr double inner = 0.41;
    QPainterPath path(onEllipse(p, puffs[0].angle, inner));
    for (size_t i = 0; i < puffs.size(); ++i) {
        const bool isLast = i + 1 == puffs.size();
        const double from = puffs[i].angle, to = isLast ? puffs[0].angle + 360 : puffs[i + 1].angle;
        const double out = inner + puffs[i].bulge, lean = (to - from) * 0.05;
        path.cubicTo(onEllipse(p, from - lean, out), onEllipse(p, to + lean, out), onEllipse(p, to, inner));
    }
    path.closeSubpath();
    return path;
}

void cloud(PresetPen& p)
{
    p.add(cloudPath(p)).end();
    p.text(p.w * 0.14, p.h * 0.15, p.w * 0.84, p.h * 0.82);
}

/// A cloud with bubbles from its edge to the tip.
void cloudCallout(PresetPen& p)
{
    const QPointF off(p.w * p.share("adj1", -0.20833, -100, 100), p.h * p.share("adj2", 0.625, -100, 100));
    const double length = std::hypot(off.x(), off.y());
    cloud(p);
    if (length <= 0)
        return;
    const double edge = 0.45 / std::max(std::hypot(off.x() / std::max(p.w, 1.0), off.y() / std::max(p.h, 1.0)), 1e-6);
    static constexpr std::pair<double, double> bubbles[] = {{0.083, 0.27}, {0.056, 0.68}, {0.028, 1}};
    for (const auto& [radius, way] : bubbles) {
        const double share = edge < 1 ? edge + (1 - edge) * way : way;
        p.ellipse(p.center() + off * share, p.ss * radius, p.ss * radius).end();
    }
}

/// A burst with points of uneven length, each a radius in percent of the half, a gap between two.
void burst(PresetPen& p, std::span<const int> radii)
{
    QPolygonF points;
    for (size_t i = 0; i < radii.size(); ++i)
        points << onEllipse(p, 360.0 * double(i) / double(radii.size()) - 90, radii[i] / 200.0);
    const QRectF own = points.boundingRect();
    addPolygon(p, (QTransform::fromTranslate(-own.x(), -own.y()) *
                   QTransform::fromScale(p.w / std::max(own.width(), 1.0), p.h / std::max(own.height(), 1.0)))
                      .map(points));
    p.end();
    p.text(p.w * 0.25, p.h * 0.28, p.w * 0.75, p.h * 0.74);
}

void gear(PresetPen& p, int teeth)
{
    constexpr double inner = 0.37, half = 0.21; // of a tooth's turn, at its foot
    QPolygonF points;
    for (int i = 0; i < teeth; ++i) {
        const double turn = 360.0 / teeth, angle = turn * i - 90;
        points << onEllipse(p, angle - turn * half, inner) << onEllipse(p, angle - turn * half * 0.6, 0.5)
               << onEllipse(p, angle + turn * half * 0.6, 0.5) << onEllipse(p, angle + turn * half, inner)
               << onEllipse(p, angle + turn * 0.5, inner);
    }
    addPolygon(p, points);
    p.end();
    p.text(p.w * 0.25, p.h * 0.25, p.w * 0.75, p.h * 0.75);
}

constexpr double armShare = 0.7349; // of width or height that a sign takes

double thickness(const PresetPen& p)
{
    return p.share(p.values().value("adj1", -1) >= 0 ? "adj1" : "adj", 0.2352, 0, armShare);
}

QPainterPath barAt(const QPointF& center, double length, double thick, double radians)
{
    QPainterPath bar;
    bar.addRect(-length / 2, -thick / 2, length, thick);
    QTransform turn = QTransform::fromTranslate(center.x(), center.y());
    turn.rotateRadians(radians);
    return turn.map(bar);
}

QPainterPath levelBar(const PresetPen& p, double y, double thick)
{
    return barAt({p.w / 2, y}, p.w * armShare, thick, 0);
}

void mathPlus(PresetPen& p)
{
    const double thick = p.ss * thickness(p), upright = std::numbers::pi / 2;
    p.add(levelBar(p, p.h / 2, thick).united(barAt(p.center(), p.h * armShare, thick, upright))).end();
}

void mathMultiply(PresetPen& p)
{
    const double angle = std::atan2(p.h, p.w), thick = p.ss * thickness(p);
    const double length = std::hypot(p.w, p.h) * 0.52;
    p.add(barAt(p.center(), length, thick, angle).united(barAt(p.center(), length, thick, -angle))).end();
}

void mathDivide(PresetPen& p)
{
    const double bar = p.h * thickness(p), gap = p.h * p.share("adj2", 0.0588, 0, 0.3),
                 radius = std::min(p.h * p.share("adj3", 0.1176, 0.01, 0.2), p.w * armShare / 2),
                 off = bar / 2 + gap + radius;
    p.add(levelBar(p, p.h / 2, bar));
    for (const double side : {-1.0, 1.0})
        p.ellipse({p.w / 2, p.h / 2 + side * off}, radius, radius);
    p.end();
}

QPainterPath equalBars(const PresetPen& p, const char* gap)
{
    const double bar = p.h * p.share("adj1", 0.2352, 0, 0.36745),
                 off = p.h * p.share(gap, 0.1176, 0, 0.5) / 2 + bar / 2;
    QPainterPath bars = levelBar(p, p.h / 2 - off, bar);
    bars.addPath(levelBar(p, p.h / 2 + off, bar));
    return bars;
}

void mathNotEqual(PresetPen& p)
{
    const double bar = p.h * p.share("adj1", 0.2352, 0, 0.36745);
    const double degrees = std::clamp(p.angle("adj2", 110), 70.0, 110.0);
    const double angle = degrees * std::numbers::pi / 180;
    const double length = (p.h - bar * std::abs(std::cos(angle))) / std::sin(angle); // from top to bottom
    p.add(equalBars(p, "adj3").united(barAt(p.center(), length, bar, angle))).end();
}

constexpr int burst1[] = {62, 42, 100, 38, 66, 44, 98, 48, 84, 50, 100, 52,
                          72, 46, 100, 50, 70, 48, 92, 46, 66, 44, 95,  44};
constexpr int burst2[] = {88,  52, 72, 50, 100, 54, 78, 55, 92, 50, 74, 48, 84, 52,
                          100, 50, 80, 48, 95,  52, 70, 50, 98, 46, 76, 48, 86, 50};

constexpr PresetRow rows[] = {
    {"sun", sun},
    {"moon", moon},
    {"heart", heart},
    {"lightningBolt", lightningBolt},
    {"smileyFace", smileyFace},
    {"cloud", cloud},
    {"cloudCallout", cloudCallout},
    {"irregularSeal1", [](PresetPen& p) { burst(p, burst1); }},
    {"irregularSeal2", [](PresetPen& p) { burst(p, burst2); }},
    {"gear6", [](PresetPen& p) { gear(p, 6); }},
    {"gear9", [](PresetPen& p) { gear(p, 9); }},
    {"mathPlus", mathPlus},
    {"mathMinus", [](PresetPen& p) { p.add(levelBar(p, p.h / 2, p.h * thickness(p))).end(); }},
    {"mathMultiply", mathMultiply},
    {"mathDivide", mathDivide},
    {"mathEqual", [](PresetPen& p) { p.add(equalBars(p, "adj2")).end(); }},
    {"mathNotEqual", mathNotEqual},
};

} // namespace

std::span<const PresetRow> symbolPresets()
{
    return rows;
}

} // namespace lumivane::engine
