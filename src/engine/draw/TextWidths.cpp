#include "engine/draw/TextWidths.h"

#include "engine/draw/TextLines.h"

#include <algorithm>
#include <charconv>

namespace lumivane::engine {
namespace {

constexpr double tolerance = 0.01; // pixels: sums of the same letters in another order

} // namespace

TextWidths::TextWidths(const ShownSheet& sheet, const FontStyle& font, const Measures& measures, double most)
    : m_shown(sheet), m_sheet(sheet.sheet()), m_fonts(measures.fittedTextsScale, measures), m_face(m_fonts.face(font)),
      m_generalChars(measures.generalCharacters), m_most(most)
{
    for (char16_t letter = u' '; letter < 0x7f; ++letter)
        m_widestLetter = std::max(m_widestLetter, advance(QStringView(&letter, 1)));
    for (char16_t digit = u'0'; digit <= u'9'; ++digit)
        m_widestDigit = std::max(m_widestDigit, advance(QStringView(&digit, 1)));
}

double TextWidths::advance(QStringView text) const
{
    return m_face.advance(text) / m_fonts.scale();
}

double TextWidths::widest(int column) const
{
    const auto known = m_known.find(column);
    return known != m_known.end() ? known->second : m_known[column] = measuredColumn(column);
}

const Cell* TextWidths::cellOf(size_t rowIndex, int column) const
{
    const auto [first, last] = m_sheet.rowCells(rowIndex);
    if (first == last || column < first->column)
        return nullptr;
    // Mostly no field is empty, and the place follows from the number.
    const int place = column - first->column;
    if (place < last - first && first[place].column == column)
        return first + place;
    const auto cell = m_sheet.cellsIn(rowIndex, column, column);
    return cell.empty() ? nullptr : cell.data();
}

double TextWidths::measuredColumn(int column) const
{
    double width = 0;
    for (size_t i = 0; i < m_sheet.rows.size() && width < m_most; ++i) {
        const Cell* cell = cellOf(i, column);
        if (cell && mayBeWider(*cell, width))
            width = std::max(width, textWidth(m_sheet.rows[i].row, *cell));
    }
    return std::min(width, m_most);
}

bool TextWidths::mayBeWider(const Cell& cell, double width) const
{
    if (cell.kind == CellKind::SheetText)
        return static_cast<double>(m_sheet.texts.utf8(cell.text).size()) * m_widestLetter > width;
    if (cell.kind == CellKind::Text)
        return static_cast<double>(m_shown.workbook().texts.utf8(cell.text).size()) * m_widestLetter > width;
    if (cell.kind == CellKind::Number && m_shown.workbook().styles.cell(static_cast<int>(cell.style)).numberFormat == 0)
        return widestGeneral(cell.number) > width + tolerance;
    return true;
}

/// At least the width of what General shows of a number.
double TextWidths::widestGeneral(double number) const
{
    char digits[24];
    const auto [end, fault] = std::to_chars(digits, digits + sizeof digits, number, std::chars_format::fixed);
    const auto count = static_cast<double>(fault == std::errc() ? end - digits : sizeof digits);
    const bool pointed = fault == std::errc() && std::find(digits, end, '.') != end;
    return pointed ? (count - 1) * m_widestDigit + advance(u".") : count * m_widestDigit;
}

double TextWidths::textWidth(int row, const Cell& cell) const
{
    const QString text = withFewMarks(m_shown.formatted(row, cell, m_generalChars).text);
    double width = 0;
    for (const TextLine& line : splitLines(text))
        width = std::max(width, advance(QStringView(text).mid(line.start, line.length)));
    return width;
}

} // namespace lumivane::engine
