#include "engine/read/xlsx/DrawingReader.h"

#include "engine/read/package/AttributeValues.h"
#include "engine/read/package/ReadError.h"
#include "engine/read/package/SmallParts.h"
#include "engine/read/xlsx/ControlReader.h"
#include "engine/read/xlsx/DrawingAnchor.h"
#include "engine/read/xlsx/ShapeReader.h"

#include <algorithm>
#include <map>
#include <set>

namespace lumivane::engine {

using namespace Qt::StringLiterals;

namespace {

class AnchorReader
{
public:
    AnchorReader(const Package& package, const Package::Entry* entry, const DrawingTheme& theme, qint64 maxBytes)
        : m_package(package), m_theme(theme),
          m_relationships(entry ? readRelationships(package, entry->name) : std::vector<Relationship>()),
          m_pictures(package, maxBytes), m_looks(theme, m_relationships, m_pictures, m_budget),
          m_shapes(m_looks, m_budget)
    {
    }

    void readAll(pugi::xml_node root);
    void readObjects(const DrawingParts& parts);
    SheetDrawings result();

private:
    void add(DrawingContent drawing, int number);
    void readAnchor(pugi::xml_node anchor);
    void readControlParts(const DrawingParts& parts, const std::map<int, size_t>& byNumber);
    void readProperties(const Package::Entry* part, ControlContent& control);
    void readPreview(const DrawingParts& parts, const SheetObject& object, DrawingContent& drawing);
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

void AnchorReader::add(DrawingContent drawing, int number)
{
    m_drawings.push_back(std::move(drawing));
    m_numbers.push_back(number);
}

/// Controls and objects: most lie among the drawings as hidden shapes, those of older files in the older part alone.
void AnchorReader::readObjects(const DrawingParts& parts)
{
    std::map<int, size_t> byNumber;
    for (size_t i = 0; i < m_drawings.size(); ++i) {
        if (m_drawings[i].kind == DrawingKind::Control)
            byNumber[m_numbers[i]] = i;
    }
    std::set<int> listed;
    for (const SheetObject& object : parts.objects)
        listed.insert(object.shape);
    std::map<QString, size_t> byName; // of those whose number is not listed
    for (const auto& [number, index] : byNumber) {
        if (!listed.contains(number))
            byName.emplace(m_drawings[index].name, index);
    }
    for (const SheetObject& object : parts.objects) {
        if (byNumber.contains(object.shape))
            continue;
        // Not every writer gives both the same number.
        if (const auto twin = byName.find(textFrom(object.name)); !object.name.empty() && twin != byName.end()) {
            byNumber.emplace(object.shape, twin->second);
        } else if (object.hasPlace && m_budget.objects.takeOne()) {
            byNumber.emplace(object.shape, m_drawings.size());
            add(object.place, object.shape);
        }
    }
    if (parts.olderRoot) {
        try {
            ControlReader reader(m_package, *parts.older, m_pictures, m_budget);
            for (auto& [number, drawing] : reader.read(parts.olderRoot, m_drawings, byNumber)) {
                byNumber[number] = m_drawings.size();
                add(std::move(drawing), number);
            }
        } catch (const Fault&) {
            // They are named as not drawn then.
        }
    }
    readControlParts(parts, byNumber);
}

void AnchorReader::readControlParts(const DrawingParts& parts, const std::map<int, size_t>& byNumber)
{
    for (const SheetObject& object : parts.objects) {
        const auto found = byNumber.find(object.shape);
        if (found == byNumber.end())
            continue;
        DrawingContent& drawing = m_drawings[found->second];
        drawing.kind = object.program.empty() ? DrawingKind::Control : DrawingKind::Object;
        if (drawing.name.isEmpty())
            drawing.name = textFrom(object.name);
        if (drawing.name.isEmpty())
            drawing.name = u"Object %1"_s.arg(object.shape % 1024);
        if (drawing.kind == DrawingKind::Object) {
            readPreview(parts, object, drawing);
            continue;
        }
        const Relationship* properties = relationshipById(parts.relationships, object.properties);
        if (properties && !properties->external && properties->type == "ctrlProp" &&
            drawing.shape.kind == ShapeContent::Kind::Control)
            readProperties(m_package.find(properties->target), drawing.shape.control);
    }
}

/// What a newer file says of a control beside the older part.
void AnchorReader::readProperties(const Package::Entry* part, ControlContent& control)
{
    constexpr quint64 mostBytes = 1 << 16;
    if (!part || part->size > mostBytes)
        return;
    try {
        pugi::xml_document document;
        readSmallPart(m_package, *part, document);
        readControlProperties(document.document_element(), control);
    } catch (const Fault&) {
        // The older part has said much the same.
    }
}

/// The picture that an object has left of itself; without one a frame with the name of its program.
void AnchorReader::readPreview(const DrawingParts& parts, const SheetObject& object, DrawingContent& drawing)
{
    ShapeContent& shape = drawing.shape;
    if (const auto picture = m_pictures.find(parts.relationships, object.preview)) {
        showPicture(picture, shape);
    } else if (shape.kind != ShapeContent::Kind::Picture && m_budget.paragraphs.takeOne()) {
        shape = {};
        shape.kind = ShapeContent::Kind::Shape;
        shape.geometry.preset = "rect";
        shape.fill.kind = FillKind::Solid;
        shape.fill.color = 0xffffffff;
        shape.line.drawn = true;
        shape.line.color = 0xff808080;
        shape.text.anchor = TextAnchor::Middle;
        FontStyle font;
        font.points = 9;
        shape.text.paragraphs.push_back({});
        shape.text.paragraphs.back().align = TextAlign::Center;
        shape.text.paragraphs.back().runs.push_back({textFrom(object.program), font});
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
    engine::readAnchor(anchor, drawing);
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
    add(std::move(drawing), integerFrom(attributeOf(nameElement(object), "id")).value_or(0));
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

SheetDrawings readDrawings(const Package& package, const DrawingParts& parts, const Palette& palette, qint64 maxBytes)
{
    const DrawingTheme looks(palette, package, parts.theme);
    AnchorReader reader(package, parts.drawings, looks, maxBytes);
    if (parts.drawings) {
        pugi::xml_document document;
        readSmallPart(package, *parts.drawings, document);
        if (localName(document.document_element()) != "wsDr")
            throw Fault{u"entry \"%1\" holds no drawings"_s.arg(textFrom(parts.drawings->name))};
        reader.readAll(document.document_element());
    }
    reader.readObjects(parts);
    return reader.result();
}

} // namespace lumivane::engine
