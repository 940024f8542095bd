#include "panel/frmPanel.h"

#include "controls/PanelStyle.h"
#include "panel/PanelCaption.h"
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
#include <QLabel>
#include <QMdiArea>
#include <QMouseEvent>
#include <QScrollBar>
#include <QSignalBlocker>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

constexpr int noticePadding = 6;
constexpr double snapInches = 6 / 96.0; // of a mouse that comes near a line

QRect pixelRect(const TwipsRect& rect)
{
    return {toPixels(rect.left), toPixels(rect.top), toPixels(rect.width), toPixels(rect.height)};
}

qint16 captionWidth(const QString& text)
{
    return toInt16(toTwips(QFontMetricsF(PanelStyle::captionFont()).horizontalAdvance(text)));
}

} // namespace

frmPanel::frmPanel(std::function<bool()> editMode, QWidget* parent)
    : QMdiSubWindow(parent, Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowMinimizeButtonHint),
      m_editMode(std::move(editMode))
{
    setObjectName(u"frmPanel"_s);
    setAttribute(Qt::WA_DeleteOnClose, false);
    setSystemMenu(nullptr); // it offers to close the window
    buildParts();
    m_pipeline.applyView = [this](clsWorkspacePanel& Panel) { Panel_ApplyView(Panel); };
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

    m_notice = new QLabel(m_client);
    m_notice->setObjectName(u"noticeLabel"_s);
    m_notice->setTextFormat(Qt::PlainText);
    m_notice->setStyleSheet(
        u"QLabel { background: #fff6dc; color: #5c4a12; border-top: 1px solid #e7d49a; padding: 3px 6px; }"_s);
    m_notice->hide();

    m_client->installEventFilter(this);
    setWidget(m_client);
}

bool frmPanel::Panel_Load(XLInstance& XLInst, bool Refresh)
{
    IsLoad = true;
    IsDirty = false;
    m_pipeline.setScreenScale(devicePixelRatioF());
    const bool loaded = m_pipeline.Panel_Load(XLInst, record(), Refresh);
    if (loaded)
        IsLoad = false;
    showNotice();
    return loaded;
}

bool frmPanel::Panel_Reload(XLInstance& XLInst)
{
    IsLoad = true;
    m_pipeline.setScreenScale(devicePixelRatioF());
    keepWindowSize();
    const bool drawn = m_pipeline.Panel_Reload(XLInst, record());
    if (drawn)
        IsLoad = false;
    showNotice();
    return drawn;
}

void frmPanel::keepWindowSize()
{
    // Picture panels are loaded anew in every pass, which must not undo what the user has made of their windows.
    const auto panel = record();
    if (!panel || panel->ContentType != u"P" || !canBeKept({Width(), Height()}))
        return;
    panel->pWidth = toInt16(Width());
    panel->pHeight = toInt16(Height());
}

bool frmPanel::Panel_Paste()
{
    m_pipeline.setScreenScale(devicePixelRatioF());
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
    const TwipsSize wanted = autosizeWindow(measures(), m_pipeline.picTemp.size());
    if (!canBeKept(wanted))
        throw RuntimeError(RuntimeError::Overflow,
                           u"The picture is too large for a panel of its size. Please use another view."_s);
    setView(u"A"_s);
    setWindowSize(wanted.width, wanted.height);
    layOut(autosizeLayout(measures(), m_pipeline.picTemp.size()), false);
    if (const auto panel = record()) {
        panel->pWidth = toInt16(Width());
        panel->pHeight = toInt16(Height());
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
    if (gPanelTimeStamp && source)
        stamp = source->NewestFileTime();
    QString text = panelCaptionText(shownName(panel->Caption), mark, stamp, Clock::now());
    setAccessibleName(text);
    // A text wider than the panel is not centred, and may be wider than a number of 16 bits.
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
        if (panel->ViewType == u"A")
            Panel_Autosize();
        else if (panel->ViewType == u"C")
            Panel_Crop();
        else if (panel->ViewType == u"Z")
            Panel_ZoomToFit();
        markDirty();
    } catch (const RuntimeError& error) {
        // No box: one for each step of the mouse would come.
        LogError(u"frmPanel"_s, u"Form_Resize"_s, error.number(), error.description(), false);
        m_pipeline.problem = u"This size cannot be kept: %1"_s.arg(error.description());
    }
    showNotice();
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
}

PanelMeasures frmPanel::measures() const
{
    PanelMeasures measures;
    measures.window = {toTwips(width()), toTwips(height())};
    measures.client = {ScaleWidth(), ScaleHeight()};
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
    showNotice();
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
    m_notice->setVisible(!text.isEmpty());
    // Names from workbooks stand in it; a tool tip would take their signs for markup.
    setToolTip(text.isEmpty() ? QString() : u"<p>"_s + text.toHtmlEscaped() + u"</p>"_s);
    setProperty(PanelStyle::noticeProperty, !text.isEmpty());
    update();
    m_notice->setAccessibleName(text);
    if (text.isEmpty())
        return;
    const int clientWidth = toPixels(ScaleWidth());
    m_notice->setText(m_notice->fontMetrics().elidedText(text, Qt::ElideRight, clientWidth - 2 * noticePadding));
    const int noticeHeight = m_notice->sizeHint().height();
    const int barHeight = HScroll1->isVisibleTo(m_client) ? HScroll1->height() : 0;
    m_notice->setGeometry(0, toPixels(ScaleHeight()) - barHeight - noticeHeight, clientWidth, noticeHeight);
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

void frmPanel::mouseReleaseEvent(QMouseEvent* event)
{
    QMdiSubWindow::mouseReleaseEvent(event);
    if (m_editMode() && m_pressed.isValid() && geometry() != m_pressed && !isMinimized())
        Q_EMIT placed();
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
            Q_EMIT menuRequested(m_client->mapToGlobal(QPoint(noticePadding, noticePadding)));
        return true;
    }
    default:
        return false;
    }
}

} // namespace lumivane
