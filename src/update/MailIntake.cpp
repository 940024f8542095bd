#include "update/MailIntake.h"

#include "platform/Prompts.h"

namespace lumivane {

using namespace Qt::StringLiterals;

static MailIntake& theMailIntake()
{
    static MailIntake intake;
    return intake;
}

static MailFolderPicker& theMailFolderPicker()
{
    static MailFolderPicker picker;
    return picker;
}

void setMailIntake(MailIntake intake)
{
    theMailIntake() = std::move(intake);
}

const MailIntake& mailIntake()
{
    return theMailIntake();
}

void setMailFolderPicker(MailFolderPicker picker)
{
    theMailFolderPicker() = std::move(picker);
}

QString Outlook_SelectFolder()
{
    if (theMailFolderPicker())
        return theMailFolderPicker()();
    prompts().message(u"Unable to start MS-Outlook."_s, Prompts::Icon::Critical);
    return {};
}

} // namespace lumivane
