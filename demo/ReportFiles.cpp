#include "Reports.h"
#include "platform/RuntimeError.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace lumivane::demo {

QList<ReportFile> reportFiles(int version)
{
    // Dated names where a new file appears for each version, plain names where one file is written over.
    const QString day = QDate(2026, 10, 5).addDays(7 * version).toString(Qt::ISODate);
    return {{u"Regional sales %1.xlsx"_s.arg(day), regionalSales(version)},
            {u"Production report %1.xlsx"_s.arg(day), productionReport(version)},
            {u"Cash position.xlsx"_s, cashPosition(version)},
            {u"Service desk.xlsx"_s, serviceDesk(version)},
            {u"Budget 2026.xlsx"_s, budget(version)},
            {u"Price list.csv"_s, priceList(version)}};
}

void writeReports(const QDir& folder, int version)
{
    if (!folder.mkpath(u"."_s))
        throw RuntimeError(RuntimeError::PathNotFound, u"The folder %1 cannot be made."_s.arg(folder.path()));
    for (const ReportFile& report : reportFiles(version)) {
        QFile file(folder.filePath(report.name));
        if (!file.open(QIODevice::WriteOnly) || file.write(report.bytes) != report.bytes.size() || !file.flush())
            throw RuntimeError(RuntimeError::ApplicationDefined,
                               u"%1 cannot be written: %2."_s.arg(file.fileName(), file.errorString()));
    }
}

} // namespace lumivane::demo
