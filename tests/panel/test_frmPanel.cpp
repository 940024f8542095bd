#include "panel/frmPanel.h"

#include "panel/ProjectFixture.h"
#include "panel/Twips.h"
#include "repository/clsPanelSource.h"
#include "repository/clsWorkspace.h"
#include "repository/clsWorkspacePanel.h"
#include "services/modMain.h"

#include <QCoreApplication>
#include <QLabel>
#include <QMdiArea>
#include <QScrollBar>
#include <QWheelEvent>
#include <QtTest/QTest>

using namespace lumivane;
using namespace Qt::StringLiterals;

namespace {

class PanelWindow : public test::ProjectFixture
{
protected:
    void SetUp() override
    {
        m_path = addBook(u"sales.xlsx"_s);
        m_record = addPanel(m_path, u"Sales"_s);
        m_area.setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
        m_area.setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
        m_area.resize(800, 600);
        m_area.show();
    }

    /// A version of the workbook that the next pass has to bring in.
    void bringNewVersion(int secondsFromNow = 3600)
    {
        touch(m_path, secondsFromNow);
        gSources->ClearFlags();
    }

    /// Loads and shows the panel as the dashboard does.
    frmPanel& open(const QString& viewType, QSize window = {})
    {
        m_record->ViewType = viewType;
        m_record->pWidth = static_cast<qint16>(window.width() * twipsPerPixel);
        m_record->pHeight = static_cast<qint16>(window.height() * twipsPerPixel);
        saveDashboard(u"Morning"_s);
        m_panel = new frmPanel([] { return false; });
        m_panel->Index = 1;
        m_area.addSubWindow(m_panel);
        m_panel->setPlace(m_record->pLeft, m_record->pTop);
        EXPECT_TRUE(m_panel->Panel_Load(m_host, false));
        m_panel->IsLoad = true;
        m_panel->show();
        m_panel->IsLoad = false;
        return *m_panel;
    }

    QSize clientSize() const { return QSize(toPixels(m_panel->ScaleWidth()), toPixels(m_panel->ScaleHeight())); }
    QWidget* pictureBox() const { return part(u"picPanel"_s); }
    QWidget* part(const QString& name) const { return m_panel->findChild<QWidget*>(name); }
    QScrollBar* bar(const QString& name) const { return m_panel->findChild<QScrollBar*>(name); }

