#pragma once

#include "engine/formula/Formula.h"
#include "engine/formula/FormulaTree.h"

#include <map>
#include <memory>
#include <optional>

namespace lumivane::engine {

class AreaIndexes;
class FunctionCall;

/// What the user of a value makes of an area.
enum class Want : quint8 {
    One,  ///< operators take the cell of an area that is in line with the formula's
    Many, ///< operators and functions work on all its cells
};

/// The evaluation of a formula for one cell after another: walks its tree, and keeps what did not depend on the cell.
class Evaluation
{
public:
    Evaluation(std::shared_ptr<const FormulaTree> tree, FormulaCells& cells, int sheet, FormulaPlace written,
               FormulaBudget* shared);
    ~Evaluation();

    FormulaValue value(FormulaPlace at);
    FormulaValue single(FormulaPlace at);
    bool isExhausted() const { return m_isExhausted; }
    const QString& unknownFunction() const { return m_unknownFunction; }

    // For functions.
    FormulaCells& cells() { return m_cells; }
    int sheet() const { return m_sheet; }
    bool date1904() const { return m_date1904; }
    const QDateTime& now() const { return m_now; }
    /// The cell of the formula. Whoever asks depends on it, and is not kept for other cells.
    FormulaPlace place();
    /// Counts steps; false when there are no more, and the evaluation gives #VALUE! then.
    bool spend(qint64 steps);
    /// Values that may be kept still; `takeKept` counts some of them.
    qint64 keptLeft() const { return m_budget.keptValues; }
    bool takeKept(qint64 values);
    static qint64 textSteps(const QString& text) { return text.size() / 16; }

    FormulaValue operandValue(const FormulaNode& node, int place, Want want);
    const FormulaNode& operandNode(const FormulaNode& node, int place) const;
    /// Of an area the cell in line with the formula's, of an array the first.
    FormulaValue oneOf(const FormulaValue& value);
    FormulaValue cell(int sheet, int row, int column);
    void eachCell(const SheetArea& area, FormulaCells::Texts texts, const FormulaCells::Visitor& visit);
    /// An area without the rows and columns behind all contents of its sheet; none if nothing is left.
    std::optional<SheetArea> filled(const SheetArea& area);
    /// All values of anything as an array, blank cells included; a whole column ends with its sheet's contents. Of what
    /// is too large, or of a union, one error.
    FormulaValue arrayOf(const FormulaValue& value);
    /// What a text refers to, as INDIRECT takes it.
    FormulaValue reference(const QString& text);
    AreaIndexes& indexes() { return *m_indexes; }

private:
    /// A formula in evaluation: the given one, or that of a name.
    struct Frame
    {
        std::shared_ptr<const FormulaTree> tree; ///< null: not understood
        int sheet = 0;
        FormulaPlace written;
        bool inUse = false;                            ///< what asks for it now stands in it
        std::vector<std::optional<FormulaValue>> kept; ///< by node
        std::vector<Frame*> names;                     ///< by FormulaTree::names, once they are known
    };

    FormulaValue evaluate(int node, Want want);
    FormulaValue compute(int node, Want want);
    FormulaValue chain(int node, Want want);
    FormulaValue unary(const FormulaNode& node, Want want);
    FormulaValue operate(Operator operation, const FormulaValue& left, const FormulaValue& right, Want want);
    FormulaValue call(const FormulaNode& node, Want want);
    FormulaValue callForEach(const FormulaNode& node, FunctionCall& arguments);
    FormulaValue named(int name, Want want);
    FormulaValue referred(const Reference& reference);
    FormulaValue kept(int node, FormulaValue value);
    FormulaValue inTime(FormulaValue value);
    Frame* frameOfName(const NameUse& use, Want want);
    std::unique_ptr<Frame> frame(std::shared_ptr<const FormulaTree> tree, int sheet, FormulaPlace written) const;
    bool worksOnEach(const FormulaValue& value) const;

    FormulaBudget m_own;
    FormulaBudget& m_budget;
    FormulaCells& m_cells;
    int m_sheet;
    bool m_date1904;
    QDateTime m_now;
    QString m_unknownFunction;
    std::unique_ptr<Frame> m_formula;
    std::map<std::pair<const DefinedName*, Want>, std::unique_ptr<Frame>> m_names;
    std::unique_ptr<AreaIndexes> m_indexes;

    FormulaPlace m_place;
    bool m_placeAsked = false;
    Frame* m_frame = nullptr;
    int m_depth = 0;
    qint64 m_stepsLeft = 0;
    qint64 m_runStepsLeft = FormulaLimits::runSteps;
    bool m_isExhausted = false;
};

} // namespace lumivane::engine
