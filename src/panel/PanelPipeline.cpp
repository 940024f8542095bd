#include "panel/PanelPipeline.h"

#include "host/Host.h"
#include "platform/ApplicationInfo.h"
#include "platform/Failures.h"
#include "platform/Prompts.h"
#include "platform/RuntimeError.h"
#include "range/PlaceDoubt.h"
#include "range/RangeFit.h"
#include "repository/Database.h"
#include "repository/clsPanelSource.h"
#include "repository/clsWorkspacePanel.h"
#include "services/ProgramFiles.h"
#include "services/modUtilsFile.h"
#include "services/modUtilsLog.h"
#include "update/Stillness.h"

#include <QFile>
#include <QFontDatabase>
#include <QPainter>
#include <QRegularExpression>
#include <QScopeGuard>
#include <algorithm>
#include <cmath>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

const QString panelModule = u"frmPanel"_s;
constexpr QSize explanationSize(320, 180);
constexpr double leastZoomScale = 2, mostZoomScale = 4, mostScale = 8;
constexpr double sameScale = 0.01; ///< as exact as a cached picture keeps its scale

QString panelLines(const QStringList& lines)
{
    return lines.join(u"\r\n"_s);
}

const QString redefineHint = u"You may have to re-define the dashboard object."_s;
const QString helpHint = u"See Help for more information."_s;

QString staleWorkbookText()
{
    return panelLines({u"The spreadsheet has been changed and not saved."_s,
                       u"You cannot paste from it at this time."_s, u"Please refer to help for more on this."_s});
}

std::shared_ptr<clsPanelSource> sourceOf(const PanelPipeline::Record& Panel)
{
    if (!Panel)
        throw RuntimeError(RuntimeError::ObjectNotSet);
    return Panel->Source();
}

bool isRangePanel(const clsWorkspacePanel& Panel)
{
    return Panel.ContentType == u"S" || Panel.ContentType == u"M";
}

/// A card with a sentence on it, in place of a picture that no host can draw.
QImage explanationPicture(const QString& sentence, double scale)
{
    QImage image(explanationSize * scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    image.fill(QColor(0xfa, 0xfa, 0xf7));
    QPainter painter(&image);
    painter.setPen(QColor(0x5a, 0x62, 0x70));
    painter.setFont(QFontDatabase::systemFont(QFontDatabase::GeneralFont));
    painter.drawText(QRectF(QPointF(0, 0), explanationSize).adjusted(16, 16, -16, -16),
                     Qt::AlignCenter | Qt::TextWordWrap, sentence);
    return image;
}

QString undrawnNotice(Worksheet& sheet, const QString& address)
{
    const auto area = CellArea::parse(address);
    return area ? undrawnSentence(sheet.undrawn(*area)) : QString();
}

} // namespace

bool PanelPipeline::Panel_Load(XLInstance& XLInst, const Record& Panel, bool Refresh)
{
    problem.clear();
    return trapped(u"Panel_Load"_s, [&] {
        if (!hasInstance(XLInst, u"Panel_Load"_s))
            return false;
        const auto source = sourceOf(Panel);
        if (!source)
            return failWithBox(u"Panel has no source defined."_s, Prompts::Icon::Exclamation);

        const QString cacheFile = panelPictureFile(Panel->ID);
        if (Refresh && FileExists(cacheFile))
            QFile::remove(cacheFile);
        source->GetLatest(gDB, false);
        // The check may have moved the stored range on.
        if (!pictureStands(*Panel, *source))
            Panel->LoadFromDB(Panel->ID, gDB);
        return loadContent(XLInst, *source, Panel);
    });
}

bool PanelPipeline::Panel_Reload(XLInstance& XLInst, const Record& Panel)
{
    problem.clear();
    return trapped(u"Panel_Reload"_s, [&] {
        if (!hasInstance(XLInst, u"Panel_Reload"_s))
            return false;
        const auto source = sourceOf(Panel);
        if (!source)
            return failWithBox(u"Panel has no source defined."_s, Prompts::Icon::Exclamation);

        source->GetLatest(gDB, true);
        if (pictureStands(*Panel, *source) && !isOutdone(*source)) {
            problem = problemOf(*source);
            return false;
        }
        return loadContent(XLInst, *source, Panel);
    });
}

void PanelPipeline::setScreen(double scale, const TwipsSize& room)
{
    m_screenScale = scale;
    m_room = room;
}

