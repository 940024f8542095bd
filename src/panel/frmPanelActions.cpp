#include "panel/frmPanel.h"

#include "host/modUtilsExcel.h"
#include "platform/Prompts.h"
#include "platform/RuntimeError.h"
#include "repository/Database.h"
#include "repository/SqlText.h"
#include "repository/clsPanelSource.h"
#include "repository/clsWorkspacePanel.h"
#include "services/ProgramFiles.h"
#include "services/modUtilsFile.h"
#include "services/modUtilsLog.h"

#include <QFile>
#include <QFileInfo>

// What the panel's menu offers for its content.

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

bool showsSheet(const clsWorkspacePanel& panel)
{
    return (panel.ContentType == u"S" || panel.ContentType == u"C" || panel.ContentType == u"M") &&
           !panel.SheetName.isEmpty();
}

/// `unable` begins the sentence for a file that is missing.
void launchOrTell(const QString& path, const QString& sheetName, const QString& unable)
{
    if (FileExists(path))
        Excel_Launch(path, sheetName);
    else
        prompts().message(unable + u"  ["_s + path + u"] not found."_s, Prompts::Icon::Exclamation);
}

std::shared_ptr<clsPanelSource> sourceOf(const clsWorkspacePanel& panel)
{
    const auto source = panel.Source();
    if (!source)
        throw RuntimeError(RuntimeError::ObjectNotSet);
    return source;
}

} // namespace

void frmPanel::Panel_Launch()
{
    const auto panel = record();
    if (panel && showsSheet(*panel))
        Panel_LaunchFile(*panel);
}

void frmPanel::Panel_LaunchFile(const clsWorkspacePanel& Panel)
{
    try {
        const auto source = sourceOf(Panel);
        source->GetLatest(gDB, true);
        launchOrTell(source->currentPath(), Panel.SheetName, u"Unable to launch Excel file."_s);
    } catch (const RuntimeError& error) {
        LogError(u"frmPanel"_s, u"Panel_LaunchFile"_s, error.number(), error.description(), true);
    }
}

void frmPanel::Panel_LaunchCustom()
{
    const auto panel = record();
    if (panel && panel->IsCustom == u"Y" && showsSheet(*panel))
        Panel_LaunchCopy(*panel);
}

void frmPanel::Panel_LaunchCopy(const clsWorkspacePanel& Panel)
{
    try {
        launchOrTell(sourceOf(Panel)->Prepped(), Panel.SheetName, u"Unable to launch custom Excel file."_s);
    } catch (const RuntimeError& error) {
        LogError(u"frmPanel"_s, u"Panel_LaunchCopy"_s, error.number(), error.description(), true);
    }
}

void frmPanel::Panel_BrowsePicture()
{
    const QString file = prompts().openFile({u"Select Picture"_s, pictureFileFilter(), QString()});
    if (file.isEmpty())
        return;
    try {
        takePicture(file);
    } catch (const RuntimeError& error) {
        LogError(u"frmPanel"_s, u"Panel_BrowsePicture"_s, error.number(), error.description(), false);
        prompts().message(error.description(), Prompts::Icon::Exclamation);
    }
}

void frmPanel::takePicture(const QString& file)
{
    const auto panel = record();
    if (!panel)
        throw RuntimeError(RuntimeError::ObjectNotSet);
    const PanelPicture picture = loadPictureFile(file);
    if (const QString reason = unstorable(u"path of the picture"_s, file); !reason.isEmpty())
        throw RuntimeError(RuntimeError::ApplicationDefined, reason);
    // The file gets a source of its own. Taken into the panel's former one, it would stand in the place of a workbook
    // that other panels show, and be lost with the end of the run.
    const qint16 source = gSources->AddSource(file);
    if (source < 1)
        throw RuntimeError(RuntimeError::ApplicationDefined,
                           u"The picture [%1] cannot be kept in the project."_s.arg(file));
    if (panel->ID > 0)
        QFile::remove(panelPictureFile(panel->ID)); // it shows the former content
    // Found by its name, but moved on to a newer file meanwhile.
    if (gSources->Source(source)->currentPath() != file)
        throw RuntimeError(
            RuntimeError::ApplicationDefined,
            u"The picture [%1] belongs to panels that show a newer one by now. Please give it another name "
            "or place."_s.arg(file));
    panel->SourceID = source;
    panel->Caption = QFileInfo(file).fileName();
    panel->ContentType = u"P"_s;
    panel->ViewType = u"A"_s;
    m_pipeline.picTemp = picture;
    m_pipeline.problem.clear();
    showWholePicture();
    IsDirty = true;
}

void frmPanel::showWholePicture()
{
    const TwipsSize picture = m_pipeline.picTemp.size();
    if (canBeKept(autosizeWindow(measures(), picture))) {
        Panel_Autosize();
        return;
    }
    // No window of this size can be kept. A photograph is seen as a whole in the room that the panel has.
    const TwipsSize wanted = windowInProportion(measures(), picture, {Width(), Height()});
    setView(u"Z"_s);
    setWindowSize(wanted.width, wanted.height);
    Panel_ZoomToFit();
}

} // namespace lumivane
