#pragma once

#include "engine/content/SheetContent.h"
#include "engine/read/xlsx/TableStyles.h"

namespace lumivane::engine {

/// Reads the parts of a sheet that describe its tables and pivot tables into its content. A part without a usable place
/// is passed over.
class TableReader
{
public:
    TableReader(TableStyles& styles, const Palette& palette, SheetContent& content)
        : m_styles(styles), m_palette(palette), m_content(content)
    {
    }

    void readTable(pugi::xml_node table);
    void readPivot(pugi::xml_node definition);

private:
    /// The style that a <tableStyleInfo> or its like names; null where it names none.
    std::shared_ptr<const TableStyle> style(pugi::xml_node info);

    TableStyles& m_styles;
    const Palette& m_palette;
    SheetContent& m_content;
    size_t m_linesLeft = 2000000; ///< rows and columns of pivot tables whose kinds may yet be noted
};

} // namespace lumivane::engine
