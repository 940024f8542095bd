#include "engine/content/Styles.h"

namespace lumivane::engine {

bool FillStyle::operator==(const FillStyle& other) const
{
    const bool sameGradient =
        gradient == other.gradient || (gradient && other.gradient && *gradient == *other.gradient);
    return pattern == other.pattern && fore == other.fore && back == other.back && sameGradient;
}

void DifferentialStyle::fillFrom(const DifferentialStyle& other)
{
    const auto take = [&](auto DifferentialStyle::*property) {
        if (!(this->*property))
            this->*property = other.*property;
    };
    take(&DifferentialStyle::fontColor);
    take(&DifferentialStyle::bold);
    take(&DifferentialStyle::italic);
    take(&DifferentialStyle::strikeOut);
    take(&DifferentialStyle::underline);
    take(&DifferentialStyle::fill);
    take(&DifferentialStyle::left);
    take(&DifferentialStyle::right);
    take(&DifferentialStyle::top);
    take(&DifferentialStyle::bottom);
    take(&DifferentialStyle::vertical);
    take(&DifferentialStyle::horizontal);
    if (numberFormat.isEmpty())
        numberFormat = other.numberFormat;
}

} // namespace lumivane::engine
