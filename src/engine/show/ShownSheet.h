#pragma once

#include "engine/content/SheetContent.h"
#include "engine/content/WorkbookContent.h"
#include "engine/format/NumberFormat.h"
#include "engine/show/CombinedStyles.h"
#include "engine/show/Conditions.h"
#include "engine/show/ListEntries.h"
#include "engine/show/SheetOverlay.h"
#include "engine/show/Sparklines.h"
#include "engine/show/TableLooks.h"

#include <functional>
#include <memory>

namespace lumivane::engine {

/// What the cells of a sheet show, in one opening of its workbook. Texts, searches and pictures all ask here, so that
/// they agree. The layers, each over those before it: the stored cell (where none is stored, its row or column), what a
/// table gives, what a condition gives, what a job has laid over it. Formats and conditions are made ready once, so
/// keep the object.
class ShownSheet
{
public:
    /// `overlay` may be null. It must outlive the object, which sees what changes in it. `others` gives the other
    /// sheets of the workbook, for conditions that look at them; it may be empty.
    ShownSheet(std::shared_ptr<const WorkbookContent> workbook, std::shared_ptr<const SheetContent> sheet,
               const SheetOverlay* overlay = nullptr, WorkbookCells::SheetSource others = {});

    const WorkbookContent& workbook() const { return *m_workbook; }
    const SheetContent& sheet() const { return *m_sheet; }
    const SheetOverlay& overlay() const { return *m_overlay; }

    // Texts are never cut to fit. General shows all 15 digits; only a picture knows a width to fit them into.
    QString shown(int row, const Cell& cell) const;
    QString plain(const Cell& cell) const;               ///< the value without its number format
    QString shownNumber(double number, int style) const; ///< as a cell of a style would show it
    /// With colour and fill, for drawing. `generalChars` bounds the characters of General.
    FormattedText formatted(int row, const Cell& cell, int generalChars = NumberFormat::unlimited) const;
    const NumberFormat& format(int style) const; ///< of a cell style
    /// Whether a condition may give the cell another number format than its stored style.
    bool mayChangeFormat(int row, int column) const;

    // The same by place; blank where no cell is stored.
    CellKind kind(int row, int column) const;
    double number(int row, int column) const; ///< of a number or boolean; 0 for any other
    FormattedText formatted(int row, int column, int generalChars) const;
    /// Stretches of a rich text; null for any other.
    const std::vector<TextRun>* runs(int row, int column) const;

    /// The style that a cell shows: a stored one (of the cell, else of its row, else of its column), or one that a
    /// table or a condition has made of it.
    int styleIndex(int row, int column) const;
    const CellStyle& style(int row, int column) const { return m_styles.cell(styleIndex(row, column)); }
    /// What conditions make of a cell; null where the sheet has none.
    const ConditionResult* condition(int row, int column) const;
    /// Entries of a list on the sheet that lie in the cells of a reference, as many as wanted from one on, from 0.
    QStringList listEntries(const QString& reference, int first, int most) const;
    const SparklineShown* sparkline(int row, int column) const; ///< in a cell; null: none
    /// Conditions of an area that are left out, and why.
    QStringList conditionsLeftOut(const CellArea& area) const;
    const FontStyle& font(const CellStyle& style) const;
    const BorderStyle& border(const CellStyle& style) const;
    FillStyle fill(int row, int column) const;

    /// The merged area of a cell; null if it is in none.
    const CellArea* mergedAt(int row, int column) const { return m_sheet->merged.at(row, column); }

    /// Whether a cell holds something, a formula that gives an empty text left out. A formula without a stored result
    /// counts: what it would show is not known, but it has something to show.
    bool hasContents(const Cell& cell) const;
    /// The next cell of a row that is not blank, right (step 1) or left (-1) of a column; 0 if there is none.
    int nextFilled(int row, int column, int step) const;
    /// From A1 to the last row and the last column with a cell that counts; none without any.
    std::optional<CellArea> extent(const std::function<bool(int row, const Cell&)>& counts) const;
    /// Formulas of an area for which the file stores no results.
    qint64 uncomputedFormulas(const CellArea& area) const;

private:
    QString storedText(const Cell& cell) const;
    int storedStyle(int row, int column) const;
    WorkbookCells& cells() const;

    std::shared_ptr<const WorkbookContent> m_workbook;
    std::shared_ptr<const SheetContent> m_sheet;
    const SheetOverlay* m_overlay;
    WorkbookCells::SheetSource m_others; ///< may be empty
    mutable CombinedStyles m_styles;
    mutable std::unique_ptr<WorkbookCells> m_cells;               ///< for formulas; null until one needs them
    std::unique_ptr<TableLooks> m_tables;                         ///< null where no table changes a cell
    std::unique_ptr<Conditions> m_conditions;                     ///< null where the sheet has none
    std::unique_ptr<Sparklines> m_sparklines;                     ///< the same
    mutable std::unique_ptr<ListEntries> m_listEntries;           ///< null until asked for
    mutable std::vector<std::unique_ptr<NumberFormat>> m_formats; ///< by CellStyle::numberFormat
};

} // namespace lumivane::engine
