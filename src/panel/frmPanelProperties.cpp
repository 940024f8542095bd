#include "panel/frmPanelProperties.h"

#include "controls/HelpButton.h"
#include "platform/ApplicationInfo.h"
#include "platform/Checked.h"
#include "platform/Prompts.h"
#include "platform/RuntimeError.h"
#include "repository/Database.h"
#include "repository/SqlText.h"
#include "repository/clsPanelSource.h"
#include "repository/clsWorkspace.h"
#include "repository/clsWorkspacePanel.h"
#include "services/ProgramFiles.h"
#include "services/modUtilsFile.h"
#include "services/modUtilsLog.h"
#include "update/MailIntake.h"

#include <QFileInfo>
#include <algorithm>
#include <initializer_list>

#include "ui_frmPanelProperties.h"

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

constexpr double mostMinutes = 32000;
constexpr int typingPauseMilliseconds = 300; ///< a folder may lie far away, and is not asked for each letter

struct UpdateTypeEntry
{
    QString name; ///< as it is stored
    QString hint; ///< what becomes of the workbook
};

const QList<UpdateTypeEntry>& updateTypes()
{
    static const QList<UpdateTypeEntry> types{
        {u"folder"_s, u"The newest file in the source folder that fits the mask is copied beside the current file "
                      "and taken over."_s},
        {u"inbox"_s, u"The newest attachment in the mail folder that fits the masks is saved beside the current file "
                     "and taken over."_s},
        {u"refresh"_s, u"The current file is opened, refreshes its own data and is saved at its place."_s},
        {u"default"_s, u"The folder of the current file is watched: the newest file in it that fits the mask is "
                       "taken over."_s},
    };
    return types;
}

bool isBlank(const QLineEdit& box)
{
    return box.text().trimmed().isEmpty();
}

/// What of a folder would be taken over now, so that a wrong mask is seen before a delivery is missed.
QString fittingFile(const QString& folder, const QString& mask)
{
    if (!FolderExists(folder))
        return u"The folder does not exist at present."_s;
    const QString newest = FindNewestFile(folder % mask);
    if (!FileExists(newest))
        return u"No file in the folder fits at present."_s;
    return u"Fits now: "_s % newest.sliced(folder.size()) % u", " %
           QLocale().toString(FileDateTime(newest), u"d MMM yyyy HH:mm"_s);
}

/// The labels stand in several grids; their fields are to begin at one line all the same.
void alignLabels(std::initializer_list<QLabel*> labels)
{
    int widest = 0;
    for (const QLabel* label : labels)
        widest = std::max(widest, label->sizeHint().width());
    for (QLabel* label : labels)
        label->setMinimumWidth(widest);
}

} // namespace

