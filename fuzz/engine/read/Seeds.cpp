#include "support/XlsxWriter.h"

#include <QDir>
#include <QFile>
#include <cstdio>
#include <string>

// Writes first inputs for the fuzz targets into folders named after them, below the folder given.

namespace {

using lumivane::test::WorkbookParts;

const std::string sheet =
    "<worksheet xmlns:r='r'><dimension ref='A1:C9'/><sheetViews><sheetView showGridLines='0' zoomScale='90'>"
    "<pane xSplit='1' ySplit='2' topLeftCell='B3' activePane='bottomRight' state='frozen'/>"
    "<selection pane='bottomRight' activeCell='B3' sqref='B3:C4'/></sheetView></sheetViews>"
    "<sheetFormatPr defaultRowHeight='15' zeroHeight='0'/><cols><col min='1' max='3' width='9.5' customWidth='1' "
    "hidden='0' style='1' outlineLevel='1' collapsed='1'/></cols><sheetData>"
    "<row r='1' ht='20' customHeight='1' s='1' customFormat='1' spans='1:3'><c r='A1' t='s' s='1'><v>0</v></c>"
    "<c r='B1'><v>1.5E2</v></c><c r='C1' t='str'><f>A1&amp;1</f><v>x_x000D_y</v></c></row>"
    "<row r='3' hidden='1'><c r='B3' t='b'><v>1</v></c><c t='e'><v>#N/A</v></c><c r='A2' t='d'><v>2026-11-24T10:30:00"
    "</v></c></row><x:row><x:c t='inlineStr'><is><r><rPr><b/><sz val='9'/><color theme='4' tint='-0.5'/></rPr><t>a</t>"
    "</r><rPh><t>p</t></rPh></is></x:c><c><f/></c></x:row></sheetData><autoFilter ref='A1:C9'/>"
    "<mergeCells><mergeCell ref='A1:B2'/><mergeCell ref='B2:C3'/></mergeCells><drawing r:id='d'/>"
    "<tableParts><tablePart r:id='t'/></tableParts><!-- c --><![CDATA[x]]></worksheet>";

const std::string texts =
    "<sst><si><t>zero &#x20ac;</t></si><si><r><t>a</t></r><r><rPr><i/><u val='double'/></rPr><t>b</t></r></si></sst>";

const std::string styles =
    "<styleSheet><numFmts><numFmt numFmtId='164' formatCode='0.0'/></numFmts><fonts><font><b/><sz val='11'/>"
    "<color indexed='9'/><name val='Arial'/></font></fonts><fills><fill><patternFill patternType='solid'><fgColor "
    "theme='1' tint='0.5'/></patternFill></fill><fill><gradientFill degree='45'><stop><color rgb='FF112233'/></stop>"
    "</gradientFill></fill></fills><borders><border><left style='thin'><color auto='1'/></left></border></borders>"
    "<cellXfs><xf numFmtId='164' fontId='0' fillId='1' borderId='0'><alignment textRotation='90' indent='2' "
    "wrapText='1'/></xf><xf numFmtId='14'/></cellXfs><colors><indexedColors><rgbColor rgb='00FF0000'/></indexedColors>"
    "</colors></styleSheet>";

const std::string theme =
    "<a:theme><a:themeElements><a:clrScheme><a:dk1><a:sysClr lastClr='000000'/></a:dk1><a:lt1><a:srgbClr val='FFFFFF'/>"
    "</a:lt1></a:clrScheme></a:themeElements></a:theme>";

const std::string drawing =
    "<wsDr><twoCellAnchor><from><col>1</col><row>2</row></from><to><col>3</col><row>4</row></to><graphicFrame>"
    "<nvGraphicFramePr><cNvPr name='Chart 1'/></nvGraphicFramePr></graphicFrame></twoCellAnchor><oneCellAnchor><from/>"
    "<ext cx='1' cy='2'/><AlternateContent><Choice><pic/></Choice></AlternateContent></oneCellAnchor></wsDr>";

const std::string shapes =
    "<wsDr><twoCellAnchor editAs='oneCell'><from><col>1</col><row>2</row></from><to><col>3</col><row>9</row></to><sp>"
    "<nvSpPr><cNvPr name='A'/></nvSpPr><spPr><xfrm rot='2700000' flipV='1'><off x='0' y='0'/><ext cx='9' "
    "cy='9'/></xfrm>"
    "<custGeom><avLst><gd name='adj' fmla='val 25000'/></avLst><gdLst><gd name='a' fmla='*/ w adj "
    "100000'/></gdLst><rect "
    "l='l' t='t' r='r' b='b'/><pathLst><path w='9' h='9'><moveTo><pt x='a' y='0'/></moveTo><arcTo wR='5' hR='a' "
    "stAng='0' swAng='cd4'/><cubicBezTo><pt x='1' y='2'/><pt x='3' y='4'/><pt x='5' y='6'/></cubicBezTo><close/></path>"
    "</pathLst></custGeom><gradFill><gsLst><gs pos='0'><schemeClr val='accent1'><tint "
    "val='50000'/></schemeClr></gs><gs "
    "pos='100000'><prstClr val='dkBlue'/></gs></gsLst><path path='rect'><fillToRect l='50000' "
    "t='50000'/></path></gradFill>"
    "<ln w='25400' cap='rnd'><solidFill><srgbClr val='FF0000'/></solidFill><prstDash val='dashDot'/><tailEnd "
    "type='stealth' w='lg'/></ln><effectLst><outerShdw blurRad='50800' dist='38100' dir='2700000'><srgbClr "
    "val='000000'>"
    "<alpha val='40000'/></srgbClr></outerShdw></effectLst></spPr><txBody><bodyPr vert='vert270' wrap='none' "
    "anchor='b'>"
    "<normAutofit fontScale='90000'/></bodyPr><p><pPr algn='just' marL='9525' indent='-9525'><buChar "
    "char='*'/></pPr><r>"
    "<rPr sz='1200' b='1' u='sng' "
    "baseline='30000'/><t>text</t></r><br/></p></txBody></sp></twoCellAnchor><oneCellAnchor>"
    "<from/><ext cx='952500' cy='952500'/><grpSp><grpSpPr><xfrm><off x='0' y='0'/><ext cx='9' cy='9'/><chOff x='0' "
    "y='0'/>"
    "<chExt cx='90' cy='90'/></xfrm><pattFill prst='dkUpDiag'/></grpSpPr><pic><nvPicPr><cNvPr name='P'/></nvPicPr>"
    "<blipFill><blip embed='p'><alphaModFix amt='50000'/></blip><srcRect l='10000' b='-5000'/></blipFill><spPr><xfrm>"
    "<off x='1' y='1'/><ext cx='50' cy='50'/></xfrm><prstGeom prst='roundRect'/></spPr></pic><cxnSp><spPr><xfrm><ext "
    "cx='90' cy='90'/></xfrm><prstGeom prst='bentConnector3'/><grpFill/></spPr></cxnSp></grpSp></oneCellAnchor></wsDr>";

const std::string buttons =
    "<wsDr><AlternateContent><Choice Requires='a14'><twoCellAnchor><from/><to><col>2</col><row>3</row></to><sp><nvSpPr>"
    "<cNvPr id='1025' name='B' hidden='1'/></nvSpPr><spPr/></sp></twoCellAnchor></Choice></AlternateContent></wsDr>";

const std::string controls =
    "<xml><shape id='_x0000_s1025' spid='_x0000_s1025' style='visibility:visible'><imagedata relid='p'/><textbox><div>"
    "<font face='Arial' size='160' color='#ff0000'><b>OK</b></font></div></textbox><ClientData ObjectType='Checkbox'>"
    "<Checked>1</Checked><TextHAlign>Center</TextHAlign></ClientData></shape></xml>";

const std::string comments =
    "<comments><authors><author>a</author><author>tc={1}</author></authors><commentList><comment ref='A1' "
    "authorId='0'/><comment ref='B2' authorId='1'/></commentList></comments>";

const std::string conditions =
    "<conditionalFormatting sqref='A1:C4 B2'><cfRule type='cellIs' operator='between' priority='3' dxfId='0' "
    "stopIfTrue='1'><formula>A1</formula><formula>$B$1+2</formula></cfRule><cfRule type='expression' priority='2' "
    "dxfId='1'><formula>AND(A1>0,COUNTIF($A$1:$C$4,A1)>1)</formula></cfRule><cfRule type='top10' priority='4' rank='2' "
    "percent='1' bottom='1' dxfId='1'/><cfRule type='aboveAverage' stdDev='1' priority='5' dxfId='0'/><cfRule "
    "type='duplicateValues' priority='6' dxfId='0'/><cfRule type='containsText' text='app' priority='7' dxfId='0'/>"
    "<cfRule type='timePeriod' timePeriod='today' priority='8' dxfId='0'/><cfRule type='colorScale' priority='9'>"
    "<colorScale><cfvo type='min'/><cfvo type='percentile' val='50'/><cfvo type='formula' val='$A$4'/><color "
    "rgb='FFF8696B'/><color theme='1'/><color rgb='FF63BE7B'/></colorScale></cfRule><cfRule type='dataBar' "
    "priority='10'><dataBar showValue='0'><cfvo type='min'/><cfvo type='max'/><color rgb='FF638EC6'/></dataBar><extLst>"
    "<ext><id>{1}</id></ext></extLst></cfRule><cfRule type='iconSet' priority='11'><iconSet iconSet='5Quarters' "
    "reverse='1'><cfvo type='percent' val='0'/><cfvo type='num' val='1'/><cfvo type='num' val='2' gte='0'/><cfvo "
    "type='percent' val='60'/><cfvo type='percent' val='80'/></iconSet></cfRule></conditionalFormatting><extLst><ext>"
    "<conditionalFormattings><conditionalFormatting><cfRule type='dataBar' id='{1}'><dataBar border='1' "
    "axisPosition='middle' direction='rightToLeft'><cfvo type='autoMin'/><cfvo type='autoMax'/><negativeFillColor "
    "rgb='FFFF0000'/></dataBar></cfRule><sqref>A1:A4</sqref></conditionalFormatting></conditionalFormattings></ext>"
    "</extLst>";

const std::string sparklines =
    "<extLst><ext><sparklineGroups><sparklineGroup type='column' displayEmptyCellsAs='span' markers='1' high='1' "
    "low='1' first='1' last='1' negative='1' displayXAxis='1' minAxisType='group' maxAxisType='custom' manualMax='9' "
    "lineWeight='2' dateAxis='1'><colorSeries theme='4'/><f>A1:A4</f><sparklines><sparkline><f>Data!A1:A4</f><sqref>D1"
    "</sqref></sparkline><sparkline><f>A1:C1</f><sqref>D2</sqref></sparkline></sparklines></sparklineGroup>"
    "</sparklineGroups></ext></extLst>";

const std::string looks = "<dxf><font><b/><color rgb='FFFF0000'/></font><numFmt numFmtId='164' formatCode='0.0'/><fill>"
                          "<patternFill><bgColor rgb='FF112233'/></patternFill></fill></dxf><dxf><border><left "
                          "style='thin'/></border></dxf>";

const std::string relationships =
    "<R><Relationship Id='d' Type='x/drawing' Target='../drawings/drawing1.xml'/><Relationship Id='t' Type='x/table' "
    "Target='/xl/styles.xml'/></R>";

const std::string workbook =
    "<workbook><workbookPr date1904='1'/><bookViews><workbookView activeTab='0'/></bookViews><sheets><sheet name='A' "
    "state='hidden' r:id='rId1'/></sheets><definedNames><definedName name='N' localSheetId='0'>A!$A$1</definedName>"
    "</definedNames></workbook>";

const std::string tables[] = {
    "Name,Value,Day\r\n\"a, \"\"b\"\"\",\"1,234.5\",2026-11-24\nx,50%,11/24/2026 10:30 AM\n",
    "a;b;c\n1e5;$12.50;TRUE\n1 1/2;24-Nov-2026;=A1\n",
    "a\tb\n10:30\tNov 24, 2026\n25:00:01\t#N/A\n",
    std::string("\xff\xfe\x61\0;\0b\0", 8),
    "\xe9|\x80\n(5)|-3%\n",
};

const std::string formulas[] = {
    "SUMPRODUCT((A1:B9=1)*(C2:F13>0))",
    "VLOOKUP(A1,$C$2:$F$13,2,FALSE)",
    "SUBSTITUTE(C2,\"a\",REPT(\"b\",4))&TEXT(D3,\"0.0\")",
    "itself&twice",
    "COUNTIF(area,\"a*\")",
    "'It''s'!C2:OFFSET(C2,1,1)",
};

void write(const QString& folder, int number, const std::string& bytes)
{
    QDir().mkpath(folder);
    QFile file(folder + QLatin1Char('/') + QString::number(number));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes.data(), qint64(bytes.size())) != qint64(bytes.size()))
        std::fprintf(stderr, "cannot write %s\n", qPrintable(file.fileName()));
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: fuzz-seeds FOLDER\n");
        return 2;
    }
    const QString folder = QString::fromLocal8Bit(argv[1]);
    WorkbookParts parts({{"Data", "<sheetData><row><c t='s'><v>0</v></c></row></sheetData>", ""}});
    write(folder + QLatin1String("/fuzz-package"), 1, parts.sharedTexts({"zero"}).package().toStdString());
    write(folder + QLatin1String("/fuzz-package"), 2, "PK\5\6" + std::string(18, '\0'));
    write(folder + QLatin1String("/fuzz-package"), 3, "\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1");
    std::string all = sheet;
    for (const std::string& part : {texts, styles, theme, drawing, relationships, workbook})
        all += '\x01' + part;
    write(folder + QLatin1String("/fuzz-workbook"), 1, all);
    write(folder + QLatin1String("/fuzz-sheet"), 1, "\x05" + sheet);
    write(folder + QLatin1String("/fuzz-sheet"), 2, "\xff" + sheet);
    write(folder + QLatin1String("/fuzz-drawing"), 1, shapes);
    write(folder + QLatin1String("/fuzz-drawing"), 2, drawing);
    write(folder + QLatin1String("/fuzz-drawing"), 3, buttons + '\x01' + controls + '\x01' + comments);
    write(folder + QLatin1String("/fuzz-drawing"), 4, "\x01\x01\x01" + conditions + '\x01' + looks);
    write(folder + QLatin1String("/fuzz-drawing"), 5, "\x01\x01\x01" + sparklines);
    int number = 0;
    for (const std::string& formula : formulas)
        write(folder + QLatin1String("/fuzz-formula-text"), ++number, formula);
    number = 0;
    for (const std::string& table : tables)
        write(folder + QLatin1String("/fuzz-text-file"), ++number, table);
    return 0;
}
