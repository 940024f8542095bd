#include "engine/formula/Coercion.h"
#include "engine/formula/Function.h"

namespace lumivane::engine {
namespace {

/// Booleans and numbers count, texts in cells do not; #VALUE! where nothing counts.
template <class Take>
FormulaValue eachTruth(FunctionCall& call, bool start, Take take)
{
    bool result = start, any = false;
    call.eachValue(0, FormulaCells::Texts::Needed, [&](const FormulaValue& value, bool given) {
        const FormulaValue truth = value.isText() && !given ? FormulaValue() : asBoolean(value);
        if (truth.isError())
            call.fail(truth.error());
        else if (truth.isBoolean()) {
            any = true;
            result = take(result, truth.boolean());
        }
        return !call.failure();
    });
    return any ? FormulaValue(result) : ErrorCode::Value;
}

FormulaValue logicalAnd(FunctionCall& call)
{
    return eachTruth(call, true, [](bool all, bool one) { return all && one; });
}

FormulaValue logicalOr(FunctionCall& call)
{
    return eachTruth(call, false, [](bool any, bool one) { return any || one; });
}

FormulaValue logicalXor(FunctionCall& call)
{
    return eachTruth(call, false, [](bool odd, bool one) { return odd != one; });
}

FormulaValue logicalNot(FunctionCall& call)
{
    return !call.boolean(0);
}

FormulaValue constantTrue(FunctionCall&)
{
    return true;
}

FormulaValue constantFalse(FunctionCall&)
{
    return false;
}

/// A value that is left out counts as 0.
FormulaValue chosen(FunctionCall& call, int place)
{
    return call.isMissing(place) ? FormulaValue(0) : call.value(place);
}

FormulaValue ifElse(FunctionCall& call)
{
    const bool condition = call.boolean(0);
    if (call.failure())
        return {};
    if (condition)
        return chosen(call, 1);
    return call.count() > 2 ? chosen(call, 2) : FormulaValue(false);
}

FormulaValue ifs(FunctionCall& call)
{
    for (int place = 0; place + 1 < call.count(); place += 2) {
        if (call.boolean(place) || call.failure())
            return call.value(place + 1);
    }
    return ErrorCode::NA;
}

FormulaValue ifError(FunctionCall& call)
{
    return call.value(0).isError() ? chosen(call, 1) : call.value(0);
}

FormulaValue ifNotAvailable(FunctionCall& call)
{
    const FormulaValue& value = call.value(0);
    return value.isError() && value.error() == ErrorCode::NA ? chosen(call, 1) : value;
}

FormulaValue switchCase(FunctionCall& call)
{
    const FormulaValue sought = call.value(0);
    if (sought.isError())
        return sought;
    int place = 1;
    for (; place + 1 < call.count(); place += 2) {
        const FormulaValue offered = call.evaluation().oneOf(call.value(place));
        if (offered.isError())
            return offered;
        if (compareValues(sought, offered) == 0)
            return chosen(call, place + 1);
    }
    return place < call.count() ? chosen(call, place) : ErrorCode::NA;
}

FormulaValue choose(FunctionCall& call)
{
    const double number = call.number(0);
    if (!(number >= 1 && number < call.count()))
        return ErrorCode::Value;
    return chosen(call, static_cast<int>(number));
}

constexpr Function functions[]{
    {"AND", 1, Function::many, "m", logicalAnd},
    {"OR", 1, Function::many, "m", logicalOr},
    {"XOR", 1, Function::many, "m", logicalXor},
    {"NOT", 1, 1, "v", logicalNot},
    {"TRUE", 0, 0, "v", constantTrue},
    {"FALSE", 0, 0, "v", constantFalse},
    {"IF", 2, 3, "vpp", ifElse},
    {"IFS", 2, Function::many, "vp", ifs, 2},
    {"IFERROR", 2, 2, "vv", ifError},
    {"IFNA", 2, 2, "vv", ifNotAvailable},
    {"SWITCH", 3, Function::many, "vp", switchCase},
    {"CHOOSE", 2, Function::many, "vp", choose},
};

} // namespace

std::span<const Function> logicFunctions()
{
    return functions;
}

} // namespace lumivane::engine
