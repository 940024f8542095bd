#include "sharing/frmImport.h"

#include "platform/Prompts.h"
#include "session/modMain.h"
#include "sharing/DashboardImport.h"
#include "sharing/DashboardListBox.h"
#include "sharing/frmImportFolders.h"

#include "ui_frmImport.h"

namespace lumivane {

using namespace Qt::StringLiterals;

frmImport::frmImport(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::frmImport>())
{
    ui->setupUi(this);
    connect(ui->cmdOK, &QPushButton::clicked, this, &frmImport::cmdOK_Click);
    connect(ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    explainOnClick(*ui->cmdHelp,
                   u"Brings the selected dashboards of a shared file into this project. Dashboards whose names are in "
                   "the project already are not offered. Before anything is written, you see the folders that they "
                   "will use on this machine."_s);
}

frmImport::~frmImport() = default;

int frmImport::exec()
{
    return Form_Activate() ? QDialog::exec() : int(Rejected);
}

void frmImport::reject()
{
    if (!m_working)
        QDialog::reject();
}

bool frmImport::Form_Activate()
{
    m_import =
        std::make_unique<DashboardImport>(ImportFile, [this](qint64 done, qint64 total) { showProgress(done, total); });
    std::vector<DashboardEntry> dashboards;
    if (!m_import->Open() || !m_import->importableDashboards(dashboards))
        return false;
    if (dashboards.empty()) {
        prompts().message(u"There are no dashboards to import from."_s, Prompts::Icon::Exclamation);
        return false;
    }
    for (const DashboardEntry& dashboard : dashboards)
        ListAddItem(*ui->lstWorkspaces, dashboard.text, dashboard.ID);
    return true;
}

void frmImport::cmdOK_Click()
{
    if (!ValidateForm())
        return;
    const std::vector<qint32> ids = SelectedIDs(*ui->lstWorkspaces);
    if (!confirmFolders(ids) || !importSelected(ids))
        return;
    prompts().message(u"Selected dashboard(s) were imported successfully."_s, Prompts::Icon::Information);
    accept();
}

bool frmImport::ValidateForm()
{
    if (!SelectedIDs(*ui->lstWorkspaces).empty())
        return true;
    prompts().message(u"Must select at least 1 panel to import."_s, Prompts::Icon::Exclamation);
    ui->lstWorkspaces->setFocus();
    return false;
}

bool frmImport::confirmFolders(const std::vector<qint32>& ids)
{
    setWorking(true);
    const auto preview = m_import->preview(ids);
    setWorking(false);
    if (!preview) {
        prompts().message(preview.reason(), Prompts::Icon::Exclamation);
        return false;
    }
    return preview.value().folders.empty() || frmImportFolders(preview.value(), this).exec() == Accepted;
}

bool frmImport::importSelected(const std::vector<qint32>& ids)
{
    setWorking(true);
    const bool imported = m_import->ImportDashboard(ids);
    setWorking(false);
    return imported;
}

void frmImport::showProgress(qint64 done, qint64 total)
{
    ui->barProgress->setMaximum(int(total));
    ui->barProgress->setValue(int(done));
    prompts().doEvents();
}

void frmImport::setWorking(bool isWorking)
{
    m_working = isWorking;
    for (QWidget* control : std::initializer_list<QWidget*>{ui->lstWorkspaces, ui->cmdOK, ui->cmdCancel, ui->cmdHelp})
        control->setEnabled(!isWorking);
    ui->barProgress->setValue(0);
    ui->barProgress->setVisible(isWorking);
    prompts().setPointer(isWorking ? Prompts::Pointer::Hourglass : Prompts::Pointer::Default);
    Q_EMIT working(isWorking);
    if (isWorking)
        prompts().doEvents();
}

} // namespace lumivane
