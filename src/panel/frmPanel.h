#pragma once

#include "panel/PanelGeometry.h"
#include "panel/PanelPipeline.h"

#include <QMdiSubWindow>
#include <QTimer>
#include <functional>

class QScrollBar;

namespace lumivane {

class PanelNotice;
class PictureBox;

/// The child window that shows one panel of the dashboard on screen. It is tied to its record by its place alone. What
/// it shows is made by the PanelPipeline; where its parts lie is computed by PanelGeometry.
class frmPanel : public QMdiSubWindow
{
    Q_OBJECT

public:
    qint16 Index = 0;      ///< place of the record in gWorkspace, from 1
    bool IsDirty = false;  ///< geometry or view differ from what is stored
    bool IsLoad = false;   ///< a load runs: changes of geometry are not the user's
    bool IsMarked = false; ///< marked in layout mode
    bool IsBase = false;   ///< what the marked panels are lined up with

    /// `editMode` says whether the dashboard is in layout mode.
    explicit frmPanel(std::function<bool()> editMode, QWidget* parent = nullptr);
    ~frmPanel() override;

    bool Panel_Load(XLInstance& XLInst, bool Refresh);
    bool Panel_Reload(XLInstance& XLInst);
    /// Draws a picture anew that was made for another screen or another size of the panel.
    void Panel_Sharpen(XLInstance& XLInst);
    /// Fills the panel from what the user has selected in their spreadsheet; true when a picture was loaded.
    bool Panel_Paste();

    // Commands. Failures are logged and shown in a box.
    /// Shows the panel's workbook at its sheet, in the newest version. Nothing for a picture panel.
    void Panel_Launch();
    /// The same with the copy of the workbook that is prepared for this panel alone; other panels have none.
    void Panel_LaunchCustom();
    /// Makes the panel show a picture file that the user picks; it stays as it was where that cannot be read.
    void Panel_BrowsePicture();
    /// Would show the data that the panel's figures come from. Nothing says yet where they lie, so it does nothing.
    void Panel_Drillback() {}

    // Property dialogs. The panel counts as changed however they end.
    void Panel_Caption(bool EditMode);
    void Panel_Range(bool EditMode);
    void Panel_Properties(bool EditMode);
    /// Stores nothing, and leaves the panel as it is.
    void Panel_DrillbackProperties();

    void SetCaption();
    void Panel_Autosize();
    void Panel_Crop();
    void Panel_ZoomToFit();
    void Panel_ToggleMark();

    // Place and size in twips, counted from the corner of the dashboard, wherever it is scrolled to.
    float Left() const;
    float Top() const;
    float Width() const;
    float Height() const;
    float ScaleWidth() const;
    float ScaleHeight() const;
    void setPlace(float left, float top);
    void setWindowSize(float width, float height);

    /// Closes the window for good. The user cannot close a panel, only delete it.
    void Unload();

    const PanelPicture& picture() const { return m_pipeline.picTemp; }

Q_SIGNALS:
    /// The view has changed, or the window has become the one that the panel commands act on.
    void viewChanged();
    void menuRequested(const QPoint& globalPosition);
    void doubleClicked();
    /// The panel has been resized so far that its picture should be drawn anew.
    void pictureOutgrown();
    /// The user has changed place, size or view while IsLoad is left over from a reload that drew nothing, so that
    /// IsDirty does not record it.
    void placed();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    void buildParts();
    void Form_Resize();
    void Panel_ApplyView(clsWorkspacePanel& Panel);
    void Panel_LaunchFile(const clsWorkspacePanel& Panel);
    void Panel_LaunchCopy(const clsWorkspacePanel& Panel);
    void keepWindowSize();
    void takePicture(const QString& file);
    void showWholePicture();
    void setView(const QString& viewType);
    void markDirty();
    void prepareDrawing();
    void arrange();
    void showView(const QString& viewType);
    /// The notice below the picture is counted with the borders, as high as it is at this width in pixels.
    PanelMeasures measures(int noticeWidth) const;
    PanelMeasures measures() const;
    void placeNotice();
    void watchSize();
    void layOut(const PanelLayout& layout, bool stretched);
    void placeBar(QScrollBar& bar, const ScrollBarPlace& place);
    void showNotice();
    void rememberGeometry();
    std::shared_ptr<clsWorkspacePanel> record() const;
    QPoint scrolledBy() const;
    QRect dashboardGeometry() const;
    void snapToNeighbours();
    bool clientEvent(QEvent& event);
    bool scrollBy(QWheelEvent& wheel);
    bool scrollBy(const QKeyEvent& key);

    std::function<bool()> m_editMode;
    PanelPipeline m_pipeline;
    QRect m_restored; ///< geometry on the dashboard when last neither minimized nor being moved by scrolling
    QRect m_pressed;  ///< geometry when the mouse went down on title or border; none of a minimized panel
    bool m_loading = false;
    bool m_unloading = false;

    QWidget* m_client = nullptr;
    QWidget* picFrame = nullptr;
    PictureBox* picPanel = nullptr;
    QScrollBar* VScroll1 = nullptr;
    QScrollBar* HScroll1 = nullptr;
    PanelNotice* m_notice = nullptr;
    QTimer m_sizeSettled; ///< runs while the user may still be resizing
};

} // namespace lumivane
