#include "dashboard/frmSaveWorkspace.h"

#include "controls/HelpButton.h"
#include "controls/modUtilsControls.h"
#include "platform/Prompts.h"
#include "platform/ShownText.h"
#include "repository/Database.h"
#include "repository/SqlText.h"
#include "repository/modUtilsSQL.h"

#include <QKeyEvent>

#include "ui_frmSaveWorkspace.h"

namespace lumivane {

using namespace Qt::StringLiterals;

frmSaveWorkspace::frmSaveWorkspace(const QString& Mode, const QString& presentName, QWidget* parent)
    : QDialog(parent), ui(std::make_unique<Ui::frmSaveWorkspace>())
{
    ui->setupUi(this);
    ui->txtName->installEventFilter(this);
    connect(ui->cmdOK, &QPushButton::clicked, this, &frmSaveWorkspace::cmdOK_Click);
    connect(ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    connectHelp(*ui->cmdHelp, objectName());
    Form_Load(Mode, presentName);
}

frmSaveWorkspace::~frmSaveWorkspace() = default;

void frmSaveWorkspace::Form_Load(const QString& Mode, const QString& presentName)
{
    const bool renames = Mode == u"Rename";
    if (Mode == u"SaveAs")
        setWindowTitle(u"Save dashboard As"_s);
    else
        setWindowTitle(renames ? u"Rename dashboard"_s : u"Save dashboard"_s);
    const QString verb = renames ? u"Rename"_s : u"Save"_s;
    ui->lblTitle->setText(verb + u" current dashboard"_s);
    ui->lblSubtitle->setText(verb + u" the current dashboard for convenient review. Its contents will be updated as "
                                    "new data arrives."_s);
    ui->txtName->setPlaceholderText(shownName(presentName.trimmed()));
    ui->txtName->setFocus();
}

bool frmSaveWorkspace::eventFilter(QObject* watched, QEvent* event)
{
    // Typing is filtered, pasting is not.
    if (watched == ui->txtName && event->type() == QEvent::KeyPress &&
        RejectNameChars(static_cast<QKeyEvent*>(event)->text()))
        return true;
    return QDialog::eventFilter(watched, event);
}

void frmSaveWorkspace::cmdOK_Click()
{
    const QString name = ui->txtName->text().trimmed();
    ui->txtName->setText(name);
    if (name.isEmpty())
        return refuse(u"Name must not be blank!"_s);
    if (const QString reason = unstorable(u"name"_s, name); !reason.isEmpty())
        return refuse(reason);
    if (ExistWorkspace(name))
        return refuse(u"A dashboard with the same name already exists.  Please modify the name."_s);
    WorkspaceName = name;
    accept();
}

void frmSaveWorkspace::refuse(const QString& text)
{
    prompts().message(text, Prompts::Icon::Exclamation);
    ui->txtName->selectAll();
    ui->txtName->setFocus();
}

bool frmSaveWorkspace::ExistWorkspace(const QString& name) const
{
    std::shared_ptr<Recordset> rows;
    if (!SQL_OpenRecordset(gDB, rows, u"SELECT * FROM LvnSavedWorkspace WHERE Name = "_s + doubledLiteral(name), true,
                           objectName(), u"ExistWorkspace"_s))
        return false;
    return !rows->EOF_();
}

} // namespace lumivane