bool PanelPipeline::isForAnotherScale(const clsWorkspacePanel& Panel) const
{
    return (isRangePanel(Panel) || Panel.ContentType == u"C") && !picTemp.image.isNull() && m_undrawn.isEmpty() &&
           std::abs(wantedScale(Panel, picTemp.size()) - m_askedScale) > sameScale;
}

bool PanelPipeline::Panel_Sharpen(XLInstance& XLInst, const Record& Panel)
{
    const auto source = Panel ? Panel->Source() : nullptr;
    if (!source || !isForAnotherScale(*Panel))
        return false;
    const QString path = source->currentPath();
    if (!FileExists(path))
        return false; // the next pass looks for it
    if (picTemp.identity.version != FileVersion::of(path))
        return false; // the next pass takes it over first, and moves the range on
    m_askedScale = wantedScale(*Panel, picTemp.size());
    m_drawAnew = true;
    const auto end = qScopeGuard([this] { m_drawAnew = false; });
    const PanelPicture before = picTemp;
    if (!Panel_LoadExcel(openPathOf(*Panel, *source, path), path, false, XLInst, Panel))
        return false;
    if (m_undrawn.isEmpty())
        return true;
    m_undrawn.clear();
    picTemp = before;
    return false;
}

PictureIdentity PanelPipeline::identityOf(const clsWorkspacePanel& Panel, const QString& openPath,
                                          const QString& sourcePath)
{
    return {projectIdentity(),
            {definitionDigest(Panel)},
            FileVersion::of(sourcePath),
            openPath == sourcePath ? FileVersion() : FileVersion::of(openPath),
            {}};
}

QString PanelPipeline::openPathOf(const clsWorkspacePanel& Panel, const clsPanelSource& source, const QString& path)
{
    return Panel.IsCustom == u"Y" ? source.Prepped() : path;
}

QString PanelPipeline::problemOf(const clsPanelSource& source)
{
    if (!source.Problem.isEmpty() || FileExists(source.currentPath()))
        return source.Problem;
    return u"The workbook [%1] was not found."_s.arg(source.currentPath());
}

bool PanelPipeline::pictureStands(const clsWorkspacePanel& Panel, const clsPanelSource& source)
{
    const auto kept = cachedIdentity(panelPictureFile(Panel.ID));
    const QString path = source.currentPath();
    return kept && belongs(*kept, identityOf(Panel, openPathOf(Panel, source, path), path), problemOf(source));
}

bool PanelPipeline::belongs(const PictureIdentity& kept, const PictureIdentity& panel, const QString& sourceProblem)
{
    if (kept.project != panel.project || !kept.definitions.contains(panel.definitions.first()))
        return false;
    // While the present version cannot be had, the last one stands, and says so.
    return !sourceProblem.isEmpty() || (kept.version == panel.version && kept.copy == panel.copy);
}

bool PanelPipeline::isOutdone(const clsPanelSource& source) const
{
    // Another program has kept a newer picture of the panel than the one that is shown here.
    return picTemp.identity.version.size >= 0 && problemOf(source).isEmpty() &&
           picTemp.identity.version != FileVersion::of(source.currentPath());
}

bool PanelPipeline::loadContent(XLInstance& XLInst, clsPanelSource& source, const Record& Panel)
{
    QString path = source.currentPath();
    if (!FileExists(path) && source.IsWaiting) {
        // The first version is on its way: nobody need look for it.
        problem = source.Problem;
        return false;
    }
    if (!FileExists(path)) {
        const auto found = recoverFile(source, path);
        if (!found)
            return false;
        path = *found;
    }

    if (Panel->ContentType == u"P") {
        picTemp = loadPictureFile(path);
    } else if (isRangePanel(*Panel) || Panel->ContentType == u"C") {
        if (!Panel_LoadExcel(openPathOf(*Panel, source, path), path, false, XLInst, Panel))
            return false;
    } else if (!Panel_LoadOther(path)) {
        return false;
    }

    if (problem.isEmpty())
        problem = problemOf(source);
    if (applyView)
        applyView(*Panel);
    return true;
}

std::optional<QString> PanelPipeline::recoverFile(clsPanelSource& source, const QString& path)
{
    const QString sought = path.isEmpty() ? QString(source.DestFolder + source.Mask) : path;
    const QString missing = u"Unable to load panel.  ["_s + sought + u"] not found"_s;
    if (!ConfirmAction(missing + u". Do you want to look for the file yourself?"_s)) {
        problem = missing + u'.';
        return std::nullopt;
    }
    const QString chosen = Panel_FindFile();
    if (chosen.isEmpty()) {
        failWithBox(u"Unable to load panel.  No file selected."_s, Prompts::Icon::Exclamation);
        return std::nullopt;
    }
    if (!FileExists(chosen)) {
        failWithBox(u"Unable to load panel.  ["_s + chosen + u"] not found"_s, Prompts::Icon::Exclamation);
        return std::nullopt;
    }
    source.TakeChosenFile(gDB, chosen);
    return chosen;
}

