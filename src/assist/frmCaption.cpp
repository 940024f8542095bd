#include "assist/frmCaption.h"

#include "controls/HelpButton.h"
#include "platform/RuntimeError.h"
#include "repository/clsWorkspace.h"
#include "repository/clsWorkspacePanel.h"
#include "services/modUtilsLog.h"

#include "ui_frmCaption.h"

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

clsWorkspacePanel& captionedPanel(int Index)
{
    const auto panel = gWorkspace ? gWorkspace->Panels(Index) : nullptr;
    if (!panel)
        throw RuntimeError(RuntimeError::ObjectNotSet);
    return *panel;
}

} // namespace

frmCaption::frmCaption(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::frmCaption>())
{
    ui->setupUi(this);
    connect(ui->cmdOK, &QPushButton::clicked, this, &frmCaption::cmdOK_Click);
    connect(ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    connectHelp(*ui->cmdHelp, objectName());
}

frmCaption::~frmCaption() = default;

int frmCaption::exec()
{
    ui->txtCaption->setText(captionedPanel(Index).Caption);
    ui->txtCaption->selectAll();
    ui->txtCaption->setFocus();
    return QDialog::exec();
}

void frmCaption::cmdOK_Click()
{
    try {
        captionedPanel(Index).Caption = ui->txtCaption->text();
        accept();
    } catch (const RuntimeError& error) {
        LogError(objectName(), u"cmdOK_Click"_s, error.number(), error.description(), true);
    }
}

} // namespace lumivane
