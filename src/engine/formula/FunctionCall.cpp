#include "engine/formula/FunctionCall.h"

#include "engine/formula/Coercion.h"
#include "engine/formula/Function.h"

#include <cmath>

namespace lumivane::engine {

FunctionCall::FunctionCall(Evaluation& evaluation, const FormulaNode& node, Want want)
    : m_evaluation(evaluation), m_node(node), m_want(want), m_values(node.operands)
{
}

bool FunctionCall::isMissing(int place) const
{
    return m_evaluation.operandNode(m_node, place).kind == FormulaNode::Kind::Missing;
}

const FormulaValue& FunctionCall::value(int place)
{
    std::optional<FormulaValue>& value = m_values[place];
    if (!value) {
        const char parameter = m_node.function->parameter(place);
        value = m_evaluation.operandValue(m_node, place, parameter == 'm' ? Want::Many : m_want);
        if (parameter == 'v' && m_want == Want::One)
            value = m_evaluation.oneOf(*value);
    }
    return *value;
}

FormulaValue FunctionCall::fail(ErrorCode error)
{
    if (!m_failure)
        m_failure = error;
    return *m_failure;
}

double FunctionCall::numberOf(const FormulaValue& value)
{
    const FormulaValue number = asNumber(m_evaluation.oneOf(value), m_evaluation.date1904());
    if (number.isNumber())
        return number.number();
    fail(number.error());
    return 0;
}

QString FunctionCall::textOf(const FormulaValue& value)
{
    const FormulaValue text = asText(m_evaluation.oneOf(value));
    if (text.isText()) {
        // A function walks over it, whatever it gives.
        m_evaluation.spend(Evaluation::textSteps(text.text()));
        return text.text();
    }
    fail(text.error());
    return {};
}

double FunctionCall::number(int place)
{
    return numberOf(value(place));
}

int FunctionCall::integer(int place, int least, int most)
{
    const double number = std::trunc(this->number(place));
    if (number >= least && number <= most)
        return static_cast<int>(number);
    fail(ErrorCode::Num);
    return least;
}

int FunctionCall::integer(int place, int least, int most, int otherwise)
{
    return place < count() ? integer(place, least, most) : otherwise;
}

QString FunctionCall::text(int place)
{
    return textOf(value(place));
}

bool FunctionCall::boolean(int place)
{
    const FormulaValue boolean = asBoolean(m_evaluation.oneOf(value(place)));
    if (boolean.isBoolean())
        return boolean.boolean();
    fail(boolean.error());
    return false;
}

double FunctionCall::moment(int place)
{
    constexpr double behindLastDay = 2958466; // 1 January 10000
    constexpr double days1904 = 1462;
    const double moment = number(place) + (m_evaluation.date1904() ? days1904 : 0);
    if (moment >= 0 && moment < behindLastDay)
        return moment;
    fail(ErrorCode::Num);
    return 0;
}

SheetArea FunctionCall::area(int place)
{
    const FormulaValue& reference = value(place);
    if (reference.isReference() && reference.areas().size() == 1)
        return reference.areas()[0];
    fail(reference.isError() ? reference.error() : ErrorCode::Value);
    return {0, CellArea::cell(1, 1)};
}

void FunctionCall::eachValueOf(int place, FormulaCells::Texts texts, const Visitor& visit)
{
    const FormulaValue& argument = value(place);
    if (argument.isReference()) {
        for (const SheetArea& area : argument.areas()) {
            if (!m_evaluation.cells().hasSheet(area.sheet)) {
                visit(ErrorCode::Ref, false);
                return;
            }
            m_evaluation.eachCell(area, texts, [&](int, int, const FormulaValue& cell) { return visit(cell, false); });
        }
    } else if (argument.isArray()) {
        m_evaluation.spend(static_cast<qint64>(argument.array().values.size()));
        for (const FormulaValue& element : argument.array().values) {
            if (!element.isBlank() && !visit(element, false))
                return;
        }
    } else {
        visit(argument, true);
    }
}

void FunctionCall::eachValue(int first, FormulaCells::Texts texts, const Visitor& visit)
{
    bool goesOn = true;
    for (int place = first; place < count() && goesOn; ++place) {
        eachValueOf(place, texts, [&](const FormulaValue& value, bool given) { return goesOn = visit(value, given); });
    }
}

bool FunctionCall::takeNumber(const FormulaValue& value, bool given, const std::function<void(double)>& visit)
{
    if (value.isNumber())
        visit(value.number());
    else if (value.isError())
        fail(value.error());
    else if (given)
        visit(numberOf(value));
    return !m_failure;
}

void FunctionCall::eachNumber(int first, const std::function<void(double)>& visit)
{
    eachValue(first, FormulaCells::Texts::Unneeded,
              [&](const FormulaValue& value, bool given) { return takeNumber(value, given, visit); });
}

std::vector<double> FunctionCall::numbers(int first)
{
    std::vector<double> numbers;
    eachNumber(first, [&](double number) { numbers.push_back(number); });
    return numbers;
}

std::vector<double> FunctionCall::numbersOf(int place)
{
    std::vector<double> numbers;
    eachValueOf(place, FormulaCells::Texts::Unneeded, [&](const FormulaValue& value, bool given) {
        return takeNumber(value, given, [&](double number) { numbers.push_back(number); });
    });
    return numbers;
}

} // namespace lumivane::engine