QString PanelPipeline::Panel_FindFile()
{
    // "*.xls" is meant as a beginning: later formats carry a letter more.
    return prompts().openFile(
        {u"Select file to open"_s, u"Microsoft Excel files (*.xls *.xls?);;All files (*)"_s, QString()});
}

bool PanelPipeline::Panel_LoadExcel(const QString& OpenPath, const QString& SourcePath, bool IsPaste,
                                    XLInstance& XLInst, const Record& Panel)
{
    return trapped(u"Panel_LoadExcel"_s, [&] {
        if (!hasInstance(XLInst, u"Panel_LoadExcel"_s))
            return false;
        if (!Panel)
            throw RuntimeError(RuntimeError::ObjectNotSet);

        const QString cacheFile = Panel->ID > 0 ? panelPictureFile(Panel->ID) : QString();
        m_drawing = identityOf(*Panel, OpenPath, SourcePath);
        const auto source = Panel->Source();
        const QString sourceProblem = source && !IsPaste ? problemOf(*source) : QString();
        if (auto kept = m_drawAnew ? std::nullopt : loadCachedPicture(cacheFile);
            kept && belongs(kept->identity, m_drawing, sourceProblem)) {
            picTemp = *std::move(kept);
            m_askedScale = picTemp.image.devicePixelRatio();
            return true;
        }

        const auto workbook = XLInst->Open(OpenPath, true);
        if (!workbook)
            return false;
        m_undrawn.clear();
        bool drawn = false;
        {
            const auto closing = qScopeGuard([&] { workbook->Close(); });
            drawn = loadFromSheet(XLInst, workbook, SourcePath, IsPaste, Panel);
        }
        if (!drawn)
            return false;
        picTemp.identity = m_drawing;
        if (!cacheFile.isEmpty() && m_undrawn.isEmpty() && stoodStill(OpenPath, SourcePath))
            saveCachedPicture(picTemp, cacheFile);
        return true;
    });
}

bool PanelPipeline::stoodStill(const QString& OpenPath, const QString& SourcePath)
{
    const auto same = [](const FileVersion& before, const QString& path) {
        return before.path.isEmpty() || before == FileVersion::of(path);
    };
    if (!same(m_drawing.version, SourcePath) || !same(m_drawing.copy, OpenPath)) {
        problem = u"[%1] was written to while it was drawn."_s.arg(OpenPath);
        return false;
    }
    // What has just been written may be written on. The next pass draws it again.
    return untilGrown(FileStamp::of(OpenPath)) == 0;
}

bool PanelPipeline::loadFromSheet(XLInstance& XLInst, const std::shared_ptr<Workbook>& workbook,
                                  const QString& SourcePath, bool IsPaste, const Record& Panel)
{
    if (!Excel_HasSheet(workbook, Panel->SheetName))
        return failWithBox(panelLines({u"A sheet named "_s + Panel->SheetName + u" was not found in the workbook ["_s +
                                           workbook->Name() + u']',
                                       redefineHint, helpHint}),
                           Prompts::Icon::Information);
    const auto sheet = workbook->WorksheetByName(Panel->SheetName);
    sheet->Select();
    if (Panel->ContentType == u"C")
        return captureChart(workbook, sheet, IsPaste, Panel);
    if (isRangePanel(*Panel))
        return captureRange(XLInst, sheet, SourcePath, IsPaste, Panel);
    return false;
}

bool PanelPipeline::captureChart(const std::shared_ptr<Workbook>& workbook, const std::shared_ptr<Worksheet>& sheet,
                                 bool IsPaste, const Record& Panel)
{
    // An engine may read a sheet only when it is needed. Damage must be reported here: the search below would take it
    // for a missing chart.
    sheet->usedArea();
    m_drawing.range = Panel->PicRange;
    if (Excel_HasShape(sheet, Panel->PicRange))
        return Panel_PasteExcel(*sheet, Panel, u"C"_s, Panel->PicRange);
    if (IsPaste)
        return failWithBox(staleWorkbookText(), Prompts::Icon::Critical);
    return failWithBox(panelLines({u"A chart named "_s + Panel->PicRange + u" was not found in spreadsheet ["_s +
                                       Panel->SheetName + u"] of worksbook ["_s + workbook->Name() + u']',
                                   redefineHint, helpHint}),
                       Prompts::Icon::Information);
}

