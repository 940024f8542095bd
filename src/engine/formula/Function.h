#pragma once

#include "engine/formula/FunctionCall.h"

#include <span>
#include <string_view>

namespace lumivane::engine {

/// A function of formulas and how its arguments are prepared.
struct Function
{
    static constexpr int many = 255;

    std::string_view name; ///< in capitals
    int least, most;       ///< arguments
    /// A letter for each parameter; the last `repeated` of them go on for further arguments.
    /// - v: one value; where many values are wanted and an argument has many, the function is called for each of them
    /// - m: many values, an area or an array as it is
    /// - p: passed through as the caller of the function wants it
    std::string_view parameters;
    FormulaValue (*evaluate)(FunctionCall& call);
    int repeated = 1;

    char parameter(int place) const
    {
        const int count = static_cast<int>(parameters.size());
        if (place < count)
            return parameters[static_cast<size_t>(place)];
        return parameters[static_cast<size_t>(count - repeated + (place - count) % repeated)];
    }
};

/// Null if there is none of this name (in capitals).
const Function* findFunction(const QString& name);

// By subject, each in a file of its own.
std::span<const Function> logicFunctions();
std::span<const Function> mathFunctions();
std::span<const Function> statisticFunctions();
std::span<const Function> conditionalFunctions();
std::span<const Function> textFunctions();
std::span<const Function> dateFunctions();
std::span<const Function> lookupFunctions();
std::span<const Function> informationFunctions();

} // namespace lumivane::engine
