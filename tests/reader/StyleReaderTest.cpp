#include "host/embedded/reader/StyleReader.h"

#include "host/embedded/reader/WorkbookReader.h"
#include "support/QtPrinting.h"
#include "support/XlsxWriter.h"

#include <gtest/gtest.h>

namespace lumivane::test {

using namespace embedded;
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
    EXPECT_FALSE(second.bold);
    EXPECT_TRUE(second.italic && second.strikeOut);
    EXPECT_EQ(second.underline, Underline::Single);
    EXPECT_EQ(second.script, Script::Subscript);
    EXPECT_EQ(second.points, 11) << "a size that no font can have";
    EXPECT_EQ(hex(second.color), u"ff95b3d7"_s);
    EXPECT_TRUE(styles.fonts[2] == FontStyle{});
}

TEST(StyleReader, ReadsFillsAndBorders)
{
    const StyleTable styles = stylesOf(
        "<fills><fill><patternFill patternType='none'/></fill>"
        "<fill><patternFill patternType='solid'><fgColor rgb='00FFCC00'/><bgColor indexed='64'/></patternFill></fill>"
        "<fill><patternFill patternType='lightUp'><fgColor indexed='12'/></patternFill></fill>"
        "<fill><gradientFill degree='90'><stop position='0'><color rgb='FF112233'/></stop><stop position='1'>"
        "<color rgb='FF445566'/></stop></gradientFill></fill><fill><patternFill patternType='odd'/></fill></fills>"
        "<borders><border diagonalUp='1'><start style='thin'><color rgb='FFFF0000'/></start><right style='double'/>"
        "<top/><bottom style='mediumDashDotDot'/><diagonal style='hair'/></border></borders>");
    ASSERT_EQ(styles.fills.size(), 5u);
    EXPECT_EQ(styles.fills[0].pattern, Pattern::None);
    EXPECT_EQ(styles.fills[1].pattern, Pattern::Solid);
    EXPECT_EQ(hex(styles.fills[1].fore), u"ffffcc00"_s) << "colours of cells are never transparent";
    EXPECT_EQ(hex(styles.fills[1].back), u"ff000000"_s);
    EXPECT_EQ(styles.fills[2].pattern, Pattern::LightUp);
    EXPECT_EQ(hex(styles.fills[2].fore), u"ff0000ff"_s);
    EXPECT_EQ(styles.fills[3].pattern, Pattern::Gradient);
    EXPECT_EQ(hex(styles.fills[3].back), u"ff445566"_s);
    EXPECT_EQ(styles.fills[3].gradientDegrees, 90);
    EXPECT_EQ(styles.fills[4].pattern, Pattern::None);
    const BorderStyle& border = styles.borders[0];
    EXPECT_TRUE((border.left == BorderLine{LineStyle::Thin, 0xffff0000}));
    EXPECT_TRUE((border.right == BorderLine{LineStyle::Double, 0xff000000}));
    EXPECT_EQ(border.top.style, LineStyle::None);
    EXPECT_EQ(border.bottom.style, LineStyle::MediumDashDotDot);
    EXPECT_EQ(border.diagonal.style, LineStyle::Hair);
    EXPECT_TRUE(border.diagonalUp);
    EXPECT_FALSE(border.diagonalDown);
}

