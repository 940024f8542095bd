#pragma once

#include "engine/format/NumberFormat.h"
#include "engine/show/SheetOverlay.h"

#include <memory>

namespace lumivane::engine {

/// The shown texts of a sheet's cells, never cut to fit: what a find compares and a reader reads. General shows all 15
/// digits here; only a picture knows a width to fit them into. Formats are made ready once, so keep the object.
class ShownTexts
{
public:
    ShownTexts(std::shared_ptr<const WorkbookContent> workbook, std::shared_ptr<const SheetContent> sheet);
    ~ShownTexts();
    ShownTexts(ShownTexts&&) noexcept;

    QString shown(const Cell& cell) const;
    QString plain(const Cell& cell) const; ///< the value without its number format

    /// With colour and fill, for drawing. `generalChars` bounds the characters of General.
    FormattedText formatted(const Cell& cell, int generalChars = NumberFormat::unlimited) const;
    /// A number as a cell of a style would show it.
    QString shown(double number, int style) const;
    /// The format of a cell style.
    const NumberFormat& format(int style) const;

private:
    QString storedText(const Cell& cell) const;

    std::shared_ptr<const WorkbookContent> m_workbook;
    std::shared_ptr<const SheetContent> m_sheet;
    mutable std::vector<std::unique_ptr<NumberFormat>> m_formats; ///< by index of StyleTable::numberFormats
};

} // namespace lumivane::engine