bool PanelPipeline::captureRange(XLInstance& XLInst, const std::shared_ptr<Worksheet>& sheet, const QString& SourcePath,
                                 bool IsPaste, const Record& Panel)
{
    if (Panel->IsCustom == u"Y") {
        const QStringList notices = Panel_LoadCustom(XLInst, *Panel, SourcePath);
        sheet->Select();
        return captureAdjusted(*sheet, Panel, notices);
    }

    sheet->Select();
    QString bottom, anchor, content;
    Panel->parseContentMatch(bottom, anchor, content);
    if (!bottom.isEmpty() && IsPaste) {
        const QString recorded = sheet->Range(bottom).Address();
        if (recorded != LastFilledCell(*sheet))
            return failWithBox(staleWorkbookText(), Prompts::Icon::Critical);
    }
    if (IsPaste) {
        Panel->GetAdjRange(*sheet);
        return captureAdjusted(*sheet, Panel, {placeDoubt(*Panel, *sheet)});
    }
    const QString misfit = locateRange(*Panel, *sheet);
    addStoredDefinition(*Panel, *sheet);
    return captureAdjusted(*sheet, Panel, {misfit, placeDoubt(*Panel, *sheet)});
}

void PanelPipeline::addStoredDefinition(const clsWorkspacePanel& located, Worksheet& sheet)
{
    // An adjustment moves the stored definition on and leaves the one on the screen. Where both give the same range of
    // this version, the picture is right for both.
    clsWorkspacePanel stored;
    if (located.ID < 1 || !stored.LoadFromDB(located.ID, gDB))
        return;
    const QString digest = definitionDigest(stored);
    const auto withoutPlace = [](const clsWorkspacePanel& panel) {
        static const QRegularExpression keys(u"[^`]*="_s);
        return QStringList{panel.ContentType,
                           panel.IsCustom,
                           panel.SheetName,
                           panel.RelativeTo,
                           panel.PicRange.section(u'`', 1),
                           QString(panel.RowHeights).remove(keys),
                           QString(panel.ColWidths).remove(keys)};
    };
    if (m_drawing.definitions.contains(digest) || withoutPlace(stored) != withoutPlace(located))
        return;
    if (locateRange(stored, sheet).isEmpty() &&
        CellArea::parse(stored.adjMovRange()) == CellArea::parse(located.adjMovRange()))
        m_drawing.definitions.append(digest);
}

bool PanelPipeline::captureAdjusted(Worksheet& sheet, const Record& Panel, QStringList notices)
{
    const QString range = Panel->adjRange(sheet);
    m_drawing.range = range;
    const QString unmarked = markThresholds(sheet, *Panel);
    if (!Panel_PasteExcel(sheet, Panel, u"S"_s, range))
        return false;
    notices << picTemp.notice << unmarked;
    notices.removeAll(QString());
    picTemp.notice = notices.join(u'\n');
    return true;
}

QString PanelPipeline::markThresholds(Worksheet& sheet, const clsWorkspacePanel& Panel)
{
    if (Panel.ID < 1)
        return {};
    try {
        Panel.lightCells(sheet, gDB);
        return {};
    } catch (const RuntimeError& error) {
        // The figures are right all the same; that marks are missing must be seen beside them.
        LogError(panelModule, u"Panel_LoadExcel"_s, error.number(), error.description(), false);
        return u"Not all thresholds were applied: "_s + error.description();
    }
}

QStringList PanelPipeline::Panel_LoadCustom(XLInstance& XLInst, clsWorkspacePanel& Panel, const QString& SourcePath)
{
    // The personal copy was built for display; the range must be found in the true file. What goes wrong here is
    // passed over, and the range is then drawn where it was located last.
    try {
        const auto workbook = XLInst->Open(SourcePath, true);
        if (!workbook)
            return {};
        const auto closing = qScopeGuard([&] { workbook->Close(); });
        if (!Excel_HasSheet(workbook, Panel.SheetName))
            return {};
        const auto sheet = workbook->WorksheetByName(Panel.SheetName);
        const QString misfit = locateRange(Panel, *sheet);
        return {misfit, placeDoubt(Panel, *sheet)};
    } catch (const RuntimeError&) {
    }
    return {};
}

