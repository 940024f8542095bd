#pragma once

#include "engine/content/ShapeContent.h"
#include "engine/read/package/Package.h"
#include "engine/read/package/SmallParts.h"
#include "engine/read/xlsx/Palette.h"

namespace lumivane::engine {

// Numbers of drawings, bounded so that sums and products of them stay numbers.

/// Of an attribute; `otherwise` where it is missing or none.
double drawingNumber(pugi::xml_node node, std::string_view name, double otherwise = 0);
/// 1 for the whole, stored as 100000 or "100%".
double drawingShare(pugi::xml_node node, std::string_view name, double otherwise = 0);
/// Degrees, stored as 60000 each.
double drawingAngle(pugi::xml_node node, std::string_view name, double otherwise = 0);

/// What shapes refer to by number: the fills, lines and effects of the workbook's theme, its fonts and colours.
class DrawingTheme
{
public:
    /// `theme` may be null; shapes then get neither fills nor lines from it. Throws Fault where it is broken.
    DrawingTheme(const Palette& palette, const Package& package, const Package::Entry* theme);

    /// The element with a fill, line or effect by its number from 1; null for 0 and for one that is not there.
    pugi::xml_node fill(int number) const;
    pugi::xml_node line(int number) const;
    pugi::xml_node effect(int number) const;
    /// A family as texts store it; "+mj-lt" and "+mn-lt" stand for those of the theme.
    QString family(std::string_view typeface) const;

    QRgb textColor() const { return m_palette.themeColor("tx1").value_or(0xff000000); }

    /// The colour in an element like <solidFill>: its first child that is one, changed as that one's children say.
    /// `placeholder` is what the theme's own looks leave open. None where there is none or it is unknown.
    std::optional<QRgb> color(pugi::xml_node parent, std::optional<QRgb> placeholder) const;

private:
    std::optional<QRgb> baseColor(pugi::xml_node node, std::optional<QRgb> placeholder) const;

    const Palette& m_palette;
    pugi::xml_document m_document;
    pugi::xml_node m_formats, m_fonts;
};

} // namespace lumivane::engine
