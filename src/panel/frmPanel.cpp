#include "panel/frmPanel.h"

#include "controls/PanelStyle.h"
#include "panel/PanelCaption.h"
#include "panel/PanelNotice.h"
#include "panel/PanelPaste.h"
#include "panel/PanelSnap.h"
#include "panel/PictureBox.h"
#include "panel/Twips.h"
#include "platform/Checked.h"
#include "platform/Clock.h"
#include "platform/RuntimeError.h"
#include "platform/ShownText.h"
#include "repository/clsPanelSource.h"
#include "repository/clsWorkspace.h"
#include "repository/clsWorkspacePanel.h"
#include "services/modMain.h"
#include "services/modUtilsLog.h"

#include <QCloseEvent>
#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QMdiArea>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QSignalBlocker>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

constexpr int menuPlace = 6; ///< of a menu that the keyboard asks for, from the panel's corner
constexpr int sizeSettledMilliseconds = 700;
constexpr double snapInches = 6 / 96.0; // of a mouse that comes near a line

QRect pixelRect(const TwipsRect& rect)
{
    return {toPixels(rect.left), toPixels(rect.top), toPixels(rect.width), toPixels(rect.height)};
}

/// The last pixel of the dashboard at which a panel can still be stored, and the greatest length of one.
int farthestPixel()
{
    return qMin(twipsLimit() / twipsPerPixel, QWIDGETSIZE_MAX);
}

QPoint withinReach(const QPoint& place)
{
    const int far = farthestPixel();
    return {qBound(-far, place.x(), far), qBound(-far, place.y(), far)};
}

int captionWidth(const QString& text)
{
    return toStoredTwips(toTwips(QFontMetricsF(PanelStyle::captionFont()).horizontalAdvance(text)));
}

} // namespace

frmPanel::frmPanel(std::function<bool()> editMode, QWidget* parent)
    : QMdiSubWindow(parent, Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowMinimizeButtonHint),
      m_editMode(std::move(editMode))
{
    setObjectName(u"frmPanel"_s);
    setAttribute(Qt::WA_DeleteOnClose, false);
    setSystemMenu(nullptr); // it offers to close the window
    setMaximumSize(farthestPixel(), farthestPixel());
    buildParts();
    m_pipeline.applyView = [this](clsWorkspacePanel& Panel) { Panel_ApplyView(Panel); };
    m_sizeSettled.setSingleShot(true);
    m_sizeSettled.setInterval(sizeSettledMilliseconds);
    connect(&m_sizeSettled, &QTimer::timeout, this, &frmPanel::watchSize);
}

frmPanel::~frmPanel() = default;

void frmPanel::buildParts()
{
    m_client = new QWidget;
    m_client->setObjectName(u"client"_s);
    m_client->setFocusPolicy(Qt::ClickFocus);
    m_client->setBackgroundRole(QPalette::Base);
    m_client->setAutoFillBackground(true);
    picFrame = new QWidget(m_client);
    picFrame->setObjectName(u"picFrame"_s);
    picPanel = new PictureBox(picFrame);
    picPanel->setObjectName(u"picPanel"_s);

    VScroll1 = new QScrollBar(Qt::Vertical, m_client);
    VScroll1->setObjectName(u"VScroll1"_s);
    HScroll1 = new QScrollBar(Qt::Horizontal, m_client);
    HScroll1->setObjectName(u"HScroll1"_s);
    VScroll1->hide();
    HScroll1->hide();
    connect(VScroll1, &QScrollBar::valueChanged, this,
            [this](int value) { picPanel->move(picPanel->x(), -toPixels(value)); });
    connect(HScroll1, &QScrollBar::valueChanged, this,
            [this](int value) { picPanel->move(-toPixels(value), picPanel->y()); });

    m_notice = new PanelNotice(m_client);

    m_client->installEventFilter(this);
    setWidget(m_client);
}

bool frmPanel::Panel_Load(XLInstance& XLInst, bool Refresh)
{
    IsLoad = true;
    IsDirty = false;
    const auto panel = record();
    prepareDrawing();
    const QScopedValueRollback loading(m_loading, true);
    const bool loaded = m_pipeline.Panel_Load(XLInst, panel, Refresh);
    // Without a picture there is room for the reason all the same.
    if (!loaded && m_pipeline.picTemp.image.isNull() && panel && panel->pWidth > 0 && panel->pHeight > 0)
        setWindowSize(panel->pWidth, panel->pHeight);
    showNotice();
    if (loaded)
        IsLoad = false;
    return loaded;
}

