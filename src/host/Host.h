#pragma once

#include "platform/CellArea.h"
#include "platform/FindQuestion.h"

#include <QColor>
#include <QImage>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

// What the program needs of a spreadsheet program, and no more. Two engines give it: embedded/, which reads files
// itself, and later a running spreadsheet program. Members keep the names of the customary object model. Failures are
// thrown as RuntimeError with a sentence that names the workbook, the sheet and the cell.

namespace lumivane {

class Worksheet;

/// Cells of one worksheet: a value, as cheap as its four numbers. Row and Column are those of the top-left cell.
class SheetRange
{
public:
    SheetRange(Worksheet& sheet, const CellArea& area) : m_sheet(&sheet), m_area(area) {}

    int Row() const { return m_area.firstRow; }
    int Column() const { return m_area.firstColumn; }
    int RowsCount() const { return m_area.rows(); }
    int ColumnsCount() const { return m_area.columns(); }
    /// Absolute text: "$C$5", "$C$5:$H$20".
    QString Address() const { return m_area.absolute(); }
    const CellArea& area() const { return m_area; }
    Worksheet& sheet() const { return *m_sheet; }

    /// A cell counted from the range's top-left one, from 1.
    SheetRange Cells(int i, int j) const;
    /// The cell's value as text, in the form in which a value is written without its number format.
    QString ValueText() const;
    /// Points; 0 for a hidden row. Of the first row where the range has several.
    double RowHeight() const;
    /// Throws beyond 0 to 409.5 points.
    void setRowHeight(double points) const;
    /// Characters of the default font; 0 for a hidden column.
    double ColumnWidth() const;
    /// Throws beyond 0 to 255 characters.
    void setColumnWidth(double characters) const;

private:
    Worksheet* m_sheet;
    CellArea m_area;
};

/// One thing that a picture of cells lacks.
struct Undrawn
{
    enum class Kind {
        Drawing,  ///< a `what` ("chart", "picture") with a name
        Look,     ///< of cells: `what` as in "the look of the table "Sales""
        Formulas, ///< as many as `count`, whose results the file does not store
        Part,     ///< `what` of the file could not be read
    };
    Kind kind;
    QString what;
    QString name = {};
    qint64 count = 1;

    bool operator==(const Undrawn&) const = default;
};
/// "Not shown here: the chart "Sales", the results of 2 formulas, which the file does not store."; empty for none.
QString undrawnSentence(const std::vector<Undrawn>& undrawn);
/// The same as a sentence for each kind of thing that is lacking.
QStringList undrawnSentences(const std::vector<Undrawn>& undrawn);

/// Whether formulas for which the file stores no results count as contents.
enum class Uncomputed { Count, LeaveOut };

/// A worksheet of an open workbook. Changes stay with this opening of the workbook; the file is never touched.
class Worksheet
{
public:
    virtual ~Worksheet() = default;

    virtual QString Name() const = 0;
    virtual QString WorkbookName() const = 0;
    virtual bool Visible() const = 0;

    /// A cell or rectangle in A1 notation with or without `$`, whole rows or whole columns. An invalid or empty
    /// address throws.
    SheetRange Range(const QString& address);
    SheetRange Range(const SheetRange& cell1, const SheetRange& cell2);
    SheetRange Cells(int row, int column);
    SheetRange Cells();                         ///< all cells of the sheet
    SheetRange Rows(const QString& key);        ///< "5:12"
    SheetRange Columns(const QString& letters); ///< "A:C"
    /// The smallest rectangle of cells in use, formats included; A1 for an empty sheet.
    SheetRange UsedRange();

    virtual CellArea usedArea() = 0;
    /// The cells with something to show: area from A1 to the last row and column with contents; none when empty. A
    /// formula that shows an empty text does not count. What one without a stored result would show is not known.
    virtual std::optional<CellArea> contentArea(Uncomputed formulas = Uncomputed::Count) = 0;
    /// Formulas of an area for which the file stores no results.
    virtual qint64 uncomputedFormulas(const CellArea&) { return 0; }

    // Areas are read in one call each: an engine may be another program.
    virtual QStringList shownTexts(const CellArea& area) = 0; ///< row by row, through the number format; never cut
    virtual QStringList valueTexts(const CellArea& area) = 0; ///< row by row, plain
    virtual std::vector<double> rowHeights(int first, int last) = 0;   ///< points, 0 if hidden
    virtual std::vector<double> columnWidths(int first, int last) = 0; ///< characters, 0 if hidden
    QString shownText(int row, int column) { return shownTexts(CellArea::cell(row, column)).front(); }
    QString valueText(int row, int column) { return valueTexts(CellArea::cell(row, column)).front(); }
    double rowHeight(int row) { return rowHeights(row, row).front(); }
    double columnWidth(int column) { return columnWidths(column, column).front(); }
    virtual void setRowHeight(int firstRow, int lastRow, double points) = 0; ///< 0 hides
    virtual void setColumnWidth(int firstColumn, int lastColumn, double characters) = 0;
    virtual void setInteriorColor(int row, int column, QRgb color) = 0;

    /// The first cell of the area, in the exact order of a FindQuestion, whose shown text or plain value text equals
    /// (Whole) or holds (Part) the sought text without regard to case.
    virtual std::optional<CellArea> Find(const CellArea& area, const FindQuestion& question) = 0;

