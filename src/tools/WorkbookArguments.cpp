#include "tools/WorkbookArguments.h"

#include "host/Host.h"
#include "platform/RuntimeError.h"

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

[[noreturn]] void refuseSheet(const QString& path, const QString& name, const QStringList& present)
{
    throw RuntimeError(
        RuntimeError::ApplicationDefined,
        u"The workbook %1 has no sheet \"%2\"; its sheets are: %3."_s.arg(path, name, present.join(u", "_s)));
}

} // namespace

void requireEmbedded(const CommandLine& line)
{
    if (line.option(u"host"_s, u"embedded"_s) != u"embedded")
        throw RuntimeError(RuntimeError::ApplicationDefined,
                           u"The engine \"calc\" is not built into this program; leave --host out."_s);
}

bool comparesWithCalc(const CommandLine& line)
{
    return line.option(u"metrics"_s) == u"calc";
}

int sheetIndex(const engine::WorkbookContent& workbook, const QString& path, const QString& name)
{
    if (const int index = workbook.sheetStoredAs(name); index >= 0)
        return index;
    QStringList names;
    for (const engine::SheetEntry& entry : workbook.sheets)
        names.append(entry.name);
    refuseSheet(path, name, names);
}

SheetArgument::SheetArgument(const QString& path, const QString& sheetName)
{
    if (!m_worker)
        throw RuntimeError(RuntimeError::ObjectNotSet, u"No spreadsheet engine could be started."_s);
    const auto workbook = m_worker->Open(path);
    m_sheet = workbook->WorksheetByName(sheetName);
    if (!m_sheet)
        refuseSheet(path, sheetName, workbook->WorksheetNames());
}

} // namespace lumivane
