#include "engine/formula/AreaIndex.h"
#include "engine/formula/Coercion.h"
#include "engine/formula/Criterion.h"
#include "engine/formula/Function.h"

#include <algorithm>

// Functions that count or add up the cells which fulfil conditions. Places in areas count from 0, row by row.

namespace lumivane::engine {
namespace {

struct Condition
{
    SheetArea area;
    Criterion criterion;
};

struct Offset
{
    int row, column; ///< from the first cell of each area
};

Condition conditionAt(FunctionCall& call, int place)
{
    return {call.area(place), Criterion(call.evaluation().oneOf(call.value(place + 1)), call.evaluation().date1904())};
}

/// Pairs of an area and what is asked of its cells; #VALUE! if the areas differ in size.
std::vector<Condition> conditionsFrom(FunctionCall& call, int first)
{
    std::vector<Condition> conditions;
    for (int place = first; place < call.count(); place += 2) {
        if (place + 1 == call.count()) {
            call.fail(ErrorCode::Value);
            break;
        }
        conditions.push_back(conditionAt(call, place));
        const CellArea& cells = conditions.back().area.cells;
        const CellArea& before = conditions.front().area.cells;
        if (cells.rows() != before.rows() || cells.columns() != before.columns())
            call.fail(ErrorCode::Value);
    }
    return conditions;
}

FormulaValue cellAt(Evaluation& evaluation, const SheetArea& area, Offset offset)
{
    const int row = area.cells.firstRow + offset.row;
    const int column = area.cells.firstColumn + offset.column;
    return row <= maxRow && column <= maxColumn ? evaluation.cell(area.sheet, row, column) : FormulaValue();
}

/// Visits the places where all conditions hold. `summed` has the cells that count; without it only their number does.
class Matches
{
public:
    using Visitor = std::function<void(Offset)>;

    Matches(Evaluation& evaluation, const std::vector<Condition>& conditions, const SheetArea* summed)
        : m_evaluation(evaluation), m_conditions(conditions), m_summed(summed)
    {
    }
    void visit(const Visitor& visitor);
    /// The number of places behind the contents of all areas, where blank cells fulfil every condition.
    qint64 beyondContents() const { return m_beyond; }

private:
    bool hold(Offset offset, const Condition* known);
    void visitPlaces(const Condition& condition, std::span<const qint64> places, const Visitor& visitor);
    bool visitByIndex(const Visitor& visitor);
    void visitCells(const Condition& condition, const Visitor& visitor);
    void visitAll(const Visitor& visitor);

    Evaluation& m_evaluation;
    const std::vector<Condition>& m_conditions;
    const SheetArea* m_summed;
    qint64 m_beyond = 0;
};

bool Matches::hold(Offset offset, const Condition* known)
{
    return std::all_of(m_conditions.begin(), m_conditions.end(), [&](const Condition& condition) {
        return &condition == known || condition.criterion.holds(cellAt(m_evaluation, condition.area, offset));
    });
}

void Matches::visitPlaces(const Condition& condition, std::span<const qint64> places, const Visitor& visitor)
{
    const int columns = condition.area.cells.columns();
    for (const qint64 place : places) {
        const Offset offset{static_cast<int>(place / columns), static_cast<int>(place % columns)};
        if (!m_evaluation.spend(1))
            return;
        if (hold(offset, &condition))
            visitor(offset);
    }
}

bool Matches::visitByIndex(const Visitor& visitor)
{
    for (const Condition& condition : m_conditions) {
        if (!condition.criterion.isPlainEquality())
            continue;
        const AreaIndex* index = m_evaluation.indexes().beginningWith(condition.area);
        if (!index)
            continue;
        const FormulaValue& sought = condition.criterion.operand();
        const qint64 behind = condition.area.count();
        visitPlaces(condition, index->places(sought, behind), visitor);
        if (sought.isNumber())
            visitPlaces(condition, index->textsOfNumber(sought.number(), behind), visitor);
        return true;
    }
    return false;
}

void Matches::visitCells(const Condition& condition, const Visitor& visitor)
{
    const CellArea& cells = condition.area.cells;
    m_evaluation.eachCell(condition.area, FormulaCells::Texts::Needed,
                          [&](int row, int column, const FormulaValue& value) {
                              const Offset offset{row - cells.firstRow, column - cells.firstColumn};
                              if (condition.criterion.holds(value) && hold(offset, &condition))
                                  visitor(offset);
                              return true;
                          });
}

void Matches::visitAll(const Visitor& visitor)
{
    int rows = 0, columns = 0;
    const auto cover = [&](const SheetArea& area) {
        if (const auto filled = m_evaluation.filled(area)) {
            rows = std::max(rows, filled->cells.lastRow - area.cells.firstRow + 1);
            columns = std::max(columns, filled->cells.lastColumn - area.cells.firstColumn + 1);
        }
    };
    for (const Condition& condition : m_conditions)
        cover(condition.area);
    if (m_summed)
        cover(*m_summed);
    const CellArea& whole = m_conditions.front().area.cells;
    m_beyond = qint64(whole.rows()) * whole.columns() - qint64(rows) * columns;
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            if (hold({row, column}, nullptr))
                visitor({row, column});
            if (!m_evaluation.spend(1))
                return;
        }
    }
}

void Matches::visit(const Visitor& visitor)
{
    if (m_conditions.empty() || visitByIndex(visitor))
        return;
    const auto selective = std::find_if(m_conditions.begin(), m_conditions.end(), [](const Condition& condition) {
        return !condition.criterion.holdsForBlank();
    });
    if (selective != m_conditions.end())
        visitCells(*selective, visitor);
    else
        visitAll(visitor);
}

