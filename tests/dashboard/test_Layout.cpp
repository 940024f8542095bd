#include "dashboard/DashboardArea.h"
#include "dashboard/DashboardFixture.h"
#include "panel/Twips.h"
#include "panel/frmPanel.h"
#include "repository/clsWorkspace.h"
#include "repository/clsWorkspacePanel.h"

#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QMouseEvent>
#include <QPointer>
#include <QScrollBar>
#include <QtTest/QTest>

using namespace lumivane;
using namespace Qt::StringLiterals;
using Command = void (frmWorkspace::*)();

namespace {

/// A dashboard of three panels in crop view, places and sizes in pixels:
///   A   40,  30   300 x 200
///   B  400, 100   240 x 160
///   C  120, 300   200 x 120
class Layout : public test::DashboardFixture
{
protected:
    void SetUp() override
    {
        storeDashboard(u"Other"_s, {u"X"_s});
        storeDashboard(u"Morning"_s, {u"A"_s, u"B"_s, u"C"_s});
        start();
        placeAll();
    }
    void placeAll()
    {
        place(u"A"_s, QRect(40, 30, 300, 200));
        place(u"B"_s, QRect(400, 100, 240, 160));
        place(u"C"_s, QRect(120, 300, 200, 120));
        window().StorePanelPositions();
        window().ClearDirty();
    }

    clsWorkspacePanel& record(const QString& caption) { return *gWorkspace->Panels(panel(caption).Index); }
    DashboardArea& area() { return *window().findChild<DashboardArea*>(); }
    const DashboardActions& menus() { return window().menus(); }

    void place(const QString& caption, const QRect& rect)
    {
        panel(caption).Panel_Crop();
        panel(caption).setGeometry(rect);
    }

    /// Starts the mode with a base and marks others as a click does.
    void layOut(const QString& base, const QStringList& marked)
    {
        area().setActiveSubWindow(&panel(base));
        menus().mnuWorkspaceLayout->trigger();
        for (const QString& caption : marked)
            click(caption);
    }

    QWidget& client(const QString& caption) { return *panel(caption).findChild<QWidget*>(u"client"_s); }
    void click(const QString& caption) { QTest::mouseClick(&client(caption), Qt::LeftButton, {}, QPoint(9, 9)); }

