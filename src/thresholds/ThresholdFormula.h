#pragma once

#include "platform/Result.h"

#include <QString>

namespace lumivane {

/// Whether a comparison of numbers in the spreadsheet's formula language holds, as in "1250>1000" or "= 12*1.1<=20".
/// Knows numbers, + - * / ^ %, signs, parentheses and one comparison (= <> < <= > >=) between two sides; a formula
/// without a comparison holds unless it gives 0. Anything else is refused with a sentence that names the place.
Result<bool> evaluateComparison(const QString& formula);

/// What completes a formula behind a number: the same text that a threshold stores, tried with a number in front.
/// Empty when it is one, otherwise why it is none.
QString comparisonFault(const QString& comparison);

} // namespace lumivane
