#include "engine/formula/Formula.h"
#include "engine/formula/WorkbookCells.h"

#include <cstdlib>

using namespace Qt::StringLiterals;

namespace lumivane::engine {
namespace {

/// Two sheets of one content: values of all kinds in C2:F13, and names that use the formula itself.
std::shared_ptr<WorkbookContent> workbookWith(const QString& formula)
{
    auto workbook = std::make_shared<WorkbookContent>();
    workbook->sheets = {{u"Data"_s}, {u"It's"_s}, {u"Lost"_s}};
    workbook->definedNames = {
        {u"itself"_s, formula}, {u"twice"_s, u"itself&itself"_s}, {u"area"_s, u"Data!$C$2:$F$13"_s}};
    for (const std::string_view text : {"", "ab*c", "12", "1/2/2024", "\xc3\x84rger", "#N/A"})
        workbook->texts.append(text);
    return workbook;
}

std::shared_ptr<const SheetContent> sheetOfAllKinds()
{
    auto sheet = std::make_shared<SheetContent>();
    const double numbers[]{0, -1.5, 0.1, 60, 45000.25, 1e300, 7};
    for (int row = 2; row <= 13; ++row) {
        sheet->rows.push_back({row, static_cast<quint32>(sheet->cells.size())});
        for (int column = 3; column <= 6; ++column) {
            Cell cell;
            const int count = row * 4 + column;
            cell.column = static_cast<quint16>(column);
            cell.kind = static_cast<CellKind>(count % 7 == 3 ? 1 : count % 7);
            if (cell.kind == CellKind::Text || cell.kind == CellKind::Error)
                cell.text = static_cast<quint64>(count % 6);
            else
                cell.number = cell.kind == CellKind::Boolean ? count % 2 : numbers[count % 7];
            sheet->cells.push_back(cell);
        }
    }
    sheet->used = CellArea{2, 3, 13, 6};
    return sheet;
}

} // namespace
} // namespace lumivane::engine

// Formulas come from files. Each is evaluated often enough for indexes to be made.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    using namespace lumivane::engine;
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const auto formula = Formula::parse(text);
    if (!formula)
        return 0;
    static const auto sheet = sheetOfAllKinds();
    WorkbookCells cells(workbookWith(text), [](int index) { return index < 2 ? sheet : nullptr; });
    FormulaRun run(*formula, cells, 0, {2, 3});
    for (const FormulaPlace at : {FormulaPlace{2, 3}, {3, 3}, {4, 5}, {13, 6}, {1048576, 16384}, {1, 1}}) {
        const FormulaValue value = run.single(at);
        if (value.isReference() || value.isArray())
            std::abort();
        run.isTrue(at);
    }
    return 0;
}