TEST(StyleReader, ReadsCellStyles)
{
    const StyleTable styles = stylesOf(
        "<numFmts><numFmt numFmtId='164' formatCode='0.0&quot; kg&quot;'/><numFmt numFmtId='14' formatCode='yyyy'/>"
        "</numFmts><fonts><font/><font><b/></font></fonts><cellXfs><xf numFmtId='0'/>"
        "<xf numFmtId='164' fontId='1' fillId='99' applyFont='0' quotePrefix='1'><alignment "
        "horizontal='centerContinuous' "
        "vertical='top' textRotation='135' indent='3' wrapText='1' shrinkToFit='1' readingOrder='2'/></xf>"
        "<xf numFmtId='14'/><xf numFmtId='10'/><xf numFmtId='999'/><xf><alignment textRotation='255'/></xf>"
        "<xf><alignment textRotation='181' vertical='odd'/></xf></cellXfs>");
    ASSERT_EQ(styles.cells.size(), 7u);
    const CellStyle& second = styles.cells[1];
    EXPECT_EQ(styles.numberFormats[second.numberFormat], u"0.0\" kg\""_s);
    EXPECT_EQ(second.font, 1) << "what a cell's style says holds, applied or not";
    EXPECT_EQ(second.fill, 0) << "there is no such fill";
    EXPECT_EQ(second.horizontal, Horizontal::CenterAcross);
    EXPECT_EQ(second.vertical, Vertical::Top);
    EXPECT_EQ(second.rotation, -45);
    EXPECT_EQ(second.indent, 3);
    EXPECT_EQ(second.readingOrder, 2);
    EXPECT_TRUE(second.wrap && second.shrinkToFit && second.quotePrefix);
    const auto format = [&](int index) { return styles.numberFormats[styles.cells[index].numberFormat]; };
    EXPECT_EQ(format(0), u"General"_s);
    EXPECT_EQ(format(2), u"yyyy"_s) << "the file's own code comes before the built-in one";
    EXPECT_EQ(format(3), u"0.00%"_s);
    EXPECT_EQ(format(4), u"General"_s);
    EXPECT_EQ(styles.cells[5].rotation, 255);
    EXPECT_EQ(styles.cells[6].rotation, 0);
    EXPECT_EQ(styles.cells[6].vertical, Vertical::Bottom);
}

TEST(StyleReader, HasADefaultForEverything)
{
    for (const char* xml : {"", "<fonts/><fills/><borders/><cellXfs/>"}) {
        const StyleTable styles = stylesOf(xml);
        EXPECT_EQ(styles.cells.size(), 1u);
        EXPECT_EQ(styles.defaultFont().family, u"Calibri"_s);
        EXPECT_EQ(styles.numberFormats.front(), u"General"_s);
    }
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

    const std::string_view none;
    const struct
    {
        const char* name;
        std::string_view rgb, theme, indexed, tint;
        const char* expected;
    } cases[] = {
        {"rgb with alpha", "80FF8000", none, none, none, "ffff8000"},
        {"rgb without alpha", "FF8000", none, none, none, "ffff8000"},
        {"no rgb", "FF80", none, none, none, "none"},
        {"light comes first in the numbers", none, "0", none, none, "fffafafa"},
        {"dark", none, "1", none, none, "ff101010"},
        {"second light", none, "2", none, none, "ffdddddd"},
        {"second dark", none, "3", none, none, "ff222222"},
        {"accent", none, "4", none, none, "ff4472c4"},
        {"accent, darker", none, "4", none, "-0.249977111117893", "ff2f5597"},
        {"accent, lighter", none, "4", none, "0.79998168889431442", "ffdae3f3"},
        {"grey, darker", none, "0", none, "-0.5", "ff7d7d7d"},
        {"black, lighter", "FF000000", none, none, "0.5", "ff808080"},
        {"no such theme colour", none, "12", none, none, "none"},
        {"own index", none, none, "0", none, "ff123456"},
        {"customary index", none, none, "10", none, "ffff0000"},
        {"window's text", none, none, "64", none, "ff000000"},
        {"window's background", none, none, "65", none, "ffffffff"},
        {"no such index", none, none, "66", none, "none"},
        {"nothing", none, none, none, none, "none"},
    };
    for (const auto& one : cases) {
        const std::optional<QRgb> color = palette.color(one.rgb, one.theme, one.indexed, one.tint);
        EXPECT_EQ(color ? hex(*color) : u"none"_s, QString::fromLatin1(one.expected)) << one.name;
    }
}

} // namespace lumivane::test
