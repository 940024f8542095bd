#pragma once

#include "engine/content/Styles.h"
#include "engine/content/TextTable.h"

#include <QStringList>
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

/// What a workbook file holds beside its sheets: their list, the names, and the styles and texts that they share.
struct WorkbookContent final
{
    std::vector<SheetEntry> sheets;
    std::vector<DefinedName> definedNames;
    StyleTable styles;
    TextTable texts;
    bool date1904 = false;
    bool calculateOnOpen =
        false; ///< the writer asks that formulas be computed again: their stored results may be stale
    int activeSheet = 0;
    bool isTextFile = false; ///< its one sheet has no name but the file's

    /// Index of a sheet by name, without regard to case; -1 if there is none.
    int sheetNamed(const QString& name) const;
    /// The same for a name that was stored while an earlier version of the workbook was open. The sheet of a text file
    /// answers to any: each file of a series has another name.
    int sheetStoredAs(const QString& name) const;
    QStringList worksheetNames() const; ///< chart sheets left out
    qint64 bytes() const;               ///< memory held
};

} // namespace lumivane::engine
