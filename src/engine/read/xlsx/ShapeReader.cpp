#include "engine/read/xlsx/ShapeReader.h"

#include "engine/read/package/AttributeValues.h"
#include "engine/read/xlsx/GeometryReader.h"
#include "engine/read/xlsx/ShapeTextReader.h"

#include <algorithm>

namespace lumivane::engine {
namespace {

} // namespace

/// By the prefixes of its names. Newer charts ("cx1") come with a mere text in their place, so they are taken as
/// charts.
bool understood(pugi::xml_node choice)
{
    std::string_view wanted = attributeOf(choice, "Requires");
    while (!wanted.empty()) {
        const size_t end = std::min(wanted.find(' '), wanted.size());
        const std::string_view prefix = wanted.substr(0, end);
        if (!prefix.empty() && prefix != "a14" && prefix != "a16" && prefix != "c14" && prefix != "xdr14" &&
            prefix != "asvg" && !prefix.starts_with("cx"))
            return false;
        wanted.remove_prefix(std::min(end + 1, wanted.size()));
    }
    return true;
}

namespace {

QRectF rectOf(pugi::xml_node frame, std::string_view corner, std::string_view size)
{
    const pugi::xml_node offset = childNamed(frame, corner), extent = childNamed(frame, size);
    return {drawingNumber(offset, "x"), drawingNumber(offset, "y"), std::max(drawingNumber(extent, "cx"), 0.0),
            std::max(drawingNumber(extent, "cy"), 0.0)};
}

void readFrame(pugi::xml_node frame, ShapeContent& shape)
{
    shape.place = rectOf(frame, "off", "ext");
    shape.childPlace = rectOf(frame, "chOff", "chExt");
    shape.rotation = drawingAngle(frame, "rot");
    shape.flippedAcross = flagFrom(attributeOf(frame, "flipH"), false);
    shape.flippedDown = flagFrom(attributeOf(frame, "flipV"), false);
}

int numberOf(pugi::xml_node reference)
{
    return integerFrom(attributeOf(reference, "idx")).value_or(0);
}

} // namespace

pugi::xml_node objectAt(pugi::xml_node node, int depth)
{
    constexpr int maxDepth = 8;
    static constexpr std::string_view kinds[] = {"sp", "grpSp", "graphicFrame", "cxnSp", "pic", "contentPart"};
    if (std::find(std::begin(kinds), std::end(kinds), localName(node)) != std::end(kinds))
        return node;
    if (localName(node) != "AlternateContent" || depth >= maxDepth)
        return {};
    for (const pugi::xml_node choice : node.children()) {
        if (!understood(choice))
            continue;
        for (const pugi::xml_node child : choice.children()) {
            if (const pugi::xml_node object = objectAt(child, depth + 1))
                return object;
        }
    }
    return {};
}

pugi::xml_node nameElement(pugi::xml_node object)
{
    for (const pugi::xml_node child : object.children()) {
        if (const pugi::xml_node found = childNamed(child, "cNvPr"))
            return found;
    }
    return {};
}

ShapeContent ShapeReader::read(pugi::xml_node object)
{
    return read(object, 0, nullptr);
}

ShapeContent ShapeReader::readTree(pugi::xml_node tree)
{
    ShapeContent shape;
    readGroup(tree, 0, nullptr, shape);
    return shape;
}

ShapeContent ShapeReader::read(pugi::xml_node object, int nesting, const ShapeFill* groupFill)
{
    ShapeContent shape;
    const std::string_view kind = localName(object);
    shape.hidden = flagFrom(attributeOf(nameElement(object), "hidden"), false);
    if (kind == "sp" || kind == "cxnSp")
        readShape(object, groupFill, shape);
    else if (kind == "pic")
        readPicture(object, shape);
    else if (kind == "grpSp" && nesting < DrawingBudget::maxNesting)
        readGroup(object, nesting, groupFill, shape);
    else
        readFrame(childNamed(object, "xfrm"), shape);
    return shape;
}

void ShapeReader::readShape(pugi::xml_node object, const ShapeFill* groupFill, ShapeContent& shape)
{
    shape.kind = ShapeContent::Kind::Shape;
    const pugi::xml_node properties = childNamed(object, "spPr");
    readFrame(childNamed(properties, "xfrm"), shape);
    shape.geometry = readGeometry(properties, m_budget);
    addStyle(childNamed(object, "style"), shape);
    if (std::optional<ShapeFill> fill = m_looks.fillIn(properties, std::nullopt, groupFill))
        shape.fill = std::move(*fill);
    m_looks.addLine(childNamed(properties, "ln"), std::nullopt, shape.line);
    m_looks.addShadow(properties, std::nullopt, shape.shadow);
    readText(object, shape);
}

void ShapeReader::readPicture(pugi::xml_node object, ShapeContent& shape)
{
    shape.kind = ShapeContent::Kind::Picture;
    const pugi::xml_node properties = childNamed(object, "spPr");
    readFrame(childNamed(properties, "xfrm"), shape);
    shape.geometry = readGeometry(properties, m_budget);
    addStyle(childNamed(object, "style"), shape);
    shape.fill = {};
    shape.fill.kind = FillKind::Picture;
    shape.fill.picture = m_looks.picture(childNamed(object, "blipFill"));
    m_looks.addLine(childNamed(properties, "ln"), std::nullopt, shape.line);
    m_looks.addShadow(properties, std::nullopt, shape.shadow);
}

void ShapeReader::readGroup(pugi::xml_node object, int nesting, const ShapeFill* groupFill, ShapeContent& shape)
{
    shape.kind = ShapeContent::Kind::Group;
    const pugi::xml_node properties = childNamed(object, "grpSpPr");
    readFrame(childNamed(properties, "xfrm"), shape);
    const std::optional<ShapeFill> own = m_looks.fillIn(properties, std::nullopt, groupFill);
    for (const pugi::xml_node child : object.children()) {
        const pugi::xml_node drawn = objectAt(child);
        if (drawn && m_budget.objects.takeOne())
            shape.children.push_back(read(drawn, nesting + 1, own ? &*own : groupFill));
    }
}

/// The looks that the theme gives by number, in a colour that the shape names.
void ShapeReader::addStyle(pugi::xml_node style, ShapeContent& shape)
{
    const DrawingTheme& theme = m_looks.theme();
    const pugi::xml_node fill = childNamed(style, "fillRef"), line = childNamed(style, "lnRef"),
                         effect = childNamed(style, "effectRef");
    if (numberOf(fill) > 0)
        shape.fill =
            m_looks.fill(theme.fill(numberOf(fill)), theme.color(fill, std::nullopt), nullptr).value_or(ShapeFill{});
    if (numberOf(line) > 0)
        m_looks.addLine(theme.line(numberOf(line)), theme.color(line, std::nullopt), shape.line);
    if (numberOf(effect) > 0)
        m_looks.addShadow(theme.effect(numberOf(effect)), theme.color(effect, std::nullopt), shape.shadow);
}

void ShapeReader::readText(pugi::xml_node object, ShapeContent& shape)
{
    const DrawingTheme& theme = m_looks.theme();
    const pugi::xml_node font = childNamed(childNamed(object, "style"), "fontRef");
    const QRgb color = theme.color(font, std::nullopt).value_or(m_looks.theme().textColor());
    const QString family = theme.family(attributeOf(font, "idx") == "major" ? "+mj-lt" : "+mn-lt");
    const pugi::xml_node body = childNamed(object, "txBody");
    shape.text = readShapeText(body, theme, color, family, m_budget);
    if (flagFrom(attributeOf(childNamed(body, "bodyPr"), "upright"), false))
        shape.text.ownRotation -= shape.rotation;
}

} // namespace lumivane::engine
