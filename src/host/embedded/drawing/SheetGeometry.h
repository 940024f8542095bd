#pragma once

#include "host/embedded/drawing/SheetOverlay.h"

#include <map>
#include <vector>

namespace lumivane::embedded {

/// Which widths columns get: as the program that wrote the file shows them, or as LibreOffice Calc does (for
/// comparison only).
enum class Metrics { File, Calc };

/// Widths and heights of a sheet in pixels and in the units that users see, overlay included. Rows for which the file
/// stores no height get one from their text.
class SheetGeometry
{
public:
    SheetGeometry(std::shared_ptr<const WorkbookContent> workbook, std::shared_ptr<const SheetContent> sheet,
                  const SheetOverlay* overlay = nullptr, Metrics metrics = Metrics::File);

    bool rowHidden(int row) const;
    bool columnHidden(int column) const;
    double rowHeightPoints(int row) const;          ///< 0 if hidden
    double columnWidthCharacters(int column) const; ///< 0 if hidden
    int rowPixels(int row, double scale = 1) const;
    int columnPixels(int column, double scale = 1) const;
    /// Of a hidden row or column too: what it would have if shown.
    double shownRowHeightPoints(int row) const;
    int shownColumnPixels(int column) const;

    /// Widest digit of the default font at 96 dpi, in pixels.
    int digitPixels() const { return m_digit; }

private:
    std::shared_ptr<const WorkbookContent> m_workbook;
    std::shared_ptr<const SheetContent> m_sheet;
    const SheetOverlay* m_overlay;
    Metrics m_metrics;
    int m_digit = 7;
    mutable std::map<int, double> m_autoHeights;
};

} // namespace lumivane::embedded
