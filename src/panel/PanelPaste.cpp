#include "panel/PanelPaste.h"

#include "host/Host.h"
#include "platform/Prompts.h"
#include "platform/RuntimeError.h"
#include "repository/SqlText.h"
#include "repository/clsPanelSource.h"
#include "repository/clsWorkspacePanel.h"
#include "services/ProgramFiles.h"
#include "services/modUtilsFile.h"
#include "services/modUtilsLog.h"

#include <QFile>
#include <algorithm>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

const QString pasteModule = u"frmPanel"_s;

bool refusePasting(const QString& reason)
{
    prompts().message(u"Unable to paste.  "_s + reason, Prompts::Icon::Exclamation);
    return false;
}

/// The selection and what each pane of the window shows, joined by back-quotes.
QString rangeDefinitions(Window& window)
{
    QStringList parts{window.RangeSelection()};
    for (int i = 1; i <= window.PanesCount(); ++i)
        parts.append(window.PaneVisibleRange(i));
    return parts.join(u'`');
}

/// What the panel was before belongs to another range: its heights and widths would be added to, and its picture would
/// be taken for the new one.
void forgetFormerRange(clsWorkspacePanel& panel)
{
    panel.RowHeights.clear();
    panel.ColWidths.clear();
    if (panel.ID > 0)
        QFile::remove(panelPictureFile(panel.ID));
}

/// Why a panel could not find a chart or shape again, for which it has nothing but the name; empty if it can.
QString ambiguity(Worksheet& sheet, const QString& name)
{
    if (name.isEmpty())
        return u"What is selected has no name by which a panel could find it.  Please give it one and save the workbook."_s;
    const QStringList names = sheet.ShapeNames();
    const auto alike = std::count_if(names.begin(), names.end(), [&](const QString& other) {
        return other.compare(name, Qt::CaseInsensitive) == 0;
    });
    return alike < 2
               ? QString()
               : u"There are %1 charts or shapes named [%2] on the sheet [%3].  Please give them different names and "
                 "save the workbook."_s.arg(alike)
                     .arg(name, sheet.Name());
}

} // namespace

XLInstance PanelPaste::GetUserExcel()
{
    try {
        XLInstance user;
        if (!Excel_GetInstance(user))
            refusePasting(u"No Excel instance loaded to paste data from."_s);
        else if (!user)
            refusePasting(u"Excel is not open."_s);
        else if (!user->Visible())
            refusePasting(u"Excel is not visible."_s);
        else if (!user->ActiveWorkbook())
            refusePasting(u"No workbook opened."_s);
        else if (!user->ActiveSheet())
            refusePasting(u"No worksheet selected."_s);
        else
            return user;
    } catch (const RuntimeError& error) {
        LogError(pasteModule, u"GetUserExcel"_s, error.number(), error.description(), true);
    }
    return nullptr;
}

bool PanelPaste::Panel_Paste(const PanelPipeline::Record& Panel)
{
    m_pipeline.problem.clear();
    const XLInstance user = GetUserExcel();
    if (!user)
        return false;
    bool loaded = false;
    try {
        if (!Panel)
            throw RuntimeError(RuntimeError::ObjectNotSet);
        loaded = pasteSelection(*user, Panel);
        // Only the first fitting is to the picture's own size; from then on the size is the user's.
        Panel->ViewType = u"C"_s;
    } catch (const RuntimeError& error) {
        LogError(pasteModule, u"Panel_Paste"_s, error.number(), error.description(), true);
        return false;
    }
    return loaded;
}

bool PanelPaste::pasteSelection(Application& user, const PanelPipeline::Record& Panel)
{
    const std::shared_ptr<Workbook> workbook = user.ActiveWorkbook();
    const std::shared_ptr<Worksheet> sheet = user.ActiveSheet();
    const std::shared_ptr<Window> window = user.ActiveWindow();
    if (!workbook || !sheet || !window)
        throw RuntimeError(RuntimeError::ObjectNotSet);

    const QString path = workbook->FullName();
    if (!FileExists(path))
        return refusePasting(u"The workbook [%1] has no file. Please save it and paste again."_s.arg(workbook->Name()));
    const WindowSelection selection = window->Selection();
    const bool isShape =
        selection.kind == WindowSelection::Kind::Chart || selection.kind == WindowSelection::Kind::Shape;
    for (const QString& reason :
         {unstorable(u"path of the workbook"_s, path), unstorable(u"name of the sheet"_s, sheet->Name()),
          unstorable(u"name of the chart or shape"_s, isShape ? selection.name : QString())}) {
        if (!reason.isEmpty())
            return refusePasting(reason);
    }
    Panel->SourceID = gSources->AddSource(path);
    QString name, extension;
    SplitPath(path, nullptr, &name, &extension);
    Panel->Caption = name;
    Panel->SheetName = sheet->Name();
    Panel->ViewType = u"A"_s;
    Panel->ContentMatch.clear();
    Panel->RelativeTo = u"bottom"_s;

    switch (selection.kind) {
    case WindowSelection::Kind::Range:
        return pasteRange(*window, *sheet, path, Panel);
    case WindowSelection::Kind::Chart:
    case WindowSelection::Kind::Shape:
        return pasteShape(selection.name, sheet, path, Panel);
    case WindowSelection::Kind::Nothing:
    case WindowSelection::Kind::Other:
        break;
    }
    return refusePasting(u"Invalid selection.  Must either select a range, chart object or shape."_s);
}

bool PanelPaste::pasteRange(Window& window, Worksheet& sheet, const QString& path, const PanelPipeline::Record& Panel)
{
    if (window.RangeSelection().contains(u','))
        return refusePasting(u"Several areas are selected.  Please select a single range and paste again."_s);
    forgetFormerRange(*Panel);
    if (!Panel->PasteRange(sheet, rangeDefinitions(window)))
        return false;
    Panel->ContentType = u"S"_s;
    // As the user sees the sheet. The worker reads the file as saved, and a difference tells that they are not one.
    Panel->ContentMatch = u"bottom="_s + RealBottomRight(sheet);
    return drawFirstPicture(path, Panel);
}

bool PanelPaste::pasteShape(const QString& name, const std::shared_ptr<Worksheet>& sheet, const QString& path,
                            const PanelPipeline::Record& Panel)
{
    if (const QString reason = ambiguity(*sheet, name); !reason.isEmpty())
        return refusePasting(reason);
    forgetFormerRange(*Panel);
    Panel->ContentType = u"C"_s;
    Panel->PicRange = name;
    return Excel_HasShape(sheet, name) && drawFirstPicture(path, Panel);
}

bool PanelPaste::drawFirstPicture(const QString& path, const PanelPipeline::Record& Panel)
{
    JobWorker worker;
    if (!worker || !m_pipeline.Panel_LoadExcel(path, path, true, worker.instance(), Panel))
        return false;
    if (const QString reason = m_pipeline.undrawnReason(); !reason.isEmpty())
        return refusePasting(reason);
    if (m_pipeline.applyView)
        m_pipeline.applyView(*Panel);
    return true;
}

} // namespace lumivane
