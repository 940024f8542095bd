#include "dashboard/frmOpenWorkspace.h"

#include "controls/HelpButton.h"
#include "controls/modUtilsControls.h"
#include "platform/Prompts.h"
#include "repository/Database.h"
#include "repository/clsWorkspace.h"
#include "repository/modUtilsSQL.h"

#include "ui_frmOpenWorkspace.h"

namespace lumivane {

using namespace Qt::StringLiterals;

frmOpenWorkspace::frmOpenWorkspace(const QString& Mode, QWidget* parent)
    : QDialog(parent), m_mode(Mode), ui(std::make_unique<Ui::frmOpenWorkspace>())
{
    ui->setupUi(this);
    connect(ui->cmdOK, &QPushButton::clicked, this, &frmOpenWorkspace::cmdOK_Click);
    connect(ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    connectHelp(*ui->cmdHelp, m_mode.isEmpty() ? u"OpenWorkspace"_s : u"TargetWorkspace"_s);
    Form_Load();
}

frmOpenWorkspace::~frmOpenWorkspace() = default;

int frmOpenWorkspace::exec()
{
    if (ui->cmbSource->count() == 0) {
        prompts().message(u"There are no saved dashboards to select from.  Please save at least one dashboard."_s,
                          Prompts::Icon::Information);
        return Rejected;
    }
    return QDialog::exec();
}

void frmOpenWorkspace::Form_Load()
{
    setWindowTitle(m_mode.isEmpty() ? u"Open a dashboard"_s : m_mode + u" to dashboard"_s);
    ui->lblSource->setText(m_mode.isEmpty() ? u"Select a &dashboard to open:"_s : u"Select target &dashboard:"_s);
    cmbSource_Load();
    // A single entry is not preselected: the user must pick it.
    ui->cmbSource->setCurrentIndex(ui->cmbSource->count() > 1 ? 0 : -1);
}

void frmOpenWorkspace::cmbSource_Load()
{
    QString sql = u"SELECT * FROM LvnSavedWorkspace"_s;
    if (m_mode == u"Move" && gWorkspace)
        sql += u" WHERE ID <> "_s + QString::number(gWorkspace->ID);
    sql += u" ORDER BY LastUpdated DESC"_s;
    std::shared_ptr<Recordset> rows;
    if (!SQL_OpenRecordset(gDB, rows, sql, true, objectName(), u"cmbSource_Load"_s))
        return;
    for (; !rows->EOF_(); rows->MoveNext()) {
        if (!rows->isNull(u"Name"))
            ComboAddItem(*ui->cmbSource, rows->text(u"Name"), static_cast<qint32>(rows->number(u"ID")));
    }
    rows->Close();
}

void frmOpenWorkspace::cmdOK_Click()
{
    if (ui->cmbSource->currentIndex() < 0) {
        prompts().message(u"No dashboard selected."_s, Prompts::Icon::Exclamation);
        ui->cmbSource->setFocus();
        return;
    }
    WorkspaceID = ComboSelectedData(*ui->cmbSource);
    accept();
}

} // namespace lumivane
