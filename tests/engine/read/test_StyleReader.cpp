#include "engine/read/xlsx/StyleReader.h"

#include "support/TextTable.h"

#include <gtest/gtest.h>

namespace lumivane::test {

using namespace engine;
using namespace Qt::StringLiterals;

namespace {

StyleTable stylesOf(const std::string& xml)
{
    pugi::xml_document document;
    EXPECT_TRUE(document.load_string(("<styleSheet>" + xml + "</styleSheet>").c_str()));
    Palette palette;
    return readStyles(document.document_element(), palette);
}

QString hex(QRgb color)
{
    return QString::number(color, 16);
}

} // namespace

TEST(StyleReader, ReadsFonts)
{
    const StyleTable styles = stylesOf("<x:fonts><x:font><x:sz val='12'/><x:name val='Cambria'/></x:font>"
                                       "<font><b val='false'/><i/><strike val='1'/><u/><color theme='4' tint='0.4'/>"
                                       "<vertAlign val='subscript'/><sz val='100000'/></font>"
                                       "<font><u val='none'/><color auto='1'/></font></x:fonts>");
    ASSERT_EQ(styles.fonts.size(), 3u);
    EXPECT_TRUE((styles.fonts[0] == FontStyle{u"Cambria"_s, 12}));
    const FontStyle& second = styles.fonts[1];
    // A size that no font can have is left out.
    const FontStyle expected{u"Calibri"_s, 11, false, true, true, Underline::Single, Script::Subscript, 0xff95b3d7};
    EXPECT_TRUE(second == expected) << hex(second.color);
    EXPECT_TRUE(styles.fonts[2] == FontStyle{});
}

TEST(StyleReader, ReadsFillsAndBorders)
{
    const QString none = u"0 ff000000 ffffffff"_s;
    const StyleTable styles = stylesOf(
        "<fills><fill><patternFill patternType='none'/></fill>"
        "<fill><patternFill patternType='solid'><fgColor rgb='00FFCC00'/><bgColor indexed='64'/></patternFill></fill>"
        "<fill><patternFill patternType='lightUp'><fgColor indexed='12'/></patternFill></fill>"
        "<fill><gradientFill degree='90'><stop position='1'><color rgb='FF445566'/></stop><stop position='0.5'>"
        "<color indexed='12'/></stop><stop position='0'><color rgb='FF112233'/></stop></gradientFill></fill>"
        "<fill><gradientFill type='path' left='0.2' right='0.7' top='7'><stop><color rgb='FF112233'/></stop>"
        "</gradientFill></fill><fill><gradientFill/></fill><fill><patternFill patternType='odd'/></fill></fills>"
        "<borders><border diagonalUp='1'><start style='thin'><color rgb='FFFF0000'/></start><right style='double'/>"
        "<top/><bottom style='mediumDashDotDot'/><diagonal style='hair'/></border></borders>");
    QStringList fills;
    for (const FillStyle& fill : styles.fills) {
        QString text = u"%1 %2 %3"_s.arg(int(fill.pattern)).arg(hex(fill.fore), hex(fill.back));
        if (fill.gradient) {
            text += u" %1"_s.arg(fill.gradient->degrees);
            for (const GradientStop& stop : fill.gradient->stops)
                text += u" %1:%2"_s.arg(stop.position).arg(hex(stop.color));
            if (const auto& inner = fill.gradient->inner)
                text += u" from %1 %2 %3 %4"_s.arg(inner->x()).arg(inner->y()).arg(inner->width()).arg(inner->height());
        }
        fills << text;
    }
    // Colours of cells are never transparent; a pattern that nobody knows is none, as is a gradient without colours.
    const int gradient = int(Pattern::Gradient);
    EXPECT_EQ(fills, QStringList({none, u"%1 ffffcc00 ff000000"_s.arg(int(Pattern::Solid)),
                                  u"%1 ff0000ff ffffffff"_s.arg(int(Pattern::LightUp)),
                                  u"%1 ff112233 ff445566 90 0:ff112233 0.5:ff0000ff 1:ff445566"_s.arg(gradient),
                                  u"%1 ff112233 ff112233 0 0:ff112233 from 0.2 0 0.5 1"_s.arg(gradient), none, none}));
    const BorderStyle& border = styles.borders[0];
    EXPECT_TRUE((border.left == BorderLine{LineStyle::Thin, 0xffff0000}));
    EXPECT_TRUE((border.right == BorderLine{LineStyle::Double, 0xff000000}));
    EXPECT_TRUE(border.top == BorderLine{} && border.bottom.style == LineStyle::MediumDashDotDot);
    EXPECT_TRUE(border.diagonal.style == LineStyle::Hair && border.diagonalUp && !border.diagonalDown);
}

TEST(StyleReader, ReadsCellStyles)
{
    const StyleTable styles = stylesOf(
        "<numFmts><numFmt numFmtId='164' formatCode='0.0&quot; kg&quot;'/><numFmt numFmtId='14' formatCode='yyyy'/>"
        "<numFmt numFmtId='165' formatCode='" +
        std::string(256, '0') +
        "'/>"
        "</numFmts><fonts><font/><font><b/></font></fonts><cellXfs><xf numFmtId='0'/>"
        "<xf numFmtId='164' fontId='1' fillId='99' applyFont='0' quotePrefix='1'><alignment "
        "horizontal='centerContinuous' "
        "vertical='top' textRotation='135' indent='3' wrapText='1' shrinkToFit='1' justifyLastLine='1' "
        "readingOrder='2'/></xf>"
        "<xf numFmtId='14'/><xf numFmtId='10'/><xf numFmtId='999'/><xf><alignment textRotation='255'/></xf>"
        "<xf><alignment textRotation='181' vertical='odd'/></xf><xf numFmtId='165'/><xf numFmtId='61'/></cellXfs>");
    ASSERT_EQ(styles.cells.size(), 9u);
    const CellStyle& second = styles.cells[1];
    EXPECT_EQ(styles.numberFormats[second.numberFormat], u"0.0\" kg\""_s);
    EXPECT_EQ(second.font, 1) << "what a cell's style says holds, applied or not";
    EXPECT_EQ(second.fill, 0) << "there is no such fill";
    EXPECT_EQ(second.horizontal, Horizontal::CenterAcross);
    EXPECT_EQ(second.vertical, Vertical::Top);
    EXPECT_EQ(second.rotation, -45);
    EXPECT_EQ(second.indent, 3);
    EXPECT_TRUE(second.spaceAround);
    EXPECT_EQ(second.readingOrder, 2);
    EXPECT_TRUE(second.wrap && second.shrinkToFit && second.quotePrefix);
    const auto format = [&](int index) { return styles.numberFormats[styles.cells[index].numberFormat]; };
    EXPECT_EQ(format(0), u"General"_s);
    EXPECT_EQ(format(2), u"yyyy"_s) << "the file's own code comes before the built-in one";
    EXPECT_EQ(format(3), u"0.00%"_s);
    EXPECT_EQ(format(4), u"General"_s);
    EXPECT_EQ(format(7), u"General"_s) << "longer than any program takes";
    EXPECT_EQ(format(8), u"t#,##0"_s);
    EXPECT_EQ(styles.cells[5].rotation, 255);
    EXPECT_EQ(styles.cells[6].rotation, 0);
    EXPECT_EQ(styles.cells[6].vertical, Vertical::Bottom);
}

TEST(Palette, ResolvesColours)
{
    pugi::xml_document document;
    ASSERT_TRUE(
        document.load_string("<a:theme xmlns:a='x'><a:themeElements><a:clrScheme><a:dk1><a:sysClr val='windowText' "
                             "lastClr='101010'/></a:dk1>"
                             "<a:lt1><a:srgbClr val='FAFAFA'/></a:lt1><a:dk2><a:srgbClr val='222222'/></a:dk2>"
                             "<a:lt2><a:srgbClr val='DDDDDD'/></a:lt2><a:accent1><a:srgbClr val='4472C4'/></a:accent1>"
                             "</a:clrScheme></a:themeElements></a:theme>"));
    Palette palette;
    palette.readTheme(document.document_element());
    pugi::xml_document colors;
    ASSERT_TRUE(colors.load_string("<colors><indexedColors><rgbColor rgb='00123456'/></indexedColors></colors>"));
    palette.readIndexed(colors.document_element());

    for (const auto& [name, rgb, theme, indexed, tint, expected] : textTable<6>(R"(
        rgb with alpha           | 80FF8000 |    |    |                     | ffff8000
        rgb without alpha        | FF8000   |    |    |                     | ffff8000
        no rgb                   | FF80     |    |    |                     | none
        light comes first in the numbers |  | 0  |    |                     | fffafafa
        dark                     |          | 1  |    |                     | ff101010
        second light             |          | 2  |    |                     | ffdddddd
        second dark              |          | 3  |    |                     | ff222222
        accent, darker           |          | 4  |    | -0.249977111117893  | ff2f5597
        accent, lighter          |          | 4  |    | 0.79998168889431442 | ffdae3f3
        grey, darker             |          | 0  |    | -0.5                | ff7d7d7d
        black, lighter           | FF000000 |    |    | 0.5                 | ff808080
        no such theme colour     |          | 12 |    |                     | none
        own index                |          |    | 0  |                     | ff123456
        customary index          |          |    | 10 |                     | ffff0000
        window's text            |          |    | 64 |                     | ff000000
        window's background      |          |    | 65 |                     | ffffffff
        no such index            |          |    | 66 |                     | none
        nothing                  |          |    |    |                     | none)")) {
        const std::string texts[] = {rgb.toStdString(), theme.toStdString(), indexed.toStdString(), tint.toStdString()};
        const auto given = [&](int i) { return texts[i].empty() ? std::string_view() : std::string_view(texts[i]); };
        const std::optional<QRgb> color = palette.color(given(0), given(1), given(2), given(3));
        EXPECT_EQ(color ? hex(*color) : u"none"_s, expected) << name;
    }
}

} // namespace lumivane::test