    bool inMode(bool on)
    {
        const auto is = [on](const QAction* action) { return action->isChecked() == on; };
        return window().EditMode == on && is(menus().mnuWorkspaceLayout) && is(menus().mnuPanelLayout) &&
               is(menus().mnuMultiLayout) && menus().mnuPanel->menuAction()->isVisible() != on &&
               menus().mnuMultiPanel->menuAction()->isVisible() == on &&
               menus().mnuPanel->title().contains(u'&') != on && menus().mnuMultiPanel->title().contains(u'&') == on &&
               menus().mnuPanelDelete->isEnabled() != on &&
               window().findChild<QLabel*>(u"layoutHintLabel"_s)->isVisible() == on;
    }
};

TEST_F(Layout, EachOfTheThreeEntriesTurnsTheModeOnAndOff)
{
    EXPECT_TRUE(inMode(false));
    for (QAction* entry : {menus().mnuWorkspaceLayout, menus().mnuPanelLayout, menus().mnuMultiLayout}) {
        entry->trigger();
        EXPECT_TRUE(inMode(true)) << entry->objectName().toStdString();
        EXPECT_EQ(menus().mnuMultiPanel->title().remove(u'&'), u"Panel"_s);
        entry->trigger();
        EXPECT_TRUE(inMode(false)) << entry->objectName().toStdString();
    }
}

TEST_F(Layout, WithoutAPanelTheModeDoesNotStart)
{
    window().mnuWorkspaceNew_Click();
    menus().mnuWorkspaceLayout->trigger();
    EXPECT_TRUE(inMode(false));
}

TEST_F(Layout, CaptionsSayWhichPanelsAreMarkedByMouseOrKeyboard)
{
    layOut(u"A"_s, {u"B"_s});
    area().setActiveSubWindow(&panel(u"C"_s));
    QTest::keyClick(&client(u"C"_s), Qt::Key_Space);
    EXPECT_EQ(panelCaptions(), (QStringList{u"**C"_s, u"**B"_s, u"*A"_s}));
    QApplication::setActiveWindow(&window());
    QTest::keyClick(&window(), Qt::Key_Escape);
    EXPECT_EQ(panelCaptions(), (QStringList{u"C"_s, u"B"_s, u"A"_s}));
    EXPECT_TRUE(inMode(false));
}

TEST_F(Layout, MarksAreSeenAsFrames)
{
    const auto edge = [this](const QString& caption) {
        frmPanel& shown = panel(caption);
        return shown.grab().toImage().pixelColor(2, shown.height() / 2);
    };
    const QColor plain = edge(u"C"_s);
    layOut(u"A"_s, {u"B"_s});
    EXPECT_EQ(edge(u"C"_s), plain);
    EXPECT_NE(edge(u"A"_s), plain);
    EXPECT_NE(edge(u"B"_s), plain);
    EXPECT_NE(edge(u"A"_s), edge(u"B"_s));
}

// ---- alignment and size ----

TEST_F(Layout, MarkedPanelsFollowTheBase)
{
    const struct
    {
        Command command;
        QRect b, c; ///< where they end; A is the base
    } rows[] = {
        {&frmWorkspace::mnuAlignLeft_Click, {40, 100, 240, 160}, {40, 300, 200, 120}},
        {&frmWorkspace::mnuAlignRight_Click, {100, 100, 240, 160}, {140, 300, 200, 120}},
        {&frmWorkspace::mnuAlignTop_Click, {400, 30, 240, 160}, {120, 30, 200, 120}},
        {&frmWorkspace::mnuAlignBottom_Click, {400, 70, 240, 160}, {120, 110, 200, 120}},
        {&frmWorkspace::mnuSameWidth_Click, {400, 100, 300, 160}, {120, 300, 300, 120}},
        {&frmWorkspace::mnuSameHeight_Click, {400, 100, 240, 200}, {120, 300, 200, 200}},
        {&frmWorkspace::mnuSameBoth_Click, {400, 100, 300, 200}, {120, 300, 300, 200}},
    };
    layOut(u"A"_s, {u"B"_s, u"C"_s});
    area().setActiveSubWindow(&panel(u"C"_s)); // the base stays who it was
    for (const auto& row : rows) {
        placeAll();
        (window().*row.command)();
        EXPECT_EQ(panel(u"A"_s).geometry(), QRect(40, 30, 300, 200)) << "the base never moves";
        EXPECT_EQ(panel(u"B"_s).geometry(), row.b);
        EXPECT_EQ(panel(u"C"_s).geometry(), row.c);
        EXPECT_TRUE(window().IsModified);
        EXPECT_EQ(record(u"B"_s).pLeft, row.b.x() * twipsPerPixel) << "a save does not look at the windows";
        EXPECT_EQ(record(u"B"_s).pWidth, row.b.width() * twipsPerPixel);
    }
}

TEST_F(Layout, PanelsInOtherViewsBecomeCroppedOnesWhenSized)
{
    panel(u"B"_s).Panel_Autosize();
    panel(u"C"_s).Panel_ZoomToFit();
    layOut(u"A"_s, {u"B"_s, u"C"_s});
    window().mnuAlignLeft_Click();
    EXPECT_EQ(record(u"B"_s).ViewType + record(u"C"_s).ViewType, u"AZ"_s);
    window().mnuSameBoth_Click();
    for (const QString& caption : {u"B"_s, u"C"_s}) {
        EXPECT_EQ(record(caption).ViewType, u"C"_s);
        EXPECT_EQ(panel(caption).size(), QSize(300, 200)) << caption.toStdString();
    }
}

// ---- keys and mouse ----

TEST_F(Layout, ArrowKeysMoveTheMarkedPanels)
{
    QWidget* keyboard = &client(u"A"_s);
    QTest::keyClick(keyboard, Qt::Key_Right);
    EXPECT_EQ(panel(u"A"_s).pos(), QPoint(40, 30)) << "only in layout mode";
    layOut(u"A"_s, {u"B"_s});
    QTest::keyClick(keyboard, Qt::Key_Right);
    QTest::keyClick(keyboard, Qt::Key_Down, Qt::ShiftModifier | Qt::KeypadModifier);
    QTest::keyClick(keyboard, Qt::Key_Left, Qt::ControlModifier);
    EXPECT_EQ(panel(u"A"_s).pos(), QPoint(41, 40));
    EXPECT_EQ(panel(u"B"_s).pos(), QPoint(401, 110));
    EXPECT_EQ(panel(u"C"_s).pos(), QPoint(120, 300));
    EXPECT_EQ(record(u"B"_s).pLeft, 401 * twipsPerPixel);
    EXPECT_TRUE(window().IsModified);
}

TEST_F(Layout, EdgesAreDrawnToNeighboursInLayoutModeUnlessAltIsHeld)
{
    const auto drag = [this](const QPoint& way, Qt::KeyboardModifiers modifiers) {
        frmPanel& dragged = panel(u"C"_s);
        const QPointF begin = dragged.mapToGlobal(QPointF(dragged.width() / 2.0, 10));
        const auto send = [&](QEvent::Type type, const QPointF& global, Qt::MouseButton button, Qt::MouseButtons held) {
            QMouseEvent event(type, dragged.mapFromGlobal(global), global, button, held, modifiers);
            QCoreApplication::sendEvent(&dragged, &event);
        };
        send(QEvent::MouseMove, begin, Qt::NoButton, Qt::NoButton);
        send(QEvent::MouseButtonPress, begin, Qt::LeftButton, Qt::LeftButton);
        send(QEvent::MouseMove, begin + way, Qt::NoButton, Qt::LeftButton);
        send(QEvent::MouseButtonRelease, begin + way, Qt::LeftButton, Qt::NoButton);
        EXPECT_TRUE(window().IsModified || window().AnyPanelDirty()) << "not asked for at the close";
        const QPoint end = dragged.pos();
        placeAll();
        return end;
    };
    // To 4 pixels off A's left edge.
    window().Workspace_CheckUpdates();
    EXPECT_FALSE(window().IsModified || window().AnyPanelDirty());
    EXPECT_EQ(drag(QPoint(-76, 33), Qt::NoModifier), QPoint(44, 333));
    layOut(u"A"_s, {});
    EXPECT_EQ(drag(QPoint(-76, 33), Qt::AltModifier), QPoint(44, 333));
    EXPECT_EQ(drag(QPoint(-76, 33), Qt::NoModifier), QPoint(40, 333));
}

TEST_F(Layout, PanelsStopWhereTheyCanStillBeStored)
{
    panel(u"A"_s).setGeometry(3000, -5000, 2500, 100);
    EXPECT_EQ(panel(u"A"_s).geometry(), QRect(2184, -2184, 2184, 100));
    window().StorePanelPositions();
    EXPECT_EQ(record(u"A"_s).pLeft, 2184 * twipsPerPixel);
}

TEST_F(Layout, ARightClickOnTheScrolledGroundIsAPlaceOnTheDashboard)
{
    panel(u"B"_s).move(1500, 100);
    area().horizontalScrollBar()->setValue(300);
    ASSERT_EQ(area().horizontalScrollBar()->value(), 300);
    Q_EMIT area().menuRequested(QPoint(40, 30), QPoint(40, 30));
    menus().mnuWorkspace->hide();
    EXPECT_EQ(window().ClickX, 340 * twipsPerPixel);
}

// ---- the end of the mode ----

TEST_F(Layout, AnotherDashboardEndsTheMode)
{
    layOut(u"A"_s, {u"B"_s});
    list().setCurrentText(u"Other"_s);
    EXPECT_EQ(panelCaptions(), QStringList{u"X"_s});
    EXPECT_TRUE(inMode(false));

    menus().mnuWorkspaceLayout->trigger();
    ASSERT_TRUE(inMode(true));
    window().mnuWorkspaceNew_Click();
    EXPECT_TRUE(inMode(false));
}

TEST_F(Layout, ARefreshKeepsTheMarksOnTheNewWindows)
{
    layOut(u"A"_s, {u"C"_s});
    const QPointer<frmPanel> old = &panel(u"A"_s);
    window().mnuWorkspaceRefresh_Click();
    EXPECT_NE(&panel(u"A"_s), old);
    EXPECT_EQ(panelCaptions(), (QStringList{u"**C"_s, u"B"_s, u"*A"_s}));
    window().mnuAlignLeft_Click();
    EXPECT_EQ(panel(u"C"_s).x(), panel(u"A"_s).x());
    EXPECT_TRUE(inMode(true));
}

} // namespace
