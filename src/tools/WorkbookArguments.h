#pragma once

#include "engine/content/WorkbookContent.h"
#include "tools/CommandLine.h"

#include <memory>

namespace lumivane {

class Application;
class Workbook;
class Worksheet;

/// Throws RuntimeError where the call asks for an engine that is not built in.
void requireEmbedded(const CommandLine& line);
/// Whether sizes are to be those of LibreOffice Calc.
bool comparesWithCalc(const CommandLine& line);
/// Position of a sheet by name, without regard to case. Throws RuntimeError naming workbook and sheet.
int sheetIndex(const engine::WorkbookContent& workbook, const QString& path, const QString& name);

/// A sheet opened in a worker for one command; closed with this object. Throws RuntimeError naming what is missing.
class OpenSheet
{
public:
    OpenSheet(const QString& path, const QString& sheetName);
    ~OpenSheet();

private:
    std::shared_ptr<Application> m_worker;
    std::shared_ptr<Workbook> m_workbook;

public:
    std::shared_ptr<Worksheet> sheet;
};

} // namespace lumivane