bool frmPanel::Panel_Reload(XLInstance& XLInst)
{
    IsLoad = true;
    prepareDrawing();
    const QScopedValueRollback loading(m_loading, true);
    keepWindowSize();
    const bool drawn = m_pipeline.Panel_Reload(XLInst, record());
    showNotice();
    if (drawn)
        IsLoad = false;
    else if (m_pipeline.problem.isEmpty())
        Panel_Sharpen(XLInst);
    return drawn;
}

void frmPanel::Panel_Sharpen(XLInstance& XLInst)
{
    prepareDrawing();
    if (m_pipeline.Panel_Sharpen(XLInst, record()))
        arrange();
    showNotice();
}

void frmPanel::prepareDrawing()
{
    // What is stretched at the moment shows the room there is; before that, only the size that is stored.
    TwipsSize room;
    const auto panel = record();
    if (panel && panel->ViewType == u"Z") {
        const PanelMeasures now = measures();
        room = m_pipeline.picTemp.image.isNull() ? TwipsSize{panel->pWidth - now.window.width + now.client.width,
                                                             panel->pHeight - now.window.height + now.client.height}
                                                 : now.client;
    }
    m_pipeline.setScreen(devicePixelRatioF(), room);
}

void frmPanel::watchSize()
{
    if (QGuiApplication::mouseButtons() != Qt::NoButton) {
        m_sizeSettled.start();
        return;
    }
    const auto panel = record();
    prepareDrawing();
    if (panel && m_pipeline.isForAnotherScale(*panel))
        Q_EMIT pictureOutgrown();
}

void frmPanel::keepWindowSize()
{
    // Picture panels are loaded anew in every pass, which must not undo what the user has made of their windows.
    const auto panel = record();
    if (!panel || panel->ContentType != u"P" || !canBeKept({Width(), Height()}))
        return;
    panel->pWidth = toStoredTwips(Width());
    panel->pHeight = toStoredTwips(Height());
}

bool frmPanel::Panel_Paste()
{
    prepareDrawing();
    const bool pasted = PanelPaste(m_pipeline).Panel_Paste(record());
    IsDirty = true;
    showNotice();
    return pasted;
}

void frmPanel::Panel_ApplyView(clsWorkspacePanel& Panel)
{
    if (Panel.ViewType == u"C") {
        setWindowSize(Panel.pWidth, Panel.pHeight);
        Panel_Crop();
    } else if (Panel.ViewType == u"Z") {
        setWindowSize(Panel.pWidth, Panel.pHeight);
        Panel_ZoomToFit();
    } else if (Panel.ContentType == u"P") {
        setWindowSize(Panel.pWidth, Panel.pHeight);
        showWholePicture();
    } else {
        Panel_Autosize();
    }
    SetCaption();
}

void frmPanel::Panel_Autosize()
{
    const TwipsSize picture = m_pipeline.picTemp.size();
    const TwipsSize wanted = autosizeWindow(measures(toPixels(picture.width)), picture);
    if (!canBeKept(wanted))
        throw RuntimeError(RuntimeError::Overflow,
                           u"The picture is too large for a panel of its size. Please use another view."_s);
    setView(u"A"_s);
    if (!picture.isEmpty())
        setWindowSize(wanted.width, wanted.height);
    layOut(autosizeLayout(measures(), picture), false);
    if (const auto panel = record(); panel && !picture.isEmpty()) {
        panel->pWidth = toStoredTwips(Width());
        panel->pHeight = toStoredTwips(Height());
    }
    SetCaption();
    markDirty();
    Q_EMIT viewChanged();
}

void frmPanel::Panel_Crop()
{
    const PanelLayout layout = cropLayout(measures(), m_pipeline.picTemp.size());
    setView(u"C"_s);
    layOut(layout, false);
    markDirty();
    Q_EMIT viewChanged();
}

void frmPanel::Panel_ZoomToFit()
{
    setView(u"Z"_s);
    layOut(zoomLayout(measures()), true);
    if (isVisible())
        m_sizeSettled.start();
    markDirty();
    Q_EMIT viewChanged();
}

