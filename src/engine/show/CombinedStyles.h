#pragma once

#include "engine/content/Styles.h"

#include <deque>
#include <map>

namespace lumivane::engine {

/// The styles of a workbook, and those that come about where a table or a condition changes a stored one: each such
/// combination is made once and has an index behind the stored ones. References stay valid.
class CombinedStyles
{
public:
    /// The table must outlive the object.
    explicit CombinedStyles(const StyleTable& stored);

    /// Index of the stored style with what `under` gives where the cell itself says nothing, and `over` above all.
    /// Either may be null; they are known by their address and must live on.
    int combined(int style, const DifferentialStyle* under, const DifferentialStyle* over);

    const CellStyle& cell(int index) const;
    const FontStyle& font(const CellStyle& style) const;
    const FillStyle& fill(const CellStyle& style) const;
    const BorderStyle& border(const CellStyle& style) const;
    const QString& numberFormat(const CellStyle& style) const;

private:
    /// What the cell itself says, which a table's style does not touch.
    DifferentialStyle allowed(const CellStyle& style, const DifferentialStyle& under) const;
    int changedFont(const CellStyle& style, const DifferentialStyle& change);
    int changedFill(const CellStyle& style, const DifferentialStyle& change);
    int changedBorder(const CellStyle& style, const DifferentialStyle& change);
    int changedFormat(const CellStyle& style, const DifferentialStyle& change);

    const StyleTable& m_stored;
    std::deque<CellStyle> m_cells;
    std::deque<FontStyle> m_fonts;
    std::deque<FillStyle> m_fills;
    std::deque<BorderStyle> m_borders;
    std::deque<QString> m_formats;
    std::map<std::tuple<int, const DifferentialStyle*, const DifferentialStyle*>, int> m_known;
};

} // namespace lumivane::engine
