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

OpenSheet::OpenSheet(const QString& path, const QString& sheetName)
    : m_worker(hostFactory().worker()), m_workbook(m_worker->Open(path))
{
    sheet = m_workbook->WorksheetByName(sheetName);
    if (!sheet)
        refuseSheet(path, sheetName, m_workbook->WorksheetNames());
}

OpenSheet::~OpenSheet()
{
    m_workbook->Close();
    m_worker->Quit();
}

} // namespace lumivane
