#include "support/PlainSheet.h"
#include "support/FindOrder.h"

#include "platform/RuntimeError.h"

#include <QColor>
#include <QHash>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace lumivane::test {

using namespace Qt::StringLiterals;

namespace {

CellArea areaOf(const QString& address)
{
    const auto area = CellArea::parse(address);
    if (!area)
        throw RuntimeError(RuntimeError::ApplicationDefined, u"The test names no cells: "_s + address);
    return *area;
}

/// Four thirds of a pixel a point.
int pixelsOfHeight(double points)
{
    return static_cast<int>(std::lround(points * 96 / 72));
}

/// Seven pixels a character plus five.
int pixelsOfWidth(double characters)
{
    return characters <= 0 ? 0 : static_cast<int>(std::lround(characters * 7)) + 5;
}

std::vector<double> sizesOf(const std::map<int, double>& sizes, int first, int last, double standard)
{
    std::vector<double> result(static_cast<size_t>(last - first + 1), standard);
    for (const auto& [index, size] : sizes)
        if (index >= first && index <= last)
            result[static_cast<size_t>(index - first)] = size;
    return result;
}

} // namespace

PlainSheet& PlainSheet::put(const QString& address, const QString& value, const QString& shown)
{
    const CellArea area = areaOf(address);
    PlainCell& target = m_cells[{area.firstRow, area.firstColumn}];
    target.value = value;
    target.shown = shown.isNull() ? value : shown;
    return *this;
}

PlainSheet& PlainSheet::clear(const QString& address)
{
    const CellArea area = areaOf(address);
    std::erase_if(m_cells, [&](const auto& entry) { return area.contains(entry.first.first, entry.first.second); });
    return *this;
}

PlainSheet& PlainSheet::height(const QString& rows, double points)
{
    Rows(rows).setRowHeight(points);
    return *this;
}

PlainSheet& PlainSheet::width(const QString& columns, double characters)
{
    Columns(columns).setColumnWidth(characters);
    return *this;
}

PlainSheet& PlainSheet::shape(const QString& name)
{
    m_shapes.append(name);
    return *this;
}

PlainSheet& PlainSheet::undrawable(const QString& name, const QString& address)
{
    m_undrawable[name] = areaOf(address);
    return shape(name);
}

PlainSheet& PlainSheet::damage(const QString& sentence)
{
    m_damage = sentence;
    return *this;
}

void PlainSheet::throwIfDamaged() const
{
    if (!m_damage.isEmpty())
        throw RuntimeError(RuntimeError::ApplicationDefined, m_damage);
}

QStringList PlainSheet::ShapeNames()
{
    throwIfDamaged();
    return m_shapes;
}

std::vector<Undrawn> PlainSheet::undrawn(const CellArea& area)
{
    std::vector<Undrawn> missing;
    for (const auto& [name, place] : m_undrawable) {
        if (intersect(area, place))
            missing.push_back({Undrawn::Kind::Drawing, u"chart"_s, name});
    }
    return missing;
}

PlainSheet& PlainSheet::formatted(const QString& address)
{
    const CellArea area = areaOf(address);
    m_cells[{area.firstRow, area.firstColumn}];
    m_cells[{area.lastRow, area.lastColumn}];
    return *this;
}

CellArea PlainSheet::usedArea()
{
    throwIfDamaged();
    if (m_cells.empty())
        return CellArea::cell(1, 1);
    CellArea used{maxRow, maxColumn, 1, 1};
    for (const auto& [place, cell] : m_cells) {
        used.firstRow = std::min(used.firstRow, place.first);
        used.firstColumn = std::min(used.firstColumn, place.second);
        used.lastRow = std::max(used.lastRow, place.first);
        used.lastColumn = std::max(used.lastColumn, place.second);
    }
    return used;
}

std::optional<CellArea> PlainSheet::contentArea(Uncomputed)
{
    CellArea contents{1, 1, 0, 0};
    for (const auto& [place, cell] : m_cells) {
        if (cell.value.isEmpty() && cell.shown.isEmpty())
            continue;
        contents.lastRow = std::max(contents.lastRow, place.first);
        contents.lastColumn = std::max(contents.lastColumn, place.second);
    }
    return contents.lastRow ? std::optional(contents) : std::nullopt;
}

