#include "Book.h"

#include "platform/CellArea.h"
#include "platform/RuntimeError.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTimeZone>
#include <cmath>
#include <xlsxwriter.h>

using namespace Qt::StringLiterals;

namespace lumivane::demo {

namespace {

/// Widest digit of the default font, Calibri 11, in pixels.
constexpr int digitWidth = 7;

lxw_color_t colorOf(const QByteArray& rgb)
{
    return lxw_color_t(rgb.toUInt(nullptr, 16));
}

uint8_t lineStyle(const QByteArray& name)
{
    return name == "thin" ? LXW_BORDER_THIN : name == "medium" ? LXW_BORDER_MEDIUM : LXW_BORDER_HAIR;
}

void setLines(lxw_format* format, const Look& look)
{
    if (const QList<QByteArray> top = look.top.split(' '); top.size() == 2) {
        format_set_top(format, lineStyle(top[0]));
        format_set_top_color(format, colorOf(top[1]));
    }
    if (const QList<QByteArray> bottom = look.bottom.split(' '); bottom.size() == 2) {
        format_set_bottom(format, lineStyle(bottom[0]));
        format_set_bottom_color(format, colorOf(bottom[1]));
    }
}

void setFormat(lxw_format* format, const Look& look)
{
    static constexpr uint8_t sides[] = {LXW_ALIGN_NONE, LXW_ALIGN_LEFT, LXW_ALIGN_CENTER, LXW_ALIGN_RIGHT};
    if (look.bold)
        format_set_bold(format);
    if (look.italic)
        format_set_italic(format);
    format_set_font_size(format, look.points);
    format_set_font_color(format, colorOf(look.color));
    if (!look.fill.isEmpty()) {
        format_set_pattern(format, LXW_PATTERN_SOLID);
        format_set_fg_color(format, colorOf(look.fill));
    }
    if (look.format != "General")
        format_set_num_format(format, look.format.constData());
    format_set_align(format, sides[int(look.side)]);
    format_set_align(format, LXW_ALIGN_VERTICAL_CENTER);
    format_set_indent(format, uint8_t(look.indent));
    if (look.wrap)
        format_set_text_wrap(format);
    setLines(format, look);
}

/// The formats of a workbook, one for each look.
class Formats
{
public:
    explicit Formats(lxw_workbook* workbook) : m_workbook(workbook) {}
    lxw_format* of(const Look& look)
    {
        for (const auto& [known, format] : m_formats) {
            if (known == look)
                return format;
        }
        lxw_format* format = workbook_add_format(m_workbook);
        setFormat(format, look);
        m_formats.append({look, format});
        return format;
    }

private:
    lxw_workbook* m_workbook;
    QList<std::pair<Look, lxw_format*>> m_formats;
};

/// Cut to the 15 digits that a spreadsheet program keeps.
double storedNumber(double number)
{
    return QByteArray::number(number, 'g', 15).toDouble();
}

/// Of a width in characters as a file states it.
uint32_t pixelsOf(double characters)
{
    return uint32_t(std::floor((256 * characters + std::floor(128.0 / digitWidth)) / 256 * digitWidth));
}

void addCondition(lxw_worksheet* sheet, const CellArea& cells, lxw_conditional_format& condition)
{
    worksheet_conditional_format_range(sheet, lxw_row_t(cells.firstRow - 1), lxw_col_t(cells.firstColumn - 1),
                                       lxw_row_t(cells.lastRow - 1), lxw_col_t(cells.lastColumn - 1), &condition);
}

} // namespace

QString cellName(int row, int column)
{
    return CellArea::cell(row, column).relative();
}

Look Look::asBold() const
{
    Look look = *this;
    look.bold = true;
    return look;
}

Look Look::sized(double newPoints) const
{
    Look look = *this;
    look.points = newPoints;
    return look;
}

Look Look::colored(const QByteArray& newColor) const
{
    Look look = *this;
    look.color = newColor;
    return look;
}

Look Look::filled(const QByteArray& newFill) const
{
    Look look = *this;
    look.fill = newFill;
    return look;
}

Look Look::formatted(const QByteArray& code) const
{
    Look look = *this;
    look.format = code;
    return look;
}

Look Look::aligned(Side newSide, int newIndent) const
{
    Look look = *this;
    look.side = newSide;
    look.indent = newIndent;
    return look;
}

Look Look::lined(const QByteArray& above, const QByteArray& below) const
{
    Look look = *this;
    look.top = above;
    look.bottom = below;
    return look;
}

void Sheet::set(int row, int column, Value value, const Look& look)
{
    m_cells[row][column] = {std::move(value), QString(), look};
}

void Sheet::setFormula(int row, int column, const QString& formula, double result, const Look& look)
{
    m_cells[row][column] = {result, formula, look};
}

void Sheet::fillRow(int row, int firstColumn, int lastColumn, const Look& look)
{
    for (int column = firstColumn; column <= lastColumn; ++column)
        set(row, column, {}, look);
}

void Sheet::setWidth(int firstColumn, int lastColumn, double characters)
{
    m_widths.append({firstColumn, lastColumn, characters});
}

void Sheet::setHeight(int row, double points)
{
    m_rows[row].height = points;
}

void Sheet::hideRow(int row)
{
    m_rows[row].hidden = true;
}

void Sheet::merge(const QString& area)
{
    m_merged.append(area);
}

void Sheet::freeze(int rows, int columns)
{
    m_frozenRows = rows;
    m_frozenColumns = columns;
}

void Sheet::addDataBars(const CellArea& cells, const QByteArray& color)
{
    m_bars.emplace_back(cells, color);
}

void Sheet::addArrows(const CellArea& cells)
{
    m_arrows.push_back(cells);
}

void Sheet::addPicture(int row, int column, const QString& description, const QByteArray& png)
{
    m_pictures.push_back({row, column, description.toUtf8(), png});
}

void Sheet::addTextBox(const TextBox& box)
{
    m_boxes.append(box);
}

double Sheet::number(int row, int column) const
{
    const auto cells = m_cells.find(row);
    if (cells == m_cells.end() || !cells->second.contains(column))
        return 0;
    const auto* number = std::get_if<double>(&cells->second.at(column).value);
    return number ? *number : 0;
}

Sheet& Book::add(const QString& name)
{
    return m_sheets.emplace_back(name);
}

QByteArray Book::bytes() const
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"book.xlsx"_s));
    lxw_workbook* workbook = workbook_new(QFile::encodeName(file.fileName()).constData());
    lxw_doc_properties properties{};
    properties.created = QDateTime(QDate(2026, 1, 1), QTime(0, 0), QTimeZone::utc()).toSecsSinceEpoch();
    workbook_set_properties(workbook, &properties); // equal contents give equal bytes
    Formats formats(workbook);
    const auto formatOf = [&formats](const Look& look) { return formats.of(look); };
    for (const Sheet& sheet : m_sheets)
        sheet.write(workbook_add_worksheet(workbook, sheet.m_name.toUtf8().constData()), formatOf);
    if (const lxw_error failed = workbook_close(workbook))
        throw RuntimeError(RuntimeError::ApplicationDefined,
                           u"The workbook cannot be written: %1"_s.arg(QString::fromUtf8(lxw_strerror(failed))));
    int drawing = 0; // parts with drawings are numbered in the order of the sheets that have any
    for (const Sheet& sheet : m_sheets) {
        drawing += sheet.m_pictures.empty() ? 0 : 1;
        if (!sheet.m_boxes.isEmpty())
            addTextBoxes(file.fileName(), drawing, sheet.m_boxes);
    }
    file.open(QIODevice::ReadOnly);
    return file.readAll();
}

