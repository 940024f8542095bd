#include "engine/draw/PresetOutlines.h"

#include "engine/draw/PresetPen.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace lumivane::engine {
namespace {

/// Draws presets whose names say how they differ.
class Preset : private PresetPen
{
public:
    using PresetPen::PresetPen;

    std::optional<ShapeOutline> make(const std::string& name);

private:
    QRectF whole() const { return {0, 0, w, h}; }

    bool simple(const std::string& name);
    bool polygons(const std::string& name);
    bool arrows(const std::string& name);
    bool callouts(const std::string& name);
    bool brackets(const std::string& name);
    QList<QPointF> bends(int parts) const;
    bool connectors(const std::string& name);
    bool flowCharts(const std::string& name);

    void ellipse();
    void rounded(const char* adjust, double radius);
    void cutCorners(bool round, bool topLeft, bool topRight, bool bottomRight, bool bottomLeft);
    void star(int points, double inner);
    void arrow(int quarterTurns, bool bothEnds, bool notched);
    void callout(bool ellipse, double radius);
    void curlyBrace(bool left);
    void can(double share);
};

std::optional<ShapeOutline> Preset::make(const std::string& name)
{
    const bool known = simple(name) || polygons(name) || arrows(name) || callouts(name) || brackets(name) ||
                       connectors(name) || flowCharts(name);
    return known ? std::optional(std::move(outline())) : std::nullopt;
}

void Preset::ellipse()
{
    QPainterPath path;
    path.addEllipse(whole());
    add(path).end();
    const double inset = (1 - std::numbers::sqrt2 / 2) / 2;
    text(w * inset, h * inset, w * (1 - inset), h * (1 - inset));
}

void Preset::rounded(const char* adjust, double radius)
{
    const double r = ss * share(adjust, radius, 0, 0.5);
    QPainterPath path;
    path.addRoundedRect(whole(), r, r);
    add(path).end();
    const double inset = r * (1 - std::numbers::sqrt2 / 2);
    text(inset, inset, w - inset, h - inset);
}

/// Corners that are round or cut off by the first adjustment; the second is for the other ones where they are told.
void Preset::cutCorners(bool round, bool topLeft, bool topRight, bool bottomRight, bool bottomLeft)
{
    const double cut = ss * share("adj1", share("adj", 0.16667, -10, 10), 0, 0.5),
                 other = ss * share("adj2", 0, 0, 0.5);
    const auto size = [&](bool first) { return first ? cut : other; };
    QPainterPath path;
    const auto corner = [&](double c, QPointF at, QPointF in, QPointF out) {
        const QPointF from = at + in * c, to = at + out * c;
        path.elementCount() == 0 ? path.moveTo(from) : path.lineTo(from);
        if (round && c > 0) {
            constexpr double circle = 0.5523; // how far control points lie for a quarter
            path.cubicTo(from - in * c * circle, to - out * c * circle, to);
        } else {
            path.lineTo(to);
        }
    };
    corner(size(topLeft), {0, 0}, {0, 1}, {1, 0});
    corner(size(topRight), {w, 0}, {-1, 0}, {0, 1});
    corner(size(bottomRight), {w, h}, {0, -1}, {-1, 0});
    corner(size(bottomLeft), {0, h}, {1, 0}, {0, -1});
    path.closeSubpath();
    add(path).end();
}

bool Preset::simple(const std::string& name)
{
    if (name == "rect" || name == "flowChartProcess" || name == "actionButtonBlank") {
        polygon({{0, 0}, {w, 0}, {w, h}, {0, h}}).end();
    } else if (name == "roundRect") {
        rounded("adj", 0.16667);
    } else if (name == "ellipse" || name == "flowChartConnector") {
        ellipse();
    } else if (name == "round1Rect" || name == "snip1Rect") {
        cutCorners(name == "round1Rect", false, true, false, false);
    } else if (name == "round2SameRect" || name == "snip2SameRect") {
        cutCorners(name == "round2SameRect", true, true, false, false);
    } else if (name == "round2DiagRect") {
        cutCorners(true, true, false, true, false);
    } else if (name == "can" || name == "flowChartMagneticDisk") {
        can(name == "can" ? ss * share("adj", 0.25, 0, 0.5 * h / std::max(ss, 1.0)) / 2 : h / 6);
    } else if (name == "donut" || name == "frame") {
        const double ring = ss * share("adj", name == "donut" ? 0.25 : 0.125, 0, 0.5);
        const QRectF hole = whole().adjusted(ring, ring, -ring, -ring);
        QPainterPath path;
        name == "donut" ? path.addEllipse(whole()) : path.addRect(whole());
        name == "donut" ? path.addEllipse(hole) : path.addRect(hole);
        add(path).end();
    } else if (name == "pie" || name == "chord" || name == "arc") {
        const bool isArc = name == "arc";
        const double from = values().value("adj1", isArc ? 16200000 : name == "pie" ? 0 : 2700000) / 60000;
        const double to = values().value("adj2", isArc ? 0 : 16200000) / 60000;
        double sweep = std::fmod(to - from, 360);
        if (sweep <= 0)
            sweep += 360;
        QPainterPath curve;
        curve.arcMoveTo(whole(), -from);
        curve.arcTo(whole(), -from, -sweep);
        if (name == "pie")
            curve.lineTo(whole().center());
        if (!isArc)
            curve.closeSubpath();
        add(curve).end(isArc ? Use::Lines : Use::Whole);
    } else {
        return false;
    }
    return true;
}

void Preset::can(double lid)
{
    QPainterPath side;
    side.moveTo(0, lid);
    side.arcTo({0, 0, w, 2 * lid}, 180, -180);
    side.lineTo(w, h - lid);
    side.arcTo({0, h - 2 * lid, w, 2 * lid}, 0, -180);
    side.closeSubpath();
    add(side).end();
    QPainterPath edge;
    edge.moveTo(0, lid);
    edge.arcTo({0, 0, w, 2 * lid}, 180, 180);
    add(edge).end(Use::Lines);
    text(0, 2 * lid, w, h - lid);
}

/// Its points on the ellipse of the shape; stars of five and six points are stretched until they touch its sides.
void Preset::star(int points, double inner)
{
    const double across = w / 2 * share("hf", points == 5 ? 1.05146 : points == 6 ? 1.1547 : 1, -10, 10);
    const double down = h / 2 * share("vf", points == 5 ? 1.10557 : 1, -10, 10);
    const QPointF center(w / 2, points == 5 ? down : h / 2);
    const double ratio = share("adj", inner, 0, 0.5) * 2;
    QPolygonF corners;
    for (int i = 0; i < 2 * points; ++i) {
        const double angle = std::numbers::pi * (i / double(points) - 0.5), size = i % 2 ? ratio : 1;
        corners << center + QPointF(across * size * std::cos(angle), down * size * std::sin(angle));
    }
    polygon(corners).end();
    text(w * 0.25, h * 0.3, w * 0.75, h * 0.75);
}

bool Preset::polygons(const std::string& name)
{
    if (name == "triangle" || name == "flowChartExtract") {
        const double apex = w * share("adj", 0.5, 0, 1);
        polygon({{apex, 0}, {w, h}, {0, h}}).end();
        text(apex / 2, h / 2, apex / 2 + w / 2, h);
    } else if (name == "rtTriangle") {
        polygon({{0, 0}, {w, h}, {0, h}}).end();
        text(w / 12, h * 7 / 12, w * 7 / 12, h * 11 / 12);
    } else if (name == "diamond" || name == "flowChartDecision") {
        polygon({{w / 2, 0}, {w, h / 2}, {w / 2, h}, {0, h / 2}}).end();
        text(w / 4, h / 4, w * 3 / 4, h * 3 / 4);
    } else if (name == "parallelogram" || name == "flowChartInputOutput") {
        const double slant = name == "parallelogram" ? ss * share("adj", 0.25, 0, w / std::max(ss, 1.0)) : w / 5;
        polygon({{slant, 0}, {w, 0}, {w - slant, h}, {0, h}}).end();
        text(slant / 2, 0, w - slant / 2, h);
    } else if (name == "trapezoid") {
        const double slant = ss * share("adj", 0.25, 0, 0.5 * w / std::max(ss, 1.0));
        polygon({{slant, 0}, {w - slant, 0}, {w, h}, {0, h}}).end();
        text(slant / 2, h / 6, w - slant / 2, h);
    } else if (name == "hexagon" || name == "flowChartPreparation") {
        const double cut = name == "hexagon" ? ss * share("adj", 0.25, 0, 0.5 * w / std::max(ss, 1.0)) : w / 5;
        polygon({{cut, 0}, {w - cut, 0}, {w, h / 2}, {w - cut, h}, {cut, h}, {0, h / 2}}).end();
        text(cut / 2, h / 8, w - cut / 2, h * 7 / 8);
    } else if (name == "octagon") {
        const double c = ss * share("adj", 0.29289, 0, 0.5);
        polygon({{c, 0}, {w - c, 0}, {w, c}, {w, h - c}, {w - c, h}, {c, h}, {0, h - c}, {0, c}}).end();
        text(c / 2, c / 2, w - c / 2, h - c / 2);
    } else if (name == "pentagon") {
        const double side = std::sin(std::numbers::pi / 10) * 0.5 * 1.10557,
                     foot = 0.5 * std::sin(std::numbers::pi / 5) * 1.05146;
        const double middle = 0.5 * 1.10557;
        polygon({{w / 2, 0},
                 {w, h * (middle - side)},
                 {w * (0.5 + foot), h},
                 {w * (0.5 - foot), h},
                 {0, h * (middle - side)}})
            .end();
        text(w * 0.2, h * 0.2, w * 0.8, h);
    } else if (name == "plus") {
        const double c = ss * share("adj", 0.25, 0, 0.5);
        polygon({{c, 0},
                 {w - c, 0},
                 {w - c, c},
                 {w, c},
                 {w, h - c},
                 {w - c, h - c},
                 {w - c, h},
                 {c, h},
                 {c, h - c},
                 {0, h - c},
                 {0, c},
                 {c, c}})
            .end();
        text(c / 2, c / 2, w - c / 2, h - c / 2);
    } else if (name.starts_with("star")) {
        static constexpr std::pair<std::string_view, double> inner[] = {
            {"star4", 0.125},    {"star5", 0.19098}, {"star6", 0.28868}, {"star7", 0.34601}, {"star8", 0.375},
            {"star10", 0.42533}, {"star12", 0.375},  {"star16", 0.375},  {"star24", 0.375},  {"star32", 0.375}};
        for (const auto& [known, ratio] : inner) {
            if (known == name)
                star(std::stoi(name.substr(4)), ratio);
        }
        return !outline().paths.empty();
    } else {
        return false;
    }
    return true;
}

/// Drawn to the right and then turned; its head is as long as the second adjustment says.
void Preset::arrow(int quarterTurns, bool bothEnds, bool notched)
{
    const bool upright = quarterTurns % 2;
    const double length = upright ? h : w, width = upright ? w : h, middle = width / 2;
    const double half = width * share("adj1", 0.5, 0, 1) / 2;
    const double head = std::min(ss * share("adj2", 0.5, 0, 10), bothEnds ? length / 2 : length);
    const double notch = notched && width > 0 ? head * half / (width / 2) : 0;
    QPolygonF points;
    points << QPointF(length, middle) << QPointF(length - head, width) << QPointF(length - head, middle + half);
    if (bothEnds)
        points << QPointF(head, middle + half) << QPointF(head, width) << QPointF(0, middle) << QPointF(head, 0)
               << QPointF(head, middle - half);
    else
        points << QPointF(0, middle + half) << QPointF(notch, middle) << QPointF(0, middle - half);
    points << QPointF(length - head, middle - half) << QPointF(length - head, 0);
    QPainterPath path;
    path.addPolygon(points);
    path.closeSubpath();
    const double tip = width > 0 ? head * half / (width / 2) : 0;
    QRectF text(QPointF(bothEnds ? head - tip : notch, middle - half), QPointF(length - head + tip, middle + half));
    QTransform turn;
    if (quarterTurns == 1)
        turn = QTransform(0, 1, 1, 0, 0, 0); // the head at the bottom
    else if (quarterTurns == 2)
        turn = QTransform(-1, 0, 0, 1, w, 0);
    else if (quarterTurns == 3)
        turn = QTransform(0, -1, 1, 0, 0, h);
    add(turn.map(path)).end();
    outline().textRect = turn.mapRect(text);
}

bool Preset::arrows(const std::string& name)
{
    static constexpr std::pair<std::string_view, int> turns[] = {
        {"rightArrow", 0}, {"downArrow", 1}, {"leftArrow", 2}, {"upArrow", 3}};
    for (const auto& [known, quarters] : turns) {
        if (known == name)
            arrow(quarters, false, false);
    }
    if (name == "leftRightArrow" || name == "upDownArrow") {
        arrow(name == "upDownArrow" ? 1 : 0, true, false);
    } else if (name == "notchedRightArrow") {
        arrow(0, false, true);
    } else if (name == "homePlate" || name == "chevron") {
        const double point = std::min(ss * share("adj", 0.5, 0, 10), w), notch = name == "chevron" ? point : 0;
        polygon({{0, 0}, {w - point, 0}, {w, h / 2}, {w - point, h}, {0, h}, {notch, h / 2}}).end();
        text(notch, 0, name == "chevron" ? w - point : w - point / 2, h);
    }
    return !outline().paths.empty();
}

/// A box with a tip that points at its place; the tip leaves the side that it is nearest to.
void Preset::callout(bool isEllipse, double radius)
{
    const QPointF center(w / 2, h / 2);
    const QPointF tip(w / 2 + w * share("adj1", -0.20833, -100, 100), h / 2 + h * share("adj2", 0.625, -100, 100));
    QPainterPath box, wedge;
    QPointF first, second;
    if (isEllipse) {
        box.addEllipse(whole());
        const double angle = std::atan2((tip.y() - center.y()) * w, (tip.x() - center.x()) * h);
        constexpr double width = std::numbers::pi * 11 / 180;
        const auto at = [&](double a) { return center + QPointF(w / 2 * std::cos(a), h / 2 * std::sin(a)); };
        first = at(angle - width);
        second = at(angle + width);
    } else {
        box.addRoundedRect(whole(), radius, radius);
        const QPointF off = tip - center;
        const bool vertical = std::abs(off.y()) * w >= std::abs(off.x()) * h;
        if (vertical) {
            const double y = off.y() > 0 ? h : 0, from = off.x() > 0 ? w * 7 / 12 : w / 6;
            first = {from, y};
            second = {from + w / 4, y};
        } else {
            const double x = off.x() > 0 ? w : 0, from = off.y() > 0 ? h * 7 / 12 : h / 6;
            first = {x, from};
            second = {x, from + h / 4};
        }
    }
    wedge.addPolygon(QPolygonF(QList<QPointF>{first, tip, second, center}));
    wedge.closeSubpath();
    add(box.united(wedge)).end();
    const double inset = isEllipse ? (1 - std::numbers::sqrt2 / 2) / 2 : 0;
    text(w * inset, h * inset, w * (1 - inset), h * (1 - inset));
}

bool Preset::callouts(const std::string& name)
{
    if (name == "wedgeRectCallout")
        callout(false, 0);
    else if (name == "wedgeRoundRectCallout")
        callout(false, ss * share("adj3", 0.16667, 0, 0.5));
    else if (name == "wedgeEllipseCallout")
        callout(true, 0);
    else
        return false;
    return true;
}

/// Two bows from the top and the bottom that meet in a point at the side.
void Preset::curlyBrace(bool left)
{
    const double r = std::min(ss * share("adj1", 0.08333, 0, 10), h / 4), middle = h * share("adj2", 0.5, 0, 1);
    const double upper = std::min(r, middle / 2), lower = std::min(r, (h - middle) / 2), half = w / 2;
    QPainterPath path(QPointF(w, 0));
    path.quadTo(half, 0, half, upper);
    path.lineTo(half, middle - upper);
    path.quadTo(half, middle, 0, middle);
    path.quadTo(half, middle, half, middle + lower);
    path.lineTo(half, h - lower);
    path.quadTo(half, h, w, h);
    add(left ? path : QTransform(-1, 0, 0, 1, w, 0).map(path)).end(Use::Lines);
}

bool Preset::brackets(const std::string& name)
{
    const bool left = name == "leftBracket" || name == "leftBrace";
    if (name == "leftBracket" || name == "rightBracket") {
        const double r = std::min(ss * share("adj", 0.08333, 0, 10), h / 2);
        QPainterPath path(QPointF(w, 0));
        path.arcTo({0, 0, 2 * w, 2 * r}, 90, 90);
        path.lineTo(0, h - r);
        path.arcTo({0, h - 2 * r, 2 * w, 2 * r}, 180, 90);
        add(left ? path : QTransform(-1, 0, 0, 1, w, 0).map(path)).end(Use::Lines);
    } else if (name == "leftBrace" || name == "rightBrace") {
        curlyBrace(left);
    } else if (name == "bracketPair") {
        const double r = ss * share("adj", 0.16667, 0, 0.5);
        QPainterPath path(QPointF(r, 0));
        path.arcTo({0, 0, 2 * r, 2 * r}, 90, 90);
        path.lineTo(0, h - r);
        path.arcTo({0, h - 2 * r, 2 * r, 2 * r}, 180, 90);
        path.addPath(QTransform(-1, 0, 0, 1, w, 0).map(path));
        add(path).end(Use::Lines);
    } else {
        return false;
    }
    return true;
}

/// Level and upright parts by turns, the first and the last to the sides of the shape where it says nothing else.
QList<QPointF> Preset::bends(int parts) const
{
    const double x = w * share("adj1", 0.5, -100, 100), y = h * share("adj2", 0.5, -100, 100);
    switch (parts) {
    case 2:
        return {{0, 0}, {w, 0}, {w, h}};
    case 3:
        return {{0, 0}, {x, 0}, {x, h}, {w, h}};
    case 4:
        return {{0, 0}, {x, 0}, {x, y}, {w, y}, {w, h}};
    case 5: {
        const double last = w * share("adj3", 0.5, -100, 100);
        return {{0, 0}, {x, 0}, {x, y}, {last, y}, {last, h}, {w, h}};
    }
    default:
        return {{0, 0}, {w, h}};
    }
}

bool Preset::connectors(const std::string& name)
{
    const bool curved = name.starts_with("curvedConnector"), bent = name.starts_with("bentConnector");
    const int parts = curved || bent ? name.back() - '0' : 1;
    if ((curved || bent) ? parts < 2 || parts > 5 : name != "line" && name != "straightConnector1")
        return false;
    const QList<QPointF> points = bends(parts);
    QPainterPath path(points.front());
    for (qsizetype i = 1; i < points.size(); ++i) {
        if (!curved) {
            path.lineTo(points[i]);
        } else if (i + 1 < points.size()) {
            // Around a bend, between the middles of the parts that meet in it.
            const bool isLast = i + 2 == points.size();
            const QPointF from = path.currentPosition(), to = isLast ? points[i + 1] : (points[i] + points[i + 1]) / 2;
            path.cubicTo((from + points[i]) / 2, (points[i] + to) / 2, to);
        }
    }
    add(path).end(Use::Lines);
    return true;
}

bool Preset::flowCharts(const std::string& name)
{
    if (name == "flowChartTerminator") {
        QPainterPath path;
        path.addRoundedRect(whole(), std::min(w / 6, h / 2), h / 2);
        add(path).end();
    } else if (name == "flowChartAlternateProcess") {
        rounded("adj", 0.16667);
    } else if (name == "flowChartMerge") {
        polygon({{0, 0}, {w, 0}, {w / 2, h}}).end();
        text(w / 4, 0, w * 3 / 4, h / 2);
    } else if (name == "flowChartOffpageConnector") {
        polygon({{0, 0}, {w, 0}, {w, h * 4 / 5}, {w / 2, h}, {0, h * 4 / 5}}).end();
    } else if (name == "flowChartManualInput") {
        polygon({{0, h / 5}, {w, 0}, {w, h}, {0, h}}).end();
    } else if (name == "flowChartManualOperation") {
        polygon({{0, 0}, {w, 0}, {w * 4 / 5, h}, {w / 5, h}}).end();
    } else if (name == "flowChartPredefinedProcess") {
        polygon({{0, 0}, {w, 0}, {w, h}, {0, h}}).end();
        QPainterPath lines(QPointF(w / 8, 0));
        lines.lineTo(w / 8, h);
        lines.moveTo(w * 7 / 8, 0);
        lines.lineTo(w * 7 / 8, h);
        add(lines).end(Use::Lines);
        text(w / 8, 0, w * 7 / 8, h);
    } else if (name == "flowChartDocument") {
        QPainterPath path(QPointF(0, 0));
        path.lineTo(w, 0);
        path.lineTo(w, h * 0.8);
        path.cubicTo(w / 2, h * 0.8, w / 2, h * 1.13, 0, h * 0.93);
        path.closeSubpath();
        add(path).end();
        text(0, 0, w, h * 0.8);
    } else if (name == "flowChartDelay") {
        QPainterPath path(QPointF(0, 0));
        path.lineTo(w / 2, 0);
        path.arcTo(whole(), 90, -180);
        path.lineTo(0, h);
        path.closeSubpath();
        add(path).end();
    } else {
        return false;
    }
    return true;
}

} // namespace

std::optional<ShapeOutline> presetOutline(const std::string& name, const QSizeF& size, const GuideValues& values)
{
    for (const std::span<const PresetRow> rows :
         {basicPresets(), symbolPresets(), arrowPresets(), calloutPresets(), bannerPresets(), flowChartPresets()}) {
        for (const PresetRow& row : rows) {
            if (row.name != name)
                continue;
            PresetPen pen(size, values);
            row.draw(pen);
            return std::move(pen.outline());
        }
    }
    return Preset(size, values).make(name);
}

} // namespace lumivane::engine
