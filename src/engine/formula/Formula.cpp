#include "engine/formula/Formula.h"

#include "engine/formula/Evaluation.h"

namespace lumivane::engine {

Formula::Formula(std::shared_ptr<const FormulaTree> tree) : m_tree(std::move(tree)) {}

std::optional<Formula> Formula::parse(const QString& text)
{
    auto tree = parseFormula(text);
    if (!tree)
        return std::nullopt;
    return Formula(std::make_shared<const FormulaTree>(std::move(*tree)));
}

const QString& Formula::unknownFunction() const
{
    return m_tree->unknownFunction;
}

FormulaValue Formula::evaluate(FormulaCells& cells, int sheet, FormulaPlace written, FormulaPlace at) const
{
    return FormulaRun(*this, cells, sheet, written).value(at);
}

FormulaRun::FormulaRun(const Formula& formula, FormulaCells& cells, int sheet, FormulaPlace written,
                       FormulaBudget* shared)
    : m_evaluation(std::make_unique<Evaluation>(formula.m_tree, cells, sheet, written, shared))
{
}

FormulaRun::~FormulaRun() = default;

FormulaValue FormulaRun::value(FormulaPlace at)
{
    return m_evaluation->value(at);
}

FormulaValue FormulaRun::single(FormulaPlace at)
{
    return m_evaluation->single(at);
}

bool FormulaRun::isTrue(FormulaPlace at)
{
    const FormulaValue value = single(at);
    return value.isNumber() ? value.number() != 0 : value.isBoolean() && value.boolean();
}

bool FormulaRun::isExhausted() const
{
    return m_evaluation->isExhausted();
}

const QString& FormulaRun::unknownFunction() const
{
    return m_evaluation->unknownFunction();
}

std::optional<SheetArea> areaReferredTo(const QString& reference, FormulaCells& cells, int sheet, FormulaBudget* shared)
{
    const std::optional<Formula> formula = Formula::parse(reference);
    const FormulaValue found = formula ? FormulaRun(*formula, cells, sheet, {}, shared).value({}) : FormulaValue();
    return found.kind() == FormulaValue::Kind::Area ? std::optional(found.areas().front()) : std::nullopt;
}

} // namespace lumivane::engine
