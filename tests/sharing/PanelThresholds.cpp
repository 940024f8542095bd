#include "panel/PanelPipeline.h"
#include "panel/ProjectFixture.h"
#include "repository/Database.h"
#include "repository/clsWorkspacePanel.h"
#include "session/modMain.h"

#include <QColor>

// Thresholds on the road from the workbook to the panel's picture.

namespace lumivane::test {
namespace {

using namespace Qt::StringLiterals;

class PanelThresholds : public ProjectFixture
{
protected:
    PanelThresholds() : book(addBook(u"a.xlsx"_s)), panel(addPanel(book, u"Figures"_s)) { saveDashboard(u"Sales"_s); }

    void rule(const QString& comparison)
    {
        gDB->Execute(u"INSERT INTO LvnpanelThresholds VALUES (%1, 2, 2, '%2', 'color', '', '')"_s.arg(panel->ID).arg(
            comparison));
    }
    /// B2 is the top left cell of the picture.
    bool isMarked(const PanelPipeline& pipeline) const
    {
        return pipeline.picTemp.image.pixelColor(3, 3) == QColor(128, 180, 180);
    }

    QString book;
    std::shared_ptr<clsWorkspacePanel> panel;
};

TEST_F(PanelThresholds, ShowInThePictureAndItsCache)
{
    m_library.books[book].front().put(u"B2"_s, u"1200"_s);
    rule(u">1000"_s);
    XLInstance host = worker();
    PanelPipeline pipeline;
    ASSERT_TRUE(pipeline.Panel_Load(host, panel, true));
    EXPECT_TRUE(isMarked(pipeline));
    EXPECT_EQ(pipeline.picTemp.notice, QString());
    PanelPipeline again;
    ASSERT_TRUE(again.Panel_Load(host, panel, false));
    EXPECT_TRUE(isMarked(again));
}

TEST_F(PanelThresholds, LeaveThePictureAloneWithoutRules)
{
    m_library.books[book].front().put(u"B2"_s, u"1200"_s);
    XLInstance host = worker();
    PanelPipeline pipeline;
    ASSERT_TRUE(pipeline.Panel_Load(host, panel, true));
    EXPECT_FALSE(isMarked(pipeline));
}

TEST_F(PanelThresholds, ThatCannotBeAppliedAreToldBesideThePicture)
{
    m_library.books[book].front().put(u"B2"_s, u"n/a"_s);
    rule(u">1000"_s);
    XLInstance host = worker();
    PanelPipeline pipeline;
    ASSERT_TRUE(pipeline.Panel_Load(host, panel, true)) << "the figures are shown all the same";
    const QString told =
        u"Not all thresholds were applied: The cell B2 of sheet [Data] is watched for a limit and holds "
        "[n/a], which is no number."_s;
    EXPECT_EQ(pipeline.picTemp.notice, told);
    PanelPipeline again;
    ASSERT_TRUE(again.Panel_Load(host, panel, false));
    EXPECT_EQ(again.picTemp.notice, told);
    EXPECT_EQ(m_user.shown, QStringList{});
}

} // namespace
} // namespace lumivane::test
