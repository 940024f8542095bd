#include "engine/read/xlsx/DrawingReader.h"

#include "engine/read/package/AttributeValues.h"
#include "engine/read/package/ReadError.h"
#include "engine/read/package/SmallParts.h"
#include "engine/read/xlsx/ControlReader.h"
#include "engine/read/xlsx/ShapeReader.h"

#include <algorithm>

namespace lumivane::engine {

using namespace Qt::StringLiterals;

namespace {

qint64 wholeNumber(std::string_view text)
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
        return wholeNumber(std::string_view(childNamed(node, name).child_value()));
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
    drawing.anchorKind = localName(anchor) == "oneCellAnchor"    ? AnchorKind::OneCell
                         : localName(anchor) == "absoluteAnchor" ? AnchorKind::Absolute
                                                                 : AnchorKind::TwoCells;
    if (const pugi::xml_node position = childNamed(anchor, "pos")) {
        drawing.startX = wholeNumber(attributeOf(position, "x"));
        drawing.startY = wholeNumber(attributeOf(position, "y"));
    }
    if (const pugi::xml_node to = childNamed(anchor, "to")) {
        const Corner end = readCorner(to);
        drawing.anchor.lastRow = std::max(start.cell.row, end.cell.row);
        drawing.anchor.lastColumn = std::max(start.cell.column, end.cell.column);
        drawing.endX = end.x;
        drawing.endY = end.y;
    } else if (const pugi::xml_node size = childNamed(anchor, "ext")) {
        drawing.width = std::max<qint64>(0, wholeNumber(attributeOf(size, "cx")));
        drawing.height = std::max<qint64>(0, wholeNumber(attributeOf(size, "cy")));
    }
}

class AnchorReader
{
public:
    AnchorReader(const Package& package, const Package::Entry& entry, const DrawingTheme& theme, qint64 maxBytes)
        : m_package(package), m_theme(theme), m_relationships(readRelationships(package, entry.name)),
          m_pictures(package, maxBytes), m_looks(theme, m_relationships, m_pictures, m_budget),
          m_shapes(m_looks, m_budget)
    {
    }

    void readAll(pugi::xml_node root);
    void readControls(const Package::Entry& part);
    SheetDrawings result();

private:
    void readAnchor(pugi::xml_node anchor);
    void readChoice(pugi::xml_node node);
    void readFrame(pugi::xml_node object, DrawingContent& drawing);
    void readDiagram(std::string_view dataId, DrawingContent& drawing);
    const Package::Entry* target(std::string_view id) const;
    QString partOf(std::string_view id) const;

