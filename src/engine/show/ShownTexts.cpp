#include "engine/show/ShownTexts.h"

using namespace Qt::StringLiterals;

namespace lumivane::engine {
namespace {

QString booleanText(double value)
{
    return value != 0 ? u"TRUE"_s : u"FALSE"_s;
}

FormattedText unformatted(const QString& text)
{
    FormattedText result;
    result.text = text;
    return result;
}

} // namespace

ShownTexts::ShownTexts(std::shared_ptr<const WorkbookContent> workbook, std::shared_ptr<const SheetContent> sheet)
    : m_workbook(std::move(workbook)), m_sheet(std::move(sheet)), m_formats(m_workbook->styles.numberFormats.size())
{
}

ShownTexts::~ShownTexts() = default;
ShownTexts::ShownTexts(ShownTexts&&) noexcept = default;

const NumberFormat& ShownTexts::format(int style) const
{
    const StyleTable& styles = m_workbook->styles;
    size_t index = static_cast<size_t>(styles.cell(style).numberFormat);
    if (index >= m_formats.size())
        index = 0;
    std::unique_ptr<NumberFormat>& format = m_formats[index];
    if (!format)
        format = std::make_unique<NumberFormat>(styles.numberFormats[index]);
    return *format;
}

QString ShownTexts::storedText(const Cell& cell) const
{
    return (cell.kind == CellKind::Text ? m_workbook->texts : m_sheet->texts).text(cell.text);
}

FormattedText ShownTexts::formatted(const Cell& cell, int generalChars) const
{
    const int style = static_cast<int>(cell.style);
    switch (cell.kind) {
    case CellKind::Number:
        return format(style).number(cell.number, m_workbook->date1904, generalChars);
    case CellKind::Text:
    case CellKind::SheetText:
        return format(style).text(storedText(cell));
    default:
        return unformatted(plain(cell));
    }
}

QString ShownTexts::shown(const Cell& cell) const
{
    return formatted(cell).text;
}

QString ShownTexts::shown(double number, int style) const
{
    return format(style).number(number, m_workbook->date1904).text;
}

QString ShownTexts::plain(const Cell& cell) const
{
    switch (cell.kind) {
    case CellKind::Number:
        return plainValueText(cell.number);
    case CellKind::Text:
    case CellKind::SheetText:
        return storedText(cell);
    case CellKind::Boolean:
        return booleanText(cell.number);
    case CellKind::Error:
        return errorText(static_cast<ErrorCode>(cell.text));
    case CellKind::Blank:
    case CellKind::Uncomputed:
        break;
    }
    return {};
}

} // namespace lumivane::engine
