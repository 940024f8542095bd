#pragma once

#include "host/CellArea.h"
#include "host/embedded/Styles.h"

#include <QString>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

// What a workbook file holds, as read and never changed afterwards, so that any number of openings can share it.

namespace lumivane::embedded {

enum class CellKind : quint8 {
    Blank, ///< carries a style only
    Number,
    Text,       ///< `text` is an index into WorkbookContent::texts
    SheetText,  ///< `text` is an index into SheetContent::texts (inline strings, results of formulas)
    Boolean,    ///< `number` is 0 or 1
    Error,      ///< `text` is an ErrorCode
    Uncomputed, ///< a formula for which the file stores no result
};

enum class ErrorCode : quint8 { Null, Div0, Value, Ref, Name, Num, NA, GettingData, Spill, Calc };
QString errorText(ErrorCode code); ///< "#DIV/0!"

/// One cell, 16 bytes. A sheet keeps all of them in one block, row by row, columns ascending.
struct Cell
{
    union {
        double number;
        quint64 text;
    };
    quint32 style = 0; ///< index into StyleTable::cells
    quint16 column = 0;
    CellKind kind = CellKind::Blank;
    bool formula = false;

    Cell() : number(0) {}
};
static_assert(sizeof(Cell) == 16);

/// A stretch of a rich text with one font.
struct TextRun
{
    int start = 0; ///< position in the text, in UTF-16 units
    FontStyle font;
    bool cellFont = false; ///< the stretch has the font of its cell; `font` says nothing
};

/// Texts of a workbook or sheet in one block of UTF-8, with the runs of the few rich ones beside it.
class TextTable
{
public:
    int size() const { return static_cast<int>(m_ends.size()); }
    std::string_view utf8(quint64 index) const;
    QString text(quint64 index) const;
    /// Runs in ascending order; null for a plain text.
    const std::vector<TextRun>* runs(quint64 index) const;
    size_t runCount() const { return m_runCount; } ///< of all texts

    int append(std::string_view utf8);
    /// Of a text appended after all others that have runs.
    void setRuns(int index, std::vector<TextRun> runs);
    qint64 bytes() const;

private:
    std::vector<char> m_bytes;
    std::vector<quint32> m_ends;
    std::vector<std::pair<int, std::vector<TextRun>>> m_runs; ///< ascending by index
    size_t m_runCount = 0;
};

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

/// A drawing on the sheet of which so far only the name, the kind and the place are known.
struct DrawingContent
{
    QString name;
    QString kind;    ///< "chart", "picture", "shape", "control"
    CellArea anchor; ///< from the cell with its top left corner to that with its bottom right one; the former alone
                     ///< where the file stores a size instead (`width` and `height`)
    bool hidden = false;
    // In EMU, 9525 to a pixel: the corners' distance from those of their cells, or from the sheet's own corner for an
    // absolute place, whose anchor is A1.
    qint64 startX = 0, startY = 0;
    qint64 endX = 0, endY = 0;
    qint64 width = -1, height = -1; ///< below 0: as the anchor says
    QString part;                   ///< of the package, with the chart or the picture; empty if it has none
};

/// Looks of cells that the file describes and that are not read: a picture of these cells may lack them.
struct UnreadLook
{
    QString what; ///< to be put behind "is missing: ", as in "the look of the table "Sales""
    CellArea area;
};

struct SheetContent
{
    std::vector<Cell> cells;
    std::vector<RowContent> rows;       ///< those stored, ascending
    std::vector<ColumnContent> columns; ///< ascending, not overlapping
    std::vector<CellArea> merged;       ///< not overlapping
    std::vector<int> mergedReach;   ///< beside `merged`: the last row of all up to that one; empty without setMerged
    std::vector<CellArea> filtered; ///< ranges of auto filters
    std::vector<DrawingContent> drawings;
    std::vector<UnreadLook> unread;
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
    const RowContent* findRow(int row) const;
    const Cell* find(int row, int column) const;
    const ColumnContent* findColumn(int column) const;
    /// Sets `merged`, in the order of their first rows and ready to be found fast.
    void setMerged(std::vector<CellArea> areas);
    const CellArea* mergedAt(int row, int column) const;
    qint64 bytes() const;
};

struct DefinedName
{
    QString name;
    QString formula; ///< as stored, "Data!$A$1:$C$9"
    int sheet = -1;  ///< the sheet it is local to; -1: the workbook's
};

struct SheetEntry
{
    QString name;
    bool visible = true;
    bool isChartSheet = false;
};

/// A workbook on disk whose sheets are read when first asked for. Shared between openings and never changed.
class WorkbookContent
{
public:
    virtual ~WorkbookContent() = default;

    std::vector<SheetEntry> sheets;
    std::vector<DefinedName> definedNames;
    StyleTable styles;
    TextTable texts;
    bool date1904 = false;
    bool calculateOnOpen =
        false; ///< the writer asks that formulas be computed again: their stored results may be stale
    int activeSheet = 0;

    /// The sheet at an index from 0, read now if it was not yet. Throws RuntimeError naming file, sheet and fault.
    virtual std::shared_ptr<const SheetContent> sheet(int index) = 0;
    virtual qint64 bytes() const = 0; ///< memory held, for the cache's bound
};

} // namespace lumivane::embedded
