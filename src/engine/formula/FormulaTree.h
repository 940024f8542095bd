#pragma once

#include "engine/formula/FormulaValue.h"

#include <optional>
#include <vector>

// A formula taken apart: nodes that go by their index, those of operands before those that use them.

namespace lumivane::engine {

struct Function;

enum class Operator : quint8 {
    Equal,
    NotEqual,
    Less,
    LessEqual,
    Greater,
    GreaterEqual,
    Join,
    Add,
    Subtract,
    Multiply,
    Divide,
    Power,
    // of references
    Range,
    Intersection,
    Union,
    // with one operand
    Plus,
    Minus,
    Percent,
    Single, ///< "@": one value of an area
};

struct FormulaNode
{
    enum class Kind : quint8 {
        Constant,  ///< `index` into FormulaTree::constants
        Missing,   ///< an argument that is left out
        Reference, ///< `index` into FormulaTree::references
        Name,      ///< `index` into FormulaTree::names
        Binary,
        Unary,
        Call,
    };
    Kind kind = Kind::Missing;
    Operator operation = Operator::Equal;
    int index = 0;
    const Function* function = nullptr; ///< of a call; null if it is not known
    int firstOperand = 0, operands = 0; ///< in FormulaTree::operands
};

/// One corner of a reference; 0 for the row of whole columns and the column of whole rows.
struct ReferenceCorner
{
    int row = 0, column = 0;
    bool rowFixed = false, columnFixed = false; ///< with "$"
};

struct Reference
{
    QString sheet; ///< empty: the formula's own
    ReferenceCorner first, last;

    bool isFixed() const
    {
        const auto fixed = [](const ReferenceCorner& corner) {
            return (corner.rowFixed || !corner.row) && (corner.columnFixed || !corner.column);
        };
        return fixed(first) && fixed(last);
    }
};

struct NameUse
{
    QString sheet; ///< empty: none was given
    QString name;
};

struct FormulaTree
{
    std::vector<FormulaNode> nodes; ///< the last one is the formula
    std::vector<int> operands;      ///< indices of nodes
    std::vector<FormulaValue> constants;
    std::vector<Reference> references;
    std::vector<NameUse> names;
    QString unknownFunction;

    int root() const { return static_cast<int>(nodes.size()) - 1; }
    int operand(const FormulaNode& node, int place) const
    {
        return operands[static_cast<size_t>(node.firstOperand + place)];
    }
};

/// None where the formula is not understood.
std::optional<FormulaTree> parseFormula(const QString& text);
/// A reference in A1 notation, as INDIRECT takes it; none for anything else.
std::optional<Reference> parseReference(const QString& text);

} // namespace lumivane::engine