    QString m_path;
    std::shared_ptr<clsWorkspacePanel> m_record;
    XLInstance m_host = worker();
    QMdiArea m_area;
    frmPanel* m_panel = nullptr;
};

TEST_F(PanelWindow, CropScrollsALargePicture)
{
    m_record->PicRange = u"A1:Z60``"_s;
    open(u"C"_s, QSize(400, 300));
    QScrollBar *down = bar(u"VScroll1"_s), *across = bar(u"HScroll1"_s);
    ASSERT_TRUE(down->isVisible() && across->isVisible());
    EXPECT_EQ(down->geometry().right() + 1, clientSize().width());
    EXPECT_EQ(across->geometry().bottom() + 1, clientSize().height());
    down->setValue(3000);
    across->setValue(1500);
    EXPECT_EQ(pictureBox()->pos(), QPoint(-100, -200));
    m_panel->Panel_Crop();
    EXPECT_EQ(pictureBox()->pos(), QPoint(0, 0)) << "the view starts at the top left again";
    EXPECT_EQ(down->value(), 0);
    QWheelEvent wheel({5, 5}, {50, 50}, {}, {0, -120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(part(u"client"_s), &wheel);
    EXPECT_LT(pictureBox()->y(), 0);
    EXPECT_EQ(pictureBox()->x(), 0);
    QTest::keyClick(part(u"client"_s), Qt::Key_Right);
    EXPECT_LT(pictureBox()->x(), 0);
}

TEST_F(PanelWindow, ZoomStretchesInBothDirections)
{
    frmPanel& panel = open(u"Z"_s, QSize(400, 300));
    EXPECT_EQ(pictureBox()->geometry(), QRect(QPoint(0, 0), clientSize()));
    const QImage shown = pictureBox()->grab().toImage();
    // Each of the six cells has a colour of its own; the last one ends at the last pixel.
    EXPECT_EQ(shown.pixelColor(shown.width() - 2, shown.height() - 2),
              panel.picture().image.pixelColor(panel.picture().image.rect().bottomRight()));
    panel.resize(300, 200);
    EXPECT_EQ(pictureBox()->geometry(), QRect(QPoint(0, 0), clientSize()));
    EXPECT_TRUE(panel.IsDirty);
}

TEST_F(PanelWindow, ChangesDoNotCountAfterAQuietReload)
{
    frmPanel& panel = open(u"Z"_s, QSize(400, 300));
    EXPECT_FALSE(panel.Panel_Reload(m_host));
    EXPECT_TRUE(panel.IsLoad) << "a quiet reload leaves it set";
    panel.resize(350, 250);
    EXPECT_FALSE(panel.IsDirty);
    panel.IsDirty = true;
    bringNewVersion();
    EXPECT_TRUE(panel.Panel_Reload(m_host));
    EXPECT_TRUE(panel.IsDirty && !panel.IsLoad) << "a reload keeps IsDirty";
    EXPECT_TRUE(panel.Panel_Load(m_host, true));
    EXPECT_FALSE(panel.IsDirty) << "a load clears it";
}

TEST_F(PanelWindow, MovingCountsAsAChangeAndScrollingTheDashboardDoesNot)
{
    frmPanel& panel = open(u"A"_s);
    auto* far = m_area.addSubWindow(new QWidget);
    far->setGeometry(2000, 2000, 100, 100);
    far->show();
    QCoreApplication::processEvents();
    const QPointF place(panel.Left(), panel.Top());
    m_area.horizontalScrollBar()->setValue(m_area.horizontalScrollBar()->maximum());
    m_area.verticalScrollBar()->setValue(m_area.verticalScrollBar()->maximum());
    ASSERT_NE(panel.pos(), QPoint(10, 20)) << "the dashboard did not scroll";
    EXPECT_EQ(QPointF(panel.Left(), panel.Top()), place);
    EXPECT_FALSE(panel.IsDirty);
    panel.move(panel.pos() + QPoint(4, 0));
    EXPECT_TRUE(panel.IsDirty);
    EXPECT_EQ(panel.Left(), place.x() + 60);
}

TEST_F(PanelWindow, AMinimizedPanelKeepsItsPlaceAndSize)
{
    frmPanel& panel = open(u"Z"_s, QSize(400, 300));
    panel.showMinimized();
    EXPECT_EQ(TwipsSize({panel.Width(), panel.Height()}), (TwipsSize{6000, 4500}));
    EXPECT_EQ(panel.Left(), 150);
}

TEST_F(PanelWindow, CaptionIsCentredWithBlanksUnlessLeftIsAskedFor)
{
    frmPanel& panel = open(u"Z"_s, QSize(400, 300));
    EXPECT_EQ(panel.windowTitle(), u"Sales"_s);
    gCaptionAlignment = u"left"_s; // only the exact word counts
    panel.SetCaption();
    const QString centred = panel.windowTitle();
    EXPECT_EQ(centred.trimmed(), u"Sales"_s);
    EXPECT_GT(centred.size(), 20);
    panel.resize(600, 300);
    EXPECT_GT(panel.windowTitle().size(), centred.size()) << "it follows the width";
}

TEST_F(PanelWindow, CaptionSaysThePicturesDate)
{
    gPanelTimeStamp = true;
    frmPanel& panel = open(u"A"_s);
    const QString title = panel.windowTitle();
    EXPECT_TRUE(title.startsWith(u"Sales   ("_s)) << title;
    m_library.books.clear();
    bringNewVersion(40 * 86400);
    EXPECT_FALSE(panel.Panel_Reload(m_host));
    panel.SetCaption();
    EXPECT_EQ(panel.windowTitle(), title) << "a picture that is not up to date keeps its own time";
}

TEST_F(PanelWindow, TheUserCannotCloseIt)
{
    frmPanel& panel = open(u"A"_s);
    panel.close();
    EXPECT_TRUE(panel.isVisible());
    panel.Unload();
    EXPECT_TRUE(m_area.subWindowList().isEmpty()) << "gone at once for every walk over the panels";
}

TEST_F(PanelWindow, AFailedReloadSaysSoBelowThePictureUntilTheNextOneSucceeds)
{
    int later = 0;
    for (const QString& view : {u"A"_s, u"C"_s, u"Z"_s}) {
        SCOPED_TRACE(view);
        frmPanel& panel = open(view, QSize(400, 300));
        const QSize before = panel.size();
        const auto books = std::exchange(m_library.books, {});
        bringNewVersion(later += 3600);
        EXPECT_FALSE(panel.Panel_Reload(m_host));
        const auto* notice = panel.findChild<QLabel*>(u"noticeLabel"_s);
        EXPECT_TRUE(notice->isVisible());
        EXPECT_TRUE(notice->text().startsWith(u"Not up"_s)) << notice->text();
        EXPECT_TRUE(panel.toolTip().contains(m_path));
        EXPECT_FALSE(notice->geometry().intersects(part(u"picFrame"_s)->geometry()));
        EXPECT_EQ(notice->geometry().bottom() + 1, clientSize().height());
        EXPECT_EQ(panel.height(), before.height() + (view == u"A" ? notice->height() : 0));
        EXPECT_FALSE(panel.IsDirty);
        m_library.books = books;
        gSources->ClearFlags();
        EXPECT_TRUE(panel.Panel_Reload(m_host));
        EXPECT_FALSE(notice->isVisible());
        EXPECT_EQ(panel.size(), before);
        EXPECT_FALSE(panel.IsDirty);
        panel.Unload();
    }
}

TEST_F(PanelWindow, WithoutAPictureTheReasonHasThePanelToItself)
{
    frmPanel panel([] { return false; });
    panel.Index = 1;
    m_record->pWidth = m_record->pHeight = 3000;
    m_library.books.clear();
    EXPECT_FALSE(panel.Panel_Load(m_host, false));
    panel.show();
    EXPECT_EQ(panel.size(), QSize(200, 200));
    EXPECT_EQ(panel.findChild<QLabel*>(u"noticeLabel"_s)->size(), panel.widget()->size());
}

TEST_F(PanelWindow, AZoomedPictureIsDrawnAnewAfterAResizeAndInTheNextPass)
{
    frmPanel& panel = open(u"Z"_s, QSize(140, 100));
    EXPECT_EQ(panel.picture().image.devicePixelRatio(), 2);
    bool outgrown = false;
    QObject::connect(&panel, &frmPanel::pictureOutgrown, [&] { outgrown = true; });
    panel.resize(400, 220);
    ASSERT_TRUE(QTest::qWaitFor([&] { return outgrown; }));
    panel.IsDirty = false;
    EXPECT_FALSE(panel.Panel_Reload(m_host)) << "no new version";
    EXPECT_GT(panel.picture().image.devicePixelRatio(), 2);
    EXPECT_EQ(panel.size(), QSize(400, 220)) << "the size is the user's, although another one is stored";
    EXPECT_FALSE(panel.IsDirty);
}

TEST_F(PanelWindow, RightButtonAsksForTheMenuWhereverItGoesDown)
{
    frmPanel& panel = open(u"A"_s);
    QList<QPoint> menus;
    QObject::connect(&panel, &frmPanel::menuRequested, [&](const QPoint& at) { menus.append(at); });
    for (const QString& name : {u"picPanel"_s, u"picFrame"_s, u"client"_s}) {
        QTest::mousePress(part(name), Qt::RightButton, {}, {2, 2});
        EXPECT_EQ(menus.value(0), part(name)->mapToGlobal(QPoint(2, 2))) << name;
        menus.clear();
    }
}

} // namespace
