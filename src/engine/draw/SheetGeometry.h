#pragma once

#include "engine/draw/Fonts.h"
#include "engine/draw/TextWidths.h"
#include "engine/show/ShownSheet.h"

#include <unordered_map>
#include <vector>

namespace lumivane::engine {

/// Widths and heights of a sheet in pixels and in the units that users see, overlay included. Rows for which the file
/// stores no height get one from their text. Rows that nobody asks for cost nothing.
class SheetGeometry
{
public:
    explicit SheetGeometry(std::shared_ptr<const ShownSheet> sheet, Metrics metrics = Metrics::File);

    bool rowHidden(int row) const;
    bool columnHidden(int column) const;
    double rowHeightPoints(int row) const;          ///< 0 if hidden
    double columnWidthCharacters(int column) const; ///< 0 if hidden; 2 decimals
    int rowPixels(int row, double scale = 1) const;
    int columnPixels(int column, double scale = 1) const;
    /// Of a hidden row or column too: what it would have if shown.
    double shownRowHeightPoints(int row) const;
    int shownColumnPixels(int column) const;
    double shownColumnWidthCharacters(int column) const;

    /// Where the rows `first` to `last` begin, in pixels from the first one's top, and at the end where the last one
    /// ends. The pixels of scale 1 are multiplied, so that at scale 2 all is exactly twice as large. (Where
    /// edges fall short, the end lies before the sum of sizes: each row and column is cut to pixels, but not the
    /// whole.)
    std::vector<int> rowEdges(int first, int last, double scale = 1) const;
    std::vector<int> columnEdges(int first, int last, double scale = 1) const;
    /// Their sum at scale 1, without walking over rows that the file does not store.
    qint64 rowsPixels(int first, int last) const;
    qint64 columnsPixels(int first, int last) const;

    /// The font that a cell of this style is shown in.
    const FontStyle& font(const CellStyle& style) const;

private:
    double defaultRowPoints() const;
    double rowPoints(int row, const RowContent* stored) const;
    double autoHeight(const RowContent& stored) const;
    double cellHeight(const Cell& cell, int row, double line) const;
    double pixelsOfRow(double points) const;
    double exactRowPixels(int row) const;
    double drawnPixels(double pixels) const;
    double exactColumnPixels(int column) const;
    double shownExactColumnPixels(int column) const;
    double filePixels(double storedWidth) const;
    double fittedPixels(int column) const;
    int padding() const;

    std::shared_ptr<const ShownSheet> m_shown;
    const WorkbookContent& m_workbook;
    const SheetContent& m_sheet;
    const SheetOverlay& m_overlay;
    const Measures& m_measures;
    int m_digit = 7;           ///< widest digit of the default font at 96 dpi, in pixels
    double m_digitTwips = 111; ///< as Calc measures it
    double m_defaultColumnPixels = 64;
    double m_defaultLine = 0; ///< height of a line of the default font, pixels
    mutable std::unordered_map<int, double> m_autoHeights;
    std::shared_ptr<const TextWidths> m_textWidths; ///< null for a sheet that stores its sizes
};

} // namespace lumivane::engine
