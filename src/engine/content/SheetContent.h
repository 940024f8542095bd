#pragma once

#include "engine/content/Cell.h"
#include "engine/content/ConditionalFormats.h"
#include "engine/content/Drawings.h"
#include "engine/content/MergedCells.h"
#include "engine/content/Sparklines.h"
#include "engine/content/Tables.h"
#include "engine/content/TextTable.h"
#include "platform/CellArea.h"

#include <QColor>
#include <QString>
#include <optional>
#include <span>
#include <utility>
#include <vector>

// What one sheet of a file holds, as read and never changed afterwards, so that any number of openings can share it.

namespace lumivane::engine {

struct RowContent
{
    int row = 0;           ///< from 1
    quint32 firstCell = 0; ///< index into SheetContent::cells; the row ends where the next one begins
    float height = -1;     ///< points as stored; below 0 when the file stores none
    qint32 style = -1;     ///< of the cells that are not stored; -1: none
    quint8 outlineLevel = 0;
    bool hidden = false; ///< by hand, by outline or by a filter
    bool customHeight = false;
    bool collapsed = false; ///< the outline group next to it is folded
};

struct ColumnContent
{
    int first = 0, last = 0; ///< from 1
    double width = -1;       ///< characters as stored, padding included; below 0: the sheet's default
    qint32 style = -1;
    quint8 outlineLevel = 0;
    bool hidden = false;
    bool customWidth = false;
    bool collapsed = false; ///< the outline group next to it is folded
};

enum class PaneKind : quint8 { None, Frozen, Split };

struct SheetView
{
    PaneKind panes = PaneKind::None;
    double xSplit = 0, ySplit = 0;          ///< frozen: columns and rows; split: twentieths of a point
    int topRow = 1, leftColumn = 1;         ///< first visible cell of the top left pane
    int paneTopRow = 1, paneLeftColumn = 1; ///< first visible cell of the free pane
    bool gridLines = true;
    bool headings = true;
    bool rightToLeft = false;
    bool showFormulas = false;
    bool showZeros = true;
    int zoom = 100;
    QRgb gridColor = 0xffd4d4d4;
    QString selection; ///< "B3:D8", several separated by blanks
    QString activeCell;
};

/// Of a cell that has a comment.
struct CommentMark
{
    int row = 0, column = 0;
    bool threaded = false; ///< a conversation, not a note
    int text = -1;         ///< index into SheetContent::texts; -1: not known
};

/// A comment whose text is always to be seen, in a box beside its cell.
struct OpenNote
{
    int row = 0, column = 0; ///< of the cell
    DrawingContent box;
};

/// A column of an auto filter, where it is not as most are.
struct FilterColumn
{
    int row = 0, column = 0; ///< of the first cell of the filter's range in it
    bool hasButton = true;
    bool inUse = false; ///< it leaves rows out
};

struct SheetContent
{
    int sheetIndex = 0; ///< into WorkbookContent::sheets
    std::vector<Cell> cells;
    std::vector<RowContent> rows;       ///< those stored, ascending
    std::vector<ColumnContent> columns; ///< ascending, not overlapping
    MergedCells merged;
    std::vector<CellArea> filtered; ///< ranges of auto filters
    std::vector<FilterColumn> filterColumns;
    std::vector<DrawingContent> drawings;    ///< each lies over those before it
    qint64 pictureBytes = 0;                 ///< that the drawings' pictures and the background take
    PictureFill background;                  ///< repeated from the corner of A1 on, under all cells; mostly none
    std::vector<ConditionalRule> conditions; ///< by priority, the strongest first
    std::vector<SparklineGroup> sparklines;
    std::vector<TableContent> tables;
    std::vector<PivotContent> pivots;
    std::vector<CommentMark> comments;
    std::vector<OpenNote> openNotes;
    TextTable texts;
    SheetView view;
    double defaultRowHeight = -1;     ///< points; below 0: from the default font
    bool customDefaultHeight = false; ///< the default height holds even where the text would need more
    bool defaultRowsHidden = false;
    bool sizedByTexts = false; ///< a text file, which stores neither sizes nor fonts: columns are as wide and rows as
                               ///< high as their texts
    double defaultColumnWidth = -1; ///< characters, padding included; below 0: from baseColumnWidth
    int baseColumnWidth = 8;        ///< characters without padding
    std::optional<CellArea> used;   ///< cells stored, with contents or styled
    QString problem;                ///< what of the sheet could not be read, for the user; empty if all was

    /// The cells of a stored row; empty when the row stores none.
    std::pair<const Cell*, const Cell*> rowCells(size_t rowIndex) const;
    /// Those between two columns.
    std::span<const Cell> cellsIn(size_t rowIndex, int firstColumn, int lastColumn) const;
    /// Index of the first stored row that is this one or comes behind it; the count of rows where there is none.
    size_t rowIndexFrom(int row) const;
    /// Indices of the stored rows of an area: the first, and the one behind the last.
    std::pair<size_t, size_t> rowIndices(const CellArea& area) const;
    /// Index of a row; none where it is not stored.
    std::optional<size_t> storedRow(int row) const;
    const RowContent* findRow(int row) const;
    const Cell* find(int row, int column) const;
    const ColumnContent* findColumn(int column) const;
    qint64 bytes() const;
    void addProblem(const QString& sentence);
};

} // namespace lumivane::engine
