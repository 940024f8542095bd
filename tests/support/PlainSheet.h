#pragma once

#include "host/Host.h"
#include "support/QtPrinting.h"

#include <map>

// A spreadsheet host in memory, for tests of everything above the host.

namespace lumivane::test {

/// A worksheet whose cells are put in by the test. Sheets are copied when their workbook is opened, so that what a job
/// changes is gone with the next opening.
class PlainSheet : public Worksheet
{
public:
    explicit PlainSheet(const QString& name, const QString& workbookName = QStringLiteral("Book.xlsx"))
        : m_name(name), m_workbookName(workbookName)
    {
    }

    /// `shown` is what the cell's number format makes of the value; without it the value itself.
    PlainSheet& put(const QString& address, const QString& value, const QString& shown = QString());
    PlainSheet& clear(const QString& address);
    PlainSheet& height(const QString& rows, double points);
    PlainSheet& width(const QString& columns, double characters);
    PlainSheet& shape(const QString& name);
    /// A chart over a cell, of the kind that a host cannot draw.
    PlainSheet& undrawable(const QString& name, const QString& address);
    /// The sheet turns out to be damaged when it is first read.
    PlainSheet& damage(const QString& sentence);
    /// Cells that are in use by their format alone.
    PlainSheet& formatted(const QString& address);

    QString Name() const override { return m_name; }
    QString WorkbookName() const override { return m_workbookName; }
    bool Visible() const override { return true; }
    CellArea usedArea() override;
    std::optional<CellArea> contentArea(Uncomputed formulas = Uncomputed::Count) override;
    QStringList shownTexts(const CellArea& area) override;
    QStringList valueTexts(const CellArea& area) override;
    std::vector<double> rowHeights(int first, int last) override;
    void setRowHeight(int firstRow, int lastRow, double points) override;
    std::vector<double> columnWidths(int first, int last) override;
    void setColumnWidth(int firstColumn, int lastColumn, double characters) override;
    void setInteriorColor(int row, int column, QRgb color) override;
    std::optional<CellArea> Find(const CellArea& area, const FindQuestion& question) override;
    QStringList ShapeNames() override;
    void Activate() override;
    /// At 96 dpi; cells with contents in a colour of their text.
    QImage CopyPicture(const CellArea& area, double scale = 1) override;
    QImage CopyShapePicture(const QString& name, double scale = 1) override;
    std::vector<Undrawn> undrawn(const CellArea& area) override;

    static constexpr double standardHeight = 15;
    static constexpr double standardWidth = 8.43;

private:
    friend class PlainWorkbook;
    void throwIfDamaged() const;
    struct PlainCell
    {
        QString value;
        QString shown;
        std::optional<QRgb> color;
    };
    const PlainCell* cell(int row, int column) const;
    QStringList texts(const CellArea& area, QString PlainCell::*text) const;

    QString m_name;
    QString m_workbookName;
    std::map<std::pair<int, int>, PlainCell> m_cells;
    std::map<int, double> m_heights;
    std::map<int, double> m_widths;
    QStringList m_shapes;
    std::map<QString, CellArea> m_undrawable;
    QString m_damage;
    std::function<void()> m_onActivate;
};

/// A workbook of plain sheets.
class PlainWorkbook : public Workbook
{
public:
    explicit PlainWorkbook(const QString& fullName, std::vector<PlainSheet> sheets = {});

    QString FullName() const override { return m_fullName; }
    QString Name() const override;
    QStringList WorksheetNames() const override;
    std::shared_ptr<Worksheet> WorksheetByName(const QString& name) override;
    std::shared_ptr<Worksheet> ActiveSheet() override;
    void Activate() override;
    void RefreshAll() override;
    void Save() override;
    void Close() override;

    std::shared_ptr<PlainSheet> sheet(int index) const { return m_sheets.at(static_cast<size_t>(index)); }

private:
    friend class PlainApplication;
    QString m_fullName;
    std::vector<std::shared_ptr<PlainSheet>> m_sheets;
    int m_active = 0;
    class PlainApplication* m_application = nullptr;
};

/// The workbooks that a test's host can open, and what became of its workers.
struct PlainLibrary
{
    std::map<QString, std::vector<PlainSheet>> books; ///< by full path
    QStringList events; ///< "start", "open <path>", "refresh <path>", "save <path>", "close <path>", "quit"

    /// A factory whose workers open the books of this library. It must not outlive the library.
    HostFactory factory();
};

/// An instance that opens the books of a library.
class PlainApplication : public Application
{
public:
    explicit PlainApplication(PlainLibrary& library) : m_library(library) {}

    std::shared_ptr<Workbook> Open(const QString& path, bool updateLinks = false) override;
    int WorkbooksCount() const override { return static_cast<int>(m_workbooks.size()); }
    std::shared_ptr<Workbook> WorkbookItem(int index) override;
    std::shared_ptr<Workbook> ActiveWorkbook() override { return m_active; }
    std::shared_ptr<Worksheet> ActiveSheet() override;
    void Quit() override;

private:
    friend class PlainWorkbook;
    void tell(const QString& event) { m_library.events.append(event); }

    PlainLibrary& m_library;
    std::vector<std::shared_ptr<PlainWorkbook>> m_workbooks;
    std::shared_ptr<PlainWorkbook> m_active;
};

} // namespace lumivane::test
