#include "services/ProgramFiles.h"

#include "platform/ApplicationInfo.h"
#include "platform/Prompts.h"
#include "services/modUtilsFile.h"

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

QString folderBesideProgram(const QString& name)
{
    const QString folder = withDelimiter(withDelimiter(programFolder()) + name);
    return FolderExists(folder) || FolderCreate(folder) ? folder : QString();
}

} // namespace

QString GetPanelsFolder()
{
    return folderBesideProgram(u"Panels"_s);
}

QString GetTemplatesFolder()
{
    return folderBesideProgram(u"Templates"_s);
}

QString panelPictureFile(int panelID)
{
    const QString folder = panelID < 1 ? QString() : GetPanelsFolder();
    return folder.isEmpty() ? QString() : QString(folder + QString::number(panelID) + u".bmp"_s);
}

bool ConfirmAction(const QString& Text)
{
    return prompts().confirmAction(Text);
}

} // namespace lumivane
