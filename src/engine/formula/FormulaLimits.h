#pragma once

#include <QtGlobal>

/// What a formula from a file may cost. Beyond a limit it is not understood, or gives #VALUE!.
namespace lumivane::engine::FormulaLimits {

inline constexpr int length = 8192; ///< characters
inline constexpr int nesting = 64;  ///< parentheses, calls and signs within one another
inline constexpr int depth = 256;   ///< the same, through the defined names that a formula uses
inline constexpr int arrayValues = 500'000;
/// Steps of one evaluation: a part of the formula, a cell that is looked at, 16 characters of its text.
inline constexpr qint64 steps = 5'000'000;
/// Steps of all evaluations of a FormulaRun.
inline constexpr qint64 runSteps = 50'000'000;
/// Steps of all runs that share a FormulaBudget.
inline constexpr qint64 sharedSteps = 50'000'000;
/// Values in arrays and indexes, 16 characters of texts each, and parts of formulas that names stand for: what all
/// those runs keep for their next evaluations.
inline constexpr qint64 keptValues = 5'000'000;
inline constexpr int patternLength = 255; ///< characters of a text with wildcards

} // namespace lumivane::engine::FormulaLimits
