#include "engine/formula/Evaluation.h"

#include "engine/formula/AreaIndex.h"
#include "engine/formula/Coercion.h"
#include "engine/formula/Function.h"
#include "engine/formula/Operators.h"

#include <QScopedValueRollback>
#include <algorithm>

namespace lumivane::engine {
namespace {

int wrapped(int position, int count)
{
    const int fromZero = (position - 1) % count;
    return (fromZero < 0 ? fromZero + count : fromZero) + 1;
}

/// Steps that a value costs to keep.
qint64 sizeOf(const FormulaValue& value)
{
    if (value.isText())
        return 1 + Evaluation::textSteps(value.text());
    if (!value.isArray())
        return 1;
    qint64 size = 0;
    for (const FormulaValue& element : value.array().values)
        size += sizeOf(element);
    return size;
}

FormulaValue arrayOfOne(FormulaValue value)
{
    FormulaArray array{1, 1, {}};
    array.values.push_back(std::move(value));
    return array;
}

/// An array of one row or column goes on for all rows and columns; beyond any other there is nothing.
const FormulaValue& repeatedAt(const FormulaArray& array, int row, int column)
{
    static const FormulaValue nothing = ErrorCode::NA;
    const int inRow = array.rows == 1 ? 0 : row;
    const int inColumn = array.columns == 1 ? 0 : column;
    return inRow < array.rows && inColumn < array.columns ? array.at(inRow, inColumn) : nothing;
}

} // namespace

Evaluation::Evaluation(std::shared_ptr<const FormulaTree> tree, FormulaCells& cells, int sheet, FormulaPlace written,
                       FormulaBudget* shared)
    : m_budget(shared ? *shared : m_own), m_cells(cells), m_sheet(sheet), m_date1904(cells.date1904()),
      m_now(cells.now()), m_unknownFunction(tree->unknownFunction), m_formula(frame(std::move(tree), sheet, written)),
      m_indexes(std::make_unique<AreaIndexes>(*this))
{
}

Evaluation::~Evaluation() = default;

std::unique_ptr<Evaluation::Frame> Evaluation::frame(std::shared_ptr<const FormulaTree> tree, int sheet,
                                                     FormulaPlace written) const
{
    auto frame = std::make_unique<Frame>();
    if (tree) {
        frame->kept.resize(tree->nodes.size());
        frame->names.resize(tree->names.size());
    }
    frame->tree = std::move(tree);
    frame->sheet = sheet;
    frame->written = written;
    return frame;
}

FormulaValue Evaluation::value(FormulaPlace at)
{
    m_place = at;
    m_placeAsked = false;
    m_frame = m_formula.get();
    m_depth = 0;
    const qint64 steps = std::min({FormulaLimits::steps, m_runStepsLeft, m_budget.steps});
    m_stepsLeft = steps;
    FormulaValue value = evaluate(m_frame->tree->root(), Want::One);
    const qint64 spent = steps - std::max<qint64>(m_stepsLeft, 0);
    m_runStepsLeft -= spent;
    m_budget.steps -= spent;
    return inTime(std::move(value));
}

FormulaValue Evaluation::inTime(FormulaValue value)
{
    m_isExhausted = m_isExhausted || m_stepsLeft < 0;
    return m_stepsLeft < 0 ? ErrorCode::Value : value;
}

FormulaValue Evaluation::single(FormulaPlace at)
{
    const FormulaValue many = value(at);
    return inTime(oneOf(many));
}

FormulaPlace Evaluation::place()
{
    m_placeAsked = true;
    return m_place;
}

bool Evaluation::spend(qint64 steps)
{
    m_stepsLeft -= steps;
    if (m_stepsLeft >= 0)
        return true;
    m_stepsLeft = -1;
    return false;
}

FormulaValue Evaluation::operandValue(const FormulaNode& node, int place, Want want)
{
    return evaluate(m_frame->tree->operand(node, place), want);
}

const FormulaNode& Evaluation::operandNode(const FormulaNode& node, int place) const
{
    return m_frame->tree->nodes[static_cast<size_t>(m_frame->tree->operand(node, place))];
}

FormulaValue Evaluation::evaluate(int node, Want want)
{
    const FormulaTree& tree = *m_frame->tree;
    const FormulaNode& what = tree.nodes[static_cast<size_t>(node)];
    switch (what.kind) {
    case FormulaNode::Kind::Constant:
        return tree.constants[static_cast<size_t>(what.index)];
    case FormulaNode::Kind::Missing:
        return {};
    case FormulaNode::Kind::Reference:
        return spend(1) ? referred(tree.references[static_cast<size_t>(what.index)]) : ErrorCode::Value;
    default:
        break;
    }
    if (const auto& known = m_frame->kept[static_cast<size_t>(node)])
        return *known;
    const QScopedValueRollback deeper(m_depth, m_depth + 1);
    if (m_depth > FormulaLimits::depth || !spend(1))
        return ErrorCode::Value;
    const bool askedBefore = m_placeAsked;
    m_placeAsked = false;
    FormulaValue value = compute(node, want);
    if (!m_placeAsked && m_stepsLeft >= 0)
        value = kept(node, std::move(value));
    m_placeAsked |= askedBefore;
    return value;
}

FormulaValue Evaluation::kept(int node, FormulaValue value)
{
    if (takeKept(sizeOf(value)))
        m_frame->kept[static_cast<size_t>(node)] = value;
    return value;
}

bool Evaluation::takeKept(qint64 values)
{
    if (values > m_budget.keptValues)
        return false;
    m_budget.keptValues -= values;
    return true;
}

FormulaValue Evaluation::compute(int node, Want want)
{
    const FormulaNode& what = m_frame->tree->nodes[static_cast<size_t>(node)];
    switch (what.kind) {
    case FormulaNode::Kind::Binary:
        return chain(node, want);
    case FormulaNode::Kind::Unary:
        return unary(what, want);
    case FormulaNode::Kind::Name:
        return named(what.index, want);
    default:
        return call(what, want);
    }
}

/// Long sums are walked over, not descended into.
FormulaValue Evaluation::chain(int node, Want want)
{
    const FormulaTree& tree = *m_frame->tree;
    QVarLengthArray<const FormulaNode*, 16> operations;
    int leftmost = node;
    do {
        operations.append(&tree.nodes[static_cast<size_t>(leftmost)]);
        leftmost = tree.operand(*operations.back(), 0);
    } while (tree.nodes[static_cast<size_t>(leftmost)].kind == FormulaNode::Kind::Binary &&
             !m_frame->kept[static_cast<size_t>(leftmost)]);
    FormulaValue left = evaluate(leftmost, want);
    for (auto operation = operations.rbegin(); operation != operations.rend(); ++operation)
        left = operate((*operation)->operation, left, operandValue(**operation, 1, want), want);
    return left;
}

FormulaValue Evaluation::unary(const FormulaNode& node, Want want)
{
    const FormulaValue operand = operandValue(node, 0, want);
    switch (node.operation) {
    case Operator::Minus:
        return operate(Operator::Subtract, 0, operand, want);
    case Operator::Percent:
        return operate(Operator::Divide, operand, 100, want);
    case Operator::Single:
        return oneOf(operand);
    default:
        return operand;
    }
}

bool Evaluation::worksOnEach(const FormulaValue& value) const
{
    return value.isArray() || (value.isReference() && !(value.areas().size() == 1 && value.areas()[0].isCell()));
}

FormulaValue Evaluation::operate(Operator operation, const FormulaValue& left, const FormulaValue& right, Want want)
{
    if (operation >= Operator::Range && operation <= Operator::Union)
        return operateOnReferences(operation, left, right);
    if (want == Want::One || !(worksOnEach(left) || worksOnEach(right))) {
        const FormulaValue result = operateOn(operation, oneOf(left), oneOf(right), m_date1904);
        return !result.isText() || spend(textSteps(result.text())) ? result : ErrorCode::Value;
    }
    const FormulaValue lefts = arrayOf(left), rights = arrayOf(right);
    const FormulaArray& a = lefts.array();
    const FormulaArray& b = rights.array();
    FormulaArray results{std::max(a.rows, b.rows), std::max(a.columns, b.columns), {}};
    const qint64 count = qint64(results.rows) * results.columns;
    if (count > FormulaLimits::arrayValues || !spend(count))
        return ErrorCode::Value;
    results.values.reserve(static_cast<size_t>(count));
    for (int row = 0; row < results.rows; ++row) {
        for (int column = 0; column < results.columns; ++column) {
            results.values.push_back(
                operateOn(operation, repeatedAt(a, row, column), repeatedAt(b, row, column), m_date1904));
            if (results.values.back().isText() && !spend(textSteps(results.values.back().text())))
                return ErrorCode::Value;
        }
    }
    return results;
}

FormulaValue Evaluation::call(const FormulaNode& node, Want want)
{
    if (!node.function)
        return ErrorCode::Name;
    FunctionCall call(*this, node, want);
    if (want == Want::Many) {
        // A parameter of one value that has many makes this a call for each of them. The first argument tells it of
        // most functions, which need not evaluate all arguments then.
        for (int place = 0; place < node.operands; ++place) {
            if (node.function->parameter(place) == 'v' && worksOnEach(call.value(place)))
                return callForEach(node, call);
        }
    }
    FormulaValue result = node.function->evaluate(call);
    if (call.failure())
        return *call.failure();
    if (result.isNumber())
        return finite(result.number());
    return !result.isText() || spend(textSteps(result.text())) ? result : ErrorCode::Value;
}

FormulaValue Evaluation::callForEach(const FormulaNode& node, FunctionCall& arguments)
{
    FormulaArray results{1, 1, {}};
    std::vector<std::optional<FormulaValue>> varied(static_cast<size_t>(node.operands));
    for (int place = 0; place < node.operands; ++place) {
        if (node.function->parameter(place) == 'm' || !worksOnEach(arguments.value(place)))
            continue;
        auto& array = varied[static_cast<size_t>(place)];
        array = arrayOf(arguments.value(place));
        results.rows = std::max(results.rows, array->array().rows);
        results.columns = std::max(results.columns, array->array().columns);
    }
    const qint64 count = qint64(results.rows) * results.columns;
    if (count > FormulaLimits::arrayValues)
        return ErrorCode::Value;
    results.values.reserve(static_cast<size_t>(count));
    for (int row = 0; row < results.rows; ++row) {
        for (int column = 0; column < results.columns; ++column) {
            FunctionCall call(*this, node, Want::One);
            for (int place = 0; place < node.operands; ++place) {
                const auto& array = varied[static_cast<size_t>(place)];
                call.setValue(place, array ? repeatedAt(array->array(), row, column) : arguments.value(place));
            }
            FormulaValue result = node.function->evaluate(call);
            result = call.failure() ? FormulaValue(*call.failure()) : oneOf(result);
            if (!spend(sizeOf(result) + node.operands))
                return ErrorCode::Value;
            results.values.push_back(result.isNumber() ? finite(result.number()) : std::move(result));
        }
    }
    return results;
}

FormulaValue Evaluation::oneOf(const FormulaValue& value)
{
    if (value.isArray())
        return value.array().values.front();
    if (!value.isReference())
        return value;
    if (value.areas().size() != 1)
        return ErrorCode::Value;
    const SheetArea& area = value.areas()[0];
    const CellArea& cells = area.cells;
    if (area.isCell())
        return cell(area.sheet, cells.firstRow, cells.firstColumn);
    const FormulaPlace at = place();
    if (cells.columns() == 1 && at.row >= cells.firstRow && at.row <= cells.lastRow)
        return cell(area.sheet, at.row, cells.firstColumn);
    if (cells.rows() == 1 && at.column >= cells.firstColumn && at.column <= cells.lastColumn)
        return cell(area.sheet, cells.firstRow, at.column);
    return ErrorCode::Value;
}

FormulaValue Evaluation::cell(int sheet, int row, int column)
{
    FormulaValue value = m_cells.value(sheet, row, column);
    return spend(sizeOf(value)) ? value : ErrorCode::Value;
}

void Evaluation::eachCell(const SheetArea& area, FormulaCells::Texts texts, const FormulaCells::Visitor& visit)
{
    const auto inUse = filled(area);
    // Rows that are stored without cells of the area cost a little, too.
    if (!inUse || !spend(inUse->cells.rows() / 8))
        return;
    m_cells.eachCell(*inUse, texts, [&](int row, int column, const FormulaValue& value) {
        return spend(sizeOf(value)) && visit(row, column, value);
    });
}

std::optional<SheetArea> Evaluation::filled(const SheetArea& area)
{
    const auto used = m_cells.used(area.sheet);
    const auto common = used ? intersect(area.cells, *used) : std::nullopt;
    return common ? std::optional(SheetArea{area.sheet, *common}) : std::nullopt;
}

FormulaValue Evaluation::arrayOf(const FormulaValue& value)
{
    if (value.isArray())
        return value;
    if (!value.isReference())
        return arrayOfOne(value);
    if (value.areas().size() != 1)
        return arrayOfOne(ErrorCode::Value);
    SheetArea area = value.areas()[0];
    if (area.count() > FormulaLimits::arrayValues) {
        const CellArea used = m_cells.used(area.sheet).value_or(CellArea::cell(1, 1));
        area.cells.lastRow = std::clamp(used.lastRow, area.cells.firstRow, area.cells.lastRow);
        area.cells.lastColumn = std::clamp(used.lastColumn, area.cells.firstColumn, area.cells.lastColumn);
    }
    if (area.count() > FormulaLimits::arrayValues || !spend(area.count()))
        return arrayOfOne(ErrorCode::Value);
    if (!m_cells.hasSheet(area.sheet))
        return arrayOfOne(ErrorCode::Ref);
    FormulaArray array{area.cells.rows(), area.cells.columns(), {}};
    array.values.resize(static_cast<size_t>(area.count()));
    eachCell(area, FormulaCells::Texts::Needed, [&](int row, int column, const FormulaValue& cell) {
        const auto before = static_cast<size_t>(row - area.cells.firstRow) * static_cast<size_t>(array.columns);
        array.values[before + static_cast<size_t>(column - area.cells.firstColumn)] = cell;
        return true;
    });
    return array;
}

FormulaValue Evaluation::referred(const Reference& reference)
{
    const int sheet = reference.sheet.isEmpty() ? m_frame->sheet : m_cells.sheetNamed(reference.sheet);
    if (sheet < 0)
        return ErrorCode::Ref;
    FormulaPlace moved{0, 0};
    if (!reference.isFixed()) {
        const FormulaPlace at = place();
        moved = {at.row - m_frame->written.row, at.column - m_frame->written.column};
    }
    const auto row = [&](const ReferenceCorner& corner) {
        return corner.rowFixed ? corner.row : wrapped(corner.row + moved.row, maxRow);
    };
    const auto column = [&](const ReferenceCorner& corner) {
        return corner.columnFixed ? corner.column : wrapped(corner.column + moved.column, maxColumn);
    };
    CellArea cells = CellArea::wholeSheet();
    if (reference.first.row)
        std::tie(cells.firstRow, cells.lastRow) = std::minmax({row(reference.first), row(reference.last)});
    if (reference.first.column)
        std::tie(cells.firstColumn, cells.lastColumn) = std::minmax({column(reference.first), column(reference.last)});
    return SheetArea{sheet, cells};
}

FormulaValue Evaluation::reference(const QString& text)
{
    const auto found = parseReference(text);
    if (!found)
        return ErrorCode::Ref;
    // What is spelled out stays where it is.
    Reference fixed = *found;
    for (ReferenceCorner* corner : {&fixed.first, &fixed.last})
        corner->rowFixed = corner->columnFixed = true;
    return referred(fixed);
}

Evaluation::Frame* Evaluation::frameOfName(const NameUse& use, Want want)
{
    const int sheet = use.sheet.isEmpty() ? m_frame->sheet : m_cells.sheetNamed(use.sheet);
    const DefinedName* name = m_cells.name(use.name, sheet);
    if (!name)
        return nullptr;
    std::unique_ptr<Frame>& known = m_names[{name, want}];
    if (!known) {
        const QString text = name->formula.startsWith(u'=') ? name->formula.mid(1) : name->formula;
        auto formula = spend(textSteps(text)) ? Formula::parse(text) : std::nullopt;
        if (formula && !takeKept(static_cast<qint64>(formula->m_tree->nodes.size())))
            formula.reset();
        if (formula && m_unknownFunction.isEmpty())
            m_unknownFunction = formula->unknownFunction();
        known = frame(formula ? formula->m_tree : nullptr, m_frame->sheet, {1, 1});
    }
    return known.get();
}

FormulaValue Evaluation::named(int name, Want want)
{
    Frame*& frame = m_frame->names[static_cast<size_t>(name)];
    if (!frame)
        frame = frameOfName(m_frame->tree->names[static_cast<size_t>(name)], want);
    if (!frame || !frame->tree)
        return ErrorCode::Name;
    if (frame->inUse)
        return ErrorCode::Value; // a name that uses itself, and perhaps twice at each depth
    const QScopedValueRollback use(frame->inUse, true);
    const QScopedValueRollback within(m_frame, frame);
    return evaluate(frame->tree->root(), want);
}

} // namespace lumivane::engine
