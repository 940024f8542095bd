#include "panel/PanelPipeline.h"

#include "panel/ProjectFixture.h"
#include "repository/Database.h"
#include "repository/clsPanelSource.h"
#include "repository/clsWorkspacePanel.h"
#include "services/ProgramFiles.h"
#include "support/TextTable.h"

#include <QDir>
#include <QFile>

using namespace lumivane;
using namespace Qt::StringLiterals;

namespace {

class Pipeline : public test::ProjectFixture
{
protected:
    void SetUp() override
    {
        m_path = addBook(u"sales.xlsx"_s);
        m_panel = addPanel(m_path, u"Sales"_s);
        saveDashboard(u"Morning"_s);
        m_pipeline.applyView = [this](clsWorkspacePanel&) { ++m_viewsApplied; };
    }

    void drawCache()
    {
        ASSERT_TRUE(load(true));
        ASSERT_TRUE(cached(*m_panel));
        gSources->ClearFlags();
        m_library.events.clear();
        m_viewsApplied = 0;
        m_pipeline.picTemp = {};
    }

    bool load(bool refresh = false)
    {
        XLInstance XLInst = worker();
        return m_pipeline.Panel_Load(XLInst, m_panel, refresh);
    }

    bool reload()
    {
        XLInstance XLInst = worker();
        return m_pipeline.Panel_Reload(XLInst, m_panel);
    }

    /// The panel shows other contents.
    void show(const QString& contentType, const QString& picRange)
    {
        m_panel->ContentType = contentType;
        m_panel->PicRange = picRange;
        saveDashboard(u"Morning"_s);
    }

    void followLastCell()
    {
        m_panel->RelativeTo = u"bottom"_s;
        m_panel->ContentMatch = u"bottom=$C$4"_s;
        saveDashboard(u"Morning"_s);
    }

    std::shared_ptr<clsPanelSource> source() { return m_panel->Source(); }

