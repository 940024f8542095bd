#include "controls/QtPrompts.h"

#include "controls/Look.h"
#include "platform/ApplicationInfo.h"
#include "platform/ShownText.h"
#include "services/modUtilsINI.h"

#include <QApplication>
#include <QColorDialog>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

constexpr QSize boxIconSize(40, 40);
const QString folderSection = u"Session"_s;
const QString folderKey = u"Folder"_s;

QString boxIcon(Prompts::Icon icon)
{
    switch (icon) {
    case Prompts::Icon::Information:
        break;
    case Prompts::Icon::Exclamation:
        return u"box-exclamation"_s;
    case Prompts::Icon::Critical:
        return u"box-critical"_s;
    case Prompts::Icon::Question:
        return u"box-question"_s;
    }
    return u"box-information"_s;
}

struct BoxQuestion
{
    QString title;
    QString text;
    QMessageBox::StandardButtons buttons = QMessageBox::Ok;
    QMessageBox::StandardButton preset = QMessageBox::Ok;
};

/// Shows a box with the pointer in its usual shape, even in the middle of a command that shows the hourglass.
int showBox(Prompts::Icon icon, const BoxQuestion& question)
{
    QString text = shownText(question.text);
    QMessageBox box(QMessageBox::NoIcon, question.title, text.remove(u'\r'), question.buttons,
                    QApplication::activeWindow());
    box.setIconPixmap(dashboardIcon(boxIcon(icon)).pixmap(boxIconSize, box.devicePixelRatioF()));
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(question.preset);
    box.setCursor(Qt::ArrowCursor);
    const bool busy = QApplication::overrideCursor();
    if (busy)
        QApplication::setOverrideCursor(Qt::ArrowCursor);
    const int answer = box.exec();
    if (busy)
        QApplication::restoreOverrideCursor();
    return answer;
}

/// The folder that the last file was chosen in, also by an earlier run; empty when it is gone.
QString lastFolder()
{
    const QString folder = GetIniString(GetIniFile(), folderSection, folderKey, QString());
    return QDir(folder).exists() ? folder : QString();
}

void rememberFolder(const QString& folder)
{
    if (folder != lastFolder())
        SetIniString(GetIniFile(), folderSection, folderKey, folder);
}

QString chooseFile(const Prompts::FileQuestion& question, QFileDialog::AcceptMode mode)
{
    QFileDialog dialog(QApplication::activeWindow(), question.title,
                       question.startFolder.isEmpty() ? lastFolder() : question.startFolder, question.filter);
    dialog.setAcceptMode(mode);
    if (mode == QFileDialog::AcceptOpen)
        dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setDefaultSuffix(question.suffix);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return {};
    const QString file = dialog.selectedFiles().first();
    rememberFolder(QFileInfo(file).absolutePath());
    return QDir::toNativeSeparators(file);
}

} // namespace

void QtPrompts::message(const QString& text, Icon icon)
{
    showBox(icon, {applicationTitle(), text});
}

bool QtPrompts::confirmAction(const QString& text)
{
    return showBox(Icon::Question, {u"Confirm Action"_s, text, QMessageBox::Yes | QMessageBox::No, QMessageBox::No}) ==
           QMessageBox::Yes;
}

Prompts::Answer QtPrompts::askYesNoCancel(const QString& text)
{
    switch (showBox(Icon::Question, {applicationTitle(), text, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel,
                                     QMessageBox::Yes})) {
    case QMessageBox::Yes:
        return Answer::Yes;
    case QMessageBox::No:
        return Answer::No;
    default:
        return Answer::Cancel;
    }
}

QString QtPrompts::openFile(const FileQuestion& question)
{
    return chooseFile(question, QFileDialog::AcceptOpen);
}

QString QtPrompts::saveFile(const FileQuestion& question)
{
    return chooseFile(question, QFileDialog::AcceptSave);
}

QString QtPrompts::browseForFolder(const QString& title, const QString& startFolder)
{
    const QString folder = QFileDialog::getExistingDirectory(QApplication::activeWindow(), title,
                                                             startFolder.isEmpty() ? lastFolder() : startFolder);
    if (!folder.isEmpty())
        rememberFolder(folder);
    return QDir::toNativeSeparators(folder);
}

std::optional<QColor> QtPrompts::chooseColor(const QColor& start)
{
    const QColor color = QColorDialog::getColor(start, QApplication::activeWindow());
    return color.isValid() ? std::optional(color) : std::nullopt;
}

void QtPrompts::setPointer(Pointer pointer)
{
    while (QApplication::overrideCursor())
        QApplication::restoreOverrideCursor();
    if (pointer == Pointer::Hourglass)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else if (pointer == Pointer::ArrowHourglass)
        QApplication::setOverrideCursor(Qt::BusyCursor);
}

void QtPrompts::doEvents()
{
    // In the middle of a command or a pass the user may watch, but not begin another one: it would take away the panels
    // that are being loaded. A dialog that shows its progress shuts the other windows out itself, and can be cancelled.
    QApplication::processEvents(QApplication::activeModalWidget() ? QEventLoop::AllEvents
                                                                  : QEventLoop::ExcludeUserInputEvents);
}

} // namespace lumivane
