#include "panel/PanelPipeline.h"
#include "panel/ProjectFixture.h"
#include "repository/Database.h"
#include "repository/clsWorkspacePanel.h"

#include <QColor>

// Thresholds on the road from the workbook to the panel's picture.

namespace lumivane::test {
namespace {

using namespace Qt::StringLiterals;

/// A panel whose picture begins with B2, loaded by a worker.
class PanelThresholds : public ProjectFixture
{
protected:
    PanelThresholds() : book(addBook(u"a.xlsx"_s)), panel(addPanel(book, u"Figures"_s)) { saveDashboard(u"Sales"_s); }

    void watch(const QString& value, const QString& comparison)
    {
        m_library.books[book].front().put(u"B2"_s, value);
        gDB->Execute(u"INSERT INTO LvnpanelThresholds VALUES (%1, 2, 2, '%2', 'color', '', '')"_s.arg(panel->ID).arg(
            comparison));
    }
    /// Drawn anew and then taken from the cache, the panel must look the same.
    void expect(bool isMarked, const QString& notice)
    {
        XLInstance host = worker();
        for (const bool refresh : {true, false}) {
            PanelPipeline pipeline;
            ASSERT_TRUE(pipeline.Panel_Load(host, panel, refresh)) << "the figures are shown in any case";
            EXPECT_EQ(pipeline.picTemp.image.pixelColor(3, 3) == QColor(128, 180, 180), isMarked) << refresh;
            EXPECT_EQ(pipeline.picTemp.notice, notice) << refresh;
        }
        EXPECT_EQ(m_user.shown, QStringList{});
    }

    QString book;
    std::shared_ptr<clsWorkspacePanel> panel;
};

TEST_F(PanelThresholds, ShowInThePictureAndItsCache)
{
    watch(u"1200"_s, u">1000"_s);
    expect(true, {});
}

TEST_F(PanelThresholds, ThatCannotBeAppliedAreToldBesideThePicture)
{
    watch(u"n/a"_s, u">1000"_s);
    expect(false, u"Not all thresholds were applied: The cell B2 of sheet [Data] is watched for a limit and holds "
                  "[n/a], which is no number."_s);
}

} // namespace
} // namespace lumivane::test
