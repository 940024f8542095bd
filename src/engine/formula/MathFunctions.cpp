#include "engine/format/Decimal.h"
#include "engine/formula/Coercion.h"
#include "engine/formula/Function.h"
#include "engine/formula/Operators.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace lumivane::engine {
namespace {

constexpr int mostDigits = 400; ///< further ones neither add nor take away anything

/// The next whole number, where the binary value misses it by less than its 15 digits tell.
double settled(double number)
{
    const double whole = std::round(number);
    return sameNumber(number, whole) ? whole : number;
}

double roundedDown(double number)
{
    return std::floor(settled(number));
}

/// Rounds a number times a power of ten, towards 0 or away from it.
template <class Round>
FormulaValue roundedAt(FunctionCall& call, Round round)
{
    const double number = call.number(0);
    const int digits = call.integer(1, -mostDigits, mostDigits, 0);
    const double scale = std::pow(10.0, std::abs(digits));
    const double scaled = digits < 0 ? number / scale : number * scale;
    if (!std::isfinite(scale) || !std::isfinite(scaled))
        return digits < 0 ? 0 : number;
    const double rounded = round(settled(scaled));
    return digits < 0 ? rounded * scale : rounded / scale;
}

FormulaValue roundDown(FunctionCall& call)
{
    return roundedAt(call, [](double number) { return std::trunc(number); });
}

FormulaValue roundUp(FunctionCall& call)
{
    return roundedAt(call, [](double number) { return std::copysign(std::ceil(std::abs(number)), number); });
}

/// Halves away from zero, by the decimal digits that people see.
FormulaValue round(FunctionCall& call)
{
    const double number = call.number(0);
    const int digits = call.integer(1, -mostDigits, mostDigits);
    if (call.failure())
        return {};
    Decimal decimal(std::abs(number));
    if (decimal.exponent() + digits >= 15)
        return number;
    decimal.round(digits);
    const QByteArray text = decimal.integerDigits() + '.' + decimal.decimalDigits(std::max(digits, 0));
    return std::copysign(text.toDouble(), number);
}

FormulaValue integerPart(FunctionCall& call)
{
    return roundedDown(call.number(0));
}

FormulaValue modulo(FunctionCall& call)
{
    const double number = call.number(0);
    const double divisor = call.number(1);
    if (divisor == 0)
        return ErrorCode::Div0;
    return sum15(number, -divisor * roundedDown(number / divisor));
}

FormulaValue quotient(FunctionCall& call)
{
    const double divisor = call.number(1);
    return divisor == 0 ? FormulaValue(ErrorCode::Div0) : std::trunc(settled(call.number(0) / divisor));
}

/// FLOOR and CEILING: a step of another sign than the number is an error only for numbers above 0.
template <class Round>
FormulaValue toStep(FunctionCall& call, FormulaValue forStepZero, Round round)
{
    const double number = call.number(0);
    const double step = call.number(1, number < 0 ? -1 : 1);
    if (number == 0)
        return 0;
    if (step == 0)
        return forStepZero;
    if (number > 0 && step < 0)
        return ErrorCode::Num;
    return round(settled(number / step)) * step;
}

FormulaValue floorToStep(FunctionCall& call)
{
    return toStep(call, ErrorCode::Div0, [](double steps) { return std::floor(steps); });
}

FormulaValue ceilingToStep(FunctionCall& call)
{
    return toStep(call, 0, [](double steps) { return std::ceil(steps); });
}

/// FLOOR.MATH and CEILING.MATH: the step has no sign; a third argument turns negative numbers towards 0 or away from
/// it.
template <class Down>
FormulaValue toUnsignedStep(FunctionCall& call, Down down)
{
    const double number = call.number(0);
    const double step = std::abs(call.number(1, 1));
    const bool otherWay = number < 0 && call.number(2, 0) != 0;
    if (step == 0)
        return 0;
    const double steps = settled(number / step);
    return (down != otherWay ? std::floor(steps) : std::ceil(steps)) * step;
}

FormulaValue floorMath(FunctionCall& call)
{
    return toUnsignedStep(call, true);
}

FormulaValue ceilingMath(FunctionCall& call)
{
    return toUnsignedStep(call, false);
}

FormulaValue toMultiple(FunctionCall& call)
{
    const double number = call.number(0);
    const double step = call.number(1);
    if (number == 0 || step == 0)
        return 0;
    return number * step < 0 ? FormulaValue(ErrorCode::Num) : std::round(settled(number / step)) * step;
}

FormulaValue toEven(FunctionCall& call)
{
    const double number = call.number(0);
    return std::copysign(std::ceil(settled(std::abs(number) / 2)) * 2, number);
}

FormulaValue toOdd(FunctionCall& call)
{
    const double number = call.number(0);
    const double size = std::max(std::ceil(settled((std::abs(number) - 1) / 2)), 0.0) * 2 + 1;
    return std::copysign(size, number);
}

FormulaValue absolute(FunctionCall& call)
{
    return std::abs(call.number(0));
}

FormulaValue sign(FunctionCall& call)
{
    const double number = call.number(0);
    return number > 0 ? 1 : number < 0 ? -1 : 0;
}

FormulaValue squareRoot(FunctionCall& call)
{
    return std::sqrt(call.number(0));
}

FormulaValue toPower(FunctionCall& call)
{
    const double base = call.number(0);
    return power(base, call.number(1));
}

FormulaValue exponential(FunctionCall& call)
{
    return std::exp(call.number(0));
}

FormulaValue naturalLogarithm(FunctionCall& call)
{
    return std::log(call.number(0));
}

FormulaValue logarithm10(FunctionCall& call)
{
    return std::log10(call.number(0));
}

FormulaValue logarithm(FunctionCall& call)
{
    const double number = call.number(0);
    const double base = call.number(1, 10);
    if (base == 1)
        return ErrorCode::Div0;
    return base == 10 ? std::log10(number) : std::log(number) / std::log(base);
}

FormulaValue pi(FunctionCall&)
{
    return std::numbers::pi;
}

FormulaValue sum(FunctionCall& call)
{
    double sum = 0;
    call.eachNumber(0, [&](double number) { sum += number; });
    return sum;
}

FormulaValue sumOfSquares(FunctionCall& call)
{
    double sum = 0;
    call.eachNumber(0, [&](double number) { sum += number * number; });
    return sum;
}

FormulaValue product(FunctionCall& call)
{
    double product = 1;
    bool any = false;
    call.eachNumber(0, [&](double number) {
        any = true;
        product *= number;
    });
    return any ? product : 0;
}

/// Texts and booleans count as 0; arrays must be of one size.
FormulaValue sumOfProducts(FunctionCall& call)
{
    std::vector<double> products;
    int rows = 0, columns = 0;
    for (int place = 0; place < call.count(); ++place) {
        const FormulaValue argument = call.evaluation().arrayOf(call.value(place));
        const FormulaArray& array = argument.array();
        if (place == 0) {
            rows = array.rows;
            columns = array.columns;
            products.assign(array.values.size(), 1);
        }
        if (array.rows != rows || array.columns != columns)
            return ErrorCode::Value;
        for (size_t i = 0; i < products.size(); ++i) {
            if (array.values[i].isError())
                return array.values[i];
            products[i] *= array.values[i].isNumber() ? array.values[i].number() : 0;
        }
    }
    double sum = 0;
    for (const double value : products)
        sum += value;
    return sum;
}

constexpr Function functions[]{
    {"SUM", 1, Function::many, "m", sum},
    {"SUMSQ", 1, Function::many, "m", sumOfSquares},
    {"PRODUCT", 1, Function::many, "m", product},
    {"SUMPRODUCT", 1, Function::many, "m", sumOfProducts},
    {"MOD", 2, 2, "v", modulo},
    {"QUOTIENT", 2, 2, "v", quotient},
    {"INT", 1, 1, "v", integerPart},
    {"TRUNC", 1, 2, "v", roundDown},
    {"ROUND", 2, 2, "v", round},
    {"ROUNDUP", 2, 2, "v", roundUp},
    {"ROUNDDOWN", 2, 2, "v", roundDown},
    {"MROUND", 2, 2, "v", toMultiple},
    {"FLOOR", 1, 2, "v", floorToStep},
    {"CEILING", 1, 2, "v", ceilingToStep},
    {"FLOOR.MATH", 1, 3, "v", floorMath},
    {"CEILING.MATH", 1, 3, "v", ceilingMath},
    {"EVEN", 1, 1, "v", toEven},
    {"ODD", 1, 1, "v", toOdd},
    {"ABS", 1, 1, "v", absolute},
    {"SIGN", 1, 1, "v", sign},
    {"SQRT", 1, 1, "v", squareRoot},
    {"POWER", 2, 2, "v", toPower},
    {"EXP", 1, 1, "v", exponential},
    {"LN", 1, 1, "v", naturalLogarithm},
    {"LOG", 1, 2, "v", logarithm},
    {"LOG10", 1, 1, "v", logarithm10},
    {"PI", 0, 0, "v", pi},
};

} // namespace

std::span<const Function> mathFunctions()
{
    return functions;
}

} // namespace lumivane::engine
