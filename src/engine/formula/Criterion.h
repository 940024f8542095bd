#pragma once

#include "engine/formula/FormulaTree.h"

namespace lumivane::engine {

/// Whether a text has wildcards: "*" any characters, "?" any one, "~" before one that stands for itself.
bool hasWildcards(QStringView text);
/// Whether a whole text fits a pattern, without case. Patterns beyond FormulaLimits::patternLength fit nothing.
bool fitsWildcards(const QString& text, const QString& pattern);
/// The first place from `from` on where a pattern fits, from 0, without case; -1 if it fits nowhere.
qsizetype findWildcards(const QString& text, const QString& pattern, qsizetype from);

/// What COUNTIF and its like ask of a cell: ">5", "<>", "ab*", or a value that it equals.
class Criterion
{
public:
    Criterion(const FormulaValue& given, bool date1904);

    bool holds(const FormulaValue& cell) const;
    bool holdsForBlank() const { return m_holdsForBlank; }
    Operator operation() const { return m_operation; }
    const FormulaValue& operand() const { return m_operand; }
    /// The cells that equal one number, text or boolean, without wildcards.
    bool isPlainEquality() const;

private:
    bool equals(const FormulaValue& cell) const;

    Operator m_operation = Operator::Equal;
    FormulaValue m_operand; ///< blank: no contents at all
    bool m_wild = false;
    bool m_orEmptyText = false; ///< "" asks for no contents or an empty text
    bool m_holdsForBlank = false;
    bool m_date1904;
};

} // namespace lumivane::engine