void frmPanel::Panel_ToggleMark()
{
    if (m_editMode()) {
        if (!IsBase)
            IsMarked = !IsMarked;
        SetCaption();
    } else {
        IsMarked = false;
        IsBase = false;
    }
}

namespace {

PanelStyle::Frame frameOf(PanelMark mark)
{
    switch (mark) {
    case PanelMark::None:
        break;
    case PanelMark::Marked:
        return PanelStyle::Frame::Marked;
    case PanelMark::Base:
        return PanelStyle::Frame::Base;
    }
    return PanelStyle::Frame::Plain;
}

} // namespace

void frmPanel::SetCaption()
{
    const auto panel = record();
    if (!panel)
        return;
    PanelMark mark = PanelMark::None;
    if (m_editMode())
        mark = IsBase ? PanelMark::Base : IsMarked ? PanelMark::Marked : PanelMark::None;
    setProperty(PanelStyle::markProperty, static_cast<int>(frameOf(mark)));
    update();
    std::optional<QDateTime> stamp;
    const auto source = panel->Source();
    if (gPanelTimeStamp && source) {
        // Of the file that the picture shows, which need not be the newest.
        const QDateTime shown = m_pipeline.picTemp.identity.version.time();
        stamp = shown.isValid() ? shown : source->NewestFileTime();
    }
    QString text = panelCaptionText(shownName(panel->Caption), mark, stamp, Clock::now());
    setAccessibleName(text);
    // A text wider than the panel is not centred, and may be wider than a length that is kept.
    const float textWidth = toTwips(QFontMetricsF(PanelStyle::captionFont()).horizontalAdvance(text));
    if (gCaptionAlignment != u"Left" && textWidth < ScaleWidth()) {
        const int blanks = centringBlanks(ScaleWidth(), captionWidth(text), captionWidth(QString(100, u' ')));
        text.prepend(QString(qMax(0, blanks), u' '));
    }
    setWindowTitle(text);
}

void frmPanel::Form_Resize()
{
    const auto panel = record();
    if (!panel || isMinimized() || m_unloading)
        return;
    try {
        SetCaption();
        showView(panel->ViewType);
        markDirty();
    } catch (const RuntimeError& error) {
        // No box: one for each step of the mouse would come.
        LogError(u"frmPanel"_s, u"Form_Resize"_s, error.number(), error.description(), false);
        m_pipeline.problem = u"This size cannot be kept: %1"_s.arg(error.description());
    }
    showNotice();
}

void frmPanel::showView(const QString& viewType)
{
    if (viewType == u"A")
        Panel_Autosize();
    else if (viewType == u"C")
        Panel_Crop();
    else if (viewType == u"Z")
        Panel_ZoomToFit();
}

void frmPanel::arrange()
{
    const auto panel = record();
    if (!panel || isMinimized() || m_unloading)
        return;
    const QScopedValueRollback notTheUsers(IsLoad, true), quiet(m_loading, true);
    try {
        showView(panel->ViewType);
    } catch (const RuntimeError&) {
        // It stays as it was laid out before.
    }
}

void frmPanel::setView(const QString& viewType)
{
    if (const auto panel = record())
        panel->ViewType = viewType;
}

void frmPanel::markDirty()
{
    if (!IsLoad)
        IsDirty = true;
    else if (!m_loading)
        Q_EMIT placed();
}

PanelMeasures frmPanel::measures() const
{
    return measures(toPixels(ScaleWidth()));
}

PanelMeasures frmPanel::measures(int noticeWidth) const
{
    PanelMeasures measures;
    measures.window = {toTwips(width()), toTwips(height())};
    measures.client = {ScaleWidth(), ScaleHeight() - toTwips(m_notice->heightFor(noticeWidth))};
    measures.barThickness = toTwips(style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this));
    return measures;
}

void frmPanel::layOut(const PanelLayout& layout, bool stretched)
{
    picFrame->setGeometry(pixelRect(layout.frame));
    picPanel->setPicture(m_pipeline.picTemp.image, stretched);
    picPanel->setGeometry(pixelRect(layout.picture));
    placeBar(*VScroll1, layout.vertical);
    placeBar(*HScroll1, layout.horizontal);
    placeNotice();
}

