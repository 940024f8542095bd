#pragma once

#include "engine/content/Drawings.h"
#include "engine/read/xlsx/DrawingBudget.h"
#include "engine/read/xlsx/DrawingPictures.h"

namespace lumivane::engine {

/// Reads how controls look from the older part that sheets keep them in (VML), by the numbers of their shapes.
class ControlReader
{
public:
    /// Throws Fault where the relationships of the part are broken.
    ControlReader(const Package& package, const Package::Entry& part, DrawingPictures& pictures, DrawingBudget& budget);

    /// Adds looks and state to the controls among the drawings, which are found by the number of their shape. Gives
    /// those that are not among them, with their numbers.
    std::vector<std::pair<int, DrawingContent>> read(pugi::xml_node root, std::vector<DrawingContent>& drawings,
                                                     const std::map<int, size_t>& byNumber);

private:
    void readShape(pugi::xml_node shape, DrawingContent& drawing);
    ShapeText readText(pugi::xml_node shape, pugi::xml_node data, ControlKind kind);
    void addRuns(pugi::xml_node node, const FontStyle& font, ShapeParagraph& paragraph, int depth);

    DrawingPictures& m_pictures;
    DrawingBudget& m_budget;
    std::vector<Relationship> m_relationships;
};

/// Makes a picture of a shape.
void showPicture(std::shared_ptr<const PictureData> picture, ShapeContent& shape);

} // namespace lumivane::engine
