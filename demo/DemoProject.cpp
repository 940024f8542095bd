#include "DemoProject.h"

#include "DemoPlan.h"
#include "Reports.h"
#include "host/Host.h"
#include "host/modUtilsExcel.h"
#include "platform/ApplicationInfo.h"
#include "platform/Checked.h"
#include "platform/Clock.h"
#include "platform/RuntimeError.h"
#include "repository/Database.h"
#include "repository/SqlText.h"
#include "repository/clsPanelSource.h"
#include "repository/clsWorkspace.h"
#include "repository/clsWorkspacePanel.h"
#include "services/modUtilsINI.h"
#include "thresholds/ThresholdRules.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace lumivane::demo {

namespace {

constexpr int twipsPerPixel = 15;

[[noreturn]] void giveUp(const QString& sentence)
{
    throw RuntimeError(RuntimeError::ApplicationDefined, sentence);
}

/// When the first version came.
QDateTime yesterday()
{
    return QDateTime(QDate::currentDate().addDays(-1), QTime(17, 30));
}

/// The reports lie in both folders: where new versions arrive, and where the program keeps those it works with. They
/// are dated yesterday, so that a version delivered today is newer and looks so.
void putFirstVersion(const QDir& folder)
{
    for (const QString& name : {u"incoming"_s, u"working"_s}) {
        const QDir target(folder.filePath(name));
        writeReports(target, 1);
        for (const QFileInfo& entry : target.entryInfoList(QDir::Files)) {
            QFile file(entry.filePath());
            if (!file.open(QIODevice::ReadWrite) || !file.setFileTime(yesterday(), QFileDevice::FileModificationTime))
                giveUp(u"The time of %1 cannot be set: %2."_s.arg(file.fileName(), file.errorString()));
        }
    }
}

void addSource(const SourcePlan& plan, const QDir& folder)
{
    const auto source = gSources->Source(gSources->AddSource(folder.filePath(u"working/"_s + plan.firstFile)));
    if (!source)
        giveUp(u"The source %1 cannot be stored."_s.arg(plan.firstFile));
    source->Mask = plan.mask;
    source->UpdateType = plan.updateType;
    source->CheckEvery = 1; // minute: looked at in every pass
    source->SourceFolder = withDelimiter(folder.filePath(u"incoming"_s));
    if (!source->SaveToDB(gDB))
        giveUp(u"The update rule of %1 cannot be stored."_s.arg(plan.firstFile));
    // A new source counts its file as the version of the moment in which it is made, and would keep the next one
    // waiting.
    const QString times = u"LastUpdated = %1, LastChecked = %1"_s.arg(instantLiteral(yesterday()));
    gDB->Execute(u"UPDATE LvnPanelSource SET "_s + times + u" WHERE ID = "_s + QString::number(source->ID));
}

/// Takes the selection over as a paste does: fixed parts, heights and widths come from the sheet.
void definePanel(clsWorkspacePanel& panel, const PanelPlan& plan, Worksheet& sheet)
{
    panel.ContentType = u"S"_s;
    panel.SheetName = plan.sheet;
    panel.Caption = plan.caption;
    panel.ViewType = plan.view;
    panel.pLeft = toStoredTwips(plan.window.left() * twipsPerPixel);
    panel.pTop = toStoredTwips(plan.window.top() * twipsPerPixel);
    panel.pWidth = toStoredTwips(plan.window.width() * twipsPerPixel);
    panel.pHeight = toStoredTwips(plan.window.height() * twipsPerPixel);
    panel.RelativeTo = plan.rule;
    panel.ContentMatch = u"bottom="_s + RealBottomRight(sheet);
    if (!plan.anchor.isEmpty())
        panel.ContentMatch += u"`anchor="_s + plan.anchor + u"`content="_s + plan.content;
    if (!panel.PasteRange(sheet, plan.selection + u'`' + plan.panes))
        giveUp(u"The panel %1 cannot take %2."_s.arg(plan.caption, plan.selection));
}

std::shared_ptr<Worksheet> openSheet(Application& host, const clsPanelSource& source, const PanelPlan& plan)
{
    auto sheet = host.Open(source.currentPath())->WorksheetByName(plan.sheet);
    if (!sheet)
        giveUp(u"%1 has no sheet %2."_s.arg(source.currentPath(), plan.sheet));
    for (const WidthPlan& width : widthPlans())
        if (width.source == plan.source)
            sheet->Columns(width.columns).setColumnWidth(width.characters);
    return sheet;
}

std::shared_ptr<clsPanelSource> sourceOf(const PanelPlan& plan, const QDir& folder)
{
    for (const SourcePlan& source : sourcePlans())
        if (source.key == plan.source)
            return gSources->Source(gSources->AddSource(folder.filePath(u"working/"_s + source.firstFile)));
    giveUp(u"No report is called %1."_s.arg(plan.source));
}

void addThresholds(const clsWorkspacePanel& panel)
{
    std::vector<ThresholdRule> rules;
    for (const ThresholdPlan& plan : thresholdPlans()) {
        if (plan.panel != panel.Caption)
            continue;
        const CellArea cell = CellArea::parse(plan.cell).value();
        rules.push_back({cell.firstRow, cell.firstColumn, plan.isHigh, plan.comparison});
    }
    if (rules.empty())
        return;
    const QString failure = saveThresholds(panel.ID, PanelCells::of(panel.PicRange).value(), rules);
    if (!failure.isEmpty())
        giveUp(failure);
}

void addDashboard(const QString& name, const QDir& folder)
{
    const auto host = hostFactory().worker();
    clsWorkspace dashboard;
    dashboard.Name = name;
    dashboard.Description = u"Reports of a made-up company"_s;
    for (const PanelPlan& plan : panelPlans()) {
        if (plan.dashboard != name)
            continue;
        const auto source = sourceOf(plan, folder);
        clsWorkspacePanel& panel = *dashboard.Panels(dashboard.AddPanel());
        panel.SourceID = source->ID;
        definePanel(panel, plan, *openSheet(*host, *source, plan));
    }
    if (!dashboard.SaveToDB(gDB))
        giveUp(u"The dashboard %1 cannot be stored."_s.arg(name));
    for (int i = 1; i <= dashboard.NumPanels(); ++i)
        addThresholds(*dashboard.Panels(i));
    host->Quit();
}

QStringList dashboardNames()
{
    QStringList names;
    for (const PanelPlan& plan : panelPlans())
        if (!names.contains(plan.dashboard))
            names.append(plan.dashboard);
    return names;
}

/// A pass over the panels every minute, the shortest there is.
void putSettings()
{
    SetIniString(GetIniFile(), u"Options"_s, u"Dashboard Color"_s, u"16118254"_s);
    SetIniString(GetIniFile(), u"Options"_s, u"Panel Time Stamp"_s, u"-1"_s);
    SetIniString(GetIniFile(), u"Options"_s, u"Refresh Frequency"_s, u"0"_s);
    SetIniString(GetIniFile(), u"Options"_s, u"Caption Alignment"_s, u"Left"_s);
    SetIniString(GetIniFile(), u"Settings"_s, u"Large Sheets"_s, u"1"_s);
}

} // namespace

void makeDemo(const QDir& folder)
{
    setProgramFolder(folder.absolutePath());
    putFirstVersion(folder);
    const QString file = folder.filePath(executableName() + u".lvdu"_s);
    Database::create(file);
    gDB = Database::open(file, databaseConnect());
    gSources = std::make_shared<clsSources>();
    for (const SourcePlan& plan : sourcePlans())
        addSource(plan, folder);
    // The program opens the dashboard stored last, and times in the project are whole seconds.
    const QStringList names = dashboardNames();
    const QDateTime now = Clock::now();
    for (int i = 0; i < names.size(); ++i) {
        Clock::setFixed(now.addSecs(i + 1 - names.size()));
        addDashboard(names.at(i), folder);
    }
    Clock::setFixed({});
    gDB->Close();
    gDB.reset();
    putSettings();
}

} // namespace lumivane::demo
