#pragma once

#include "engine/content/ShapeContent.h"

#include <QSizeF>
#include <string_view>
#include <unordered_map>

namespace lumivane::engine {

/// What the guides of a shape of one size are worth: lengths in EMU, angles in 60000ths of a degree.
class GuideValues
{
public:
    GuideValues(const QSizeF& size, const std::vector<Guide>& adjusts, const std::vector<Guide>& guides);

    /// Of a number or of a guide's name; 0 for a name that nothing has. Always a number, and a bounded one.
    double value(std::string_view text) const;
    double value(std::string_view name, double otherwise) const;

private:
    void add(const Guide& guide);

    std::unordered_map<std::string, double> m_values;
};

} // namespace lumivane::engine