bool PanelPipeline::Panel_PasteExcel(Worksheet& sheet, const Record& Panel, const QString& ContentType,
                                     const QString& Range)
{
    return trapped(u"Panel_PasteExcel"_s, [&] {
        if (ContentType == u"C") {
            if (!sheet.ShapeNames().contains(Range, Qt::CaseInsensitive))
                return failWithBox(panelLines({u"A chart named "_s + Range + u" was not found in spreadsheet ["_s +
                                                   sheet.Name() + u"] of workbook ["_s + sheet.WorkbookName() + u"]."_s,
                                               redefineHint, helpHint}),
                                   Prompts::Icon::Exclamation);
            captureShape(sheet, Range, *Panel);
        } else if (ContentType == u"S") {
            const SheetRange cells = sheet.Range(Range);
            picTemp.image = capture(*Panel, [&](double scale) { return sheet.CopyPicture(cells.area(), scale); });
            picTemp.notice = undrawnNotice(sheet, Range);
        }
        Panel->ContentType = ContentType;
        return true;
    });
}

double PanelPipeline::wantedScale(const clsWorkspacePanel& Panel, const TwipsSize& picture) const
{
    if (Panel.ViewType != u"Z")
        return m_screenScale;
    // A stretched picture has pixels to spare, or its texts would blur. In steps, so that few sizes draw it anew.
    const double stretch =
        picture.isEmpty() ? 1 : std::max(m_room.width / picture.width, m_room.height / picture.height);
    return std::min(m_screenScale * std::clamp(std::ceil(stretch * 2) / 2, leastZoomScale, mostZoomScale), mostScale);
}

QImage PanelPipeline::capture(const clsWorkspacePanel& Panel, const std::function<QImage(double)>& take)
{
    const auto captureAt = [&](double scale) {
        QImage image = take(scale);
        if (image.isNull())
            throw RuntimeError(
                RuntimeError::ApplicationDefined,
                u"What panel '%1' shows is too large for a picture. Please choose a smaller range."_s.arg(
                    Panel.Caption));
        image.setDevicePixelRatio(scale);
        return image;
    };
    const auto sharpOrPlain = [&](double scale) {
        try {
            return captureAt(scale);
        } catch (const RuntimeError&) {
            // What is too large for a sharp picture may still fit as a plain one; if not, that failure says why.
            return captureAt(1);
        }
    };
    m_askedScale = wantedScale(Panel, {});
    QImage image = m_askedScale > 1 ? sharpOrPlain(m_askedScale) : captureAt(1);
    // Only its size shows how far it is stretched.
    const double first = std::exchange(m_askedScale, wantedScale(Panel, sizeInTwips(image)));
    if (m_askedScale <= first || image.devicePixelRatio() < first)
        return image;
    try {
        return captureAt(m_askedScale);
    } catch (const RuntimeError&) {
        return image;
    }
}

void PanelPipeline::captureShape(Worksheet& sheet, const QString& name, const clsWorkspacePanel& Panel)
{
    try {
        picTemp.image = capture(Panel, [&](double scale) { return sheet.CopyShapePicture(name, scale); });
        picTemp.notice = undrawnSentence(sheet.undrawnOfShape(name));
    } catch (const RuntimeError& error) {
        // The chart is there and only this host cannot draw it: that is no reason to offer the panel for deletion.
        LogError(panelModule, u"Panel_PasteExcel"_s, error.number(), error.description(), false);
        picTemp.image = explanationPicture(error.description(), m_screenScale);
        picTemp.notice = u"Panel '%1' shows no current picture."_s.arg(Panel.Caption);
        m_undrawn = error.description();
    }
}

bool PanelPipeline::failWithBox(const QString& text, Prompts::Icon icon)
{
    problem = text;
    prompts().message(text, icon);
    return false;
}

bool PanelPipeline::trapped(const QString& procedure, const std::function<bool()>& steps)
{
    try {
        return steps();
    } catch (const std::exception& failure) {
        const RuntimeError error = describedFailure(failure);
        problem = error.description();
        LogError(panelModule, procedure, error.number(), error.description(), true);
        return false;
    }
}

bool PanelPipeline::hasInstance(const XLInstance& XLInst, const QString& procedure)
{
    if (XLInst)
        return true;
    LogEvent(panelModule, procedure, u"XLInst Is Nothing"_s, false);
    problem = u"The workbook engine could not be started."_s;
    return false;
}

} // namespace lumivane