const PlainSheet::PlainCell* PlainSheet::cell(int row, int column) const
{
    const auto place = m_cells.find({row, column});
    return place == m_cells.end() ? nullptr : &place->second;
}

QStringList PlainSheet::texts(const CellArea& area, QString PlainCell::*text) const
{
    QStringList result(qsizetype(area.rows()) * area.columns());
    for (const auto& [place, cell] : m_cells)
        if (area.contains(place.first, place.second))
            result[qsizetype(place.first - area.firstRow) * area.columns() + place.second - area.firstColumn] =
                cell.*text;
    return result;
}

QStringList PlainSheet::shownTexts(const CellArea& area)
{
    return texts(area, &PlainCell::shown);
}

QStringList PlainSheet::valueTexts(const CellArea& area)
{
    return texts(area, &PlainCell::value);
}

std::vector<double> PlainSheet::rowHeights(int first, int last)
{
    return sizesOf(m_heights, first, last, standardHeight);
}

void PlainSheet::setRowHeight(int firstRow, int lastRow, double points)
{
    for (int row = firstRow; row <= lastRow; ++row)
        m_heights[row] = points;
}

std::vector<double> PlainSheet::columnWidths(int first, int last)
{
    return sizesOf(m_widths, first, last, standardWidth);
}

void PlainSheet::setColumnWidth(int firstColumn, int lastColumn, double characters)
{
    for (int column = firstColumn; column <= lastColumn; ++column)
        m_widths[column] = characters;
}

void PlainSheet::setInteriorColor(int row, int column, QRgb color)
{
    m_cells[{row, column}].color = color;
}

std::optional<CellArea> PlainSheet::Find(const CellArea& area, const FindQuestion& question)
{
    const FindOrder order(area, question.direction, question.order);
    const bool whole = question.lookAt == LookAt::Whole, anything = !whole && question.what == u"*";
    const auto hits = [&](const QString& text) {
        return whole      ? text.compare(question.what, Qt::CaseInsensitive) == 0
               : anything ? !text.isEmpty()
                          : text.contains(question.what, Qt::CaseInsensitive);
    };
    std::optional<CellArea> best;
    for (const auto& [place, cell] : m_cells) {
        const auto [row, column] = place;
        const bool blank = cell.value.isEmpty() && cell.shown.isEmpty();
        if (blank || !area.contains(row, column) || !(hits(cell.value) || hits(cell.shown)))
            continue;
        if (!best || order.rank(row, column) < order.rank(best->firstRow, best->firstColumn))
            best = CellArea::cell(row, column);
    }
    return best;
}

void PlainSheet::Activate()
{
    if (m_onActivate)
        m_onActivate();
}

