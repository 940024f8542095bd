#pragma once

#include "engine/content/SheetContent.h"
#include "engine/content/WorkbookContent.h"

#include <memory>
#include <vector>

namespace lumivane::engine {

/// Sheets of a workbook by index; null where one was not read yet.
using SheetList = std::vector<std::shared_ptr<const SheetContent>>;

/// Reads one file in one format. Every function throws Fault; WorkbookFile makes a sentence of it.
class FormatReader
{
public:
    virtual ~FormatReader() = default;

    /// All but the sheets. A format whose sheets cannot be read apart from the rest puts them into `sheets`. All of it
    /// may take `maxBytes` in memory.
    virtual WorkbookContent readWorkbook(SheetList& sheets, qint64 maxBytes) = 0;
    /// One of the sheets of `workbook`, which is what readWorkbook gave. It may take `maxBytes`.
    virtual std::shared_ptr<const SheetContent> readSheet(const WorkbookContent& workbook, int index,
                                                          qint64 maxBytes) = 0;
};

} // namespace lumivane::engine
