#include "assist/frmCaption.h"
#include "dashboard/DashboardFixture.h"
#include "host/Host.h"
#include "panel/ShownDialog.h"
#include "panel/frmPanel.h"
#include "repository/Database.h"
#include "repository/clsPanelSource.h"
#include "repository/clsWorkspace.h"
#include "repository/clsWorkspacePanel.h"

#include <QFile>
#include <QLineEdit>
#include <QMdiArea>
#include <QMenu>
#include <QtTest/QTest>

namespace lumivane::test {

using namespace Qt::StringLiterals;

namespace {

class PanelCommands : public DashboardFixture
{
protected:
    frmPanel& activate(const QString& caption)
    {
        for (frmPanel* panel : window().panelWindows()) {
            if (panel->windowTitle() == caption) {
                panel->mdiArea()->setActiveSubWindow(panel);
                return *panel;
            }
        }
        throw std::runtime_error("no panel has the caption " + caption.toStdString());
    }
    bool panelMenuEnabled() { return window().menus().mnuPanel->menuAction()->isEnabled(); }

    /// A spreadsheet for showing workbooks to the user, in place of the windows that the program has for it.
    std::shared_ptr<PlainApplication> showWorkbooksIn()
    {
        const auto shown = std::make_shared<PlainApplication>(m_library);
        HostFactory factory = hostFactory();
        factory.visibleInstance = [shown] { return shown; };
        setHostFactory(factory);
        return shown;
    }
    /// Workbook and sheet in front of the user; empty when none is shown.
    QString front(PlainApplication& shown) const
    {
        const auto workbook = shown.ActiveWorkbook();
        return workbook ? QString(workbook->Name() + u'!' + shown.ActiveSheet()->Name()) : QString();
    }
    static void doubleClick(frmPanel& panel)
    {
        QTest::mouseDClick(&control<QWidget>(panel, u"picPanel"_s), Qt::LeftButton);
    }
    QString pictureFile(const QString& name, const QSize& size = QSize(90, 60)) const
    {
        QImage image(size, QImage::Format_RGB32);
        image.fill(QColor(20, 130, 90));
        EXPECT_TRUE(image.save(programFile(name)));
        return programFile(name);
    }
    void loadPicture(const QString& file)
    {
        m_user.files = {file};
        window().menus().mnuPanelPicture->trigger();
    }
    QString storedPanel(const QString& column) const { return stored(u"SELECT * FROM LvnSavedPanel"_s, column); }
};

struct LaunchRow
{
    const char* name;
    const char* contentType;
    const char* sheet;
    bool layoutMode;
    bool shown;
};

void PrintTo(const LaunchRow& row, std::ostream* out)
{
    *out << row.name;
}

class LaunchByDoubleClick : public PanelCommands, public testing::WithParamInterface<LaunchRow>
{
};

TEST_P(LaunchByDoubleClick, ShowsTheWorkbookAtTheSheetOfThePanel)
{
    storeDashboard(u"Morning"_s, {u"One"_s});
    start();
    const auto shown = showWorkbooksIn();
    const auto record = gWorkspace->Panels(1);
    record->ContentType = QString::fromLatin1(GetParam().contentType);
    record->SheetName = QString::fromLatin1(GetParam().sheet);
    window().EditMode = GetParam().layoutMode;
    doubleClick(activate(u"One"_s));
    window().EditMode = false;
    EXPECT_EQ(front(*shown), GetParam().shown ? u"Morning.xlsx!Data"_s : QString());
    EXPECT_FALSE(window().IsBusy);
    EXPECT_TRUE(m_user.shown.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(OfPanels, LaunchByDoubleClick,
                         testing::Values(LaunchRow{"range", "S", "Data", false, true},
                                         LaunchRow{"chart", "C", "Data", false, true},
                                         LaunchRow{"panes", "M", "Data", false, true},
                                         LaunchRow{"picture", "P", "Data", false, false},
                                         LaunchRow{"without_a_sheet", "S", "", false, false},
                                         LaunchRow{"in_layout_mode", "S", "Data", true, false}),
                         [](const auto& chosen) { return std::string(chosen.param.name); });

TEST_F(PanelCommands, OpeningTheWorkbookTakesTheNewestVersionOrSaysThatThereIsNone)
{
    storeDashboard(u"Morning"_s, {u"One"_s});
    start();
    const auto shown = showWorkbooksIn();
    activate(u"One"_s);
    const auto source = gWorkspace->Panels(1)->Source();
    source->Mask = u"Morning*.xlsx"_s;
    source->ClearFlags();
    touch(addBook(u"Morning 2.xlsx"_s), 3600);
    window().menus().mnuPanelExcel->trigger();
    EXPECT_EQ(front(*shown), u"Morning 2.xlsx!Data"_s);

    QFile::remove(bookPath(u"Morning 2.xlsx"_s));
    window().menus().mnuPanelExcel->trigger();
    EXPECT_EQ(m_user.shown,
              QStringList{u"Unable to launch Excel file.  [%1] not found."_s.arg(bookPath(u"Morning 2.xlsx"_s))});
}

TEST_F(PanelCommands, ThePersonalizedFileIsThatOfTheSourceAndOnlyOfferedToPanelsThatHaveOne)
{
    storeDashboard(u"Morning"_s, {u"One"_s});
    start();
    const auto shown = showWorkbooksIn();
    frmPanel& panel = activate(u"One"_s);
    QAction& entry = *window().menus().mnuPanelCustomExcel;
    panel.Panel_LaunchCustom();
    EXPECT_FALSE(entry.isEnabled());
    EXPECT_TRUE(m_user.shown.isEmpty());

    gWorkspace->Panels(1)->IsCustom = u"Y"_s;
    Q_EMIT window().menus().mnuPanel->aboutToShow();
    ASSERT_TRUE(entry.isEnabled());
    const QString copy = gWorkspace->Panels(1)->Source()->Prepped();
    entry.trigger();
    EXPECT_EQ(m_user.shown, QStringList{u"Unable to launch custom Excel file.  [%1] not found."_s.arg(copy)});
    ASSERT_TRUE(QFile::copy(bookPath(u"Morning.xlsx"_s), copy));
    m_library.books[copy] = m_library.books[bookPath(u"Morning.xlsx"_s)];
    entry.trigger();
    EXPECT_EQ(front(*shown), QFileInfo(copy).fileName() + u"!Data"_s);
}

TEST_F(PanelCommands, TheCaptionIsTheUsersAndCancelMarksThePanelTooButChangesNothing)
{
    storeDashboard(u"Morning"_s, {u"One"_s});
    start();
    frmPanel& panel = activate(u"One"_s);
    const auto caption = [&](const QString& text, const QString& button) {
        panel.IsDirty = false;
        whenShown<frmCaption>([&](frmCaption& dialog) {
            EXPECT_EQ(control<QLineEdit>(dialog, u"txtCaption"_s).text(), gWorkspace->Panels(1)->Caption);
            control<QLineEdit>(dialog, u"txtCaption"_s).setText(text);
            clickOn(dialog, button);
        });
        window().menus().mnuPanelCaption->trigger();
        EXPECT_TRUE(panel.IsDirty);
        return panel.windowTitle().trimmed();
    };
    EXPECT_EQ(caption(u"Two"_s, u"cmdCancel"_s), u"One"_s);
    EXPECT_EQ(caption(u"Bob's <b>figures</b>"_s, u"cmdOK"_s), u"Bob's <b>figures</b>"_s);
    const QString wide(900, u'W');
    EXPECT_EQ(caption(wide, u"cmdOK"_s), wide) << "wider than a number of 16 bits tells";
    EXPECT_EQ(caption(QString(), u"cmdOK"_s), QString());
    EXPECT_TRUE(m_user.shown.isEmpty());
}

TEST_F(PanelCommands, APictureStaysWithItsPanelThroughSaveRestartAndRefresh)
{
    storeDashboard(u"Morning"_s, {u"One"_s, u"Two"_s});
    start();
    frmPanel* panel = &activate(u"One"_s);
    const QString file = pictureFile(u"Logo.png"_s);
    loadPicture(file);
    EXPECT_EQ(m_user.asked, QStringList{u"Select Picture"_s});
    EXPECT_EQ(panel->picture().image.size(), QSize(90, 60));
    EXPECT_EQ(panel->windowTitle().trimmed(), u"Logo.png"_s);
    EXPECT_EQ(panel->ScaleWidth(), 90 * 15);
    EXPECT_TRUE(panel->IsDirty);
    EXPECT_FALSE(cached(*gWorkspace->Panels(panel->Index))) << "the picture of the range would come back";

    window().menus().mnuWorkspaceSave->trigger();
    m_window.reset();
    gSources = std::make_shared<clsSources>();
    start();
    panel = &activate(u"Logo.png"_s);
    EXPECT_EQ(panel->picture().image.size(), QSize(90, 60));
    EXPECT_EQ(panel->ScaleWidth(), 90 * 15);
    EXPECT_NE(activate(u"Two"_s).picture().image.size(), QSize(90, 60)) << "the other panel lost its workbook";

    pictureFile(u"Logo.png"_s, QSize(40, 30));
    activate(u"Logo.png"_s);
    window().menus().mnuPanelRefresh->trigger();
    EXPECT_EQ(panel->picture().image.size(), QSize(40, 30));
    EXPECT_TRUE(m_user.shown.isEmpty());
}

TEST_F(PanelCommands, WhatCannotBeShownIsToldAndThePanelStaysAsItWas)
{
    storeDashboard(u"Morning"_s, {u"One"_s});
    start();
    frmPanel& panel = activate(u"One"_s);
    panel.IsDirty = false;
    const QImage before = panel.picture().image;
    const auto source = gWorkspace->Panels(1)->SourceID;
    loadPicture(QString());
    EXPECT_TRUE(m_user.shown.isEmpty());
    loadPicture(programFile(u"Gone.png"_s));
    loadPicture(bookPath(u"Morning.xlsx"_s));
    loadPicture(pictureFile(u"Bob's.png"_s));
    ASSERT_EQ(m_user.shown.size(), 3);
    EXPECT_TRUE(m_user.shown[2].contains(u"apostrophe"_s)) << "the store cannot keep such a path";
    EXPECT_EQ(m_user.shown[0], u"The picture [%1] was not found."_s.arg(programFile(u"Gone.png"_s)));
    EXPECT_TRUE(m_user.shown[1].startsWith(u"[%1] is not a picture"_s.arg(bookPath(u"Morning.xlsx"_s))));
    EXPECT_EQ(panel.picture().image, before);
    EXPECT_EQ(panel.windowTitle(), u"One"_s);
    EXPECT_EQ(gWorkspace->Panels(1)->ContentType, u"S"_s);
    EXPECT_EQ(gWorkspace->Panels(1)->SourceID, source);
    EXPECT_FALSE(panel.IsDirty);
}

TEST_F(PanelCommands, APhotographThatNoWindowCouldHoldIsShownWholeAndKept)
{
    storeDashboard(u"Morning"_s, {u"One"_s});
    start();
    frmPanel& panel = activate(u"One"_s);
    const QSize before = panel.size();
    loadPicture(pictureFile(u"Photo.png"_s, QSize(4000, 1000)));
    EXPECT_NEAR(panel.ScaleWidth() / panel.ScaleHeight(), 4, 0.1);
    EXPECT_LE(panel.width(), before.width());
    EXPECT_LE(panel.height(), before.height());
    panel.resize(600, 174);
    window().Workspace_CheckUpdates();
    EXPECT_EQ(panel.size(), QSize(600, 174)) << "a pass undid what the user did";
    window().menus().mnuWorkspaceSave->trigger();
    EXPECT_EQ(storedPanel(u"ContentType"_s) + storedPanel(u"ViewType"_s), u"PZ"_s);
    EXPECT_TRUE(m_user.shown.isEmpty());
}

TEST_F(PanelCommands, TheDataSourceCanBeViewedWhereItIsDefinedForTheSheet)
{
    storeDashboard(u"Morning"_s, {u"One"_s});
    start();
    activate(u"One"_s);
    const auto define = [](const QString& sheet) {
        gDB->Execute(
            u"INSERT INTO LvnDrillback(PanelSourceID, Sheet) VALUES (%1, '%2')"_s.arg(gWorkspace->Panels(1)->SourceID)
                .arg(sheet));
    };
    const auto canBeViewed = [&] {
        Q_EMIT window().menus().mnuPanel->aboutToShow();
        return window().menus().mnuPanelDrillback->isEnabled();
    };
    EXPECT_FALSE(canBeViewed());
    define(u"Other"_s);
    EXPECT_FALSE(canBeViewed());
    define(u"Data"_s);
    EXPECT_TRUE(canBeViewed());
    window().menus().mnuPanelDrillback->trigger();
    EXPECT_FALSE(window().menus().mnuPanelDrillbackProperties->isVisible()) << "nothing would be kept of it";
    gWorkspace->Panels(1)->SheetName = u"Bob's"_s;
    EXPECT_FALSE(canBeViewed());
    EXPECT_TRUE(m_user.shown.isEmpty()) << "a menu must not tell failures while it opens";
}

TEST_F(PanelCommands, TheDeleteKeyWorksOnThePanelAloneAndTheLastPanelTakesTheMenuAlong)
{
    storeDashboard(u"Morning"_s, {u"One"_s});
    start();
    frmPanel& panel = activate(u"One"_s);
    m_user.confirmations = {true};
    QApplication::setActiveWindow(&window());

    list().setFocus();
    QTest::keyClick(&list(), Qt::Key_Delete);
    EXPECT_TRUE(m_user.asked.isEmpty()) << "the key was meant for the list";

    panel.widget()->setFocus();
    QTest::keyClick(panel.widget(), Qt::Key_Delete);
    EXPECT_EQ(gWorkspace->NumPanels(), 0);
    EXPECT_FALSE(panelMenuEnabled());

    window().mnuPanelDelete_Click();
    EXPECT_EQ(m_user.asked.size(), 1) << "without a panel there is nothing to ask";
}

} // namespace

} // namespace lumivane::test
