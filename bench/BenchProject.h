#pragma once

#include <QDateTime>
#include <QString>
#include <QTemporaryDir>
#include <memory>

namespace lumivane::bench {

/// How the sources of a project find new versions.
enum class Arrival {
    InPlace,    ///< the file is written over where it lies
    FromFolder, ///< each source has a folder of its own from which files are fetched
};

/// A project with one dashboard in a temporary folder, open as the program has it open while this object lives.
class BenchProject
{
public:
    /// Every panel shows 30 x 12 cells above its sheet's last row; `workbook` is the content of each source's file.
    BenchProject(int sources, int panelsPerSource, Arrival arrival, const QByteArray& workbook);
    ~BenchProject();

    qint32 dashboard() const { return m_dashboard; }
    QString incomingFolder(int source) const;
    /// Makes every source's file a new version, a second newer than the last.
    void deliverAll();

private:
    QString workingFile(int source) const;
    void addSource(int source, Arrival arrival, const QByteArray& workbook);
    void addPanels(int sources, int panelsPerSource);

    QTemporaryDir m_home;
    QDateTime m_newest;
    int m_sources = 0;
    qint32 m_dashboard = 0;
};

/// A workbook of one sheet "Data" with numbers, dates and texts; its first column ends in "Total".
QByteArray benchWorkbook(int rows, int columns);

} // namespace lumivane::bench
