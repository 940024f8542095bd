#pragma once

#include "engine/formula/Evaluation.h"

#include <QVarLengthArray>
#include <functional>
#include <optional>

namespace lumivane::engine {

/// One call of a function: its arguments, each evaluated when it is first asked for. What cannot be had as the type
/// that is asked for gives 0, an empty text or false, and the call then has that error as its value, whatever the
/// function makes of the rest.
class FunctionCall
{
public:
    FunctionCall(Evaluation& evaluation, const FormulaNode& node, Want want);

    Evaluation& evaluation() { return m_evaluation; }
    Want want() const { return m_want; }
    int count() const { return m_node.operands; }
    bool isMissing(int place) const; ///< left out between two commas
    /// The argument as its parameter wants it; errors among them do not make the call fail.
    const FormulaValue& value(int place);
    void setValue(int place, FormulaValue value) { m_values[place] = std::move(value); }

    double number(int place);
    double number(int place, double otherwise) { return place < count() ? number(place) : otherwise; }
    /// Without its decimals; #NUM! outside the bounds.
    int integer(int place, int least, int most);
    int integer(int place, int least, int most, int otherwise);
    QString text(int place);
    bool boolean(int place);
    bool boolean(int place, bool otherwise) { return place < count() ? boolean(place) : otherwise; }
    /// A day counted from 1900, with its time of day; #NUM! if there is no such day.
    double moment(int place);
    /// The only area of a reference; #VALUE! for anything else.
    SheetArea area(int place);

    // Single values, converted in the same way.
    double numberOf(const FormulaValue& value);
    QString textOf(const FormulaValue& value);

    /// Every value of the arguments from a place on, blank cells left out. `given` tells that the value itself is the
    /// argument. The visitor ends the walk by false.
    using Visitor = std::function<bool(const FormulaValue& value, bool given)>;
    void eachValue(int first, FormulaCells::Texts texts, const Visitor& visit);
    void eachValueOf(int place, FormulaCells::Texts texts, const Visitor& visit);
    /// The numbers of the arguments from a place on, as sums count them: those in cells and arrays, texts and booleans
    /// left out, and arguments that are given as numbers, texts or booleans. An error fails the call.
    void eachNumber(int first, const std::function<void(double)>& visit);
    std::vector<double> numbers(int first);
    std::vector<double> numbersOf(int place);

    FormulaValue fail(ErrorCode error);
    std::optional<ErrorCode> failure() const { return m_failure; }

private:
    bool takeNumber(const FormulaValue& value, bool given, const std::function<void(double)>& visit);

    Evaluation& m_evaluation;
    const FormulaNode& m_node;
    Want m_want;
    QVarLengthArray<std::optional<FormulaValue>, 4> m_values;
    std::optional<ErrorCode> m_failure;
};

} // namespace lumivane::engine
