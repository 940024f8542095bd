#include "engine/read/WorkbookFile.h"
#include "engine/show/ShownSheet.h"
#include "support/TextTable.h"
#include "support/XlsxWriter.h"

using namespace Qt::StringLiterals;

namespace lumivane::engine {
namespace {

using namespace test;

/// A sheet of one small chart in A1, over the values of its first row from B1 on and those of the hidden column F.
std::shared_ptr<ShownSheet> sheetWith(const std::string& attributes, const std::string& values = "B1:F1")
{
    WorkbookParts parts(
        {{"Data",
          "<cols><col min='6' max='6' width='9' hidden='1'/></cols><sheetData><row r='1' ht='30' customHeight='1'>"
          "<c r='B1'><v>2</v></c><c r='C1'><v>-2</v></c><c r='E1'><v>6</v></c><c r='F1'><v>9</v></c></row>"
          "<row r='2'><c r='B2'><v>10</v></c><c r='C2'><v>30</v></c><c r='D2'><v>20</v></c><c "
          "r='E2'><v>50</v></c></row>"
          "</sheetData><extLst><ext><x14:sparklineGroups><x14:sparklineGroup " +
              attributes +
              "><x14:colorSeries rgb='FF0000FF'/><x14:colorNegative rgb='FFFF0000'/><x14:colorLast rgb='FF00FF00'/>"
              "<xm:f>Data!B2:E2</xm:f><x14:sparklines><x14:sparkline><xm:f>Data!" +
              values +
              "</xm:f><xm:sqref>A1</xm:sqref></x14:sparkline><x14:sparkline><xm:f>Data!B2:C2</xm:f><xm:sqref>A2</"
              "xm:sqref>"
              "</x14:sparkline></x14:sparklines></x14:sparklineGroup></x14:sparklineGroups></ext></extLst>",
          ""}});
    const auto file = WorkbookFile::open(writeTemporary(u"Small charts.xlsx"_s, parts.package()));
    return std::make_shared<ShownSheet>(file->content(), file->sheet(0), nullptr, WorkbookFile::sheetsOf(file));
}

TEST(Sparklines, PointsFollowGapsHiddenColumnsDatesAndScales)
{
    for (const auto& [name, attributes, expected] : textTable<3>(R"(
        as it is       |                                          | -2 to 6: 0=2 0.33=-2 0.67=0 1=6
        gaps           | displayEmptyCellsAs='gap'                | -2 to 6: 0=2 0.33=-2 0.67=- 1=6
        hidden too     | displayHidden='1'                        | -2 to 9: 0=2 0.25=-2 0.5=0 0.75=6 1=9
        from the right | rightToLeft='1'                          | -2 to 6: 1=2 0.67=-2 0.33=0 0=6
        by date        | dateAxis='1'                             | -2 to 6: 0=2 0.25=0 0.5=-2 1=6
        of the group   | minAxisType='group' maxAxisType='group'  | -2 to 30: 0=2 0.33=-2 0.67=0 1=6
        given          | minAxisType='custom' manualMin='-10'     | -10 to 6: 0=2 0.33=-2 0.67=0 1=6)")) {
        const auto sheet = sheetWith(attributes.toStdString());
        const SparklineShown* shown = sheet->sparkline(1, 1);
        ASSERT_TRUE(shown);
        QStringList points;
        for (const auto& point : shown->points)
            points << QString::number(point.place, 'g', 2) + u'=' +
                          (point.value ? QString::number(*point.value) : u"-"_s);
        EXPECT_EQ(u"%1 to %2: "_s.arg(shown->least).arg(shown->most) + points.join(u' '), expected) << name;
    }
    EXPECT_FALSE(sheetWith("", "#REF!")->sparkline(1, 1));
}

} // namespace
} // namespace lumivane::engine
