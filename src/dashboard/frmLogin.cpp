#include "dashboard/frmLogin.h"

#include "controls/HelpButton.h"
#include "dashboard/ProgramWindows.h"
#include "platform/ApplicationInfo.h"
#include "platform/Prompts.h"
#include "platform/RuntimeError.h"
#include "repository/Database.h"
#include "repository/modUtilsSQL.h"
#include "services/modUtilsFile.h"
#include "services/modUtilsLog.h"
#include "session/ProjectUse.h"
#include "session/Startup.h"

#include <QScopeGuard>

#include "ui_frmLogin.h"

namespace lumivane {

using namespace Qt::StringLiterals;

frmLogin::frmLogin(ProgramWindows& windows, QWidget* parent)
    : QDialog(parent), m_windows(windows), ui(std::make_unique<Ui::frmLogin>())
{
    ui->setupUi(this);
    connect(ui->txtRepository, &QLineEdit::textChanged, this, &frmLogin::enableOK);
    connect(ui->cmdBrowse, &QPushButton::clicked, this, &frmLogin::cmdBrowse_Click);
    connect(ui->cmdOK, &QPushButton::clicked, this, &frmLogin::cmdOK_Click);
    connect(ui->cmdCancel, &QPushButton::clicked, this, &frmLogin::reject);
    connectHelp(*ui->cmdHelp, u"Login"_s);
    Form_Load();
}

frmLogin::~frmLogin() = default;

void frmLogin::Form_Load()
{
    setWindowTitle(u"Welcome to "_s + applicationTitle());
    ui->imgBackground->lower();
    Form_Resize();
    ui->txtRepository->setText(GetDefaultRepository());
    enableOK();
}

void frmLogin::resizeEvent(QResizeEvent* event)
{
    QDialog::resizeEvent(event);
    Form_Resize();
}

void frmLogin::changeEvent(QEvent* event)
{
    QDialog::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        Form_Resize();
}

void frmLogin::Form_Resize()
{
    // A tint that runs out downwards, from the colours of the desktop.
    ui->imgBackground->setGeometry(rect());
    QColor tint = QGuiApplication::palette().color(QPalette::Highlight);
    tint.setAlphaF(0.16F);
    QLinearGradient ground(0, 0, 0, height());
    ground.setColorAt(0, tint);
    ground.setColorAt(1, Qt::transparent);
    QPalette palette = ui->imgBackground->palette();
    palette.setBrush(QPalette::Window, ground);
    ui->imgBackground->setPalette(palette);
}

void frmLogin::enableOK()
{
    ui->cmdOK->setEnabled(!ui->txtRepository->text().trimmed().isEmpty());
}

void frmLogin::cmdBrowse_Click()
{
    const QString file =
        prompts().openFile({u"Select project file"_s, u"Project files (*.lvdu)"_s, QString(), u"lvdu"_s});
    if (!file.isEmpty())
        ui->txtRepository->setText(file);
    enableOK();
}

void frmLogin::reject()
{
    if (Mode != u"switch")
        Main_Exit();
    QDialog::reject();
}

void frmLogin::cmdOK_Click()
{
    try {
        const QString fileName = ui->txtRepository->text().trimmed();
        ui->txtRepository->setText(fileName);
        if (fileName.isEmpty()) {
            prompts().message(u"No project file selected."_s, Prompts::Icon::Exclamation);
            ui->txtRepository->selectAll();
            ui->txtRepository->setFocus();
            return;
        }
        openProject(fileName);
    } catch (const RuntimeError& error) {
        LogError(objectName(), u"cmdOK_Click"_s, error.number(), error.description(), true);
    }
}

void frmLogin::openProject(const QString& fileName)
{
    if (!ValidateRepository(fileName)) {
        if (const QString reason = whyNotOpened(fileName); !reason.isEmpty())
            return prompts().message(reason, Prompts::Icon::Exclamation);
        prompts().message(u"You did not pick a valid project file."_s, Prompts::Icon::Exclamation);
        cmdBrowse_Click();
        return;
    }
    if (Mode == u"switch" && gDB && isSameFile(gDB->Name(), fileName)) {
        accept();
        return;
    }
    std::shared_ptr<Database> opened;
    if (!InitRepository(opened, fileName)) {
        prompts().message(u"Selected file is not a valid "_s + applicationTitle() +
                              u" project file.  Please select another file."_s,
                          Prompts::Icon::Exclamation);
        return;
    }
    if (!takeOver(opened))
        return;
    SaveDefaultRepository(fileName);
    accept();
}

bool frmLogin::takeOver(std::shared_ptr<Database>& opened)
{
    const auto pointer = qScopeGuard([] { prompts().setPointer(Prompts::Pointer::Default); });
    prompts().setPointer(Prompts::Pointer::Hourglass);
    // The window that goes may ask to save its dashboard, which belongs into the project that is still open. A
    // dashboard that stayed over another project would be saved into that one's rows.
    if (Mode == u"switch" && !m_windows.unloadWorkspace())
        return false;
    if (gDB)
        SQL_CloseDatabase(gDB, true, objectName(), u"cmdOK_Click"_s);
    gDB = std::move(opened);
    announceProject(gDB->Name());
    m_windows.showWorkspace();
    return true;
}

} // namespace lumivane
