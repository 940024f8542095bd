#pragma once

#include <QColor>
#include <array>
#include <optional>
#include <pugixml.hpp>
#include <string_view>
#include <vector>

namespace lumivane::engine {

/// The colours that a workbook refers to by number: those of its theme and of its index table.
class Palette
{
public:
    Palette();

    /// From the root of a theme part.
    void readTheme(pugi::xml_node theme);
    /// From the <colors> of a style sheet: a table that takes the place of the customary one.
    void readIndexed(pugi::xml_node colors);

    /// A colour as its attributes say it, each a null view where it is missing. None for the automatic colour and for
    /// one that cannot be understood.
    std::optional<QRgb> color(std::string_view rgb, std::string_view theme, std::string_view indexed,
                              std::string_view tint) const;
    std::optional<QRgb> color(pugi::xml_node node) const;
    std::optional<QRgb> indexedColor(int index) const;
    /// A colour of the theme by the name that drawings use: "accent1", "dk1" or "tx1".
    std::optional<QRgb> themeColor(std::string_view name) const;

private:
    std::array<QRgb, 12> m_theme;
    std::vector<QRgb> m_indexed;
};

} // namespace lumivane::engine
