#include "engine/formula/Operators.h"

#include "engine/content/TextTable.h"
#include "engine/formula/Coercion.h"

#include <algorithm>
#include <cmath>

namespace lumivane::engine {
namespace {

constexpr size_t mostAreas = 1000;

FormulaValue compared(Operator operation, const FormulaValue& left, const FormulaValue& right)
{
    const int order = compareValues(left, right);
    switch (operation) {
    case Operator::Equal:
        return order == 0;
    case Operator::NotEqual:
        return order != 0;
    case Operator::Less:
        return order < 0;
    case Operator::LessEqual:
        return order <= 0;
    case Operator::Greater:
        return order > 0;
    default:
        return order >= 0;
    }
}

FormulaValue joined(const FormulaValue& left, const FormulaValue& right)
{
    const QString text = asText(left).text() + asText(right).text();
    if (text.size() > static_cast<qsizetype>(maxCellText))
        return ErrorCode::Value;
    return text;
}

FormulaValue calculated(Operator operation, double left, double right)
{
    switch (operation) {
    case Operator::Add:
        return finite(sum15(left, right));
    case Operator::Subtract:
        return finite(sum15(left, -right));
    case Operator::Multiply:
        return finite(left * right);
    case Operator::Divide:
        return right == 0 ? FormulaValue(ErrorCode::Div0) : finite(left / right);
    default:
        return power(left, right);
    }
}

} // namespace

FormulaValue finite(double number)
{
    return std::isfinite(number) ? FormulaValue(number) : FormulaValue(ErrorCode::Num);
}

FormulaValue power(double base, double exponent)
{
    if (base == 0 && exponent <= 0)
        return exponent == 0 ? ErrorCode::Num : ErrorCode::Div0;
    return finite(std::pow(base, exponent));
}

FormulaValue operateOn(Operator operation, const FormulaValue& left, const FormulaValue& right, bool date1904)
{
    if (left.isError())
        return left;
    if (right.isError())
        return right;
    if (operation <= Operator::GreaterEqual)
        return compared(operation, left, right);
    if (operation == Operator::Join)
        return joined(left, right);
    const FormulaValue a = asNumber(left, date1904);
    const FormulaValue b = asNumber(right, date1904);
    if (a.isError())
        return a;
    return b.isError() ? b : calculated(operation, a.number(), b.number());
}

FormulaValue operateOnReferences(Operator operation, const FormulaValue& left, const FormulaValue& right)
{
    for (const FormulaValue* value : {&left, &right}) {
        if (!value->isReference())
            return value->isError() ? *value : FormulaValue(ErrorCode::Value);
    }
    if (operation == Operator::Union) {
        FormulaValue::Areas all(left.areas().begin(), left.areas().end());
        all.insert(all.end(), right.areas().begin(), right.areas().end());
        return all.size() > mostAreas ? FormulaValue(ErrorCode::Value) : FormulaValue(std::move(all));
    }
    if (left.areas().size() != 1 || right.areas().size() != 1 || left.areas()[0].sheet != right.areas()[0].sheet)
        return ErrorCode::Value;
    const SheetArea& a = left.areas()[0];
    const CellArea& b = right.areas()[0].cells;
    if (operation == Operator::Intersection) {
        const auto common = intersect(a.cells, b);
        return common ? FormulaValue(SheetArea{a.sheet, *common}) : FormulaValue(ErrorCode::Null);
    }
    return SheetArea{a.sheet,
                     {std::min(a.cells.firstRow, b.firstRow), std::min(a.cells.firstColumn, b.firstColumn),
                      std::max(a.cells.lastRow, b.lastRow), std::max(a.cells.lastColumn, b.lastColumn)}};
}

} // namespace lumivane::engine
