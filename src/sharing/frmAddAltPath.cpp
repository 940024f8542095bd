#include "sharing/frmAddAltPath.h"

#include "controls/HelpButton.h"
#include "platform/Prompts.h"

#include "ui_frmAddAltPath.h"

namespace lumivane {

using namespace Qt::StringLiterals;

frmAddAltPath::frmAddAltPath(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::frmAddAltPath>())
{
    ui->setupUi(this);
    connect(ui->cmdOK, &QPushButton::clicked, this, &frmAddAltPath::cmdOK_Click);
    connect(ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    connectHelp(*ui->cmdHelp, objectName());
    ui->cmbBase->addItems(alternateBases());
    ui->cmbBase->setCurrentIndex(-1);
}

frmAddAltPath::~frmAddAltPath() = default;

void frmAddAltPath::cmdOK_Click()
{
    if (!ValidateForm())
        return;
    // What kept it from being stored is in the log.
    m_added = {ui->cmbBase->currentText(), ui->txtAlt->text()};
    SaveAltPaths(m_added);
    accept();
}

bool frmAddAltPath::ValidateForm()
{
    if (ui->cmbBase->currentIndex() < 0) {
        prompts().message(u"Must select a base path."_s, Prompts::Icon::Information);
        ui->cmbBase->setFocus();
        return false;
    }
    if (ui->txtAlt->text().trimmed().isEmpty()) {
        prompts().message(u"Must define an alternate path."_s, Prompts::Icon::Information);
        ui->txtAlt->selectAll();
        ui->txtAlt->setFocus();
        return false;
    }
    ui->txtAlt->setText(alternateLike(ui->cmbBase->currentText(), ui->txtAlt->text()));
    return true;
}

} // namespace lumivane
