#pragma once

#include "engine/formula/FormulaValue.h"

// How single values become others, and how they compare. An error stays what it is.

namespace lumivane::engine {

/// A number as people write it: "1,234.5", "12%", "1e3", a day, a time of day, or both. None for any other text.
std::optional<double> numberFromText(QStringView text, bool date1904);

/// A number, or an error. Blank is 0, a text the number that it shows (#VALUE! if none), TRUE 1.
FormulaValue asNumber(const FormulaValue& value, bool date1904);
/// A text, or an error. Numbers have up to 15 digits.
FormulaValue asText(const FormulaValue& value);
/// A boolean, or an error. Of texts only "TRUE" and "FALSE" are one.
FormulaValue asBoolean(const FormulaValue& value);

/// Whether two numbers agree in the 15 digits that count.
bool sameNumber(double a, double b);
/// The number without what lies beyond those digits, so that most numbers alike become one.
double significant(double number);
/// The sum; 0 where what is left of two numbers lies beyond their 15 digits.
double sum15(double a, double b);

/// Below 0, 0 or above 0. Numbers are less than texts, those less than booleans; texts compare without case, and blank
/// is 0, "" or FALSE, as the other value asks. Not for errors.
int compareValues(const FormulaValue& a, const FormulaValue& b);

} // namespace lumivane::engine
