#include "assist/frmTip.h"

#include "assist/modHTMLHelp.h"
#include "controls/HelpButton.h"
#include "controls/Look.h"
#include "platform/RuntimeError.h"
#include "services/modUtilsFile.h"
#include "services/modUtilsLog.h"

#include <QUrl>

#include "ui_frmTip.h"

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {
constexpr QSize tipIconSize(36, 36);
}

frmTip::frmTip(QWidget* parent) : QDialog(parent), m_guide(learningGuideFile()), ui(std::make_unique<Ui::frmTip>())
{
    ui->setupUi(this);
    ui->iconLabel->setPixmap(dashboardIcon(u"box-information"_s).pixmap(tipIconSize, devicePixelRatioF()));
    ui->lblTipText->setText(u"To create a dashboard, copy ranges of cells or charts from Excel spreadsheets, and paste "
                            "them to the Lumivane dashboard.\n\nSee the Help or the Learning Guide for more "
                            "information."_s);
    ui->cmdGuide->setEnabled(FileExists(m_guide));
    connect(ui->cmdClose, &QPushButton::clicked, this, &QDialog::reject);
    connect(ui->cmdGuide, &QPushButton::clicked, this, &frmTip::cmdGuide_Click);
    connectHelp(*ui->cmdHelp, objectName());
}

frmTip::~frmTip() = default;

void frmTip::cmdGuide_Click()
{
    try {
        if (FileExists(m_guide))
            openDocument(QUrl::fromLocalFile(m_guide));
    } catch (const RuntimeError& error) {
        LogError(objectName(), u"cmdGuide_Click"_s, error.number(), error.description(), true);
    }
}

} // namespace lumivane
