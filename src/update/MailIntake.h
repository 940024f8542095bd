#pragma once

#include <QDateTime>
#include <QString>
#include <functional>

namespace lumivane {

/// What a source looks for in the user's mail.
struct MailQuestion
{
    QString subject;    ///< mask
    QString attachment; ///< mask of the attachment's name
    QString folder;     ///< mail folder: id ` display name
    QDateTime newerThan;
    QString destFolder; ///< where the attachment is saved, with its delimiter
};

/// Saves the newest fitting attachment and answers its full path and, by reference, the time of its mail; empty when
/// there is none. Failures are thrown as RuntimeError.
using MailIntake = std::function<QString(const MailQuestion& question, QDateTime& time)>;

/// Who reads the mail; while nobody is set, there is never an attachment.
void setMailIntake(MailIntake intake);
const MailIntake& mailIntake();

/// Lets the user choose a mail folder and answers it as "id`display name", or empty.
using MailFolderPicker = std::function<QString()>;
void setMailFolderPicker(MailFolderPicker picker);

/// The folder that the user chooses, or empty; tells the user when there is no mail to choose from.
QString Outlook_SelectFolder();

} // namespace lumivane
