#pragma once

#include "engine/content/Tables.h"
#include "engine/read/xlsx/Palette.h"

#include <map>
#include <pugixml.hpp>
#include <string>

namespace lumivane::engine {

/// The styles that tables and pivot tables of a workbook name: those of its style sheet and the built-in ones. A style
/// is made when it is first asked for and shared by all that have it.
class TableStyles
{
public:
    /// From the root of a style sheet, whose looks the styles refer to by number. Reads at most 5,000 styles.
    void readOwn(pugi::xml_node styleSheet, const std::vector<std::shared_ptr<const DifferentialStyle>>& looks);
    /// Null for a name that stands for no style. Theme colours of a built-in one come from the palette.
    std::shared_ptr<const TableStyle> find(std::string_view name, const Palette& palette);

private:
    std::map<std::string, std::shared_ptr<const TableStyle>, std::less<>> m_styles;
};

} // namespace lumivane::engine
