#include "assist/frmDrillback.h"

#include "controls/HelpButton.h"
#include "platform/Prompts.h"
#include "repository/Database.h"
#include "repository/modUtilsSQL.h"

#include "ui_frmDrillback.h"

namespace lumivane {

using namespace Qt::StringLiterals;

frmDrillback::frmDrillback(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::frmDrillback>())
{
    ui->setupUi(this);
    connect(ui->cmdOK, &QPushButton::clicked, this, &frmDrillback::cmdOK_Click);
    connect(ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    connectHelp(*ui->cmdHelp, objectName());
    cmbSourceDoc_Load();
}

frmDrillback::~frmDrillback() = default;

int frmDrillback::exec()
{
    if (SourceID < 0) {
        prompts().message(u"Invalid Source ID."_s, Prompts::Icon::Exclamation);
        return Rejected;
    }
    return QDialog::exec();
}

void frmDrillback::cmbSourceDoc_Load()
{
    QComboBox& list = *ui->cmbSourceDoc;
    list.clear();
    std::shared_ptr<Recordset> rows;
    if (SQL_OpenRecordset(gDB, rows, u"SELECT * FROM LvnSourceDoc"_s + u" ORDER BY Mask"_s, true, objectName(),
                          u"cmbSourceDoc_Load"_s)) {
        for (; !rows->EOF_(); rows->MoveNext()) {
            if (!rows->isNull(u"Mask"))
                list.addItem(rows->text(u"Mask"), rows->number32(u"ID"));
        }
        rows->Close();
    }
    list.setCurrentIndex(-1);
}

void frmDrillback::cmdOK_Click()
{
    // The dialog stays even with a document chosen: there is nothing yet that could be kept of it.
    ValidateForm();
}

bool frmDrillback::ValidateForm()
{
    if (ui->cmbSourceDoc->currentIndex() >= 0)
        return true;
    prompts().message(u"No document source selected."_s, Prompts::Icon::Exclamation);
    ui->cmbSourceDoc->setFocus();
    return false;
}

} // namespace lumivane
