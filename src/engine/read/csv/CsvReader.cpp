#include "engine/read/csv/CsvReader.h"

#include "engine/read/csv/CsvText.h"
#include "engine/read/csv/CsvValues.h"
#include "engine/read/package/ReadError.h"
#include "platform/Clock.h"

#include <QFile>
#include <QFileInfo>

namespace lumivane::engine {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 maxTextFile = 256 << 20;

std::string bytesOf(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw Fault{u"it cannot be opened (%1)"_s.arg(file.errorString()), ReadCause::NotOpened};
    if (file.size() > maxTextFile)
        throw Fault{u"it is a text of more than %1 MB"_s.arg(maxTextFile >> 20), ReadCause::TooLarge};
    std::string bytes(static_cast<size_t>(file.size()), '\0');
    const qint64 count = file.read(bytes.data(), file.size());
    if (count < 0)
        throw Fault{u"it cannot be read (%1)"_s.arg(file.errorString()), ReadCause::NotOpened};
    bytes.resize(static_cast<size_t>(count));
    return bytes;
}

} // namespace

CsvReader::CsvReader(const QString& path) : m_path(path), m_year(Clock::now().date().year()) {}

WorkbookContent CsvReader::readWorkbook(SheetList& sheets, qint64 maxBytes)
{
    const auto sheet = std::make_shared<SheetContent>();
    sheet->sizedByTexts = true;
    m_rows.emplace(*sheet, maxBytes);
    readFields(decodedText(bytesOf(m_path)));
    m_rows.reset();
    WorkbookContent workbook;
    workbook.sheets.push_back({QFileInfo(m_path).completeBaseName(), true, false});
    workbook.styles = std::move(m_styles);
    workbook.isTextFile = true;
    sheets = {sheet};
    return workbook;
}

void CsvReader::readFields(std::string_view text)
{
    CsvFields fields(text, detectSeparator(text));
    for (int number = 1; fields.nextLine(); ++number) {
        if (number > maxRow)
            throw Fault{u"it has more than %1 lines"_s.arg(maxRow), ReadCause::TooLarge};
        RowContent line;
        line.row = number;
        m_rows->startRow(line);
        std::string_view field;
        for (int column = 1; fields.nextField(field); ++column) {
            if (column > maxColumn)
                throw Fault{u"line %1 has more than %2 fields"_s.arg(number).arg(maxColumn), ReadCause::TooLarge};
            if (field.empty())
                continue;
            Cell cell = cellFrom(field);
            cell.column = static_cast<quint16>(column);
            m_rows->append(cell);
        }
        m_rows->endRow();
    }
    m_rows->finish();
}

Cell CsvReader::cellFrom(std::string_view field)
{
    Cell cell;
    const std::optional<CsvValue> value = csvValue(field, m_year);
    if (!value) {
        cell.kind = CellKind::SheetText;
        cell.text = m_rows->appendText(field);
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

quint32 CsvReader::styleFor(const char16_t* format)
{
    const auto place = m_formats.find(format);
    if (place != m_formats.end())
        return place->second;
    CellStyle style;
    style.numberFormat = static_cast<int>(m_styles.numberFormats.size());
    m_styles.numberFormats.push_back(QStringView(format).toString());
    m_styles.cells.push_back(style);
    return m_formats[format] = static_cast<quint32>(m_styles.cells.size()) - 1;
}

/// Line breaks show in wrapped cells only.
quint32 CsvReader::linesStyle()
{
    if (m_linesStyle == 0) {
        CellStyle style;
        style.wrap = true;
        m_styles.cells.push_back(style);
        m_linesStyle = static_cast<quint32>(m_styles.cells.size()) - 1;
    }
    return m_linesStyle;
}

std::shared_ptr<const SheetContent> CsvReader::readSheet(const WorkbookContent&, int, qint64)
{
    throw Fault{u"its sheet was read with the file"_s};
}

} // namespace lumivane::engine
