#include "panel/PanelPipeline.h"

#include "panel/ProjectFixture.h"
#include "platform/RuntimeError.h"
#include "repository/Database.h"
#include "repository/clsPanelSource.h"
#include "repository/clsWorkspace.h"
#include "repository/clsWorkspacePanel.h"
#include "session/ProgramFiles.h"
#include "session/modMain.h"

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
        XLInstance XLInst = worker();
        ASSERT_TRUE(m_pipeline.Panel_Load(XLInst, m_panel, true));
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

    std::shared_ptr<clsPanelSource> source() { return m_panel->Source(); }

    QString m_path;
    std::shared_ptr<clsWorkspacePanel> m_panel;
    PanelPipeline m_pipeline;
    int m_viewsApplied = 0;
};

enum class Call { Load, LoadRefresh, Reload };

struct StateRow
{
    const char* name;
    bool cacheExists;
    bool newVersion;
    Call call;
    bool result;
    bool drawn; ///< anew, from the workbook
};

class PanelStates : public Pipeline, public testing::WithParamInterface<StateRow>
{
};

TEST_P(PanelStates, DrawsAnewExactlyWhereTheCacheIsGone)
{
    const StateRow& row = GetParam();
    drawCache();
    if (!row.cacheExists)
        QFile::remove(panelPictureFile(m_panel->ID));
    if (row.newVersion)
        touch(m_path, 3600);

    XLInstance XLInst = worker();
    const bool result = row.call == Call::Reload
                            ? m_pipeline.Panel_Reload(XLInst, m_panel)
                            : m_pipeline.Panel_Load(XLInst, m_panel, row.call == Call::LoadRefresh);

    EXPECT_EQ(result, row.result);
    EXPECT_EQ(m_viewsApplied, row.result ? 1 : 0);
    EXPECT_EQ(!m_pipeline.picTemp.image.isNull(), row.result) << "a quiet reload leaves the picture alone";
    // A new version is opened once more to move the range on.
    EXPECT_EQ(openings(m_path), (row.drawn ? 1 : 0) + (row.newVersion ? 1 : 0));
    EXPECT_TRUE(cached(*m_panel));
    EXPECT_TRUE(m_user.shown.isEmpty());
    EXPECT_TRUE(m_pipeline.problem.isEmpty());
}

const StateRow stateRows[] = {
    {"cached_load", true, false, Call::Load, true, false},
    {"cached_refresh", true, false, Call::LoadRefresh, true, true},
    {"cached_reload", true, false, Call::Reload, false, false},
    {"new_version_load", true, true, Call::Load, true, true},
    {"new_version_refresh", true, true, Call::LoadRefresh, true, true},
    {"new_version_reload", true, true, Call::Reload, true, true},
    {"missing_load", false, false, Call::Load, true, true},
    {"missing_refresh", false, false, Call::LoadRefresh, true, true},
    {"missing_reload", false, false, Call::Reload, true, true},
};
INSTANTIATE_TEST_SUITE_P(States, PanelStates, testing::ValuesIn(stateRows),
                         [](const auto& row) { return row.param.name; });

TEST_F(Pipeline, TwoPanelsOfOneSourceCheckItOnceAndBothDrawTheNewVersion)
{
    const auto second = addPanel(m_path, u"Sales again"_s);
    saveDashboard(u"Morning"_s);
    drawCache();
    XLInstance XLInst = worker();
    ASSERT_TRUE(m_pipeline.Panel_Load(XLInst, second, true));
    gSources->ClearFlags();
    touch(m_path, 3600);
    m_library.events.clear();

    EXPECT_TRUE(m_pipeline.Panel_Reload(XLInst, m_panel));
    EXPECT_TRUE(m_pipeline.Panel_Reload(XLInst, second));
    EXPECT_EQ(openings(m_path), 3) << "once to move both ranges, once to draw each";
}

