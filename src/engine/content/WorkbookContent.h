#pragma once

#include "engine/content/SheetContent.h"
#include "engine/content/Styles.h"
#include "engine/content/TextTable.h"

#include <QString>
#include <memory>
#include <vector>

namespace lumivane::engine {

struct DefinedName
{
    QString name;
    QString formula; ///< as stored, "Data!$A$1:$C$9"
    int sheet = -1;  ///< the sheet it is local to; -1: the workbook's
};

struct SheetEntry
{
    QString name;
    bool visible = true;
    bool isChartSheet = false;
};

/// A workbook on disk whose sheets are read when first asked for. Shared between openings and never changed.
class WorkbookContent
{
public:
    virtual ~WorkbookContent() = default;

    std::vector<SheetEntry> sheets;
    std::vector<DefinedName> definedNames;
    StyleTable styles;
    TextTable texts;
    bool date1904 = false;
    bool calculateOnOpen =
        false; ///< the writer asks that formulas be computed again: their stored results may be stale
    int activeSheet = 0;

    /// The sheet at an index from 0, read now if it was not yet. Throws RuntimeError naming file, sheet and fault.
    virtual std::shared_ptr<const SheetContent> sheet(int index) = 0;
    virtual qint64 bytes() const = 0; ///< memory held, for the cache's bound
};

} // namespace lumivane::engine
