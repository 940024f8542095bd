#include "sharing/frmImport.h"

#include "controls/HelpButton.h"
#include "platform/Prompts.h"
#include "sharing/DashboardImport.h"
#include "sharing/DashboardListBox.h"
#include "sharing/frmImportFolders.h"

#include <optional>

#include "ui_frmImport.h"

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

/// More would make the box taller than the screen; the log has them all.
constexpr int mostFaultsShown = 10;

} // namespace

frmImport::frmImport(QWidget* parent) : WorkingDialog(parent), ui(std::make_unique<Ui::frmImport>())
{
    ui->setupUi(this);
    setWorkParts({ui->lblStatus, ui->barProgress, ui->cmdCancel, {ui->lstWorkspaces, ui->cmdOK, ui->cmdHelp}});
    connect(ui->cmdOK, &QPushButton::clicked, this, &frmImport::cmdOK_Click);
    connect(ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    connectHelp(*ui->cmdHelp, objectName());
}

frmImport::~frmImport() = default;

int frmImport::exec()
{
    return Form_Activate() ? QDialog::exec() : int(Rejected);
}

bool frmImport::Form_Activate()
{
    m_import =
        std::make_unique<DashboardImport>(ImportFile, [this](qint64 done, qint64 total) { return goOn(done, total); });
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
    std::optional<Result<ImportPreview>> preview;
    work(u"Looking through the shared file..."_s, Cancel::Possible, [&] { preview = m_import->preview(ids); });
    if (wasCancelled())
        return false;
    if (!*preview) {
        prompts().message(preview->reason(), Prompts::Icon::Exclamation);
        return false;
    }
    const bool hasNothingToShow = preview->value().folders.empty() && preview->value().missingWorkbooks.isEmpty();
    return hasNothingToShow || frmImportFolders(preview->value(), this).exec() == Accepted;
}

bool frmImport::importSelected(const std::vector<qint32>& ids)
{
    bool imported = false;
    // Half an import would stay in the project, so it runs to its end.
    work(u"Writing the dashboards into the project..."_s, Cancel::Impossible,
         [&] { imported = m_import->ImportDashboard(ids); });
    const QString faults = m_import->faults().mid(0, mostFaultsShown).join(u'\n');
    if (!imported)
        setStatus(u"The import did not come to its end. "_s + faults);
    else if (!faults.isEmpty())
        prompts().message(u"Not everything could be imported.\n\n"_s + faults, Prompts::Icon::Exclamation);
    return imported;
}

} // namespace lumivane
