#include "engine/read/csv/CsvWorkbook.h"

#include "engine/read/Fault.h"
#include "engine/read/csv/CsvText.h"
#include "engine/read/csv/CsvValues.h"
#include "platform/RuntimeError.h"

#include <QFileInfo>

namespace lumivane::engine {

using namespace Qt::StringLiterals;

CsvWorkbook::CsvWorkbook(const QString& path, std::string bytes, int year) : m_sheet(std::make_shared<SheetContent>())
{
    const std::string text = decodedText(std::move(bytes));
    sheets.push_back({QFileInfo(path).completeBaseName(), true, false});
    m_sheet->sizedByTexts = true;
    readFields(text, year);
}

void CsvWorkbook::readFields(std::string_view text, int year)
{
    CsvFields fields(text, detectSeparator(text));
    std::vector<Cell>& cells = m_sheet->cells;
    int row = 0, lastColumn = 0, firstColumn = maxColumn;
    for (row = 1; fields.nextLine(); ++row) {
        if (row > maxRow)
            throw Fault{u"it has more than %1 lines"_s.arg(maxRow)};
        RowContent line;
        line.row = row;
        line.firstCell = static_cast<quint32>(cells.size());
        std::string_view field;
        for (int column = 1; fields.nextField(field); ++column) {
            if (field.empty())
                continue;
            if (column > maxColumn)
                throw Fault{u"line %1 has more than %2 fields"_s.arg(row).arg(maxColumn)};
            Cell cell = cellFrom(field, year);
            cell.column = static_cast<quint16>(column);
            cells.push_back(cell);
            firstColumn = std::min(firstColumn, column);
            lastColumn = std::max(lastColumn, column);
        }
        if (cells.size() > line.firstCell)
            m_sheet->rows.push_back(line);
    }
    if (!m_sheet->rows.empty())
        m_sheet->used = CellArea{m_sheet->rows.front().row, firstColumn, m_sheet->rows.back().row, lastColumn};
}

Cell CsvWorkbook::cellFrom(std::string_view field, int year)
{
    Cell cell;
    const std::optional<CsvValue> value = csvValue(field, year);
    if (!value) {
        cell.kind = CellKind::SheetText;
        cell.text = static_cast<quint64>(m_sheet->texts.append(field));
        if (field.find('\n') != field.npos)
            cell.style = linesStyle();
        return cell;
    }
    cell.kind = value->kind;
    cell.formula = value->kind == CellKind::Uncomputed;
    if (value->kind == CellKind::Error)
        cell.text = static_cast<quint64>(value->error);
    else
        cell.number = value->number;
    if (value->format)
        cell.style = styleFor(value->format);
    return cell;
}

quint32 CsvWorkbook::styleFor(const char16_t* format)
{
    const auto place = m_styles.find(format);
    if (place != m_styles.end())
        return place->second;
    CellStyle style;
    style.numberFormat = static_cast<int>(styles.numberFormats.size());
    styles.numberFormats.push_back(QStringView(format).toString());
    styles.cells.push_back(style);
    return m_styles[format] = static_cast<quint32>(styles.cells.size()) - 1;
}

/// Line breaks show in wrapped cells only.
quint32 CsvWorkbook::linesStyle()
{
    if (m_linesStyle == 0) {
        CellStyle style;
        style.wrap = true;
        styles.cells.push_back(style);
        m_linesStyle = static_cast<quint32>(styles.cells.size()) - 1;
    }
    return m_linesStyle;
}

std::shared_ptr<const SheetContent> CsvWorkbook::sheet(int index)
{
    if (index != 0)
        throw RuntimeError(RuntimeError::SubscriptOutOfRange);
    return m_sheet;
}

qint64 CsvWorkbook::bytes() const
{
    return qint64(sizeof(*this)) + m_sheet->bytes();
}

} // namespace lumivane::engine
