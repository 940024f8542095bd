#pragma once

#include "engine/content/WorkbookContent.h"
#include "host/modUtilsExcel.h"
#include "tools/CommandLine.h"

#include <memory>

namespace lumivane {

/// Throws RuntimeError where the call asks for an engine that is not built in.
void requireEmbedded(const CommandLine& line);
/// Whether sizes are to be those of LibreOffice Calc.
bool comparesWithCalc(const CommandLine& line);
/// Position of a sheet by a stored name, without regard to case; that of a text file has any. Throws RuntimeError
/// naming workbook and sheet.
int sheetIndex(const engine::WorkbookContent& workbook, const QString& path, const QString& name);

/// A sheet opened in a worker for one command; closed with this object. Throws RuntimeError naming what is missing.
class SheetArgument
{
public:
    SheetArgument(const QString& path, const QString& sheetName);

    Worksheet& sheet() const { return *m_sheet; }

private:
    JobWorker m_worker;
    std::shared_ptr<Worksheet> m_sheet;
};

} // namespace lumivane