QImage PlainSheet::CopyPicture(const CellArea& area, double scale)
{
    QSize size;
    std::vector<QRect> rects;
    for (int row = area.firstRow, y = 0; row <= area.lastRow; ++row) {
        const int high = pixelsOfHeight(rowHeight(row));
        for (int column = area.firstColumn, x = 0; column <= area.lastColumn; ++column) {
            const QRect& rect = rects.emplace_back(x, y, pixelsOfWidth(columnWidth(column)), high);
            size = size.expandedTo(QSize(rect.x() + rect.width(), y + high));
            x += rect.width();
        }
        y += high;
    }
    if (size.isEmpty())
        throw RuntimeError(RuntimeError::ApplicationDefined, u"Nothing of the range is visible."_s);

    if (std::max(size.width(), size.height()) * scale > 32767)
        return {}; // as engines do beyond what can be painted on
    QImage image(size * scale, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.scale(scale, scale);
    for (size_t i = 0; i < rects.size(); ++i) {
        const int index = static_cast<int>(i);
        const PlainCell* found =
            cell(area.firstRow + index / area.columns(), area.firstColumn + index % area.columns());
        if (found && (found->color || !found->shown.isEmpty()))
            painter.fillRect(rects[i], QColor(found->color.value_or(QRgb(0xff000000 | qHash(found->shown, 7)))));
    }
    return image;
}

QImage PlainSheet::CopyShapePicture(const QString& name, double scale)
{
    if (!m_shapes.contains(name, Qt::CaseInsensitive))
        throw RuntimeError(RuntimeError::ApplicationDefined, u"There is no chart or shape "_s + name);
    if (m_undrawable.contains(name))
        throw RuntimeError(RuntimeError::ApplicationDefined, u"The chart \"%1\" cannot be drawn."_s.arg(name));
    QImage image(qRound(200 * scale), qRound(120 * scale), QImage::Format_RGB32);
    image.fill(QColor(QRgb(0xff000000 | qHash(name, 7))));
    return image;
}

PlainWorkbook::PlainWorkbook(const QString& fullName, std::vector<PlainSheet> sheets) : m_fullName(fullName)
{
    for (PlainSheet& sheet : sheets) {
        m_sheets.push_back(std::make_shared<PlainSheet>(std::move(sheet)));
        m_sheets.back()->m_workbookName = Name();
        m_sheets.back()->m_onActivate = [this, index = static_cast<int>(m_sheets.size()) - 1] { m_active = index; };
    }
}

QString PlainWorkbook::Name() const
{
    return m_fullName.mid(m_fullName.lastIndexOf(u'/') + 1);
}

QStringList PlainWorkbook::WorksheetNames() const
{
    QStringList names;
    for (const auto& sheet : m_sheets)
        names.append(sheet->Name());
    return names;
}

std::shared_ptr<Worksheet> PlainWorkbook::WorksheetByName(const QString& name)
{
    for (const auto& sheet : m_sheets) {
        if (sheet->Name().compare(name, Qt::CaseInsensitive) == 0)
            return sheet;
    }
    return nullptr;
}

std::shared_ptr<Worksheet> PlainWorkbook::ActiveSheet()
{
    return m_sheets.empty() ? nullptr : m_sheets[static_cast<size_t>(m_active)];
}

void PlainWorkbook::Activate()
{
    if (!m_application)
        return;
    for (const auto& workbook : m_application->m_workbooks) {
        if (workbook.get() == this)
            m_application->m_active = workbook;
    }
}

void PlainWorkbook::RefreshAll()
{
    if (m_application)
        m_application->tell(u"refresh "_s + m_fullName);
}

void PlainWorkbook::Save()
{
    if (m_application)
        m_application->tell(u"save "_s + m_fullName);
}

void PlainWorkbook::Close()
{
    PlainApplication* const application = std::exchange(m_application, nullptr);
    if (!application)
        return;
    application->tell(u"close "_s + m_fullName);
    auto& open = application->m_workbooks;
    std::erase_if(open, [this](const auto& workbook) { return workbook.get() == this; });
    application->m_active = open.empty() ? nullptr : open.back();
}

HostFactory PlainLibrary::factory()
{
    HostFactory result;
    result.worker = [this] {
        events.append(u"start"_s);
        return std::make_unique<PlainApplication>(*this);
    };
    result.userInstance = [] { return std::shared_ptr<Application>(); };
    return result;
}

std::shared_ptr<Workbook> PlainApplication::Open(const QString& path, bool)
{
    tell(u"open "_s + path);
    const auto book = m_library.books.find(path);
    if (book == m_library.books.end())
        throw RuntimeError(RuntimeError::ApplicationDefined, u"The workbook \"%1\" was not found."_s.arg(path));
    auto workbook = std::make_shared<PlainWorkbook>(path, book->second);
    workbook->m_application = this;
    m_workbooks.push_back(workbook);
    m_active = workbook;
    return workbook;
}

std::shared_ptr<Workbook> PlainApplication::WorkbookItem(int index)
{
    if (index < 1 || index > WorkbooksCount())
        throw RuntimeError(RuntimeError::SubscriptOutOfRange);
    return m_workbooks[static_cast<size_t>(index - 1)];
}

std::shared_ptr<Worksheet> PlainApplication::ActiveSheet()
{
    return m_active ? m_active->ActiveSheet() : nullptr;
}

void PlainApplication::Quit()
{
    for (const auto& workbook : m_workbooks)
        workbook->m_application = nullptr;
    m_workbooks.clear();
    m_active = nullptr;
    tell(u"quit"_s);
}

} // namespace lumivane::test
