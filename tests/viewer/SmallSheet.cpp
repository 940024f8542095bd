#include "viewer/SmallSheet.h"

#include "engine/read/WorkbookFile.h"

namespace lumivane::test {

using namespace Qt::StringLiterals;

namespace {

std::string text(const std::string& cell, const std::string& value)
{
    return "<c r='" + cell + "' t='inlineStr'><is><t>" + value + "</t></is></c>";
}

std::string number(const std::string& cell, const std::string& value, int style = 0)
{
    return "<c r='" + cell + "' s='" + std::to_string(style) + "'><v>" + value + "</v></c>";
}

} // namespace

WorkbookParts smallWorkbook(const std::string& views)
{
    const std::string data =
        views +
        "<sheetFormatPr defaultRowHeight='15'/><cols><col min='5' max='5' width='9' hidden='1'/></cols>"
        "<sheetData><row r='2'>" +
        text("B2", "Name") + text("C2", "Q1") + text("D2", "Q2") + "</row><row r='3'>" + text("B3", "Ann") +
        number("C3", "1", 1) + number("D3", "2", 1) + "</row><row r='4'>" + text("B4", "Bob") + number("C4", "3", 1) +
        number("E4", "10") + number("F4", "10") + "</row><row r='5'>" + text("B5", "Cid") + number("C5", "5", 1) +
        number("D5", "6", 1) + "</row><row r='6' hidden='1'>" + number("C6", "100", 1) + "</row><row r='7'>" +
        number("C7", "7", 1) + "</row><row r='9'>" + text("B9", "Total") +
        "<c r='C9'/><c r='D9'/></row></sheetData><mergeCells count='1'><mergeCell ref='B9:D9'/></mergeCells>"
        "<drawing r:id='d'/>";
    WorkbookParts parts({{"Data", data, ""},
                         {"My notes",
                          "<sheetData><row r='1'>" + text("A1", "Hello") + "</row><row r='30'>" +
                              text("H30", "A text that runs over several empty cells") + "</row><row r='33'>" +
                              text("L33", "Below") + "</row></sheetData>",
                          ""},
                         {"Secret", "<sheetData/>", "hidden"}});
    parts.inWorkbook("", "<definedNames><definedName name='Table'>Data!$B$2:$D$5</definedName>"
                         "<definedName name='Note'>'My notes'!$A$1</definedName>"
                         "<definedName name='Note' localSheetId='1'>'My notes'!$C$3,'My notes'!$E$5</definedName>"
                         "<definedName name='Away'>Secret!$A$1</definedName>"
                         "<definedName name='Moving'>OFFSET(Data!$A$1,1,1)</definedName></definedNames>");
    parts.styles("<fonts count='1'><font><sz val='11'/><name val='Calibri'/></font></fonts>"
                 "<fills count='1'><fill><patternFill patternType='none'/></fill></fills><borders count='1'><border/>"
                 "</borders><cellXfs count='2'><xf/><xf numFmtId='2' applyNumberFormat='1'/></cellXfs>");
    parts.drawings(
        drawingAnchor(7, 10, 9, 13, chartObject("Sales")) +
        drawingAnchor(7, 20, 9, 23, "<xdr:pic><xdr:nvPicPr><xdr:cNvPr name='Logo'/></xdr:nvPicPr></xdr:pic>"));
    return parts;
}

std::shared_ptr<const ViewedSheet> viewedSheet(const WorkbookParts& parts, int index)
{
    const auto file = engine::WorkbookFile::open(writeTemporary(u"Small.xlsx"_s, parts.package()));
    return std::make_shared<ViewedSheet>(file->content(), file->sheet(index));
}

std::string paneView(const std::string& pane, const std::string& attributes)
{
    return "<sheetViews><sheetView workbookViewId='0' " + attributes + ">" + pane + "</sheetView></sheetViews>";
}

} // namespace lumivane::test
