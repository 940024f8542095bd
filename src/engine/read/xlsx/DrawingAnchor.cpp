#include "engine/read/xlsx/DrawingAnchor.h"

#include "engine/read/package/AttributeValues.h"
#include "engine/read/package/SmallParts.h"

#include <algorithm>
#include <array>

namespace lumivane::engine {
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

} // namespace

void readAnchor(pugi::xml_node anchor, DrawingContent& drawing)
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

bool readPixelAnchor(std::string_view text, DrawingContent& drawing)
{
    std::array<int, 8> numbers;
    for (int& number : numbers) {
        const size_t comma = std::min(text.find(','), text.size());
        const std::optional<int> found = integerFrom(text.substr(0, comma));
        if (!found)
            return false;
        number = *found;
        text.remove_prefix(std::min(comma + 1, text.size()));
    }
    const auto& [column, x, row, y, lastColumn, endX, lastRow, endY] = numbers;
    const auto within = [](int index, int most) { return std::clamp(index, 0, most - 1) + 1; };
    drawing.anchor.firstRow = within(row, maxRow);
    drawing.anchor.firstColumn = within(column, maxColumn);
    drawing.anchor.lastRow = std::max(drawing.anchor.firstRow, within(lastRow, maxRow));
    drawing.anchor.lastColumn = std::max(drawing.anchor.firstColumn, within(lastColumn, maxColumn));
    drawing.startX = x * emuPerPixel;
    drawing.startY = y * emuPerPixel;
    drawing.endX = endX * emuPerPixel;
    drawing.endY = endY * emuPerPixel;
    return true;
}

} // namespace lumivane::engine