    const Package& m_package;
    const DrawingTheme& m_theme;
    const std::vector<Relationship> m_relationships;
    DrawingBudget m_budget;
    DrawingPictures m_pictures;
    LookReader m_looks;
    ShapeReader m_shapes;
    std::vector<DrawingContent> m_drawings;
    std::vector<int> m_numbers; ///< of their shapes; 0 where a file gives none
};

void AnchorReader::readAll(pugi::xml_node root)
{
    for (const pugi::xml_node child : root.children()) {
        if (localName(child) == "AlternateContent")
            readChoice(child);
        else
            readAnchor(child);
    }
}

void AnchorReader::readControls(const Package::Entry& part)
{
    std::map<int, DrawingContent*> controls;
    for (size_t i = 0; i < m_drawings.size(); ++i) {
        if (m_drawings[i].kind == DrawingKind::Control)
            controls[m_numbers[i]] = &m_drawings[i];
    }
    if (controls.empty())
        return;
    try {
        ControlReader(m_package, part, m_pictures, m_budget).read(controls);
    } catch (const Fault&) {
        // They are named as not drawn then. Such parts are often careless in their XML.
    }
}

SheetDrawings AnchorReader::result()
{
    return {std::move(m_drawings), m_pictures.bytes(), m_budget.complete()};
}

void AnchorReader::readChoice(pugi::xml_node node)
{
    const size_t before = m_drawings.size();
    for (const pugi::xml_node choice : node.children()) {
        if (!understood(choice))
            continue;
        for (const pugi::xml_node anchor : choice.children())
            readAnchor(anchor);
        if (m_drawings.size() > before)
            break;
    }
    // Controls are offered as shapes to those who know them, hidden, and not at all to others.
    for (size_t i = before; i < m_drawings.size(); ++i) {
        if (m_drawings[i].kind == DrawingKind::Shape && m_drawings[i].hidden) {
            m_drawings[i].kind = DrawingKind::Control;
            m_drawings[i].hidden = false;
            m_drawings[i].shape.hidden = false;
            m_drawings[i].shape.kind = ShapeContent::Kind::Undrawn;
        }
    }
}

void AnchorReader::readAnchor(pugi::xml_node anchor)
{
    pugi::xml_node object;
    for (const pugi::xml_node child : anchor.children()) {
        if (!object)
            object = objectAt(child);
    }
    if (!object || !m_budget.objects.takeOne())
        return;
    DrawingContent drawing;
    drawing.name = textFrom(attributeOf(nameElement(object), "name"));
    readPlace(anchor, drawing);
    drawing.shape = m_shapes.read(object);
    drawing.hidden = drawing.shape.hidden;
    const std::string_view kind = localName(object);
    if (kind == "pic") {
        drawing.kind = DrawingKind::Picture;
        drawing.part = partOf(attributeOf(childNamed(childNamed(object, "blipFill"), "blip"), "embed"));
    } else if (kind == "grpSp") {
        drawing.kind = DrawingKind::Group;
    } else if (kind == "graphicFrame") {
        readFrame(object, drawing);
    }
    m_drawings.push_back(std::move(drawing));
    m_numbers.push_back(integerFrom(attributeOf(nameElement(object), "id")).value_or(0));
}

void AnchorReader::readFrame(pugi::xml_node object, DrawingContent& drawing)
{
    const pugi::xml_node data = childNamed(childNamed(object, "graphic"), "graphicData");
    if (const pugi::xml_node chart = childNamed(data, "chart")) {
        drawing.kind = DrawingKind::Chart;
        drawing.part = partOf(attributeOf(chart, "id"));
    } else if (const pugi::xml_node ids = childNamed(data, "relIds")) {
        drawing.kind = DrawingKind::Diagram;
        readDiagram(attributeOf(ids, "dm"), drawing);
    }
}

/// The shapes of a diagram as they were last laid out lie in a part of their own, which its data name.
void AnchorReader::readDiagram(std::string_view dataId, DrawingContent& drawing)
{
    const Package::Entry* data = target(dataId);
    if (!data)
        return;
    pugi::xml_document document;
    readSmallPart(m_package, *data, document);
    for (const pugi::xml_node extension : childrenNamed(childNamed(document.document_element(), "extLst"), "ext")) {
        const Package::Entry* shapes = target(attributeOf(childNamed(extension, "dataModelExt"), "relId"));
        if (!shapes)
            continue;
        pugi::xml_document drawn;
        readSmallPart(m_package, *shapes, drawn);
        const std::vector<Relationship> relationships = readRelationships(m_package, shapes->name);
        LookReader looks(m_theme, relationships, m_pictures, m_budget);
        const QRectF place = drawing.shape.place;
        drawing.shape = ShapeReader(looks, m_budget).readTree(childNamed(drawn.document_element(), "spTree"));
        drawing.shape.place = place;
        drawing.shape.childPlace = QRectF(QPointF(0, 0), place.size());
        return;
    }
}

const Package::Entry* AnchorReader::target(std::string_view id) const
{
    const Relationship* found = relationshipById(m_relationships, id);
    return found && !found->external ? m_package.find(found->target) : nullptr;
}

QString AnchorReader::partOf(std::string_view id) const
{
    const Relationship* found = relationshipById(m_relationships, id);
    return found && !found->external ? textFrom(found->target) : QString();
}

} // namespace

SheetDrawings readDrawings(const Package& package, const Package::Entry& entry, const Palette& palette,
                           const Package::Entry* theme, const Package::Entry* controls, qint64 maxBytes)
{
    pugi::xml_document document;
    readSmallPart(package, entry, document);
    if (localName(document.document_element()) != "wsDr")
        throw Fault{u"entry \"%1\" holds no drawings"_s.arg(textFrom(entry.name))};
    const DrawingTheme looks(palette, package, theme);
    AnchorReader reader(package, entry, looks, maxBytes);
    reader.readAll(document.document_element());
    if (controls)
        reader.readControls(*controls);
    return reader.result();
}

} // namespace lumivane::engine
