#include "assist/frmCaption.h"
#include "dashboard/DashboardFixture.h"
#include "panel/frmPanel.h"
#include "panel/frmPanelProperties.h"
#include "panel/frmRangeRelative.h"
#include "repository/Database.h"
#include "repository/clsPanelSource.h"
#include "repository/clsWorkspace.h"
#include "repository/clsWorkspacePanel.h"

#include <QFile>
#include <QLineEdit>
#include <QMenu>
#include <QtTest/QTest>

namespace lumivane::test {

using namespace Qt::StringLiterals;

namespace {

class PanelCommands : public DashboardFixture
{
protected:
    void SetUp() override
    {
        storeDashboard(u"Morning"_s, {u"One"_s});
        start();
        activate(u"One"_s);
    }
    const DashboardActions& menus() { return window().menus(); }
    clsWorkspacePanel& record() { return *gWorkspace->Panels(1); }
    frmPanel& one() { return *window().panelWindows().last(); }

    /// Workbook and sheet in front of the user; empty when none is shown.
    QString front(PlainApplication& shown) const
    {
        const auto workbook = shown.ActiveWorkbook();
        return workbook ? QString(workbook->Name() + u'!' + shown.ActiveSheet()->Name()) : QString();
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
};

TEST_F(PanelCommands, ADoubleClickShowsTheWorkbookAtTheSheetOfThePanel)
{
    const struct
    {
        QString contentType, sheet;
        bool layoutMode, shown;
    } rows[] = {
        {u"S"_s, u"Data"_s, false, true},
        {u"P"_s, u"Data"_s, false, false},
        {u"S"_s, QString(), false, false},
        {u"S"_s, u"Data"_s, true, false},
    };
    for (const auto& row : rows) {
        const auto shown = showWorkbooks();
        record().ContentType = row.contentType;
        record().SheetName = row.sheet;
        window().EditMode = row.layoutMode;
        QTest::mouseDClick(&control<QWidget>(one(), u"picPanel"_s), Qt::LeftButton);
        window().EditMode = false;
        EXPECT_EQ(front(*shown), row.shown ? u"Morning.xlsx!Data"_s : QString());
        EXPECT_FALSE(window().IsBusy);
    }
    EXPECT_TRUE(m_user.shown.isEmpty());
}

TEST_F(PanelCommands, AWorkbookThatIsGoneIsToldAndNotOpened)
{
    const auto shown = showWorkbooks();
    const QString book = bookPath(u"Morning.xlsx"_s);
    QFile::remove(book);
    menus().mnuPanelExcel->trigger();
    EXPECT_EQ(m_user.shown, QStringList{u"Unable to launch Excel file.  [%1] not found."_s.arg(book)});
    EXPECT_EQ(front(*shown), QString());
}

TEST_F(PanelCommands, ThePersonalizedFileIsThatOfTheSourceAndOnlyOfferedToPanelsThatHaveOne)
{
    const auto shown = showWorkbooks();
    QAction& entry = *menus().mnuPanelCustomExcel;
    one().Panel_LaunchCustom();
    EXPECT_FALSE(entry.isEnabled());
    EXPECT_TRUE(m_user.shown.isEmpty());

    record().IsCustom = u"Y"_s;
    Q_EMIT menus().mnuPanel->aboutToShow();
    ASSERT_TRUE(entry.isEnabled());
    const QString copy = record().Source()->Prepped();
    entry.trigger();
    EXPECT_EQ(m_user.shown, QStringList{u"Unable to launch custom Excel file.  [%1] not found."_s.arg(copy)});
    ASSERT_TRUE(QFile::copy(bookPath(u"Morning.xlsx"_s), copy));
    m_library.books[copy] = m_library.books[bookPath(u"Morning.xlsx"_s)];
    entry.trigger();
    EXPECT_EQ(front(*shown), QFileInfo(copy).fileName() + u"!Data"_s);
}

TEST_F(PanelCommands, TheCaptionIsTheUsersWhateverItHolds)
{
    const auto caption = [&](const QString& text, const QString& button) {
        whenShown<frmCaption>([&](frmCaption& dialog) {
            EXPECT_EQ(control<QLineEdit>(dialog, u"txtCaption"_s).text(), record().Caption);
            control<QLineEdit>(dialog, u"txtCaption"_s).setText(text);
            clickOn(dialog, button);
        });
        menus().mnuPanelCaption->trigger();
        return one().windowTitle().trimmed();
    };
    EXPECT_EQ(caption(u"Two"_s, u"cmdCancel"_s), u"One"_s);
    const QString wide(900, u'W'); // wider than a number of 16 bits tells
    for (const QString& text : {u"Bob's <b>figures</b>"_s, wide, QString()})
        EXPECT_EQ(caption(text, u"cmdOK"_s), text);
    EXPECT_TRUE(m_user.shown.isEmpty());
}

TEST_F(PanelCommands, APictureStaysWithItsPanelThroughSaveRestartAndRefresh)
{
    loadPicture(pictureFile(u"Logo.png"_s));
    EXPECT_EQ(one().picture().image.size(), QSize(90, 60));
    EXPECT_TRUE(one().IsDirty);
    EXPECT_FALSE(cached(record())) << "the picture of the range would come back";

    menus().mnuWorkspaceSave->trigger();
    EXPECT_TRUE(rows(u"SELECT FullPath FROM LvnPanelSource"_s).contains(bookPath(u"Morning.xlsx"_s))) << "of others";
    m_window.reset();
    gSources = std::make_shared<clsSources>();
    start();
    EXPECT_EQ(one().picture().image.size(), QSize(90, 60));
    EXPECT_EQ(one().ScaleWidth(), 90 * 15);

    pictureFile(u"Logo.png"_s, QSize(40, 30));
    activate(u"Logo.png"_s);
    menus().mnuPanelRefresh->trigger();
    EXPECT_EQ(one().picture().image.size(), QSize(40, 30));
    EXPECT_TRUE(m_user.shown.isEmpty());
}

TEST_F(PanelCommands, WhatCannotBeShownIsToldAndThePanelStaysAsItWas)
{
    one().IsDirty = false;
    const QImage before = one().picture().image;
    const QString book = bookPath(u"Morning.xlsx"_s), gone = programFile(u"Gone.png"_s);
    for (const QString& file : {QString(), gone, book, pictureFile(u"Bob's.png"_s)})
        loadPicture(file);
    ASSERT_EQ(m_user.shown.size(), 3);
    EXPECT_EQ(m_user.shown[0], u"The picture [%1] was not found."_s.arg(gone));
    EXPECT_TRUE(m_user.shown[1].startsWith(u"[%1] is not a picture"_s.arg(book)));
    EXPECT_TRUE(m_user.shown[2].contains(u"apostrophe"_s)) << "the store cannot keep such a path";
    EXPECT_EQ(one().picture().image, before);
    EXPECT_EQ(one().windowTitle() + record().ContentType, u"OneS"_s);
    EXPECT_EQ(record().SourceID, 1);
    EXPECT_FALSE(one().IsDirty);
}

TEST_F(PanelCommands, APhotographThatNoWindowCouldHoldIsShownWholeAndKept)
{
    frmPanel& panel = one();
    const QSize before = panel.size();
    loadPicture(pictureFile(u"Photo.png"_s, QSize(4000, 1000)));
    EXPECT_NEAR(panel.ScaleWidth() / panel.ScaleHeight(), 4, 0.1);
    EXPECT_LE(panel.width(), before.width());
    EXPECT_LE(panel.height(), before.height());
    panel.resize(600, 174);
    window().Workspace_CheckUpdates();
    EXPECT_EQ(panel.size(), QSize(600, 174)) << "a pass undid what the user did";
    menus().mnuWorkspaceSave->trigger();
    EXPECT_EQ(rows(u"SELECT ContentType, ViewType FROM LvnSavedPanel"_s), QStringList{u"P|Z"_s});
    EXPECT_TRUE(m_user.shown.isEmpty());
}

TEST_F(PanelCommands, TheDataSourceCanBeViewedWhereItIsDefinedForTheSheet)
{
    const auto define = [this](const QString& sheet) {
        gDB->Execute(
            u"INSERT INTO LvnDrillback(PanelSourceID, Sheet) VALUES (%1, '%2')"_s.arg(record().SourceID).arg(sheet));
    };
    const auto canBeViewed = [&] {
        Q_EMIT menus().mnuPanel->aboutToShow();
        return menus().mnuPanelDrillback->isEnabled();
    };
    EXPECT_FALSE(canBeViewed());
    define(u"Other"_s);
    EXPECT_FALSE(canBeViewed());
    define(u"Data"_s);
    EXPECT_TRUE(canBeViewed());
    menus().mnuPanelDrillback->trigger();
    EXPECT_FALSE(menus().mnuPanelDrillbackProperties->isVisible()) << "nothing would be kept of it";
    record().SheetName = u"Bob's"_s;
    EXPECT_FALSE(canBeViewed());
    EXPECT_TRUE(m_user.shown.isEmpty()) << "a menu must not tell failures while it opens";
}

TEST_F(PanelCommands, TheRangeLocationIsForRangesOnly)
{
    for (const auto& [contentType, enabled] : {std::pair(u"S"_s, true), {u"C"_s, false}, {u"P"_s, false}}) {
        record().ContentType = contentType;
        Q_EMIT menus().mnuPanel->aboutToShow();
        EXPECT_EQ(menus().mnuPanelRange->isEnabled(), enabled) << contentType.toStdString();
        EXPECT_TRUE(menus().mnuPanelProperties->isEnabled());
    }
}

TEST_F(PanelCommands, NoPassBeginsWhileADialogOfAPanelIsOpen)
{
    whenShown<frmRangeRelative>([&](frmRangeRelative&) { EXPECT_TRUE(window().IsBusy); });
    menus().mnuPanelRange->trigger();
    whenShown<frmPanelProperties>([&](frmPanelProperties&) { EXPECT_TRUE(window().IsBusy); });
    menus().mnuPanelProperties->trigger();
    EXPECT_FALSE(window().IsBusy);
}

TEST_F(PanelCommands, TheDeleteKeyWorksOnThePanelAloneAndTheLastPanelTakesTheMenuAlong)
{
    frmPanel& panel = one();
    m_user.confirmations = {true};
    QApplication::setActiveWindow(&window());

    list().setFocus();
    QTest::keyClick(&list(), Qt::Key_Delete);
    EXPECT_TRUE(m_user.asked.isEmpty()) << "the key was meant for the list";

    panel.widget()->setFocus();
    QTest::keyClick(panel.widget(), Qt::Key_Delete);
    EXPECT_EQ(gWorkspace->NumPanels(), 0);
    EXPECT_FALSE(menus().mnuPanel->menuAction()->isEnabled());

    window().mnuPanelDelete_Click();
    EXPECT_EQ(m_user.asked.size(), 1) << "without a panel there is nothing to ask";
}

} // namespace

} // namespace lumivane::test
