#include "BenchProject.h"

#include "Book.h"
#include "platform/ApplicationInfo.h"
#include "platform/RuntimeError.h"
#include "repository/Database.h"
#include "repository/clsPanelSource.h"
#include "repository/clsWorkspace.h"
#include "repository/clsWorkspacePanel.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace lumivane::bench {

namespace {

constexpr int benchRows = 5000;

void writeBenchFile(const QString& path, const QByteArray& bytes, const QDateTime& time)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush() ||
        !file.setFileTime(time, QFileDevice::FileModificationTime))
        throw RuntimeError(RuntimeError::ApplicationDefined, u"%1 cannot be written."_s.arg(path));
}

} // namespace

BenchProject::BenchProject(int sources, int panelsPerSource, Arrival arrival, const QByteArray& workbook)
    : m_newest(QDateTime::currentDateTime().addDays(-1)), m_sources(sources)
{
    setProgramFolder(m_home.path());
    const QString file = m_home.filePath(u"lumivane.lvdu"_s);
    Database::create(file);
    gDB = Database::open(file, databaseConnect());
    gSources = std::make_shared<clsSources>();
    for (int source = 0; source < sources; ++source)
        addSource(source, arrival, workbook);
    addPanels(sources, panelsPerSource);
    m_newest = QDateTime::currentDateTime().addSecs(10);
}

BenchProject::~BenchProject()
{
    gWorkspace.reset();
    gSources.reset();
    gDB->Close();
    gDB.reset();
}

QString BenchProject::workingFile(int source) const
{
    return m_home.filePath(u"working%1/Report.xlsx"_s.arg(source));
}

QString BenchProject::incomingFolder(int source) const
{
    return m_home.filePath(u"incoming%1"_s.arg(source));
}

void BenchProject::addSource(int source, Arrival arrival, const QByteArray& workbook)
{
    QDir().mkpath(QFileInfo(workingFile(source)).path());
    QDir().mkpath(incomingFolder(source));
    writeBenchFile(workingFile(source), workbook, m_newest);
    const auto record = gSources->Source(gSources->AddSource(workingFile(source)));
    record->Mask = arrival == Arrival::FromFolder ? u"Report*.xlsx"_s : u"Report.xlsx"_s;
    record->UpdateType = arrival == Arrival::FromFolder ? u"folder"_s : u"default"_s;
    record->SourceFolder = withDelimiter(incomingFolder(source));
    record->CheckEvery = 0;
    record->SaveToDB(gDB);
}

void BenchProject::addPanels(int sources, int panelsPerSource)
{
    clsWorkspace dashboard;
    dashboard.Name = u"Bench"_s;
    const QString bottom = u"bottom=$T$%1"_s.arg(benchRows);
    for (int source = 0; source < sources; ++source) {
        for (int i = 0; i < panelsPerSource; ++i) {
            clsWorkspacePanel& panel = *dashboard.Panels(dashboard.AddPanel());
            panel.SourceID = gSources->SourceByIndex(source + 1)->ID;
            panel.ContentType = u"S"_s;
            panel.SheetName = u"Data"_s;
            panel.Caption = u"Panel %1-%2"_s.arg(source).arg(i);
            panel.PicRange = u"$A$%1:$L$%2``"_s.arg(benchRows - 29 - i).arg(benchRows - i);
            // Half of the panels search the last row, half a label.
            panel.RelativeTo = i % 2 ? u"contents"_s : u"bottom"_s;
            panel.ContentMatch = i % 2 ? bottom + u"`anchor=$A%1`content=Total"_s.arg(benchRows) : bottom;
            panel.ViewType = u"C"_s;
            panel.pLeft = panel.pTop = qint16(150 * i);
            panel.pWidth = 9000;
            panel.pHeight = 6000;
        }
    }
    dashboard.SaveToDB(gDB);
    m_dashboard = dashboard.ID;
}

void BenchProject::deliverAll()
{
    m_newest = m_newest.addSecs(1);
    for (int source = 0; source < m_sources; ++source) {
        QFile file(workingFile(source));
        if (!file.open(QIODevice::ReadWrite) || !file.setFileTime(m_newest, QFileDevice::FileModificationTime))
            throw RuntimeError(RuntimeError::ApplicationDefined, u"%1 cannot be dated."_s.arg(file.fileName()));
    }
}

QByteArray benchWorkbook(int rows, int columns)
{
    demo::Book book;
    demo::Sheet& sheet = book.add(u"Data"_s);
    const demo::Look plain, money = plain.formatted("#,##0.00"), day = plain.formatted("d mmm yyyy");
    for (int row = 1; row <= rows; ++row) {
        sheet.set(row, 1, row == rows ? u"Total"_s : u"Article %1"_s.arg(row % 500), plain);
        sheet.set(row, 2, QDate(2020, 1, 1).addDays(row % 2000), day);
        for (int column = 3; column <= columns; ++column)
            sheet.set(row, column, (row * 31 + column * 7) % 100000 / 100.0, money);
    }
    return book.bytes();
}

} // namespace lumivane::bench
