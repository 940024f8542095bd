#include "engine/read/xlsx/SheetObjects.h"

#include "engine/read/package/AttributeValues.h"
#include "engine/read/package/SmallParts.h"
#include "engine/read/xlsx/DrawingAnchor.h"

#include <algorithm>

namespace lumivane::engine {
namespace {

constexpr size_t maxObjects = 10000, longestText = 255;

std::string brief(std::string_view text)
{
    return std::string(text.substr(0, longestText));
}

void readObject(pugi::xml_node node, std::vector<SheetObject>& objects)
{
    const bool isControl = localName(node) == "control";
    const int shape = integerFrom(attributeOf(node, "shapeId")).value_or(0);
    const auto isSame = [shape](const SheetObject& known) { return known.shape == shape; };
    if (objects.size() >= maxObjects || std::any_of(objects.begin(), objects.end(), isSame))
        return;
    const pugi::xml_node look = childNamed(node, isControl ? "controlPr" : "objectPr");
    SheetObject& object = objects.emplace_back();
    object.shape = shape;
    object.name = brief(attributeOf(node, "name"));
    if (isControl)
        object.properties = brief(attributeOf(node, "id"));
    else
        object.program = brief(attributeOf(node, "progId"));
    object.preview = brief(attributeOf(look, "id"));
    if (const pugi::xml_node anchor = childNamed(look, "anchor")) {
        readAnchor(anchor, object.place);
        object.hasPlace = true;
    }
}

void readList(pugi::xml_node list, std::vector<SheetObject>& objects, int depth)
{
    constexpr int maxDepth = 8;
    for (const pugi::xml_node child : list.children()) {
        const std::string_view name = localName(child);
        if (name == "control" || name == "oleObject")
            readObject(child, objects);
        else if (depth < maxDepth && (name == "AlternateContent" || name == "Choice" || name == "Fallback" ||
                                      name == "controls" || name == "oleObjects"))
            readList(child, objects, depth + 1); // the first form says most
    }
}

} // namespace

void readSheetObjects(pugi::xml_node list, std::vector<SheetObject>& objects)
{
    readList(list, objects, 0);
}

void readControlProperties(pugi::xml_node properties, ControlContent& control)
{
    const auto number = [properties](const char* name, int& value) {
        value = integerFrom(attributeOf(properties, name)).value_or(value);
    };
    const std::string_view checked = attributeOf(properties, "checked");
    if (!checked.empty())
        control.state = checked == "Checked" ? 1 : checked == "Mixed" ? 2 : 0;
    if (const std::string_view cells = attributeOf(properties, "fmlaRange"); !cells.empty())
        control.entries = textFrom(cells.substr(0, longestText));
    number("sel", control.chosen);
    number("val", control.value);
    number("min", control.least);
    number("max", control.most);
    number("page", control.page);
    control.level = flagFrom(attributeOf(properties, "horiz"), control.level);
}

} // namespace lumivane::engine
