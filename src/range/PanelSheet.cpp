#include "range/PanelSheet.h"

#include "host/Host.h"
#include "platform/RuntimeError.h"

namespace lumivane {

using namespace Qt::StringLiterals;

PanelSheet::PanelSheet(const QString& path, const QString& sheetName)
{
    if (!m_worker)
        throw RuntimeError(RuntimeError::ObjectNotSet, u"No spreadsheet engine could be started."_s);
    m_workbook = m_worker->Open(path);
    m_sheet = m_workbook->WorksheetByName(sheetName);
    if (!m_sheet)
        throw RuntimeError(
            RuntimeError::SubscriptOutOfRange,
            u"A sheet named %1 was not found in the workbook [%2]."_s.arg(sheetName, m_workbook->Name()));
}

} // namespace lumivane
