#pragma once

#include "engine/content/Cell.h"

#include <QString>
#include <optional>
#include <string_view>

namespace lumivane::engine {

/// What a field of a text file stands for, when it is not just a text.
struct CsvValue
{
    CellKind kind = CellKind::Number;
    double number = 0;
    ErrorCode error = ErrorCode::NA;
    const char16_t* format = nullptr; ///< number format code that shows it; null: General
};

/// Reads a field as somebody would who types it into an English spreadsheet: numbers, percentages, amounts of dollars,
/// fractions, dates, times, truth values and formulas (whose results a text file does not hold). None for texts.
/// Dates without a year are in `year`.
std::optional<CsvValue> csvValue(std::string_view field, int year);

} // namespace lumivane::engine
