#pragma once

#include "engine/formula/FormulaCells.h"
#include "engine/formula/FormulaLimits.h"

#include <memory>
#include <optional>

namespace lumivane::engine {

struct FormulaTree;
class Evaluation;

/// A cell of a sheet, from 1.
struct FormulaPlace
{
    int row = 1, column = 1;
};

/// A formula of a conditional format or a defined name, taken apart once. A value that never changes; copies share it.
class Formula
{
public:
    /// Reads a formula as files store it, in English and without the leading "=". None where it is not understood:
    /// wrong grammar, beyond FormulaLimits, references to other files, to tables or through several sheets.
    static std::optional<Formula> parse(const QString& text);

    /// The first function that is not known, in capitals; empty if all are. It gives #NAME?.
    const QString& unknownFunction() const;

    /// The value for one cell; for many, keep a FormulaRun.
    FormulaValue evaluate(FormulaCells& cells, int sheet, FormulaPlace written, FormulaPlace at) const;

private:
    friend class FormulaRun;
    friend class Evaluation;
    explicit Formula(std::shared_ptr<const FormulaTree> tree);

    std::shared_ptr<const FormulaTree> m_tree;
};

/// What formulas that share it may still cost together.
struct FormulaBudget
{
    qint64 steps = FormulaLimits::sharedSteps;
    qint64 keptValues = FormulaLimits::keptValues;
};

/// Evaluates one formula for many cells of a sheet. Whatever does not depend on the cell is found out once, so the
/// cells and the time of day must not change while the object lives. Not for several threads at once.
class FormulaRun
{
public:
    /// `sheet` is that of the formula, `written` the cell for which its relative references were written; they move
    /// with the cell that is evaluated and wrap round at the edges of the sheet. `cells` must outlive the object, and
    /// so must `shared`, from which it takes what it costs; null: it has a budget of its own.
    FormulaRun(const Formula& formula, FormulaCells& cells, int sheet, FormulaPlace written,
               FormulaBudget* shared = nullptr);
    ~FormulaRun();

    /// What the formula gives, a reference or an array as it is.
    FormulaValue value(FormulaPlace at);
    /// The same as one value: of an area the cell in line with `at` (#VALUE! if none is), of an array the first.
    FormulaValue single(FormulaPlace at);
    /// As a condition: a number other than 0 or TRUE.
    bool isTrue(FormulaPlace at);

    /// Whether steps have come to their end, those of one evaluation or of all: values of the formula were replaced by
    /// #VALUE!.
    bool isExhausted() const;
    /// The first function that is not known, in the formula or in a defined name that it uses; empty if all are.
    const QString& unknownFunction() const;

private:
    std::unique_ptr<Evaluation> m_evaluation;
};

/// The first area that a reference leads to ("Data!$A$1:$A$9", a defined name); none for any other formula. `sheet` and
/// `shared` as for a run.
std::optional<SheetArea> areaReferredTo(const QString& reference, FormulaCells& cells, int sheet,
                                        FormulaBudget* shared = nullptr);

} // namespace lumivane::engine
