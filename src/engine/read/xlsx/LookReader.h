#pragma once

#include "engine/read/xlsx/DrawingBudget.h"
#include "engine/read/xlsx/DrawingPictures.h"
#include "engine/read/xlsx/DrawingTheme.h"

namespace lumivane::engine {

/// Reads fills, lines and shadows, as shapes and the theme's lists store them.
class LookReader
{
public:
    /// `relationships` are those of the part with the drawings.
    LookReader(const DrawingTheme& theme, const std::vector<Relationship>& relationships, DrawingPictures& pictures,
               DrawingBudget& budget);

    const DrawingTheme& theme() const { return m_theme; }

    /// The fill among the children of an element (<spPr>, <ln>); none where it names none. A fill that is its group's
    /// is `group`.
    std::optional<ShapeFill> fillIn(pugi::xml_node parent, std::optional<QRgb> placeholder, const ShapeFill* group);
    /// The fill that an element is; none for other elements.
    std::optional<ShapeFill> fill(pugi::xml_node node, std::optional<QRgb> placeholder, const ShapeFill* group);
    /// Of <blipFill>.
    PictureFill picture(pugi::xml_node node);
    /// Changes what the <ln> states; the rest stays.
    void addLine(pugi::xml_node node, std::optional<QRgb> placeholder, ShapeLine& line);
    /// Changes the shadow where the element (<spPr>, <effectStyle>) has a list of effects, even an empty one.
    void addShadow(pugi::xml_node parent, std::optional<QRgb> placeholder, ShapeShadow& shadow) const;

private:
    ShapeFill gradient(pugi::xml_node node, std::optional<QRgb> placeholder);

    const DrawingTheme& m_theme;
    const std::vector<Relationship>& m_relationships;
    DrawingPictures& m_pictures;
    DrawingBudget& m_budget;
};

} // namespace lumivane::engine