TEST_F(Pipeline, LoadTakesUpTheRangeThatTheCheckMovedOn)
{
    drawCache();
    gDB->Execute(u"UPDATE LvnSavedPanel SET PicRange = 'B2:B3``' WHERE ID = "_s + QString::number(m_panel->ID));
    QFile::remove(panelPictureFile(m_panel->ID));
    ASSERT_TRUE(load());
    EXPECT_EQ(m_panel->PicRange, u"B2:B3``"_s);
}

TEST_F(Pipeline, APanelNotStoredYetHasNoCache)
{
    m_panel->ID = 0;
    EXPECT_TRUE(load());
    EXPECT_TRUE(load());
    EXPECT_EQ(openings(m_path), 2);
    EXPECT_FALSE(QFile::exists(programFile(u"Panels/0.bmp"_s)));
}

TEST_F(Pipeline, CapturesAtTheScaleOfTheScreenAndKeepsIt)
{
    ASSERT_TRUE(load(true));
    const TwipsSize size = m_pipeline.picTemp.size();
    m_pipeline.setScreenScale(2);
    ASSERT_TRUE(load(true));
    EXPECT_EQ(m_pipeline.picTemp.size(), size);
    EXPECT_EQ(m_pipeline.picTemp.image.width() * 15, 2 * size.width);
    ASSERT_TRUE(load());
    EXPECT_EQ(m_pipeline.picTemp.size(), size) << "from the cache";
}

// ---- a source file that is gone ----

struct RecoveryRow
{
    const char* name;
    std::deque<bool> lookForIt;
    QString chosen; ///< file name beside the lost one; empty: cancelled
    bool result;
    QString box; ///< "%1" stands for the chosen path
};

class LostFile : public Pipeline, public testing::WithParamInterface<RecoveryRow>
{
};

TEST_P(LostFile, IsLookedForOrTold)
{
    const RecoveryRow& row = GetParam();
    addBook(u"found.xlsx"_s);
    QFile::remove(m_path);
    const QString chosen = row.chosen.isEmpty() ? QString() : bookPath(row.chosen);
    m_user.confirmations = row.lookForIt;
    m_user.files = {chosen};

    EXPECT_EQ(load(), row.result);
    ASSERT_FALSE(m_user.asked.isEmpty());
    EXPECT_EQ(m_user.asked.first(),
              u"Unable to load panel.  ["_s + m_path + u"] not found. Do you want to look for the file yourself?"_s);
    const QStringList boxes =
        row.box.isEmpty() ? QStringList() : QStringList{QString(row.box).replace(u"%1"_s, chosen)};
    EXPECT_EQ(m_user.shown, boxes);
    EXPECT_EQ(m_pipeline.problem.isEmpty(), row.result);
    EXPECT_EQ(source()->FullPath, row.result ? chosen : m_path);
}

const RecoveryRow recoveryRows[] = {
    {"user_says_no", {false}, u"found.xlsx"_s, false, {}},
    {"user_cancels_the_dialog", {true}, {}, false, u"Unable to load panel.  No file selected."_s},
    {"chosen_file_is_gone_too", {true}, u"gone.xlsx"_s, false, u"Unable to load panel.  [%1] not found"_s},
    {"another_file", {true}, u"found.xlsx"_s, true, {}},
};
INSTANTIATE_TEST_SUITE_P(Answers, LostFile, testing::ValuesIn(recoveryRows),
                         [](const auto& row) { return row.param.name; });

TEST_F(Pipeline, ALostFileIsMissedBeforeTheCacheIsLookedAt)
{
    drawCache();
    QFile::remove(m_path);
    EXPECT_FALSE(load());
    EXPECT_EQ(m_user.asked.size(), 1);
    m_user.asked.clear();
    XLInstance XLInst = worker();
    EXPECT_FALSE(m_pipeline.Panel_Reload(XLInst, m_panel));
    EXPECT_TRUE(m_user.asked.isEmpty()) << "a reload ends at the cached file";
}