void frmPanel::placeBar(QScrollBar& bar, const ScrollBarPlace& place)
{
    // The picture has just been put back to its corner, and the bar goes with it.
    const QSignalBlocker blocker(bar);
    bar.setRange(0, place.max);
    bar.setPageStep(place.largeChange);
    bar.setSingleStep(place.smallChange);
    bar.setValue(0);
    bar.setGeometry(pixelRect(place.place));
    bar.setVisible(place.visible);
    if (place.visible)
        bar.raise();
}

void frmPanel::showNotice()
{
    const QString text = m_pipeline.problem.isEmpty() ? m_pipeline.picTemp.notice
                                                      : u"Not up to date. "_s + m_pipeline.problem.simplified();
    // Names from workbooks stand in it; a tool tip would take their signs for markup.
    setToolTip(text.isEmpty() ? QString() : u"<p>"_s + text.toHtmlEscaped() + u"</p>"_s);
    setProperty(PanelStyle::noticeProperty, !text.isEmpty());
    update();
    const int clientWidth = toPixels(ScaleWidth());
    const int before = m_notice->heightFor(clientWidth);
    m_notice->setNotice(text);
    if (m_notice->heightFor(clientWidth) != before)
        arrange();
    placeNotice();
}

void frmPanel::placeNotice()
{
    const int width = toPixels(ScaleWidth()), height = toPixels(ScaleHeight());
    const int strip = m_pipeline.picTemp.image.isNull() ? height : m_notice->heightFor(width);
    m_notice->setGeometry(0, height - strip, width, strip);
    m_notice->raise();
}

std::shared_ptr<clsWorkspacePanel> frmPanel::record() const
{
    return gWorkspace ? gWorkspace->Panels(Index) : nullptr;
}

QPoint frmPanel::scrolledBy() const
{
    const QMdiArea* area = mdiArea();
    return area ? QPoint(area->horizontalScrollBar()->value(), area->verticalScrollBar()->value()) : QPoint();
}

QRect frmPanel::dashboardGeometry() const
{
    // A minimized panel goes back to where it was; that is its place.
    return isMinimized() && m_restored.isValid() ? m_restored : geometry().translated(scrolledBy());
}

float frmPanel::Left() const
{
    return toTwips(dashboardGeometry().left());
}

float frmPanel::Top() const
{
    return toTwips(dashboardGeometry().top());
}

float frmPanel::Width() const
{
    return toTwips(dashboardGeometry().width());
}

float frmPanel::Height() const
{
    return toTwips(dashboardGeometry().height());
}

float frmPanel::ScaleWidth() const
{
    return toTwips(width() - contentsMargins().left() - contentsMargins().right());
}

float frmPanel::ScaleHeight() const
{
    return toTwips(height() - contentsMargins().top() - contentsMargins().bottom());
}

void frmPanel::setPlace(float left, float top)
{
    move(QPoint(toPixels(left), toPixels(top)) - scrolledBy());
    rememberGeometry();
}

void frmPanel::setWindowSize(float width, float height)
{
    // A minimized panel is given its view when it is restored, in the size that it had.
    if (!isMinimized())
        resize(toPixels(width), toPixels(height));
}

void frmPanel::rememberGeometry()
{
    if (!isMinimized())
        m_restored = geometry().translated(scrolledBy());
}

void frmPanel::Unload()
{
    m_unloading = true;
    if (QMdiArea* area = mdiArea())
        area->removeSubWindow(this);
    hide();
    deleteLater();
}

void frmPanel::resizeEvent(QResizeEvent* event)
{
    QMdiSubWindow::resizeEvent(event);
    Form_Resize();
    rememberGeometry();
}

void frmPanel::moveEvent(QMoveEvent* event)
{
    QMdiSubWindow::moveEvent(event);
    if (const QPoint kept = withinReach(pos() + scrolledBy()) - scrolledBy(); kept != pos() && !isMinimized()) {
        move(kept);
        return;
    }
    // Scrolling the dashboard moves its windows too; their place on it stays.
    if (isVisible() && !isMinimized() && m_restored.isValid() &&
        geometry().translated(scrolledBy()).topLeft() != m_restored.topLeft())
        markDirty();
    rememberGeometry();
}

void frmPanel::closeEvent(QCloseEvent* event)
{
    if (m_unloading)
        QMdiSubWindow::closeEvent(event);
    else
        event->ignore();
}

