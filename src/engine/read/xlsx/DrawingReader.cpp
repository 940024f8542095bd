#include "engine/read/xlsx/DrawingReader.h"

#include "engine/read/package/AttributeValues.h"
#include "engine/read/package/ReadError.h"
#include "engine/read/package/SmallParts.h"

#include <algorithm>

namespace lumivane::engine {

using namespace Qt::StringLiterals;

namespace {

qint64 drawingNumber(std::string_view text)
{
    return static_cast<qint64>(std::clamp(numberFrom(text).value_or(0), -1e15, 1e15));
}

struct Corner
{
    CellPlace cell{1, 1};
    qint64 x = 0, y = 0;
};

/// Stored corners count columns and rows from 0.
Corner readCorner(pugi::xml_node node)
{
    const auto value = [node](std::string_view name) {
        return drawingNumber(std::string_view(childNamed(node, name).child_value()));
    };
    Corner corner;
    corner.cell.row = static_cast<int>(std::clamp<qint64>(value("row") + 1, 1, maxRow));
    corner.cell.column = static_cast<int>(std::clamp<qint64>(value("col") + 1, 1, maxColumn));
    corner.x = value("colOff");
    corner.y = value("rowOff");
    return corner;
}

void readPlace(pugi::xml_node anchor, DrawingContent& drawing)
{
    const Corner start = readCorner(childNamed(anchor, "from"));
    drawing.anchor = CellArea::cell(start.cell.row, start.cell.column);
    drawing.startX = start.x;
    drawing.startY = start.y;
    if (const pugi::xml_node position = childNamed(anchor, "pos")) {
        drawing.startX = drawingNumber(attributeOf(position, "x"));
        drawing.startY = drawingNumber(attributeOf(position, "y"));
    }
    if (const pugi::xml_node to = childNamed(anchor, "to")) {
        const Corner end = readCorner(to);
        drawing.anchor.lastRow = std::max(start.cell.row, end.cell.row);
        drawing.anchor.lastColumn = std::max(start.cell.column, end.cell.column);
        drawing.endX = end.x;
        drawing.endY = end.y;
    } else if (const pugi::xml_node size = childNamed(anchor, "ext")) {
        drawing.width = std::max<qint64>(0, drawingNumber(attributeOf(size, "cx")));
        drawing.height = std::max<qint64>(0, drawingNumber(attributeOf(size, "cy")));
    }
}

/// The drawn object in an anchor; where the file offers a choice between a newer and an older form, the newer one.
pugi::xml_node drawnObject(pugi::xml_node anchor, int depth = 0)
{
    constexpr int maxDepth = 8;
    static constexpr std::string_view kinds[] = {"sp", "grpSp", "graphicFrame", "cxnSp", "pic", "contentPart"};
    for (const pugi::xml_node child : anchor.children()) {
        if (std::find(std::begin(kinds), std::end(kinds), localName(child)) != std::end(kinds))
            return child;
        if (localName(child) != "AlternateContent" || depth >= maxDepth)
            continue;
        for (const pugi::xml_node choice : child.children()) {
            if (const pugi::xml_node object = drawnObject(choice, depth + 1))
                return object;
        }
    }
    return {};
}

/// The element with name and visibility, in the first child of the object ("nvSpPr" and its like).
pugi::xml_node nameElement(pugi::xml_node object)
{
    for (const pugi::xml_node child : object.children()) {
        if (const pugi::xml_node found = childNamed(child, "cNvPr"))
            return found;
    }
    return {};
}

std::string_view relationshipIdOf(pugi::xml_node object, QString& kind)
{
    if (localName(object) == "pic") {
        kind = u"picture"_s;
        return attributeOf(childNamed(childNamed(object, "blipFill"), "blip"), "embed");
    }
    const pugi::xml_node data = childNamed(childNamed(object, "graphic"), "graphicData");
    if (const pugi::xml_node chart = childNamed(data, "chart")) {
        kind = u"chart"_s;
        return attributeOf(chart, "id");
    }
    kind = u"shape"_s;
    return {};
}

void readAnchor(pugi::xml_node anchor, const std::vector<Relationship>& relationships,
                std::vector<DrawingContent>& drawings)
{
    const pugi::xml_node object = drawnObject(anchor);
    if (!object)
        return;
    DrawingContent drawing;
    const pugi::xml_node named = nameElement(object);
    drawing.name = textFrom(attributeOf(named, "name"));
    drawing.hidden = flagFrom(attributeOf(named, "hidden"), false);
    readPlace(anchor, drawing);
    const std::string_view id = relationshipIdOf(object, drawing.kind);
    if (const Relationship* target = relationshipById(relationships, id); target && !target->external)
        drawing.part = textFrom(target->target);
    drawings.push_back(std::move(drawing));
}

} // namespace

std::vector<DrawingContent> readDrawings(const Package& package, const Package::Entry& entry)
{
    pugi::xml_document document;
    readSmallPart(package, entry, document);
    if (localName(document.document_element()) != "wsDr")
        throw Fault{u"entry \"%1\" holds no drawings"_s.arg(textFrom(entry.name))};
    const std::vector<Relationship> relationships = readRelationships(package, entry.name);
    std::vector<DrawingContent> drawings;
    for (const pugi::xml_node child : document.document_element().children()) {
        if (localName(child) != "AlternateContent") {
            readAnchor(child, relationships, drawings);
            continue;
        }
        // Controls are offered as shapes to those who know them, hidden, and not at all to others.
        const size_t before = drawings.size();
        for (const pugi::xml_node choice : child.children()) {
            for (const pugi::xml_node anchor : choice.children())
                readAnchor(anchor, relationships, drawings);
            if (drawings.size() > before)
                break;
        }
        for (size_t i = before; i < drawings.size(); ++i) {
            if (drawings[i].kind == u"shape"_s && drawings[i].hidden) {
                drawings[i].kind = u"control"_s;
                drawings[i].hidden = false;
            }
        }
    }
    return drawings;
}

} // namespace lumivane::engine