TEST_F(Pipeline, ARefreshDeletesTheCacheBeforeItMissesTheFile)
{
    drawCache();
    QFile::remove(m_path);
    EXPECT_FALSE(load(true));
    EXPECT_FALSE(cached(*m_panel));
}

TEST_F(Pipeline, AFoundFileIsStoredWithItsFolderButNotItsName)
{
    QDir(m_folder.path()).mkdir(u"elsewhere"_s);
    const QString found = m_folder.filePath(u"elsewhere/copy.xlsx"_s);
    ASSERT_TRUE(QFile::rename(m_path, found));
    m_library.books[found] = m_library.books[m_path];
    m_user.confirmations = {true};
    m_user.files = {found};
    ASSERT_TRUE(load());
    EXPECT_EQ(source()->Mask, u"sales.xlsx"_s);
    EXPECT_EQ(stored(u"SELECT * FROM LvnPanelSource"_s, u"FullPath"_s), found);
    EXPECT_EQ(stored(u"SELECT * FROM LvnPanelSource"_s, u"DestFolder"_s), m_folder.filePath(u"elsewhere/"_s));
}

// ---- what the workbook does not hold ----

TEST_F(Pipeline, TellsAMissingSheetAndKeepsNoPicture)
{
    m_panel->SheetName = u"Daten"_s;
    saveDashboard(u"Morning"_s);
    EXPECT_FALSE(load());
    EXPECT_EQ(m_user.shown,
              QStringList{u"A sheet named Daten was not found in the workbook [sales.xlsx]\r\n"
                          "You may have to re-define the dashboard object.\r\nSee Help for more information."_s});
    EXPECT_FALSE(cached(*m_panel));
    EXPECT_EQ(m_library.events.count(u"close "_s + m_path), 1);
}

TEST_F(Pipeline, TellsAMissingChart)
{
    m_panel->ContentType = u"C"_s;
    m_panel->PicRange = u"Costs"_s;
    saveDashboard(u"Morning"_s);
    EXPECT_FALSE(load());
    EXPECT_EQ(m_user.shown,
              QStringList{u"A chart named Costs was not found in spreadsheet [Data] of worksbook [sales.xlsx]\r\n"
                          "You may have to re-define the dashboard object.\r\nSee Help for more information."_s});
}

TEST_F(Pipeline, APasteFromAChangedWorkbookIsRefused)
{
    m_panel->ID = 0;
    XLInstance XLInst = worker();
    const QStringList refusal{u"The spreadsheet has been changed and not saved.\r\nYou cannot paste from it at this "
                              "time.\r\nPlease refer to help for more on this."_s};
    m_panel->ContentMatch = u"bottom=$D$9`anchor=`content="_s;
    EXPECT_FALSE(m_pipeline.Panel_LoadExcel(m_path, m_path, true, XLInst, m_panel));
    EXPECT_EQ(m_user.shown, refusal);
    m_panel->ContentType = u"C"_s;
    m_panel->PicRange = u"Costs"_s;
    EXPECT_FALSE(m_pipeline.Panel_LoadExcel(m_path, m_path, true, XLInst, m_panel));
    EXPECT_EQ(m_user.shown, refusal + refusal);
}

TEST_F(Pipeline, APasteOfTheSameShapeOrWithoutARecordedCellGoesThrough)
{
    m_panel->ID = 0;
    XLInstance XLInst = worker();
    for (const QString& match : {u"bottom=C4`anchor=`content="_s, QString()}) {
        m_panel->ContentMatch = match;
        EXPECT_TRUE(m_pipeline.Panel_LoadExcel(m_path, m_path, true, XLInst, m_panel)) << match.toStdString();
    }
    EXPECT_TRUE(m_user.shown.isEmpty());
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
    QImage image(40, 20, QImage::Format_RGB32);
    image.fill(Qt::green);
    ASSERT_TRUE(image.save(m_path, "PNG"));
    m_panel->ContentType = u"P"_s;
    saveDashboard(u"Morning"_s);
    EXPECT_TRUE(load());
    EXPECT_EQ(m_pipeline.picTemp.size(), (TwipsSize{600, 300}));
    XLInstance XLInst = worker();
    EXPECT_TRUE(m_pipeline.Panel_Reload(XLInst, m_panel));
    EXPECT_FALSE(cached(*m_panel));
    EXPECT_EQ(openings(m_path), 0);
}