frmPanelProperties::frmPanelProperties(QWidget* parent)
    : QDialog(parent), ui(std::make_unique<Ui::frmPanelProperties>())
{
    ui->setupUi(this);
    ui->lblNoMail->setVisible(!mailIntake());
    alignLabels({ui->lblFrequency, ui->lblSourceFolder, ui->lblOFolder, ui->lblOSender, ui->lblOSubject});
    QSizePolicy policy = ui->stkPlace->sizePolicy();
    policy.setRetainSizeWhenHidden(true); // the dialog keeps its size whatever type is chosen
    ui->stkPlace->setSizePolicy(policy);
    FillTypes();
    ui->cmbUpdateType->setFocus(); // the field before it is only for reading
    connect(ui->cmbUpdateType, &QComboBox::currentIndexChanged, this, &frmPanelProperties::cmbUpdateType_Click);
    m_typingPaused.setSingleShot(true);
    m_typingPaused.setInterval(typingPauseMilliseconds);
    connect(&m_typingPaused, &QTimer::timeout, this, &frmPanelProperties::showFittingFile);
    for (const QLineEdit* box : {ui->txtMask, ui->txtSourceFolder})
        connect(box, &QLineEdit::textChanged, &m_typingPaused, qOverload<>(&QTimer::start));
    connect(ui->cmdSourceFolder, &QPushButton::clicked, this, &frmPanelProperties::cmdSourceFolder_Click);
    connect(ui->cmdOFolder, &QPushButton::clicked, this, &frmPanelProperties::cmdOFolder_Click);
    connect(ui->cmdOK, &QPushButton::clicked, this, &frmPanelProperties::cmdOK_Click);
    connect(ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    connectHelp(*ui->cmdHelp, objectName());
}

frmPanelProperties::~frmPanelProperties() = default;

int frmPanelProperties::exec()
{
    return Form_Activate() ? QDialog::exec() : int(Rejected);
}

bool frmPanelProperties::Form_Activate()
{
    if (Index < 0) {
        prompts().message(u"Invalid panel index."_s, Prompts::Icon::Critical);
        return false;
    }
    try {
        const auto panel = gWorkspace ? gWorkspace->Panels(Index) : nullptr;
        if (!panel)
            throw RuntimeError(RuntimeError::ObjectNotSet);
        if (panel->SourceID <= 0) {
            prompts().message(u"Invalid source ID."_s, Prompts::Icon::Critical);
            return false;
        }
        SourceID = panel->SourceID;
        LoadFields();
        return true;
    } catch (const RuntimeError& error) {
        LogError(objectName(), u"Form_Activate"_s, error.number(), error.description(), true);
        return false;
    }
}

void frmPanelProperties::FillTypes()
{
    for (const UpdateTypeEntry& type : updateTypes())
        ui->cmbUpdateType->addItem(type.name);
    ui->cmbUpdateType->setCurrentIndex(-1);
    ui->stkPlace->hide();
}

std::shared_ptr<clsPanelSource> frmPanelProperties::source() const
{
    const auto found = gSources ? gSources->Source(SourceID) : nullptr;
    if (!found)
        throw RuntimeError(RuntimeError::ObjectNotSet);
    return found;
}

void frmPanelProperties::LoadFields()
{
    const auto record = source();
    ui->txtSource->setText(record->DestFolder + record->NewestFile);
    ui->txtSourceFolder->setText(record->SourceFolder);
    ui->txtFrequency->setText(QString::number(record->CheckEvery));
    ui->txtMask->setText(record->Mask);
    ui->cmbUpdateType->setCurrentIndex(ui->cmbUpdateType->findText(record->UpdateType, Qt::MatchFixedString));
    // A mail folder chosen earlier is not brought back: unless one is chosen again, OK stores the default inbox.
    ui->txtOFolder->setText(u"Inbox"_s);
    ui->txtOSender->setText(record->OLSender.trimmed().isEmpty() ? u"*"_s : record->OLSender);
    ui->txtOSubject->setText(record->OLSubject);
}

void frmPanelProperties::cmbUpdateType_Click()
{
    const int type = ui->cmbUpdateType->currentIndex();
    if (type < 0)
        return;
    const QString& name = updateTypes()[type].name;
    ui->lblHint->setText(updateTypes()[type].hint);
    ui->stkPlace->setCurrentWidget(name == u"inbox" ? ui->fraInbox : ui->fraFolder);
    ui->stkPlace->setVisible(name == u"inbox" || name == u"folder");
    ui->txtFrequency->setEnabled(name != u"default");
    showFittingFile();
}

void frmPanelProperties::showFittingFile()
{
    m_typingPaused.stop();
    ui->txtFits->clear();
    prompts().setPointer(Prompts::Pointer::Hourglass); // folders of other machines may answer late
    try {
        QString folder;
        if (ui->cmbUpdateType->currentText() == u"folder")
            folder = ui->txtSourceFolder->text();
        else if (ui->cmbUpdateType->currentText() == u"default")
            folder = source()->DestFolder;
        if (ui->cmbUpdateType->currentText() == u"folder" && isSamePlace(folder, source()->DestFolder))
            ui->txtFits->setText(u"This is the folder of the current file."_s);
        else if (!folder.trimmed().isEmpty() && !isBlank(*ui->txtMask))
            ui->txtFits->setText(fittingFile(withDelimiter(folder), ui->txtMask->text()));
        ui->txtFits->setCursorPosition(0);
    } catch (const RuntimeError&) {
        // The file went away meanwhile; there is nothing to show.
    }
    prompts().setPointer(Prompts::Pointer::Default);
}

void frmPanelProperties::cmdSourceFolder_Click()
{
    const QString folder = prompts().browseForFolder(u"Select source folder"_s, ui->txtSourceFolder->text());
    if (!folder.isEmpty())
        ui->txtSourceFolder->setText(folder);
}

void frmPanelProperties::cmdOFolder_Click()
{
    m_olFolder = Outlook_SelectFolder();
    ui->txtOFolder->setText(m_olFolder.section(u'`', 1));
    activateWindow(); // choosing may have brought another program to the front
}

bool frmPanelProperties::refuse(const QString& text, QWidget& place)
{
    prompts().message(text, Prompts::Icon::Exclamation);
    place.setFocus();
    return false;
}

bool frmPanelProperties::refuseFrequency(const QString& text)
{
    prompts().message(text, Prompts::Icon::Exclamation);
    ui->txtFrequency->selectAll();
    ui->txtFrequency->setFocus();
    return false;
}

bool frmPanelProperties::ValidateFields()
{
    const QString type = ui->cmbUpdateType->currentText();
    if (ui->cmbUpdateType->currentIndex() < 0)
        return refuse(u"No Update Type selected."_s, *ui->cmbUpdateType);
    if (type == u"folder" && !ValidateFolder())
        return false;
    if (type == u"inbox" && !ValidateInbox())
        return false;
    if (isBlank(*ui->txtMask))
        return refuse(u"No file mask defined."_s, *ui->txtMask);
    for (const auto& [noun, field] : {std::pair{u"file mask"_s, ui->txtMask},
                                      {u"source folder"_s, ui->txtSourceFolder},
                                      {u"sender"_s, ui->txtOSender}}) {
        if (const QString reason = unstorable(noun, field->text()); !reason.isEmpty())
            return refuse(reason, *field);
    }
    return ValidateFrequency();
}

bool frmPanelProperties::ValidateFolder()
{
    if (isBlank(*ui->txtSourceFolder)) {
        prompts().message(u"No source folder specified."_s, Prompts::Icon::Exclamation);
        cmdSourceFolder_Click();
        return false;
    }
    if (isBlank(*ui->txtFrequency))
        return refuse(u"No frequency specified."_s, *ui->txtFrequency);
    const QString folder = withDelimiter(ui->txtSourceFolder->text());
    if (isSamePlace(folder, source()->DestFolder))
        return refuse(u"The source folder is the folder of the current file itself. New files there are found with the "
                      "update location \"default\". Please choose that, or another source folder."_s,
                      *ui->txtSourceFolder);
    return true;
}

bool frmPanelProperties::confirmMissingFolder()
{
    const QString folder = ui->txtSourceFolder->text();
    if (ui->cmbUpdateType->currentText() != u"folder" || FolderExists(withDelimiter(folder)))
        return true;
    ui->txtSourceFolder->setFocus();
    return ConfirmAction(
        u"The source folder [%1] does not exist at present. Do you want to keep it all the same?"_s.arg(folder));
}

bool frmPanelProperties::ValidateInbox()
{
    if (isBlank(*ui->txtOFolder)) {
        prompts().message(u"No folder specified."_s, Prompts::Icon::Exclamation);
        cmdOFolder_Click();
        return false;
    }
    if (isBlank(*ui->txtOSender) && isBlank(*ui->txtOSubject))
        return refuse(u"Either sender, subject must be defined."_s, *ui->txtOSender);
    return !isBlank(*ui->txtFrequency) || refuse(u"No frequency specified."_s, *ui->txtFrequency);
}

bool frmPanelProperties::ValidateFrequency()
{
    if (isBlank(*ui->txtFrequency))
        return refuse(u"No frequency specified."_s, *ui->txtFrequency);
    const auto minutes = typedNumber(ui->txtFrequency->text());
    if (!minutes)
        return refuseFrequency(u"Frequency must be numeric."_s);
    if (*minutes <= 0)
        return refuseFrequency(u"Frequency must be greater than 0."_s);
    if (*minutes > mostMinutes)
        return refuseFrequency(u"Refresh frequency cannot be greater than 32,000."_s);
    return true;
}

void frmPanelProperties::takeFields(clsPanelSource& record) const
{
    record.SourceFolder = withDelimiter(ui->txtSourceFolder->text());
    record.CheckEvery = toInt16(typedNumber(ui->txtFrequency->text()).value_or(0));
    record.Mask = ui->txtMask->text();
    record.UpdateType = ui->cmbUpdateType->currentText();
    record.OLFolder = m_olFolder;
    record.OLSender = ui->txtOSender->text();
    record.OLSubject = ui->txtOSubject->text();
    record.OLAttach = ui->txtMask->text(); // one mask for the folder and for attachments
}

void frmPanelProperties::cmdOK_Click()
{
    try {
        if (!ValidateFields() || !confirmMissingFolder())
            return;
        const auto panel = gWorkspace->Panels(Index);
        if (!panel)
            throw RuntimeError(RuntimeError::ObjectNotSet);
        panel->SourceID = SourceID;
        const auto record = source();
        const clsPanelSource before = *record;
        takeFields(*record);
        if (record->UpdateDB(gDB))
            accept();
        else
            *record = before; // the user knows why, and can change what was refused
    } catch (const RuntimeError& error) {
        LogError(objectName(), u"cmdOK_Click"_s, error.number(), error.description(), true);
    }
}

} // namespace lumivane
