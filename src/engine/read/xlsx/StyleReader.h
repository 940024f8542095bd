#pragma once

#include "engine/content/Styles.h"
#include "engine/read/xlsx/Palette.h"

#include <pugixml.hpp>

namespace lumivane::engine {

/// The format code of a number format that files name by number only; empty for numbers that stand for none.
QString builtInNumberFormat(int id);

Underline underlineFrom(std::string_view text); ///< of a <u>; a null view (no value) means single
Script scriptFrom(std::string_view text);

/// What a <dxf> changes; of a fill without a pattern the background is the color.
DifferentialStyle readDifferential(pugi::xml_node node, const Palette& palette);

/// Reads a style sheet from its root. Colours are resolved through the palette, which first takes over the table of
/// indexed colours that the style sheet may bring.
StyleTable readStyles(pugi::xml_node styleSheet, Palette& palette);

} // namespace lumivane::engine
