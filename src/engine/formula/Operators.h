#pragma once

#include "engine/formula/FormulaTree.h"

namespace lumivane::engine {

/// What an operator makes of single values.
FormulaValue operateOn(Operator operation, const FormulaValue& left, const FormulaValue& right, bool date1904);
/// What the operators ":", " " and "," make of references.
FormulaValue operateOnReferences(Operator operation, const FormulaValue& left, const FormulaValue& right);
/// A number as a result: #NUM! beyond what a number can be.
FormulaValue finite(double number);
/// A number to a power, as "^" and POWER give it.
FormulaValue power(double base, double exponent);

} // namespace lumivane::engine
