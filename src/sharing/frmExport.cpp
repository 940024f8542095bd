#include "sharing/frmExport.h"

#include "controls/HelpButton.h"
#include "platform/Prompts.h"
#include "repository/clsWorkspace.h"
#include "sharing/DashboardExport.h"
#include "sharing/DashboardListBox.h"
#include "sharing/frmAltPaths.h"

#include "ui_frmExport.h"

namespace lumivane {

using namespace Qt::StringLiterals;

frmExport::frmExport(QWidget* parent) : WorkingDialog(parent), ui(std::make_unique<Ui::frmExport>())
{
    ui->setupUi(this);
    setWorkParts(
        {ui->lblStatus, ui->barProgress, ui->cmdCancel, {ui->lstWorkspaces, ui->cmdAltPath, ui->cmdOK, ui->cmdHelp}});
    connect(ui->cmdOK, &QPushButton::clicked, this, &frmExport::cmdOK_Click);
    connect(ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(ui->cmdAltPath, &QPushButton::clicked, this, &frmExport::cmdAltPath_Click);
    connectHelp(*ui->cmdHelp, objectName());
    lstWorkspaces_Load();
}

frmExport::~frmExport() = default;

int frmExport::exec()
{
    if (ui->lstWorkspaces->count() < 1) {
        prompts().message(u"There are no saved dashboards to export."_s, Prompts::Icon::Exclamation);
        return Rejected;
    }
    if (gWorkspace)
        ListSelectByData(*ui->lstWorkspaces, gWorkspace->ID);
    return QDialog::exec();
}

void frmExport::lstWorkspaces_Load()
{
    std::vector<DashboardEntry> dashboards;
    exportableDashboards(dashboards);
    for (const DashboardEntry& dashboard : dashboards)
        ListAddItem(*ui->lstWorkspaces, dashboard.text, dashboard.ID);
}

void frmExport::cmdOK_Click()
{
    if (!ValidateForm())
        return;
    bool exported = false;
    work(u"Writing the shared file..."_s, Cancel::Possible, [&] {
        exported = ExportDashboard(m_exportFile, SelectedIDs(*ui->lstWorkspaces),
                                   [this](qint64 done, qint64 total) { return goOn(done, total); });
    });
    if (exported)
        accept();
    else
        setStatus(wasCancelled() ? u"The export was cancelled. All is as it was before."_s
                                 : u"The export did not come to its end. The log says why."_s);
}

void frmExport::cmdAltPath_Click()
{
    frmAltPaths(this).exec();
}

bool frmExport::ValidateForm()
{
    if (SelectedIDs(*ui->lstWorkspaces).empty()) {
        prompts().message(u"Must select at least 1 dashboard to export."_s, Prompts::Icon::Exclamation);
        ui->lstWorkspaces->setFocus();
        return false;
    }
    m_exportFile = ExportFileName();
    if (m_exportFile.isEmpty()) {
        prompts().message(u"No export file name defined."_s, Prompts::Icon::Exclamation);
        return false;
    }
    return true;
}

QString frmExport::ExportFileName()
{
    return prompts().saveFile({u"Enter export file name"_s, u"All shared files (*.lvds)"_s, QString(), u"lvds"_s});
}

} // namespace lumivane
