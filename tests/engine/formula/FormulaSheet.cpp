#include "FormulaSheet.h"

#include "engine/formula/Coercion.h"
#include "support/TextTable.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace lumivane::engine {

FormulaSheet::FormulaSheet(const char* drawn, const char* second) : m_workbook(std::make_shared<WorkbookContent>())
{
    m_workbook->sheets = {{u"Data"_s}, {u"It's"_s}, {u"Lost"_s}};
    m_sheets = {drawnSheet(drawn), drawnSheet(second), nullptr};
}

std::shared_ptr<SheetContent> FormulaSheet::drawnSheet(const char* drawn)
{
    auto sheet = std::make_shared<SheetContent>();
    int row = 0, widest = 0;
    for (const QStringList& texts : test::drawnCells(drawn)) {
        sheet->rows.push_back({++row, static_cast<quint32>(sheet->cells.size())});
        for (int column = 1; column <= texts.size(); ++column) {
            const QString& text = texts[column - 1];
            Cell cell;
            cell.column = static_cast<quint16>(column);
            widest = std::max(widest, column);
            bool isNumber = false;
            cell.number = text.toDouble(&isNumber);
            const auto error = std::find(std::begin(errorNames), std::end(errorNames), text.toStdString());
            if (text == u"-")
                continue;
            if (isNumber) {
                cell.kind = CellKind::Number;
            } else if (text == u"TRUE" || text == u"FALSE") {
                cell.kind = CellKind::Boolean;
                cell.number = text == u"TRUE";
            } else if (error != std::end(errorNames)) {
                cell.kind = CellKind::Error;
                cell.text = static_cast<quint64>(error - std::begin(errorNames));
            } else if (text == u"?") {
                cell.kind = CellKind::Uncomputed;
                cell.formula = true;
            } else {
                cell.kind = CellKind::Text;
                const QString shown = text.startsWith(u'\'') ? text.mid(1).remove(u'\'') : text;
                cell.text = static_cast<quint64>(m_workbook->texts.append(shown.toStdString()));
            }
            sheet->cells.push_back(cell);
        }
    }
    if (row)
        sheet->used = CellArea{1, 1, row, widest};
    return sheet;
}

void FormulaSheet::define(const QString& name, const QString& formula, int sheet)
{
    m_workbook->definedNames.push_back({name, formula, sheet});
}

WorkbookCells FormulaSheet::cells() const
{
    return WorkbookCells(m_workbook, [this](int sheet) { return m_sheets[static_cast<size_t>(sheet)]; });
}

QString FormulaSheet::textOf(const FormulaValue& value) const
{
    if (value.isReference()) {
        QStringList areas;
        for (const SheetArea& area : value.areas())
            areas.append(m_workbook->sheets[static_cast<size_t>(area.sheet)].name + u'!' + area.cells.absolute());
        return areas.join(u',');
    }
    if (value.isArray()) {
        QString text;
        for (int row = 0; row < value.array().rows; ++row) {
            for (int column = 0; column < value.array().columns; ++column)
                text += (column ? u"," : row ? u";" : u"") + textOf(value.array().at(row, column));
        }
        return u'{' + text + u'}';
    }
    return value.isError() ? errorText(value.error()) : asText(value).text();
}

QString FormulaSheet::value(const QString& formula, FormulaPlace at)
{
    const auto parsed = Formula::parse(formula);
    if (!parsed)
        return u"not understood"_s;
    WorkbookCells cells = this->cells();
    const FormulaValue value = parsed->evaluate(cells, 0, {1, 1}, at);
    return textOf(value);
}

void expectValues(FormulaSheet& sheet, const char* drawn, FormulaPlace at)
{
    for (const auto& [formula, value] : test::textPairs(drawn))
        EXPECT_EQ(sheet.value(formula, at), value) << formula;
}

} // namespace lumivane::engine
