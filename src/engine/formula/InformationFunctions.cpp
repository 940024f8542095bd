#include "engine/formula/Function.h"

#include <cmath>

namespace lumivane::engine {
namespace {

FormulaValue isBlank(FunctionCall& call)
{
    return call.value(0).isBlank();
}

FormulaValue isNumber(FunctionCall& call)
{
    return call.value(0).isNumber();
}

FormulaValue isText(FunctionCall& call)
{
    return call.value(0).isText();
}

FormulaValue isNotText(FunctionCall& call)
{
    return !call.value(0).isText();
}

FormulaValue isLogical(FunctionCall& call)
{
    return call.value(0).isBoolean();
}

FormulaValue isError(FunctionCall& call)
{
    return call.value(0).isError();
}

bool isMissingValue(const FormulaValue& value)
{
    return value.isError() && value.error() == ErrorCode::NA;
}

FormulaValue isNotAvailable(FunctionCall& call)
{
    return isMissingValue(call.value(0));
}

FormulaValue isOtherError(FunctionCall& call)
{
    return call.value(0).isError() && !isMissingValue(call.value(0));
}

FormulaValue isReference(FunctionCall& call)
{
    return call.value(0).isReference();
}

FormulaValue isFormula(FunctionCall& call)
{
    const SheetArea area = call.area(0);
    return call.evaluation().cells().isFormula(area.sheet, area.cells.firstRow, area.cells.firstColumn);
}

/// Whether a number without its decimals is odd; no text in a cell is one, even if it looks so.
bool odd(FunctionCall& call)
{
    if (call.value(0).isBoolean())
        call.fail(ErrorCode::Value);
    return std::fmod(std::trunc(call.number(0)), 2) != 0;
}

FormulaValue isEven(FunctionCall& call)
{
    return !odd(call);
}

FormulaValue isOdd(FunctionCall& call)
{
    return odd(call);
}

FormulaValue notAvailable(FunctionCall&)
{
    return ErrorCode::NA;
}

FormulaValue errorType(FunctionCall& call)
{
    const FormulaValue& value = call.value(0);
    return value.isError() ? FormulaValue(static_cast<int>(value.error()) + 1) : ErrorCode::NA;
}

FormulaValue number(FunctionCall& call)
{
    const FormulaValue& value = call.value(0);
    if (value.isNumber() || value.isError())
        return value;
    return value.isBoolean() && value.boolean() ? 1 : 0;
}

FormulaValue type(FunctionCall& call)
{
    if (call.value(0).isArray())
        return 64;
    const FormulaValue value = call.evaluation().oneOf(call.value(0));
    return value.isText() ? 2 : value.isBoolean() ? 4 : value.isError() ? 16 : 1;
}

FormulaValue sheet(FunctionCall& call)
{
    if (call.count() == 0)
        return call.evaluation().sheet() + 1;
    const FormulaValue& value = call.value(0);
    if (value.isReference())
        return value.areas()[0].sheet + 1;
    const int named = call.evaluation().cells().sheetNamed(call.text(0));
    return named < 0 ? FormulaValue(ErrorCode::NA) : FormulaValue(named + 1);
}

FormulaValue sheets(FunctionCall& call)
{
    return call.count() == 0 ? call.evaluation().cells().sheetCount() : 1;
}

constexpr Function functions[]{
    {"ISBLANK", 1, 1, "v", isBlank},     {"ISNUMBER", 1, 1, "v", isNumber},    {"ISTEXT", 1, 1, "v", isText},
    {"ISNONTEXT", 1, 1, "v", isNotText}, {"ISLOGICAL", 1, 1, "v", isLogical},  {"ISERROR", 1, 1, "v", isError},
    {"ISERR", 1, 1, "v", isOtherError},  {"ISNA", 1, 1, "v", isNotAvailable},  {"ISREF", 1, 1, "m", isReference},
    {"ISFORMULA", 1, 1, "m", isFormula}, {"ISEVEN", 1, 1, "v", isEven},        {"ISODD", 1, 1, "v", isOdd},
    {"NA", 0, 0, "v", notAvailable},     {"ERROR.TYPE", 1, 1, "v", errorType}, {"N", 1, 1, "v", number},
    {"TYPE", 1, 1, "m", type},           {"SHEET", 0, 1, "m", sheet},          {"SHEETS", 0, 1, "m", sheets},
};

} // namespace

std::span<const Function> informationFunctions()
{
    return functions;
}

} // namespace lumivane::engine