void Sheet::write(lxw_worksheet* sheet, const FormatOf& formatOf) const
{
    worksheet_gridlines(sheet, LXW_HIDE_ALL_GRIDLINES);
    if (m_frozenRows > 0 || m_frozenColumns > 0)
        worksheet_freeze_panes(sheet, lxw_row_t(m_frozenRows), lxw_col_t(m_frozenColumns));
    for (const Width& width : m_widths)
        worksheet_set_column_pixels(sheet, lxw_col_t(width.first - 1), lxw_col_t(width.last - 1),
                                    pixelsOf(width.characters), nullptr);
    for (const auto& [row, format] : m_rows) {
        lxw_row_col_options options{.hidden = uint8_t(format.hidden ? 1 : 0), .level = 0, .collapsed = 0};
        worksheet_set_row_opt(sheet, lxw_row_t(row - 1), format.height > 0 ? format.height : LXW_DEF_ROW_HEIGHT,
                              nullptr, &options);
    }
    for (const QString& merged : m_merged) {
        const CellArea area = CellArea::parse(merged).value();
        worksheet_merge_range(sheet, lxw_row_t(area.firstRow - 1), lxw_col_t(area.firstColumn - 1),
                              lxw_row_t(area.lastRow - 1), lxw_col_t(area.lastColumn - 1), "", nullptr);
    }
    for (const auto& [row, cells] : m_cells) {
        for (const auto& [column, cell] : cells)
            cell.write(sheet, row, column, formatOf(cell.look));
    }
    writeConditions(sheet);
    writePictures(sheet);
}

