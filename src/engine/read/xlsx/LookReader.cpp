#include "engine/read/xlsx/LookReader.h"

#include "engine/read/package/AttributeValues.h"

#include <algorithm>

namespace lumivane::engine {
namespace {

/// What a name stands for; `otherwise` for others.
template <class Value, size_t count>
Value named(std::string_view name, const std::pair<std::string_view, Value> (&values)[count], Value otherwise)
{
    for (const auto& [known, value] : values) {
        if (known == name)
            return value;
    }
    return otherwise;
}

LineEndStyle readLineEnd(pugi::xml_node node)
{
    static constexpr std::pair<std::string_view, LineEnd> kinds[] = {{"triangle", LineEnd::Triangle},
                                                                     {"stealth", LineEnd::Stealth},
                                                                     {"diamond", LineEnd::Diamond},
                                                                     {"oval", LineEnd::Oval},
                                                                     {"arrow", LineEnd::Arrow}};
    static constexpr std::pair<std::string_view, double> sizes[] = {{"sm", 2}, {"med", 3}, {"lg", 5}};
    return {named(attributeOf(node, "type"), kinds, LineEnd::None), named(attributeOf(node, "w"), sizes, 3.0),
            named(attributeOf(node, "len"), sizes, 3.0)};
}

Dash readDash(pugi::xml_node node)
{
    static constexpr std::pair<std::string_view, Dash> dashes[] = {
        {"dot", Dash::Dot},
        {"dash", Dash::Dash},
        {"lgDash", Dash::LongDash},
        {"dashDot", Dash::DashDot},
        {"lgDashDot", Dash::LongDashDot},
        {"lgDashDotDot", Dash::LongDashDotDot},
        {"sysDot", Dash::SystemDot},
        {"sysDash", Dash::SystemDash},
        {"sysDashDot", Dash::SystemDashDot},
        {"sysDashDotDot", Dash::SystemDashDotDot},
    };
    return named(attributeOf(node, "val"), dashes, Dash::Solid);
}

QRectF relativeRect(pugi::xml_node node)
{
    const double left = drawingShare(node, "l"), top = drawingShare(node, "t");
    return QRectF(QPointF(left, top), QPointF(1 - drawingShare(node, "r"), 1 - drawingShare(node, "b"))).normalized();
}

void readTile(pugi::xml_node node, PictureFill& fill)
{
    fill.tiled = true;
    fill.tileX = drawingNumber(node, "tx");
    fill.tileY = drawingNumber(node, "ty");
    fill.tileWidth = drawingShare(node, "sx", 1);
    fill.tileHeight = drawingShare(node, "sy", 1);
}

/// The SVG of a picture, in the extensions of its <blip>.
std::string_view outlineId(pugi::xml_node blip)
{
    for (const pugi::xml_node extension : childrenNamed(childNamed(blip, "extLst"), "ext")) {
        if (const pugi::xml_node svg = childNamed(extension, "svgBlip"))
            return attributeOf(svg, "embed");
    }
    return {};
}

} // namespace

LookReader::LookReader(const DrawingTheme& theme, const std::vector<Relationship>& relationships,
                       DrawingPictures& pictures, DrawingBudget& budget)
    : m_theme(theme), m_relationships(relationships), m_pictures(pictures), m_budget(budget)
{
}

std::optional<ShapeFill> LookReader::fillIn(pugi::xml_node parent, std::optional<QRgb> placeholder,
                                            const ShapeFill* group)
{
    for (const pugi::xml_node child : parent.children()) {
        if (std::optional<ShapeFill> found = fill(child, placeholder, group))
            return found;
    }
    return std::nullopt;
}

std::optional<ShapeFill> LookReader::fill(pugi::xml_node node, std::optional<QRgb> placeholder, const ShapeFill* group)
{
    const std::string_view kind = localName(node);
    ShapeFill fill;
    if (kind == "noFill")
        return fill;
    if (kind == "grpFill")
        return group ? *group : fill;
    if (kind == "gradFill")
        return gradient(node, placeholder);
    if (kind == "solidFill") {
        const std::optional<QRgb> color = m_theme.color(node, placeholder);
        fill.kind = color ? FillKind::Solid : FillKind::None;
        fill.color = color.value_or(0);
        return fill;
    }
    if (kind == "pattFill") {
        fill.kind = FillKind::Pattern;
        fill.pattern = attributeOf(node, "prst").substr(0, 32);
        fill.color = m_theme.color(childNamed(node, "fgClr"), placeholder).value_or(0xff000000);
        fill.backColor = m_theme.color(childNamed(node, "bgClr"), placeholder).value_or(0xffffffff);
        return fill;
    }
    if (kind == "blipFill") {
        fill.kind = FillKind::Picture;
        fill.picture = picture(node);
        return fill;
    }
    return std::nullopt;
}

ShapeFill LookReader::gradient(pugi::xml_node node, std::optional<QRgb> placeholder)
{
    ShapeFill fill;
    fill.kind = FillKind::LinearGradient;
    for (const pugi::xml_node stop : childrenNamed(childNamed(node, "gsLst"), "gs")) {
        const std::optional<QRgb> color = m_theme.color(stop, placeholder);
        if (color && m_budget.gradientStops.takeOne())
            fill.stops.push_back({std::clamp(drawingShare(stop, "pos"), 0.0, 1.0), *color});
    }
    std::stable_sort(fill.stops.begin(), fill.stops.end(),
                     [](const GradientStop& a, const GradientStop& b) { return a.position < b.position; });
    if (fill.stops.empty())
        return {};
    if (const pugi::xml_node path = childNamed(node, "path")) {
        fill.kind = FillKind::PathGradient;
        fill.round = attributeOf(path, "path") == "circle";
        if (const pugi::xml_node center = childNamed(path, "fillToRect"))
            fill.center = relativeRect(center);
    }
    const pugi::xml_node linear = childNamed(node, "lin");
    fill.angle = drawingAngle(linear, "ang");
    fill.scaled = flagFrom(attributeOf(linear, "scaled"), false);
    return fill;
}

PictureFill LookReader::picture(pugi::xml_node node)
{
    const pugi::xml_node blip = childNamed(node, "blip");
    PictureFill fill;
    fill.data = m_pictures.find(m_relationships, attributeOf(blip, "embed"));
    fill.outline = m_pictures.find(m_relationships, outlineId(blip));
    if (const pugi::xml_node faded = childNamed(blip, "alphaModFix"))
        fill.opacity = std::clamp(drawingShare(faded, "amt", 1), 0.0, 1.0);
    const pugi::xml_node cut = childNamed(node, "srcRect");
    for (const auto& [side, name] :
         {std::pair{&fill.left, "l"}, {&fill.top, "t"}, {&fill.right, "r"}, {&fill.bottom, "b"}})
        *side = std::clamp(drawingShare(cut, name), -100.0, 1.0);
    if (const pugi::xml_node tile = childNamed(node, "tile"))
        readTile(tile, fill);
    return fill;
}

void LookReader::addLine(pugi::xml_node node, std::optional<QRgb> placeholder, ShapeLine& line)
{
    if (!node)
        return;
    constexpr double maxWidth = 20116800; // 1584 points
    line.width = std::clamp(drawingNumber(node, "w", line.width), 0.0, maxWidth);
    if (const std::optional<ShapeFill> look = fillIn(node, placeholder, nullptr)) {
        line.drawn = look->kind != FillKind::None;
        // A line is drawn in one colour, whatever its fill.
        line.color = look->stops.empty() ? look->color : look->stops.front().color;
    }
    static constexpr std::pair<std::string_view, Cap> caps[] = {
        {"flat", Cap::Flat}, {"sq", Cap::Square}, {"rnd", Cap::Round}};
    line.cap = named(attributeOf(node, "cap"), caps, line.cap);
    if (const pugi::xml_node dash = childNamed(node, "prstDash"))
        line.dash = readDash(dash);
    if (childNamed(node, "bevel"))
        line.join = Join::Bevel;
    else if (childNamed(node, "miter"))
        line.join = Join::Miter;
    else if (childNamed(node, "round"))
        line.join = Join::Round;
    if (const pugi::xml_node head = childNamed(node, "headEnd"))
        line.head = readLineEnd(head);
    if (const pugi::xml_node tail = childNamed(node, "tailEnd"))
        line.tail = readLineEnd(tail);
}

void LookReader::addShadow(pugi::xml_node parent, std::optional<QRgb> placeholder, ShapeShadow& shadow) const
{
    const pugi::xml_node effects = childNamed(parent, "effectLst");
    if (!effects)
        return;
    shadow = {};
    const pugi::xml_node outer = childNamed(effects, "outerShdw");
    if (const std::optional<QRgb> color = m_theme.color(outer, placeholder)) {
        constexpr double farthest = 25400000; // 2000 points
        shadow = {true, *color, std::clamp(drawingNumber(outer, "blurRad"), 0.0, farthest),
                  std::clamp(drawingNumber(outer, "dist"), 0.0, farthest), drawingAngle(outer, "dir")};
        shadow.across = std::clamp(drawingShare(outer, "sx", 1), -10.0, 10.0);
        shadow.down = std::clamp(drawingShare(outer, "sy", 1), -10.0, 10.0);
        static constexpr std::pair<std::string_view, QPointF> points[] = {
            {"tl", {0, 0}},      {"t", {0.5, 0}}, {"tr", {1, 0}}, {"l", {0, 0.5}},
            {"ctr", {0.5, 0.5}}, {"r", {1, 0.5}}, {"bl", {0, 1}}, {"br", {1, 1}}};
        shadow.fixed = named(attributeOf(outer, "algn"), points, shadow.fixed);
    }
}

} // namespace lumivane::engine