TEST_F(Pipeline, AnUnknownContentIsLoadedWithoutAPicture)
{
    m_panel->ContentType = u"X"_s;
    saveDashboard(u"Morning"_s);
    EXPECT_TRUE(load());
    EXPECT_TRUE(m_pipeline.picTemp.image.isNull());
    EXPECT_EQ(m_viewsApplied, 1);
}

TEST_F(Pipeline, ADamagedCacheIsToldWithItsName)
{
    drawCache();
    QFile file(panelPictureFile(m_panel->ID));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write("not a bitmap");
    file.close();
    EXPECT_FALSE(load());
    ASSERT_EQ(m_user.shown.size(), 1);
    EXPECT_TRUE(m_user.shown.first().contains(file.fileName()));
    EXPECT_TRUE(load(true)) << "a refresh draws it anew";
}

TEST_F(Pipeline, AWorkbookThatCannotBeOpenedLeavesTheOldPicture)
{
    drawCache();
    ASSERT_TRUE(load());
    m_library.books.clear();
    EXPECT_FALSE(load(true));
    EXPECT_FALSE(m_pipeline.picTemp.image.isNull());
    EXPECT_TRUE(m_pipeline.problem.contains(m_path)) << m_pipeline.problem.toStdString();
    EXPECT_EQ(m_user.shown.size(), 1);
}

TEST_F(Pipeline, AnErrorOfTheViewIsTrappedToo)
{
    m_pipeline.applyView = [](clsWorkspacePanel&) { throw RuntimeError(RuntimeError::Overflow); };
    EXPECT_FALSE(load());
    EXPECT_EQ(m_user.shown.size(), 1);
    EXPECT_FALSE(m_pipeline.problem.isEmpty());
}

TEST_F(Pipeline, WithoutAnInstanceOnlyTheLogIsTold)
{
    XLInstance none;
    EXPECT_FALSE(m_pipeline.Panel_Load(none, m_panel, false));
    EXPECT_FALSE(m_pipeline.Panel_Reload(none, m_panel));
    EXPECT_TRUE(m_user.shown.isEmpty());
}

TEST_F(Pipeline, APanelWithoutASourceSaysSo)
{
    m_panel->SourceID = 0;
    EXPECT_FALSE(load());
    EXPECT_EQ(m_user.shown, QStringList{u"Panel has no source defined."_s});
}

/// Drawings that the host cannot draw, as the embedded one has them.
class UndrawingSheet : public test::PlainSheet
{
public:
    using PlainSheet::PlainSheet;
    QImage CopyShapePicture(const QString& name, double) override
    {
        throw RuntimeError(RuntimeError::ApplicationDefined, u"The chart \"%1\" cannot be drawn."_s.arg(name));
    }
    QStringList undrawn(const CellArea& area) override
    {
        return area.contains(3, 3) ? QStringList{u"the chart \"Trend\""_s} : QStringList();
    }
};

/// A sheet that turns out to be damaged when it is first read.
class DamagedSheet : public test::PlainSheet
{
public:
    using PlainSheet::PlainSheet;
    CellArea usedArea() override { throw damage(); }
    QStringList ShapeNames() override { throw damage(); }

private:
    static RuntimeError damage()
    {
        return {RuntimeError::ApplicationDefined, u"The sheet \"Data\" of \"sales.xlsx\" is damaged."_s};
    }
};

