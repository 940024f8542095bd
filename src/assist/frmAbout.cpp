#include "assist/frmAbout.h"

#include "assist/SystemInformation.h"
#include "controls/Look.h"
#include "platform/ApplicationInfo.h"
#include "platform/RuntimeError.h"
#include "services/modUtilsLog.h"

#include <QDir>
#include <QProcess>

#include "ui_frmAbout.h"

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {
constexpr int aboutIconSize = 64;
}

frmAbout::frmAbout(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::frmAbout>())
{
    ui->setupUi(this);
    setWindowTitle(u"About "_s + applicationTitle());
    ui->iconLabel->setPixmap(
        dashboardIcon(u"lumivane"_s).pixmap(QSize(aboutIconSize, aboutIconSize), devicePixelRatioF()));
    ui->lblTitle->setText(applicationTitle());
    ui->lblVersion->setText(u"Version "_s + QStringLiteral(LUMIVANE_VERSION));
    connect(ui->cmdOK, &QPushButton::clicked, this, &QDialog::accept);
    connect(ui->cmdSysInfo, &QPushButton::clicked, this, &frmAbout::StartSysInfo);
}

frmAbout::~frmAbout() = default;

void frmAbout::StartSysInfo()
{
    QStringList command = systemInformationCommand();
    if (command.isEmpty()) {
        LogError(objectName(), u"StartSysInfo"_s, RuntimeError::FileNotFound,
                 u"No program was found on this desktop that shows information about the system."_s, true);
        return;
    }
    const QString program = command.takeFirst();
    if (!QProcess::startDetached(program, command))
        LogError(objectName(), u"StartSysInfo"_s, RuntimeError::PathAccess,
                 u"The program ["_s + QDir::toNativeSeparators(program) + u"] cannot be started."_s, true);
}

} // namespace lumivane
