#pragma once

#include <QByteArray>
#include <QDir>
#include <QList>
#include <QString>

namespace lumivane::demo {

inline constexpr int versions = 5; ///< of every report, numbered from 1

/// A file of one version of a report.
struct ReportFile
{
    QString name;
    QByteArray bytes;
};

/// All reports of the made-up company as they stand in a version. Equal versions give equal bytes.
QList<ReportFile> reportFiles(int version);
/// Writes them into a folder, which is made when missing. Throws RuntimeError naming the file.
void writeReports(const QDir& folder, int version);

// Each report changes its shape from version to version in a way of its own.

QByteArray regionalSales(int version);    ///< grows by rows above its total, with a second sheet that stays in place
QByteArray cashPosition(int version);     ///< one sheet's block moves down, the other's to the right
QByteArray productionReport(int version); ///< frozen titles, hidden rows; machines are added above
QByteArray serviceDesk(int version);      ///< keeps its places, only figures change
QByteArray budget(int version);           ///< keeps its places, months fill up
QByteArray priceList(int version);        ///< text with separators; lines are added at the end

} // namespace lumivane::demo