/// A host that holds one workbook of one sheet.
class OneSheetHost : public Application, public Workbook
{
public:
    explicit OneSheetHost(std::shared_ptr<test::PlainSheet> sheet) : m_sheet(std::move(sheet)) {}

    std::shared_ptr<Workbook> Open(const QString&, bool) override { return {std::shared_ptr<void>(), this}; }
    int WorkbooksCount() const override { return 0; }
    std::shared_ptr<Workbook> WorkbookItem(int) override { return nullptr; }
    std::shared_ptr<Workbook> ActiveWorkbook() override { return nullptr; }
    std::shared_ptr<Worksheet> ActiveSheet() override { return m_sheet; }
    void Quit() override {}
    QString FullName() const override { return u"sales.xlsx"_s; }
    QString Name() const override { return u"sales.xlsx"_s; }
    QStringList WorksheetNames() const override { return {m_sheet->Name()}; }
    std::shared_ptr<Worksheet> WorksheetByName(const QString&) override { return m_sheet; }
    void Activate() override {}
    void RefreshAll() override {}
    void Save() override {}
    void Close() override {}

private:
    std::shared_ptr<test::PlainSheet> m_sheet;
};

class Undrawn : public Pipeline
{
protected:
    void SetUp() override
    {
        Pipeline::SetUp();
        const auto sheet = std::make_shared<UndrawingSheet>(u"Data"_s);
        sheet->put(u"B2"_s, u"1"_s).shape(u"Trend"_s);
        m_host = std::make_shared<OneSheetHost>(sheet);
    }

    bool loadFromHost(bool refresh = false) { return m_pipeline.Panel_Load(m_host, m_panel, refresh); }

    XLInstance m_host;
};

TEST_F(Undrawn, AChartOnADamagedSheetIsNotCalledMissing)
{
    m_host = std::make_shared<OneSheetHost>(std::make_shared<DamagedSheet>(u"Data"_s));
    m_panel->ContentType = u"C"_s;
    m_panel->PicRange = u"Trend"_s;
    saveDashboard(u"Morning"_s);
    EXPECT_FALSE(loadFromHost());
    ASSERT_EQ(m_user.shown.size(), 1);
    EXPECT_TRUE(m_user.shown.first().endsWith(u"The sheet \"Data\" of \"sales.xlsx\" is damaged."_s))
        << m_user.shown.first().toStdString();
}

TEST_F(Undrawn, AGapInThePictureIsToldAndToldAgainFromTheCache)
{
    ASSERT_TRUE(loadFromHost());
    const QString notice = u"Not shown here: the chart \"Trend\"."_s;
    EXPECT_EQ(m_pipeline.picTemp.notice, notice);
    m_pipeline.picTemp = {};
    ASSERT_TRUE(loadFromHost());
    EXPECT_EQ(m_pipeline.picTemp.notice, notice);
    m_panel->PicRange = u"$B$2:$B$2``"_s;
    saveDashboard(u"Morning"_s);
    ASSERT_TRUE(loadFromHost(true));
    EXPECT_TRUE(m_pipeline.picTemp.notice.isEmpty()) << "the gap lies outside now";
}

TEST_F(Undrawn, AChartThatIsThereIsExplainedNotOfferedForDeletionAndNeverKept)
{
    m_panel->ContentType = u"C"_s;
    m_panel->PicRange = u"Trend"_s;
    saveDashboard(u"Morning"_s);
    EXPECT_TRUE(loadFromHost());
    EXPECT_FALSE(m_pipeline.picTemp.image.isNull());
    EXPECT_EQ(m_pipeline.picTemp.notice, u"Panel 'Sales' shows no current picture."_s);
    EXPECT_FALSE(cached(*m_panel)) << "the next pass tries again";
    EXPECT_TRUE(m_user.shown.isEmpty());
}

} // namespace
