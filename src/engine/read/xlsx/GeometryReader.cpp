#include "engine/read/xlsx/GeometryReader.h"

#include "engine/read/package/AttributeValues.h"
#include "engine/read/package/SmallParts.h"
#include "engine/read/xlsx/DrawingTheme.h"

namespace lumivane::engine {
namespace {

constexpr size_t longestName = 64, longestFormula = 256;

std::string brief(std::string_view text, size_t longest)
{
    return std::string(text.substr(0, longest));
}

std::vector<Guide> readGuides(pugi::xml_node list, DrawingBudget& budget)
{
    std::vector<Guide> guides;
    for (const pugi::xml_node node : childrenNamed(list, "gd")) {
        if (budget.guides.takeOne())
            guides.push_back(
                {brief(attributeOf(node, "name"), longestName), brief(attributeOf(node, "fmla"), longestFormula)});
    }
    return guides;
}

std::optional<PathStep::Kind> stepKind(std::string_view name)
{
    using enum PathStep::Kind;
    static constexpr std::pair<std::string_view, PathStep::Kind> kinds[] = {
        {"moveTo", Move},         {"lnTo", Line},        {"arcTo", Arc},
        {"quadBezTo", Quadratic}, {"cubicBezTo", Cubic}, {"close", Close}};
    for (const auto& [known, kind] : kinds) {
        if (known == name)
            return kind;
    }
    return std::nullopt;
}

size_t pointsOf(PathStep::Kind kind)
{
    switch (kind) {
    case PathStep::Kind::Move:
    case PathStep::Kind::Line:
        return 1;
    case PathStep::Kind::Quadratic:
        return 2;
    case PathStep::Kind::Cubic:
        return 3;
    default:
        return 0;
    }
}

/// A step with all its arguments; none where some are missing.
std::optional<PathStep> readStep(pugi::xml_node node)
{
    const std::optional<PathStep::Kind> kind = stepKind(localName(node));
    if (!kind)
        return std::nullopt;
    PathStep step{*kind, {}};
    if (*kind == PathStep::Kind::Arc) {
        for (const std::string_view name : {"wR", "hR", "stAng", "swAng"})
            step.arguments.push_back(brief(attributeOf(node, name), longestName));
        return step;
    }
    const size_t wanted = pointsOf(*kind);
    for (const pugi::xml_node point : node.children()) {
        if (localName(point) != "pt" || step.arguments.size() >= 2 * wanted)
            continue;
        step.arguments.push_back(brief(attributeOf(point, "x"), longestName));
        step.arguments.push_back(brief(attributeOf(point, "y"), longestName));
    }
    return step.arguments.size() == 2 * wanted ? std::optional(step) : std::nullopt;
}

ShapePath readPath(pugi::xml_node node, DrawingBudget& budget)
{
    ShapePath path;
    path.width = drawingNumber(node, "w");
    path.height = drawingNumber(node, "h");
    path.filled = attributeOf(node, "fill") != "none";
    path.stroked = flagFrom(attributeOf(node, "stroke"), true);
    for (const pugi::xml_node child : node.children()) {
        std::optional<PathStep> step = readStep(child);
        if (step && budget.pathSteps.takeOne())
            path.steps.push_back(std::move(*step));
    }
    return path;
}

} // namespace

ShapeGeometry readGeometry(pugi::xml_node properties, DrawingBudget& budget)
{
    ShapeGeometry geometry;
    if (const pugi::xml_node preset = childNamed(properties, "prstGeom")) {
        geometry.preset = brief(attributeOf(preset, "prst"), longestName);
        geometry.adjusts = readGuides(childNamed(preset, "avLst"), budget);
    } else if (const pugi::xml_node own = childNamed(properties, "custGeom")) {
        geometry.adjusts = readGuides(childNamed(own, "avLst"), budget);
        geometry.guides = readGuides(childNamed(own, "gdLst"), budget);
        for (const pugi::xml_node path : childrenNamed(childNamed(own, "pathLst"), "path")) {
            if (budget.pathSteps.takeOne())
                geometry.paths.push_back(readPath(path, budget));
        }
        if (const pugi::xml_node rect = childNamed(own, "rect")) {
            for (const std::string_view side : {"l", "t", "r", "b"})
                geometry.textRect.push_back(brief(attributeOf(rect, side), longestName));
        }
    } else {
        geometry.preset = "rect";
    }
    return geometry;
}

} // namespace lumivane::engine
