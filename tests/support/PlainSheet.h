#pragma once

#include "host/Host.h"
#include "platform/RuntimeError.h"
#include "support/FindOrder.h"
#include "support/QtPrinting.h"

#include <QHash>
#include <QPainter>
#include <algorithm>
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
    PlainSheet& put(const QString& address, const QString& value, const QString& shown = QString())
    {
        const CellArea area = CellArea::parse(address).value();
        m_cells[{area.firstRow, area.firstColumn}] = {value, shown.isNull() ? value : shown, {}};
        return *this;
    }
    void clear(const QString& address)
    {
        const CellArea area = CellArea::parse(address).value();
        std::erase_if(m_cells, [&](const auto& cell) { return area.contains(cell.first.first, cell.first.second); });
    }
    PlainSheet& shape(const QString& name)
    {
        m_shapes.append(name);
        return *this;
    }
    /// A chart over a cell, of the kind that a host cannot draw.
    void undrawable(const QString& name, const QString& address)
    {
        m_undrawable[name] = CellArea::parse(address).value();
        shape(name);
    }
    /// The sheet turns out to be damaged when it is first read.
    void damage(const QString& sentence) { m_damage = sentence; }

    QString Name() const override { return m_name; }
    QString WorkbookName() const override { return m_workbookName; }
    bool Visible() const override { return true; }
    CellArea usedArea() override
    {
        throwIfDamaged();
        return contentArea().value_or(CellArea::cell(1, 1));
    }
    std::optional<CellArea> contentArea(Uncomputed = Uncomputed::Count) override
    {
        CellArea contents{1, 1, 0, 0};
        for (const auto& [place, cell] : m_cells) {
            if (cell.value.isEmpty())
                continue;
            contents.lastRow = std::max(contents.lastRow, place.first);
            contents.lastColumn = std::max(contents.lastColumn, place.second);
        }
        return contents.lastRow ? std::optional(contents) : std::nullopt;
    }
    QStringList shownTexts(const CellArea& area) override { return texts(area, &PlainCell::shown); }
    QStringList valueTexts(const CellArea& area) override { return texts(area, &PlainCell::value); }
    std::vector<double> rowHeights(int first, int last) override { return sizes(m_heights, first, last, 15); }
    std::vector<double> columnWidths(int first, int last) override { return sizes(m_widths, first, last, 8.43); }
    void setRowHeight(int firstRow, int lastRow, double points) override
    {
        for (int row = firstRow; row <= lastRow; ++row)
            m_heights[row] = points;
    }
    void setColumnWidth(int firstColumn, int lastColumn, double characters) override
    {
        for (int column = firstColumn; column <= lastColumn; ++column)
            m_widths[column] = characters;
    }
    void setInteriorColor(int row, int column, QRgb color) override { m_cells[{row, column}].color = color; }
    /// Of whole cells alone.
    std::optional<CellArea> Find(const CellArea& area, const FindQuestion& question) override
    {
        const FindOrder order(area, question.direction, question.order);
        std::map<qint64, CellArea> hits;
        for (const auto& [place, cell] : m_cells) {
            const auto& [row, column] = place;
            const bool hit = cell.value.compare(question.what, Qt::CaseInsensitive) == 0 ||
                             cell.shown.compare(question.what, Qt::CaseInsensitive) == 0;
            if (hit && area.contains(row, column))
                hits[order.rank(row, column)] = CellArea::cell(row, column);
        }
        return hits.empty() ? std::nullopt : std::optional(hits.begin()->second);
    }
    QStringList ShapeNames() override
    {
        throwIfDamaged();
        return m_shapes;
    }
    std::vector<Undrawn> undrawn(const CellArea& area) override
    {
        std::vector<Undrawn> missing;
        for (const auto& [name, place] : m_undrawable) {
            if (intersect(area, place))
                missing.push_back({Undrawn::Kind::Drawing, QStringLiteral("chart"), name});
        }
        return missing;
    }
    void Activate() override
    {
        if (m_onActivate)
            m_onActivate();
    }
    /// At 96 dpi; cells with contents in a colour of their text.
    QImage CopyPicture(const CellArea& area, double scale = 1) override
    {
        const auto rows = edges(rowHeights(area.firstRow, area.lastRow), 96.0 / 72, 0);
        const auto columns = edges(columnWidths(area.firstColumn, area.lastColumn), 7, 5);
        const QSize size(columns.back(), rows.back());
        if (size.isEmpty())
            throw RuntimeError(RuntimeError::ApplicationDefined, QStringLiteral("Nothing of the range is visible."));
        if (std::max(size.width(), size.height()) * scale > 32767)
            return {}; // as engines do beyond what can be painted on
        QImage image(size * scale, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.scale(scale, scale);
        for (const auto& [place, cell] : m_cells) {
            if (!area.contains(place.first, place.second) || (cell.shown.isEmpty() && !cell.color))
                continue;
            const auto row = static_cast<size_t>(place.first - area.firstRow);
            const auto column = static_cast<size_t>(place.second - area.firstColumn);
            painter.fillRect(columns[column], rows[row], columns[column + 1] - columns[column],
                             rows[row + 1] - rows[row], cell.color.value_or(colorOf(cell.shown)));
        }
        return image;
    }
    QImage CopyShapePicture(const QString& name, double scale = 1) override
    {
        if (m_undrawable.contains(name))
            throw RuntimeError(RuntimeError::ApplicationDefined,
                               QStringLiteral("The chart \"%1\" cannot be drawn.").arg(name));
        QImage image(QSize(200, 120) * scale, QImage::Format_RGB32);
        image.fill(colorOf(name));
        return image;
    }

private:
    friend class PlainWorkbook;
    struct PlainCell
    {
        QString value;
        QString shown;
        std::optional<QColor> color;
    };

    void throwIfDamaged() const
    {
        if (!m_damage.isEmpty())
            throw RuntimeError(RuntimeError::ApplicationDefined, m_damage);
    }
    static QColor colorOf(const QString& text) { return QRgb(0xff000000 | qHash(text, 7)); }
    QStringList texts(const CellArea& area, QString PlainCell::*text) const
    {
        QStringList result(qsizetype(area.rows()) * area.columns());
        for (const auto& [place, cell] : m_cells)
            if (area.contains(place.first, place.second))
                result[qsizetype(place.first - area.firstRow) * area.columns() + place.second - area.firstColumn] =
                    cell.*text;
        return result;
    }
    static std::vector<double> sizes(const std::map<int, double>& changed, int first, int last, double standard)
    {
        std::vector<double> result;
        for (int index = first; index <= last; ++index)
            result.push_back(changed.contains(index) ? changed.at(index) : standard);
        return result;
    }
    /// Where rows or columns begin, and where the last one ends; hidden ones take no pixels.
    static std::vector<int> edges(const std::vector<double>& sizes, double pixels, int padding)
    {
        std::vector<int> result{0};
        for (const double size : sizes)
            result.push_back(result.back() + (size > 0 ? qRound(size * pixels) + padding : 0));
        return result;
    }

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
    explicit PlainWorkbook(const QString& fullName, const std::vector<PlainSheet>& sheets = {}) : m_fullName(fullName)
    {
        for (const PlainSheet& sheet : sheets) {
            m_sheets.push_back(std::make_shared<PlainSheet>(sheet));
            m_sheets.back()->m_workbookName = Name();
            m_sheets.back()->m_onActivate = [this, index = m_sheets.size() - 1] { m_active = index; };
        }
    }

    QString FullName() const override { return m_fullName; }
    QString Name() const override { return m_fullName.mid(m_fullName.lastIndexOf(u'/') + 1); }
    QStringList WorksheetNames() const override
    {
        QStringList names;
        for (const auto& sheet : m_sheets)
            names.append(sheet->Name());
        return names;
    }
    std::shared_ptr<Worksheet> WorksheetByName(const QString& name) override
    {
        for (const auto& sheet : m_sheets) {
            if (sheet->Name().compare(name, Qt::CaseInsensitive) == 0)
                return sheet;
        }
        return nullptr;
    }
    std::shared_ptr<Worksheet> ActiveSheet() override { return m_sheets.empty() ? nullptr : m_sheets[m_active]; }
    void Activate() override { m_tell(QStringLiteral("activate")); }
    void RefreshAll() override { m_tell(QStringLiteral("refresh")); }
    void Save() override { m_tell(QStringLiteral("save")); }
    void Close() override
    {
        if (const auto tell = std::exchange(m_tell, nullptr))
            tell(QStringLiteral("close"));
    }

private:
    friend class PlainApplication;
    QString m_fullName;
    std::vector<std::shared_ptr<PlainSheet>> m_sheets;
    size_t m_active = 0;
    std::function<void(const QString& what)> m_tell; ///< its application
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

    std::shared_ptr<Workbook> Open(const QString& path, bool = false) override
    {
        m_library.events.append(QStringLiteral("open ") + path);
        if (!m_library.books.contains(path))
            throw RuntimeError(RuntimeError::ApplicationDefined,
                               QStringLiteral("The workbook \"%1\" was not found.").arg(path));
        m_active = m_workbooks.emplace_back(std::make_shared<PlainWorkbook>(path, m_library.books.at(path)));
        m_active->m_tell = [this, book = m_active.get()](const QString& what) { hear(what, book); };
        return m_active;
    }
    int WorkbooksCount() const override { return static_cast<int>(m_workbooks.size()); }
    std::shared_ptr<Workbook> WorkbookItem(int index) override
    {
        return m_workbooks.at(static_cast<size_t>(index - 1));
    }
    std::shared_ptr<Workbook> ActiveWorkbook() override { return m_active; }
    std::shared_ptr<Worksheet> ActiveSheet() override { return m_active ? m_active->ActiveSheet() : nullptr; }
    void Quit() override
    {
        for (const auto& workbook : m_workbooks)
            workbook->m_tell = nullptr;
        m_workbooks.clear();
        m_active = nullptr;
        m_library.events.append(QStringLiteral("quit"));
    }

private:
    void hear(const QString& what, const PlainWorkbook* from)
    {
        const auto place = std::find_if(m_workbooks.begin(), m_workbooks.end(),
                                        [from](const auto& workbook) { return workbook.get() == from; });
        if (what == u"activate") {
            m_active = *place;
            return;
        }
        m_library.events.append(what + u' ' + from->FullName());
        if (what == u"close") {
            m_workbooks.erase(place);
            m_active = m_workbooks.empty() ? nullptr : m_workbooks.back();
        }
    }

    PlainLibrary& m_library;
    std::vector<std::shared_ptr<PlainWorkbook>> m_workbooks;
    std::shared_ptr<PlainWorkbook> m_active;
};

inline HostFactory PlainLibrary::factory()
{
    return {[this] {
                events.append(QStringLiteral("start"));
                return std::make_unique<PlainApplication>(*this);
            },
            [] { return nullptr; }};
}

} // namespace lumivane::test
