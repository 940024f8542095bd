#pragma once

#include "host/modUtilsExcel.h"

namespace lumivane {

/// A panel's sheet in a workbook that a worker of its own has open for as long as this object lives.
class PanelSheet
{
public:
    /// Throws RuntimeError where the workbook cannot be opened or has no such sheet.
    PanelSheet(const QString& path, const QString& sheetName);

    Worksheet& sheet() const { return *m_sheet; }

private:
    JobWorker m_worker;
    std::shared_ptr<Workbook> m_workbook;
    std::shared_ptr<Worksheet> m_sheet;
};

} // namespace lumivane
