#include "dashboard/frmOptions.h"

#include "controls/HelpButton.h"
#include "controls/modUtilsControls.h"
#include "platform/Checked.h"
#include "platform/Prompts.h"
#include "platform/RuntimeError.h"
#include "services/modMain.h"
#include "services/modUtilsLog.h"
#include "session/Startup.h"

#include "ui_frmOptions.h"

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

constexpr double longestFrequency = 32000;

/// A number as the user's region writes it, or with a point.
bool readTypedNumber(const QString& text, double& number)
{
    bool isNumber = false;
    number = QLocale().toDouble(text, &isNumber);
    if (!isNumber)
        number = QLocale::c().toDouble(text, &isNumber);
    return isNumber && qIsFinite(number);
}

} // namespace

frmOptions::frmOptions(const QColor& background, QWidget* parent)
    : QDialog(parent), ui(std::make_unique<Ui::frmOptions>())
{
    ui->setupUi(this);
    connect(ui->cmdWorkspaceColor, &QPushButton::clicked, this, &frmOptions::cmdWorkspaceColor_Click);
    connect(ui->cmdOK, &QPushButton::clicked, this, &frmOptions::cmdOK_Click);
    connect(ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    connectHelp(*ui->cmdHelp, objectName());
    cmbCaptionAlign_Load();
    showOptions(background);
}

frmOptions::~frmOptions() = default;

void frmOptions::cmbCaptionAlign_Load()
{
    ui->cmbCaptionAlign->addItems({u"Left"_s, u"Center"_s});
}

void frmOptions::showOptions(const QColor& background)
{
    setSwatchColor(background);
    ui->chkDateTimeStamp->setChecked(gPanelTimeStamp);
    ui->txtFrequency->setText(QString::number(gRefreshFrequency));
    ComboSelectByText(*ui->cmbCaptionAlign, gCaptionAlignment);
    // The settings file may hold anything; the option itself stays as it is until OK.
    if (ui->cmbCaptionAlign->currentIndex() < 0)
        ComboSelectByText(*ui->cmbCaptionAlign, u"Center"_s);
}

QColor frmOptions::swatchColor() const
{
    return ui->shWorkspaceColor->palette().color(QPalette::Window);
}

void frmOptions::setSwatchColor(const QColor& color)
{
    QPalette palette = ui->shWorkspaceColor->palette();
    palette.setColor(QPalette::Window, color);
    ui->shWorkspaceColor->setPalette(palette);
    ui->cmdWorkspaceColor->setAccessibleDescription(u"Now "_s + color.name());
}

void frmOptions::cmdWorkspaceColor_Click()
{
    if (const auto color = prompts().chooseColor(swatchColor()))
        setSwatchColor(*color);
}

void frmOptions::cmdOK_Click()
{
    try {
        double frequency = 0;
        if (!ValidateForm(frequency))
            return;
        gDashboardColor = swatchColor().rgb() & RGB_MASK;
        gPanelTimeStamp = ui->chkDateTimeStamp->isChecked();
        gRefreshFrequency = toInt16(frequency);
        if (ui->cmbCaptionAlign->currentIndex() >= 0)
            gCaptionAlignment = ui->cmbCaptionAlign->currentText();
        SaveOptions();
        accept();
    } catch (const RuntimeError& error) {
        LogError(objectName(), u"cmdOK_Click"_s, error.number(), error.description(), true);
    }
}

bool frmOptions::ValidateForm(double& frequency)
{
    const QString text = ui->txtFrequency->text().trimmed();
    if (text.isEmpty()) {
        prompts().message(u"No refresh frequency specified."_s, Prompts::Icon::Exclamation);
        ui->txtFrequency->setFocus();
        return false;
    }
    if (!readTypedNumber(text, frequency))
        refuse(u"Refresh frequency must be numeric."_s);
    else if (frequency <= 0)
        refuse(u"Refresh frequency must be greater than 0."_s);
    else if (frequency > longestFrequency)
        refuse(u"Refresh frequency cannot be greater than 32,000."_s);
    else
        return true;
    return false;
}

void frmOptions::refuse(const QString& text)
{
    prompts().message(text, Prompts::Icon::Exclamation);
    ui->txtFrequency->selectAll();
    ui->txtFrequency->setFocus();
}

} // namespace lumivane