void Sheet::writeConditions(lxw_worksheet* sheet) const
{
    for (const auto& [cells, color] : m_bars) {
        lxw_conditional_format bars{};
        bars.type = LXW_CONDITIONAL_DATA_BAR;
        bars.data_bar_2010 = LXW_TRUE;
        bars.bar_color = colorOf(color);
        bars.bar_solid = LXW_TRUE;
        addCondition(sheet, cells, bars);
    }
    for (const CellArea& cells : m_arrows) {
        lxw_conditional_format arrows{};
        arrows.type = LXW_CONDITIONAL_TYPE_ICON_SETS;
        arrows.icon_style = LXW_CONDITIONAL_ICONS_3_ARROWS_COLORED;
        addCondition(sheet, cells, arrows);
    }
}

void Sheet::writePictures(lxw_worksheet* sheet) const
{
    for (const Picture& picture : m_pictures) {
        lxw_image_options options{};
        options.object_position = LXW_OBJECT_MOVE_DONT_SIZE;
        options.x_offset = 8;
        options.y_offset = 6;
        options.description = const_cast<char*>(picture.description.constData()); // read only
        worksheet_insert_image_buffer_opt(sheet, lxw_row_t(picture.row - 1), lxw_col_t(picture.column - 1),
                                          reinterpret_cast<const unsigned char*>(picture.png.constData()),
                                          size_t(picture.png.size()), &options);
    }
}

void Sheet::Cell::write(lxw_worksheet* sheet, int row, int column, lxw_format* format) const
{
    const auto r = lxw_row_t(row - 1);
    const auto c = lxw_col_t(column - 1);
    if (const auto* number = std::get_if<double>(&value); number && !formula.isEmpty())
        worksheet_write_formula_num(sheet, r, c, QString(u'=' + formula).toUtf8().constData(), format,
                                    storedNumber(*number));
    else if (number)
        worksheet_write_number(sheet, r, c, storedNumber(*number), format);
    else if (const auto* date = std::get_if<QDate>(&value)) // days are counted so that March 1900 begins with 61
        worksheet_write_number(sheet, r, c, double(QDate(1899, 12, 30).daysTo(*date)), format);
    else if (const auto* text = std::get_if<QString>(&value))
        worksheet_write_string(sheet, r, c, text->toUtf8().constData(), format);
    else
        worksheet_write_blank(sheet, r, c, format);
}

} // namespace lumivane::demo
