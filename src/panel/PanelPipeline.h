#pragma once

#include "host/modUtilsExcel.h"
#include "panel/PanelPicture.h"
#include "platform/Prompts.h"

#include <functional>
#include <memory>
#include <optional>

namespace lumivane {

struct CellArea;
class clsPanelSource;
class clsWorkspacePanel;
class Workbook;
class Worksheet;

/// Gets the picture of one panel: from its cached bitmap, from its workbook, or from a picture file. Works without a
/// window, so that a dashboard can also be refreshed from a script; a window gives `applyView`.
///
/// Where there is no cached file that belongs to the project, the panel's definition and the present version of its
/// workbook, the picture is drawn anew; while its source has a problem, the last one stands and says so. Failures are
/// logged and shown by `prompts()` as each procedure says, and kept in `problem` for the panel.
class PanelPipeline
{
public:
    using Record = std::shared_ptr<clsWorkspacePanel>;

    PanelPicture picTemp; ///< the full picture in its own size; what it held stays when a load fails
    /// Why the picture is not up to date after the last load or reload; empty when it is. A picture may be there all
    /// the same, of an older version.
    QString problem;
    /// Run at the end of a successful load or reload, inside its trap.
    std::function<void(clsWorkspacePanel&)> applyView;

    /// What the picture is drawn for: device pixels for each pixel of the screen, and the room of a stretched picture
    /// (nothing where that is not known).
    void setScreen(double scale, const TwipsSize& room = {});

    /// True when the picture is in picTemp and the view was applied.
    bool Panel_Load(XLInstance& XLInst, const Record& Panel, bool Refresh);
    /// True when the picture was drawn anew, false when the cached file still stood or on a failure, which `problem`
    /// then names.
    bool Panel_Reload(XLInstance& XLInst, const Record& Panel);
    /// Draws the picture anew where the one at hand was drawn for another screen or another room, and leaves the
    /// panel's view alone. True when that was done. A scale that cannot be had is asked for once only.
    bool Panel_Sharpen(XLInstance& XLInst, const Record& Panel);
    /// Whether Panel_Sharpen would draw.
    bool isForAnotherScale(const clsWorkspacePanel& Panel) const;
    /// OpenPath is read from; SourcePath is the true source file, in which a custom panel's range is located.
    bool Panel_LoadExcel(const QString& OpenPath, const QString& SourcePath, bool IsPaste, XLInstance& XLInst,
                         const Record& Panel);
    /// Captures from a sheet: kind "S" an address, kind "C" a chart or shape by name. A chart
    /// that is there but that the host cannot draw is answered by a picture that says so, never by an empty one.
    bool Panel_PasteExcel(Worksheet& sheet, const Record& Panel, const QString& ContentType, const QString& Range);
    /// Why picTemp only says what could not be drawn; empty when it is a true picture.
    const QString& undrawnReason() const { return m_undrawn; }

private:
    bool loadContent(XLInstance& XLInst, clsPanelSource& source, const Record& Panel);
    /// Answers what is to be said of the place that was found.
    QStringList Panel_LoadCustom(XLInstance& XLInst, clsWorkspacePanel& Panel, const QString& SourcePath);
    bool Panel_LoadOther(const QString& Path) { return true; }
    QString Panel_FindFile();
    std::optional<QString> recoverFile(clsPanelSource& source, const QString& path);

    bool loadFromSheet(XLInstance& XLInst, const std::shared_ptr<Workbook>& workbook, const QString& SourcePath,
                       bool IsPaste, const Record& Panel);
    bool captureChart(const std::shared_ptr<Workbook>& workbook, const std::shared_ptr<Worksheet>& sheet, bool IsPaste,
                      const Record& Panel);
    bool captureRange(XLInstance& XLInst, const std::shared_ptr<Worksheet>& sheet, const QString& SourcePath,
                      bool IsPaste, const Record& Panel);
    double wantedScale(const clsWorkspacePanel& Panel, const TwipsSize& picture) const;
    /// `take` gives the picture at a scale, and throws where it cannot.
    QImage capture(const clsWorkspacePanel& Panel, const std::function<QImage(double)>& take);
    bool captureAdjusted(Worksheet& sheet, const Record& Panel, QStringList notices);

    // What a picture belongs to.
    static QString openPathOf(const clsWorkspacePanel& Panel, const clsPanelSource& source, const QString& path);
    static QString problemOf(const clsPanelSource& source);
    static PictureIdentity identityOf(const clsWorkspacePanel& Panel, const QString& openPath,
                                      const QString& sourcePath);
    static bool belongs(const PictureIdentity& kept, const PictureIdentity& panel, const QString& sourceProblem);
    /// Whether the cached file is a picture of the panel as it is now.
    static bool pictureStands(const clsWorkspacePanel& Panel, const clsPanelSource& source);
    bool isOutdone(const clsPanelSource& source) const;
    void addStoredDefinition(const clsWorkspacePanel& located, Worksheet& sheet);
    bool stoodStill(const QString& OpenPath, const QString& SourcePath);

    /// Colours the cells that pass a limit of the panel. Answers what kept it from doing so, for the panel's notice.
    QString markThresholds(Worksheet& sheet, const clsWorkspacePanel& Panel);
    void captureShape(Worksheet& sheet, const QString& name, const clsWorkspacePanel& Panel);

    bool failWithBox(const QString& text, Prompts::Icon icon);
    /// The one handler of a procedure: logs a run-time error under its name with a box, and answers false.
    bool trapped(const QString& procedure, const std::function<bool()>& steps);
    bool hasInstance(const XLInstance& XLInst, const QString& procedure);

    double m_screenScale = 1;
    TwipsSize m_room;
    double m_askedScale = 0;   ///< that picTemp was to have; it has less where a picture of that size cannot be
    bool m_drawAnew = false;   ///< the cached picture does not count
    QString m_undrawn;         ///< set while picTemp must not be kept as the panel's picture
    PictureIdentity m_drawing; ///< of the picture that is being made
};

} // namespace lumivane
