#pragma once

#include "engine/read/xlsx/LookReader.h"

namespace lumivane::engine {

/// Reads what lies in an anchor or a group: shapes, connectors, pictures and groups of them. Anything else becomes a
/// shape that is not drawn.
class ShapeReader
{
public:
    ShapeReader(LookReader& looks, DrawingBudget& budget) : m_looks(looks), m_budget(budget) {}

    ShapeContent read(pugi::xml_node object);
    /// The ready shapes of a diagram as a group; `tree` is their <spTree>.
    ShapeContent readTree(pugi::xml_node tree);

private:
    ShapeContent read(pugi::xml_node object, int nesting, const ShapeFill* groupFill);
    void readShape(pugi::xml_node object, const ShapeFill* groupFill, ShapeContent& shape);
    void readPicture(pugi::xml_node object, ShapeContent& shape);
    void readGroup(pugi::xml_node object, int nesting, const ShapeFill* groupFill, ShapeContent& shape);
    void addStyle(pugi::xml_node style, ShapeContent& shape);
    void readText(pugi::xml_node object, ShapeContent& shape);

    LookReader& m_looks;
    DrawingBudget& m_budget;
};

/// Whether a form that a file offers beside an older one can be drawn.
bool understood(pugi::xml_node choice);
/// The node itself where it is a drawn object; where it offers a choice, the object in the first form that is
/// understood. A null node for others.
pugi::xml_node objectAt(pugi::xml_node node, int depth = 0);
/// Name and visibility of an object (<cNvPr>).
pugi::xml_node nameElement(pugi::xml_node object);

} // namespace lumivane::engine