/// How many cells fulfil one condition, without a look at them; none where the index does not tell.
std::optional<qint64> countByIndex(Evaluation& evaluation, const Condition& condition)
{
    const FormulaValue& operand = condition.criterion.operand();
    AreaIndexes& indexes = evaluation.indexes();
    const bool plain = condition.criterion.isPlainEquality();
    const bool compared = operand.isNumber() && condition.criterion.operation() != Operator::NotEqual;
    const AreaIndex* index = plain      ? indexes.beginningWith(condition.area)
                             : compared ? indexes.of(condition.area)
                                        : nullptr;
    if (!index)
        return std::nullopt;
    const qint64 behind = condition.area.count();
    const auto alike = static_cast<qint64>(index->places(operand, behind).size());
    if (plain) {
        const bool texts = operand.isNumber();
        return alike + (texts ? static_cast<qint64>(index->textsOfNumber(operand.number(), behind).size()) : 0);
    }
    const std::vector<double>& sorted = index->sortedNumbers();
    const qint64 less = std::lower_bound(sorted.begin(), sorted.end(), significant(operand.number())) - sorted.begin();
    const qint64 greater = static_cast<qint64>(sorted.size()) - less - alike;
    switch (condition.criterion.operation()) {
    case Operator::Less:
        return less;
    case Operator::LessEqual:
        return less + alike;
    case Operator::Greater:
        return greater;
    default:
        return greater + alike;
    }
}

FormulaValue countIfs(FunctionCall& call)
{
    const std::vector<Condition> conditions = conditionsFrom(call, 0);
    if (call.failure())
        return {};
    if (conditions.size() == 1) {
        if (const auto count = countByIndex(call.evaluation(), conditions.front()))
            return *count;
    }
    qint64 count = 0;
    Matches matches(call.evaluation(), conditions, nullptr);
    matches.visit([&](Offset) { ++count; });
    return count + matches.beyondContents();
}

/// The numbers of an area where all conditions hold.
std::vector<double> matchingNumbers(FunctionCall& call, const std::vector<Condition>& conditions,
                                    const SheetArea& summed)
{
    std::vector<double> numbers;
    if (call.failure())
        return numbers;
    Matches(call.evaluation(), conditions, &summed).visit([&](Offset offset) {
        const FormulaValue value = cellAt(call.evaluation(), summed, offset);
        if (value.isNumber())
            numbers.push_back(value.number());
        else if (value.isError())
            call.fail(value.error());
    });
    return numbers;
}

/// SUMIF and AVERAGEIF: the third area starts at its first cell and is as large as the first one.
std::vector<double> numbersIf(FunctionCall& call)
{
    const std::vector<Condition> conditions{conditionAt(call, 0)};
    const SheetArea& area = conditions.front().area;
    SheetArea summed = call.count() > 2 ? call.area(2) : area;
    summed.cells.lastRow = std::min(summed.cells.firstRow + area.cells.rows() - 1, maxRow);
    summed.cells.lastColumn = std::min(summed.cells.firstColumn + area.cells.columns() - 1, maxColumn);
    return matchingNumbers(call, conditions, summed);
}

/// SUMIFS and its like: the first area is summed up.
std::vector<double> numbersIfs(FunctionCall& call)
{
    const SheetArea summed = call.area(0);
    const std::vector<Condition> conditions = conditionsFrom(call, 1);
    const CellArea& cells = conditions.empty() ? summed.cells : conditions.front().area.cells;
    if (cells.rows() != summed.cells.rows() || cells.columns() != summed.cells.columns())
        call.fail(ErrorCode::Value);
    return matchingNumbers(call, conditions, summed);
}

double sumOf(const std::vector<double>& numbers)
{
    double sum = 0;
    for (const double number : numbers)
        sum += number;
    return sum;
}

FormulaValue averageOf(const std::vector<double>& numbers)
{
    return numbers.empty() ? FormulaValue(ErrorCode::Div0) : sumOf(numbers) / static_cast<double>(numbers.size());
}

FormulaValue sumIf(FunctionCall& call)
{
    return sumOf(numbersIf(call));
}

FormulaValue averageIf(FunctionCall& call)
{
    return averageOf(numbersIf(call));
}

FormulaValue sumIfs(FunctionCall& call)
{
    return sumOf(numbersIfs(call));
}

FormulaValue averageIfs(FunctionCall& call)
{
    return averageOf(numbersIfs(call));
}

FormulaValue maximumIfs(FunctionCall& call)
{
    const std::vector<double> numbers = numbersIfs(call);
    return numbers.empty() ? 0 : *std::max_element(numbers.begin(), numbers.end());
}

FormulaValue minimumIfs(FunctionCall& call)
{
    const std::vector<double> numbers = numbersIfs(call);
    return numbers.empty() ? 0 : *std::min_element(numbers.begin(), numbers.end());
}

constexpr Function functions[]{
    {"COUNTIF", 2, 2, "mv", countIfs},
    {"COUNTIFS", 2, Function::many, "mv", countIfs, 2},
    {"SUMIF", 2, 3, "mvm", sumIf},
    {"SUMIFS", 3, Function::many, "mmv", sumIfs, 2},
    {"AVERAGEIF", 2, 3, "mvm", averageIf},
    {"AVERAGEIFS", 3, Function::many, "mmv", averageIfs, 2},
    {"MAXIFS", 3, Function::many, "mmv", maximumIfs, 2},
    {"MINIFS", 3, Function::many, "mmv", minimumIfs, 2},
};

} // namespace

std::span<const Function> conditionalFunctions()
{
    return functions;
}

} // namespace lumivane::engine