    virtual QStringList ShapeNames() = 0;
    /// What of the area a picture of it lacks; empty when it shows everything. Whoever shows the picture has to say so:
    /// a picture with a gap must not pass for a whole one.
    virtual std::vector<Undrawn> undrawn(const CellArea&) { return {}; }
    /// The same for the picture of a chart or shape.
    virtual std::vector<Undrawn> undrawnOfShape(const QString&) { return {}; }

    virtual void Activate() = 0;
    void Select() { Activate(); }

    /// The rectangle as the screen shows it at 96 dpi times `scale`: exactly as wide and high as its visible rows and
    /// columns. Throws when nothing of it is visible or when it would be larger than a picture may be.
    virtual QImage CopyPicture(const CellArea& area, double scale = 1) = 0;
    /// A chart or shape by name. Throws where there is none or where the engine cannot draw it.
    virtual QImage CopyShapePicture(const QString& name, double scale = 1) = 0;
};

class Workbook
{
public:
    virtual ~Workbook() = default;
    virtual QString FullName() const = 0;
    virtual QString Name() const = 0;
    virtual QStringList WorksheetNames() const = 0;
    /// By name without regard to case; null if there is none.
    virtual std::shared_ptr<Worksheet> WorksheetByName(const QString& name) = 0;
    virtual std::shared_ptr<Worksheet> ActiveSheet() = 0;
    virtual void Activate() = 0;
    /// Reads again what the workbook takes from elsewhere.
    virtual void RefreshAll() = 0;
    /// False while it has changes that its file lacks.
    virtual bool Saved() const { return true; }
    virtual void Save() = 0;
    /// Writes what is open, changes that its own file lacks included, into another file of the same format in place of
    /// what is there. What is active and selected stays. A workbook without such changes needs no more than its file.
    virtual void SaveCopyAs(const QString& path);
    virtual void Close() = 0; ///< without saving
};

/// What the user has selected in a window.
struct WindowSelection
{
    enum class Kind {
        Nothing,
        Range, ///< cells
        Chart, ///< a chart on the sheet, by its border or by its area
        Shape, ///< a picture, shape, group or control that can be captured by its name
        Other, ///< any other drawing
    };
    Kind kind = Kind::Nothing;
    QString name; ///< of the chart or drawing; empty for cells

    bool operator==(const WindowSelection&) const = default;
};

/// A window of the user's instance onto its active sheet. It may be closed by the user at any time; a window that is
/// gone has nothing selected and no panes.
class Window
{
public:
    virtual ~Window() = default;

    virtual WindowSelection Selection() = 0;
    /// Absolute address of the selected cells, also while a drawing is selected: "$C$5:$H$20". Several areas are joined
    /// by commas, in the order in which they were selected; Worksheet::Range takes only one of them.
    virtual QString RangeSelection() = 0;
    virtual int PanesCount() = 0; ///< 1 without panes, 2 split one way, 4 split both ways
    /// Absolute address of what a pane shows, rows and columns seen in part included. Counted from 1, from left to
    /// right and then from top to bottom: the last pane is the one that scrolls freely. Throws beyond the count.
    virtual QString PaneVisibleRange(int index) = 0;
};

/// A spreadsheet program, or an engine in its place.
class Application
{
public:
    virtual ~Application() = default;

    bool DisplayAlerts() const { return m_displayAlerts; }
    virtual void setDisplayAlerts(bool display) { m_displayAlerts = display; }
    bool IgnoreRemoteRequests() const { return m_ignoreRemoteRequests; }
    virtual void setIgnoreRemoteRequests(bool ignore) { m_ignoreRemoteRequests = ignore; }
    bool Visible() const { return m_visible; }
    virtual void setVisible(bool visible) { m_visible = visible; }

    /// Opens a workbook; throws with a sentence that names the file and what is wrong with it.
    virtual std::shared_ptr<Workbook> Open(const QString& path, bool updateLinks = false) = 0;
    virtual int WorkbooksCount() const = 0;
    virtual std::shared_ptr<Workbook> WorkbookItem(int index) = 0; ///< from 1
    virtual std::shared_ptr<Workbook> ActiveWorkbook() = 0;
    virtual std::shared_ptr<Worksheet> ActiveSheet() = 0; ///< null when nothing is open
    /// Null where nothing is open, and for workers, which have no windows.
    virtual std::shared_ptr<Window> ActiveWindow() { return nullptr; }
    /// Puts the active window in front of those of other programs. Workers have none.
    virtual void BringToFront() {}
    virtual void Quit() = 0;

private:
    bool m_displayAlerts = true;
    bool m_ignoreRemoteRequests = false;
    bool m_visible = false;
};

/// How workers and the user's instance come into being; set once by the program, by tests to what they need.
struct HostFactory
{
    std::function<std::unique_ptr<Application>()> worker;       ///< throws when none can be had
    std::function<std::shared_ptr<Application>()> userInstance; ///< null when the user runs none
    /// One whose workbooks the user gets to see when they are opened in it, started now if need be; null when none can.
    std::function<std::shared_ptr<Application>()> visibleInstance = {};
};
void setHostFactory(HostFactory factory);
const HostFactory& hostFactory();

} // namespace lumivane