void frmPanel::contextMenuEvent(QContextMenuEvent* event)
{
    // On the title or border; the client's own requests are seen by clientEvent.
    Q_EMIT menuRequested(event->globalPos());
}

bool frmPanel::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_client && clientEvent(*event))
        return true;
    return QMdiSubWindow::eventFilter(watched, event);
}

void frmPanel::mousePressEvent(QMouseEvent* event)
{
    m_pressed = isMinimized() ? QRect() : geometry();
    QMdiSubWindow::mousePressEvent(event);
}

void frmPanel::mouseMoveEvent(QMouseEvent* event)
{
    QMdiSubWindow::mouseMoveEvent(event);
    if (m_editMode() && event->buttons() == Qt::LeftButton && !event->modifiers().testFlag(Qt::AltModifier))
        snapToNeighbours();
}

void frmPanel::snapToNeighbours()
{
    const QMdiArea* area = mdiArea();
    if (!area || isMinimized() || !m_pressed.isValid() || geometry() == m_pressed)
        return;
    QVector<QRect> neighbours;
    for (const QMdiSubWindow* window : area->subWindowList()) {
        if (window != this && window->isVisible() && !window->isMinimized())
            neighbours.append(window->geometry());
    }
    const int distance = qRound(snapInches * logicalDpiX());
    setGeometry(snapped(geometry(), m_pressed, minimumSizeHint().expandedTo(minimumSize()),
                        snapLines(area->viewport()->rect(), neighbours), distance));
}

bool frmPanel::scrollBy(QWheelEvent& wheel)
{
    const bool across =
        wheel.modifiers().testFlag(Qt::ShiftModifier) || qAbs(wheel.angleDelta().x()) > qAbs(wheel.angleDelta().y());
    QScrollBar* bar = across || !VScroll1->isVisible() ? HScroll1 : VScroll1;
    return bar->isVisible() && QCoreApplication::sendEvent(bar, &wheel);
}

bool frmPanel::scrollBy(const QKeyEvent& key)
{
    QScrollBar* bar = VScroll1;
    QAbstractSlider::SliderAction action = QAbstractSlider::SliderNoAction;
    switch (key.key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
        bar = HScroll1;
        action =
            key.key() == Qt::Key_Left ? QAbstractSlider::SliderSingleStepSub : QAbstractSlider::SliderSingleStepAdd;
        break;
    case Qt::Key_Up:
        action = QAbstractSlider::SliderSingleStepSub;
        break;
    case Qt::Key_Down:
        action = QAbstractSlider::SliderSingleStepAdd;
        break;
    case Qt::Key_PageUp:
        action = QAbstractSlider::SliderPageStepSub;
        break;
    case Qt::Key_PageDown:
        action = QAbstractSlider::SliderPageStepAdd;
        break;
    default:
        return false;
    }
    if (!bar->isVisible())
        return false;
    bar->triggerAction(action);
    return true;
}

bool frmPanel::clientEvent(QEvent& event)
{
    // The picture and its frame leave mouse events to the client, so that all of them come by here once.
    switch (event.type()) {
    case QEvent::MouseButtonPress: {
        const auto& press = static_cast<const QMouseEvent&>(event);
        if (press.button() == Qt::LeftButton)
            Panel_ToggleMark();
        if (press.button() != Qt::RightButton)
            return false;
        m_client->setFocus(Qt::MouseFocusReason);
        Q_EMIT menuRequested(press.globalPosition().toPoint());
        return true;
    }
    case QEvent::MouseButtonDblClick:
        if (!m_editMode())
            Q_EMIT doubleClicked();
        return false;
    case QEvent::Wheel:
        return scrollBy(static_cast<QWheelEvent&>(event));
    case QEvent::KeyPress:
        // In layout mode the keys move panels, which the dashboard sees to.
        return !m_editMode() && scrollBy(static_cast<const QKeyEvent&>(event));
    case QEvent::ContextMenu: {
        const auto& request = static_cast<const QContextMenuEvent&>(event);
        if (request.reason() == QContextMenuEvent::Keyboard)
            Q_EMIT menuRequested(m_client->mapToGlobal(QPoint(menuPlace, menuPlace)));
        return true;
    }
    default:
        return false;
    }
}

} // namespace lumivane
