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
    QStringList names;
    for (size_t i = 0; i < workbook.sheets.size(); ++i) {
        if (workbook.sheets[i].name.compare(name, Qt::CaseInsensitive) == 0)
            return int(i);
        names.append(workbook.sheets[i].name);
    }
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
