#include "Engines.h"

#include "repository/Database.h"
#include "repository/clsWorkspacePanel.h"

#include <QColor>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace lumivane;
using namespace lumivane::test;
using namespace Qt::StringLiterals;

namespace {

const QColor high(128, 180, 180);
const QColor low(180, 128, 180);

/// Every promise about marked cells holds whatever opens the workbook.
class ThresholdEngines : public testing::TestWithParam<Engine>
{
protected:
    ThresholdEngines()
    {
        Database::create(folder.filePath(u"p.lvdu"_s));
        project = Database::open(folder.filePath(u"p.lvdu"_s), databaseConnect());
        panel.ID = 3;
        panel.PicRange = u"$B$4:$C$6`1:1`A:A"_s;
        panel.RelativeTo = u"bottom"_s;
        panel.ContentMatch = u"bottom=$C$6"_s;
    }
    void rule(int row, int column, const QString& highExp, const QString& lowExp)
    {
        project->Execute(u"INSERT INTO LvnpanelThresholds VALUES (3, %1, %2, '%3', 'color', '%4', 'color')"_s.arg(row)
                             .arg(column)
                             .arg(highExp, lowExp));
    }
    static QColor ground(Worksheet& sheet, const QString& address)
    {
        return sheet.CopyPicture(sheet.Range(address).area()).pixelColor(2, 2);
    }

    QTemporaryDir folder;
    std::shared_ptr<Database> project;
    clsWorkspacePanel panel;
};

TEST_P(ThresholdEngines, MarkNumbersOfTheSheetInItsPicture)
{
    // The range has moved down by four rows.
    const auto sheet = GetParam().open(
        {{u"A1=7"_s, u"B8=100"_s, u"C8=-2.5"_s, u"B9=0.3"_s, u"C9=1e20"_s, u"B4=500"_s, u"C10=1"_s}, {}, {}});
    rule(4, 2, u">100"_s, u">=100"_s);
    rule(4, 3, u"<-2"_s, u""_s);
    rule(5, 2, u"=0.3"_s, u""_s);
    rule(5, 3, u">1e19"_s, u""_s);
    rule(6, 2, u"=0"_s, u""_s); // an empty cell
    rule(1, 1, u">5"_s, u""_s); // the fixed corner
    panel.GetAdjRange(*sheet);
    ASSERT_EQ(panel.rowOffset(), 4);
    EXPECT_EQ(panel.MapCell(4, 2, *sheet), u"B8"_s);
    EXPECT_EQ(panel.MapCell(1, 1, *sheet), u"A1"_s);
    panel.lightCells(*sheet, project);
    EXPECT_EQ(ground(*sheet, u"B8"_s), low);
    for (const QString& address : {u"C8"_s, u"B9"_s, u"C9"_s, u"B10"_s, u"A1"_s})
        EXPECT_EQ(ground(*sheet, address), high) << address.toStdString();
    EXPECT_NE(ground(*sheet, u"B4"_s), high) << "where the figure was before";
}

TEST_P(ThresholdEngines, RefuseATextWithItsPlace)
{
    const auto sheet = GetParam().open({{u"B4=n/a"_s, u"C6=1"_s}, {}, {}});
    rule(4, 2, u">100"_s, u""_s);
    panel.GetAdjRange(*sheet);
    try {
        panel.lightCells(*sheet, project);
        ADD_FAILURE() << "a text was compared";
    } catch (const RuntimeError& error) {
        EXPECT_TRUE(error.description().startsWith(u"The cell B4 of sheet ["_s)) << error.what();
        EXPECT_TRUE(error.description().contains(u"holds [n/a], which is no number."_s)) << error.what();
    }
}

INSTANTIATE_TEST_SUITE_P(Hosts, ThresholdEngines, testing::ValuesIn(engines, engines + engineCount),
                         [](const auto& row) { return row.param.name; });

} // namespace
