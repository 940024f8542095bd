#include "dashboard/frmAbout.h"

#include "dashboard/Look.h"
#include "platform/ApplicationInfo.h"

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
}

frmAbout::~frmAbout() = default;

} // namespace lumivane