    QString m_path;
    std::shared_ptr<clsWorkspacePanel> m_panel;
    PanelPipeline m_pipeline;
    int m_viewsApplied = 0;
};

/// A row: name, what lies on disk, what is called, whether the panel is loaded, whether it is drawn from the workbook.
using PanelStates = test::OfEachRow<Pipeline, 5>;

TEST_P(PanelStates, DrawsAnewExactlyWhereTheCacheIsGone)
{
    const auto& [name, onDisk, call, loaded, drawn] = GetParam();
    const bool newVersion = onDisk == u"new version", result = loaded == u"yes";
    drawCache();
    if (onDisk == u"no cache")
        QFile::remove(panelPictureFile(m_panel->ID));
    if (onDisk == u"damaged")
        QFile::resize(panelPictureFile(m_panel->ID), 200);
    if (newVersion)
        touch(m_path, 3600);
    EXPECT_EQ(call == u"reload" ? reload() : load(call == u"refresh"), result);
    EXPECT_EQ(m_viewsApplied, result ? 1 : 0);
    EXPECT_EQ(!m_pipeline.picTemp.image.isNull(), result) << "a quiet reload leaves the picture alone";
    // A new version is opened once more to move the range on.
    EXPECT_EQ(openings(m_path), (drawn == u"yes" ? 1 : 0) + (newVersion ? 1 : 0));
    EXPECT_TRUE(cached(*m_panel));
    EXPECT_TRUE(m_user.shown.isEmpty());
    EXPECT_TRUE(m_pipeline.problem.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(States, PanelStates, testing::ValuesIn(test::textTable<5>(R"(
    cached load         | cache       | load    | yes | no
    cached refresh      | cache       | refresh | yes | yes
    cached reload       | cache       | reload  | no  | no
    new version load    | new version | load    | yes | yes
    new version reload  | new version | reload  | yes | yes
    missing load        | no cache    | load    | yes | yes
    damaged load        | damaged     | load    | yes | yes
    missing reload      | no cache    | reload  | yes | yes)")),
                         test::rowName);

TEST_F(Pipeline, APanelNotStoredYetHasNoCache)
{
    m_panel->ID = 0;
    EXPECT_TRUE(load());
    EXPECT_TRUE(load());
    EXPECT_EQ(openings(m_path), 2);
    EXPECT_FALSE(QFile::exists(programFile(u"Panels/0.bmp"_s)));
}

TEST_F(Pipeline, APictureForAnotherScreenIsDrawnAnewAndKept)
{
    ASSERT_TRUE(load(true));
    const TwipsSize size = m_pipeline.picTemp.size();
    m_pipeline.setScreen(2);
    ASSERT_TRUE(load());
    EXPECT_EQ(m_pipeline.picTemp.image.devicePixelRatio(), 1) << "from the cache";
    XLInstance XLInst = worker();
    EXPECT_TRUE(m_pipeline.Panel_Sharpen(XLInst, m_panel));
    EXPECT_FALSE(m_pipeline.Panel_Sharpen(XLInst, m_panel));
    m_pipeline.picTemp = {};
    ASSERT_TRUE(load());
    EXPECT_EQ(m_pipeline.picTemp.image.devicePixelRatio(), 2);
    EXPECT_EQ(m_pipeline.picTemp.size(), size);
}

/// A row: name, screen scale, view, range, room in pixels, scale of the picture; none: it is too large.
using PictureScale = test::OfEachRow<Pipeline, 6>;

TEST_P(PictureScale, FitsScreenViewAndRoomAndFallsBackToOne)
{
    const auto& [name, screen, view, range, room, scale] = GetParam();
    m_panel->ViewType = view;
    show(u"S"_s, range + u"``"_s);
    m_pipeline.setScreen(screen.toDouble(),
                         {room.section(u'x', 0, 0).toFloat() * 15, room.section(u'x', 1).toFloat() * 15});
    EXPECT_EQ(load(), !scale.isEmpty());
    if (scale.isEmpty()) {
        EXPECT_TRUE(m_pipeline.problem.contains(u"too large"_s)) << m_pipeline.problem;
        return;
    }
    EXPECT_EQ(m_pipeline.picTemp.image.devicePixelRatio(), scale.toDouble());
    EXPECT_FALSE(m_pipeline.isForAnotherScale(*m_panel)) << "what cannot be had is asked for once";
}

// B2:C4 has 128 x 60 pixels, a cell is 20 high.
INSTANTIATE_TEST_SUITE_P(Panels, PictureScale, testing::ValuesIn(test::textTable<6>(R"(
    as it is                | 1 | A | B2:C4    |         | 1
    dense screen            | 2 | C | B2:C4    | 900x90  | 2
    zoomed out of the cache | 1 | Z | B2:C4    |         | 2
    zoomed a little         | 1 | Z | B2:C4    | 140x70  | 2
    zoomed far in one way   | 1 | Z | B2:C4    | 128x170 | 3
    zoomed very far         | 2 | Z | B2:C4    | 128x999 | 8
    too high when sharp     | 1 | Z | B1:B1000 | 64x90   | 1
    too high                | 1 | Z | B1:B2000 | 64x90   |)")),
                         test::rowName);

// ---- what a cached picture belongs to ----

/// A row: name, what is different (of the panel's row, as SQL), whether the picture still stands.
using CachedFor = test::OfEachRow<Pipeline, 3>;

TEST_P(CachedFor, StandsOnlyForItsProjectDefinitionAndVersion)
{
    const auto& [name, difference, stands] = GetParam();
    drawCache();
    if (difference == u"project") {
        ASSERT_TRUE(QFile::copy(programFile(u"lumivane.lvdu"_s), programFile(u"other.lvdu"_s)));
        gDB = Database::open(programFile(u"other.lvdu"_s), databaseConnect());
    } else if (difference == u"limit") {
        gDB->Execute(u"INSERT INTO LvnpanelThresholds(PanelID, rowOffset, colOffset, highExp, ifHigh) "
                     "VALUES (%1, 2, 2, '>5', 'color')"_s.arg(m_panel->ID));
    } else if (difference == u"size") {
        QFile(m_path).resize(1000), touch(m_path, -3600);
    } else if (difference == u"time") {
        touch(m_path, -7200); // taken over by another program folder, or put back
    } else {
        gDB->Execute(u"UPDATE LvnSavedPanel SET "_s + difference);
        ASSERT_TRUE(m_panel->LoadFromDB(m_panel->ID, gDB));
    }
    for (int pass = 0; pass < 2; ++pass) {
        gSources->ClearFlags();
        EXPECT_EQ(reload(), pass == 0 && stands == u"no") << pass;
    }
    EXPECT_TRUE(m_user.shown.isEmpty());
}

INSTANTIATE_TEST_SUITE_P(Differences, CachedFor, testing::ValuesIn(test::textTable<3>(R"(
    another caption     | Caption = 'Another'         | yes
    another project     | project                     | no
    another sheet       | SheetName = 'data'          | no
    another range       | PicRange = 'B2:C3``'        | no
    other heights       | RowHeights = '2:4=20'       | no
    other widths        | ColWidths = 'B:C=9'         | no
    another rule        | RelativeTo = 'bottom'       | no
    other clauses       | ContentMatch = 'bottom=C4'  | no
    a limit of its own  | limit                       | no
    another size        | size                        | no
    an older time       | time                        | no)")),
                         test::rowName);

TEST_F(Pipeline, APictureOfThePassBelongsToTheStoredDefinitionToo)
{
    followLastCell();
    drawCache();
    m_library.books[m_path].front().put(u"C9"_s, u"1"_s);
    touch(m_path, 3600);
    EXPECT_TRUE(reload());
    EXPECT_EQ(m_panel->PicRange, u"$B$2:$C$4``"_s) << "the one on the screen stays";
    ASSERT_TRUE(m_panel->LoadFromDB(m_panel->ID, gDB));
    EXPECT_EQ(m_panel->PicRange, u"B7:C9``"_s);
    m_library.events.clear();
    m_pipeline.picTemp = {};
    EXPECT_TRUE(load());
    EXPECT_EQ(openings(m_path), 0);
}

TEST_F(Pipeline, AFileThatIsBeingWrittenIsShownAsItWasAndSaysSo)
{
    drawCache();
    ASSERT_TRUE(load());
    const FileVersion shown = m_pipeline.picTemp.identity.version;
    gSources->ClearFlags();
    touch(m_path, 0);
    EXPECT_FALSE(reload());
    EXPECT_TRUE(m_pipeline.problem.contains(m_path)) << m_pipeline.problem;
    EXPECT_EQ(openings(m_path), 0);
    EXPECT_EQ(m_pipeline.picTemp.identity.version, shown) << "and keeps its own time";
    QFile::remove(panelPictureFile(m_panel->ID));
    EXPECT_TRUE(reload());
    EXPECT_FALSE(cached(*m_panel)) << "drawn for want of another, and not kept";
}

TEST_F(Pipeline, ARangeWithoutAPlaceIsShownWhereItWasAndSaysSo)
{
    followLastCell();
    m_library.books[m_path].front().clear(u"B2:C4"_s);
    EXPECT_TRUE(load(true));
    EXPECT_EQ(m_pipeline.picTemp.identity.range, u"B2:C4"_s);
    EXPECT_TRUE(m_pipeline.picTemp.notice.contains(u"finds no place"_s)) << m_pipeline.picTemp.notice;
    EXPECT_TRUE(m_user.shown.isEmpty());
}

// ---- a source file that is gone ----

/// A row: name, whether the user wants to look for it, the file chosen (none: cancelled), the box.
using LostFile = test::OfEachRow<Pipeline, 4>;

TEST_P(LostFile, IsLookedForOrNamed)
{
    const auto& [name, lookForIt, file, box] = GetParam();
    const QString chosen = file.isEmpty() ? QString() : bookPath(file);
    addBook(u"found.xlsx"_s);
    QFile::remove(m_path);
    m_user.confirmations = {lookForIt == u"yes"};
    m_user.files = {chosen};
    EXPECT_FALSE(load());
    EXPECT_EQ(m_user.asked.value(0),
              u"Unable to load panel.  [%1] not found. Do you want to look for the file yourself?"_s.arg(m_path));
    EXPECT_EQ(m_user.shown.join(u'|'), QString(box).replace(u"(chosen)"_s, chosen));
    EXPECT_FALSE(m_pipeline.problem.isEmpty());
    EXPECT_EQ(source()->FullPath, m_path);
}

INSTANTIATE_TEST_SUITE_P(Answers, LostFile, testing::ValuesIn(test::textTable<4>(R"(
    user says no            | no  | found.xlsx |
    user cancels the dialog | yes |            | Unable to load panel.  No file selected.
    chosen file is gone too | yes | gone.xlsx  | Unable to load panel.  [(chosen)] not found)")),
                         test::rowName);

TEST_F(Pipeline, ALostFileIsMissedBeforeTheCacheIsLookedAt)
{
    drawCache();
    QFile::remove(m_path);
    EXPECT_FALSE(load());
    EXPECT_EQ(m_user.asked.size(), 1);
    EXPECT_FALSE(reload());
    EXPECT_EQ(m_user.asked.size(), 1) << "a reload ends at the cached file";
    EXPECT_TRUE(m_pipeline.problem.contains(m_path)) << "and says that there is none";
    EXPECT_FALSE(load(true));
    EXPECT_FALSE(cached(*m_panel)) << "a refresh deletes the cache before it misses the file";
}

TEST_F(Pipeline, AFoundFileIsStoredWithItsFolderAndFoundAgain)
{
    QDir(m_folder.path()).mkdir(u"elsewhere"_s);
    const QString found = m_folder.filePath(u"elsewhere/copy.xlsx"_s);
    ASSERT_TRUE(QFile::rename(m_path, found));
    m_library.books[found] = m_library.books[m_path];
    m_user.confirmations = {true};
    m_user.files = {found};
    ASSERT_TRUE(load());
    EXPECT_TRUE(m_user.shown.isEmpty() && m_pipeline.problem.isEmpty());
    EXPECT_EQ(source()->FullPath, found);
    EXPECT_EQ(source()->Mask, u"sales.xlsx"_s);
    const QString query = u"SELECT * FROM LvnPanelSource"_s;
    EXPECT_EQ(stored(query, u"FullPath"_s), found);
    EXPECT_EQ(stored(query, u"DestFolder"_s) + stored(query, u"NewestFile"_s), found) << "found again next time";
}

// ---- what the workbook does not hold ----

TEST_F(Pipeline, NamesAMissingSheetOrChartAndKeepsNoPicture)
{
    const QString advice = u"\r\nYou may have to re-define the dashboard object.\r\nSee Help for more information."_s;
    m_panel->SheetName = u"Daten"_s;
    show(u"S"_s, u"$B$2:$C$4``"_s);
    EXPECT_FALSE(load());
    EXPECT_FALSE(cached(*m_panel));
    EXPECT_EQ(m_library.events.count(u"close "_s + m_path), 1);
    m_panel->SheetName = u"Data"_s;
    show(u"C"_s, u"Costs"_s);
    EXPECT_FALSE(load());
    EXPECT_EQ(m_user.shown.join(u'|'),
              QString(u"A sheet named Daten was not found in the workbook [sales.xlsx]" + advice +
                      u"|A chart named Costs was not found in spreadsheet [Data] of worksbook [sales.xlsx]" + advice));
}

TEST_F(Pipeline, APasteFromAChangedWorkbookIsRefused)
{
    m_panel->ID = 0;
    XLInstance XLInst = worker();
    m_panel->ContentMatch = u"bottom=$D$9`anchor=`content="_s;
    EXPECT_FALSE(m_pipeline.Panel_LoadExcel(m_path, m_path, true, XLInst, m_panel));
    m_panel->ContentType = u"C"_s;
    m_panel->PicRange = u"Costs"_s;
    EXPECT_FALSE(m_pipeline.Panel_LoadExcel(m_path, m_path, true, XLInst, m_panel));
    const QString refusal = u"The spreadsheet has been changed and not saved.\r\nYou cannot paste from it at this "
                            "time.\r\nPlease refer to help for more on this."_s;
    EXPECT_EQ(m_user.shown, (QStringList{refusal, refusal}));
}

TEST_F(Pipeline, ACustomPanelIsDrawnFromItsCopyAndLocatedInTheTrueFile)
{
    const QString copy = source()->Prepped();
    m_library.books[copy] = m_library.books[m_path];
    m_panel->IsCustom = u"Y"_s;
    saveDashboard(u"Morning"_s);
    ASSERT_TRUE(load());
    const QStringList opened = m_library.events.filter(u"open "_s);
    EXPECT_EQ(opened, (QStringList{u"open "_s + copy, u"open "_s + m_path}));
}

// ---- other contents, and failures ----

TEST_F(Pipeline, APictureFileIsLoadedEachTimeAndNeverCached)
{
    ASSERT_TRUE(QImage(40, 20, QImage::Format_RGB32).save(m_path, "PNG"));
    show(u"P"_s, {});
    EXPECT_TRUE(load());
    EXPECT_TRUE(reload());
    EXPECT_FALSE(cached(*m_panel));
    EXPECT_EQ(openings(m_path), 0);
}

TEST_F(Pipeline, AWorkbookThatCannotBeOpenedLeavesTheOldPicture)
{
    drawCache();
    ASSERT_TRUE(load());
    m_library.books.clear();
    EXPECT_FALSE(load(true));
    EXPECT_FALSE(m_pipeline.picTemp.image.isNull());
    EXPECT_TRUE(m_pipeline.problem.contains(m_path)) << m_pipeline.problem;
    EXPECT_EQ(m_user.shown.size(), 1);
}

TEST_F(Pipeline, AChartOnADamagedSheetIsNotCalledMissing)
{
    const QString damage = u"The sheet \"Data\" of \"sales.xlsx\" is damaged."_s;
    m_library.books[m_path].front().damage(damage);
    show(u"C"_s, u"Trend"_s);
    EXPECT_FALSE(load());
    ASSERT_EQ(m_user.shown.size(), 1);
    EXPECT_TRUE(m_user.shown.first().endsWith(damage)) << m_user.shown.first();
}

TEST_F(Pipeline, AGapInThePictureIsSaidAndSaidAgainFromTheCache)
{
    m_library.books[m_path].front().undrawable(u"Costs"_s, u"C3"_s);
    ASSERT_TRUE(load());
    const QString notice = u"Not shown here: the chart \"Costs\"."_s;
    EXPECT_EQ(m_pipeline.picTemp.notice, notice);
    m_pipeline.picTemp = {};
    ASSERT_TRUE(load());
    EXPECT_EQ(m_pipeline.picTemp.notice, notice);
    show(u"S"_s, u"$B$2:$B$2``"_s);
    ASSERT_TRUE(load(true));
    EXPECT_TRUE(m_pipeline.picTemp.notice.isEmpty()) << "the gap lies outside now";
}

TEST_F(Pipeline, AChartThatIsThereIsExplainedNotOfferedForDeletionAndNeverKept)
{
    m_library.books[m_path].front().undrawable(u"Costs"_s, u"C3"_s);
    show(u"C"_s, u"Costs"_s);
    EXPECT_TRUE(load());
    EXPECT_FALSE(m_pipeline.picTemp.image.isNull());
    EXPECT_EQ(m_pipeline.picTemp.notice, u"Panel 'Sales' shows no current picture."_s);
    EXPECT_FALSE(cached(*m_panel)) << "the next pass tries again";
    EXPECT_TRUE(m_user.shown.isEmpty());
}

} // namespace
