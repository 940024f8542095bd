#pragma once

#include "engine/draw/Fonts.h"
#include "engine/show/ShownSheet.h"

#include <unordered_map>

namespace lumivane::engine {

/// Measures the widest text of a column, for sheets whose file stores no widths. A column is walked over when first
/// asked for, and only texts that may be the widest are laid out.
class TextWidths
{
public:
    /// All cells are taken to have one font. No width is more than `most` pixels.
    TextWidths(const ShownSheet& sheet, const FontStyle& font, const Measures& measures, double most);
    TextWidths(const TextWidths&) = delete; // m_face lies in m_fonts

    double widest(int column) const; ///< pixels without any padding; 0 for a column without texts

private:
    double advance(QStringView text) const;
    const Cell* cellOf(size_t rowIndex, int column) const;
    double measuredColumn(int column) const;
    bool mayBeWider(const Cell& cell, double width) const;
    double widestGeneral(double number) const;
    double textWidth(int row, const Cell& cell) const;

    const ShownSheet& m_shown;
    const SheetContent& m_sheet;
    Fonts m_fonts;
    const Fonts::Face& m_face;
    int m_generalChars;
    double m_most;
    double m_widestLetter = 0; ///< of those that take a single byte
    double m_widestDigit = 0;
    mutable std::unordered_map<int, double> m_known;
};

} // namespace lumivane::engine
