#include "range/SheetFile.h"

#include "repository/Database.h"
#include "repository/clsWorkspacePanel.h"
#include "support/ThrownError.h"

#include <QColor>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace lumivane;
using namespace lumivane::test;
using namespace Qt::StringLiterals;

namespace {

const QColor high(128, 180, 180);
const QColor low(180, 128, 180);

class MarkedCells : public testing::Test
{
protected:
    MarkedCells()
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

TEST_F(MarkedCells, MarkNumbersOfTheSheetInItsPicture)
{
    // The range has moved down by four rows.
    const auto sheet = openSheet(u"A1=7|B8=100|C8=-2.5|B9=0.3|C9=1e20|B4=500|C10=1"_s);
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
        EXPECT_EQ(ground(*sheet, address), high) << address;
    EXPECT_NE(ground(*sheet, u"B4"_s), high) << "where the figure was before";
}

TEST_F(MarkedCells, RefuseATextWithItsPlace)
{
    const auto sheet = openSheet(u"B4=n/a|C6=1"_s);
    rule(4, 2, u">100"_s, u""_s);
    panel.GetAdjRange(*sheet);
    const QString failure = failureOf([&] { panel.lightCells(*sheet, project); }).text;
    EXPECT_TRUE(failure.startsWith(u"The cell B4 of sheet ["_s)) << failure;
    EXPECT_TRUE(failure.contains(u"holds [n/a], which is no number."_s)) << failure;
}

} // namespace
