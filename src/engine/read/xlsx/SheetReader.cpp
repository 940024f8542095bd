#include "engine/read/xlsx/SheetReader.h"

#include "engine/read/MergedAreas.h"
#include "engine/read/package/ReadError.h"
#include "engine/read/package/SmallParts.h"
#include "engine/read/xlsx/FilterReader.h"
#include "engine/read/xlsx/RichText.h"
#include "engine/read/xlsx/SparklineReader.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace lumivane::engine {

using namespace Qt::StringLiterals;
using Token = XmlScanner::Token;

namespace {

constexpr size_t maxMerges = 200000;
constexpr size_t maxTableIds = 100000;
constexpr size_t maxTreeElements = 1000000; // of what is looked at as a tree
constexpr size_t maxSparklineGroups = 10000, maxSparklines = 100000;

constexpr double maxHeight = 409.5; ///< points
constexpr double maxWidth = 255;    ///< characters

/// Units of the least XML that a cell can take: "<c/>".
constexpr quint64 leastCellBytes = 4;

/// The reference of a cell as writers write it, in capital letters; anything else goes the slow way.
bool plainPlace(std::string_view text, int& row, int& column)
{
    int letters = 0;
    size_t at = 0;
    for (; at < text.size() && at < 3 && text[at] >= 'A' && text[at] <= 'Z'; ++at)
        letters = letters * 26 + (text[at] - 'A' + 1);
    if (at == 0 || at == text.size() || text.size() - at > 7 || text[at] == '0')
        return false;
    int digits = 0;
    for (; at < text.size(); ++at) {
        const int digit = text[at] - '0';
        if (digit < 0 || digit > 9)
            return false;
        digits = digits * 10 + digit;
    }
    row = digits;
    column = letters;
    return digits <= maxRow && letters <= maxColumn;
}

} // namespace

SheetReader::SheetReader(ByteStream& bytes, const SheetSurroundings& surroundings, SheetContent& content)
    : m_surroundings(surroundings), m_content(content), m_rows(content, surroundings.maxBytes), m_xml(bytes),
      m_conditions(surroundings.palette, surroundings.looks)
{
}

void SheetReader::read()
{
    constexpr quint64 kinds[] = {nameKey("worksheet"), nameKey("chartsheet"), nameKey("dialogsheet"),
                                 nameKey("macrosheet")};
    if (m_xml.next() != Token::Start || std::find(std::begin(kinds), std::end(kinds), m_xml.name()) == std::end(kinds))
        throw Fault{u"its part holds no sheet"_s};
    readPart();
    // The rest must be well-formed, too, and the stream checks its sum at its end.
    while (m_xml.next() != Token::Finish)
        ;
    m_rows.finish();
    m_content.conditions = m_conditions.finish();
    if (!m_conditions.isComplete())
        m_content.addProblem(u"The sheet has more conditional formats than can be applied; some are missing."_s);
    if (m_sparklinesMissing)
        m_content.addProblem(u"The sheet has more small charts than can be shown; some are missing."_s);
}

/// Right after a Start: calls `handle` with the key of each element in it, right after that one's Start. It must
/// leave nothing of the element unread.
template <class Handle>
void SheetReader::forChildren(Handle handle)
{
    while (true) {
        switch (m_xml.next()) {
        case Token::Start:
            handle(m_xml.name());
            break;
        case Token::Text:
            break;
        case Token::End:
        case Token::Finish:
            return;
        }
    }
}

void SheetReader::readPart()
{
    forChildren([this](quint64 name) {
        switch (name) {
        case nameKey("dimension"):
            return readDimension();
        case nameKey("sheetViews"):
            return forChildren([this](quint64 child) { child == nameKey("sheetView") ? readView() : m_xml.skip(); });
        case nameKey("sheetFormatPr"):
            return readDefaults();
        case nameKey("cols"):
            return readColumns();
        case nameKey("sheetData"):
            return readRows();
        case nameKey("autoFilter"):
            return readSheetFilter();
        case nameKey("mergeCells"):
            return readMerges();
        case nameKey("drawing"):
            return readReference(m_drawingId);
        case nameKey("legacyDrawing"):
            return readReference(m_controlsId);
        case nameKey("picture"):
            return readReference(m_backgroundId);
        case nameKey("AlternateContent"): // around the two below
        case nameKey("controls"):
        case nameKey("oleObjects"):
            return readObjects();
        case nameKey("tableParts"):
            return readTableParts();
        case nameKey("conditionalFormatting"):
            return readConditions();
        case nameKey("extLst"):
            return readExtensions();
        default:
            return m_xml.skip();
        }
    });
}

void SheetReader::readReference(std::string& id)
{
    for (const XmlScanner::Attribute& attribute : m_xml.attributes()) {
        if (attribute.name.ends_with(":id"))
            id = attribute.value;
    }
    m_xml.skip();
}

/// The stored extent is a hint and no more: memory for it is set aside only as far as the part can hold such cells.
void SheetReader::readDimension()
{
    if (const std::optional<CellArea> area = areaFrom(m_xml.attribute("ref"))) {
        constexpr quint64 usualCellBytes = 24;
        const quint64 wanted = quint64(area->rows()) * quint64(area->columns());
        m_rows.reserve(std::min(quint64(area->rows()), m_surroundings.partSize / (10 * leastCellBytes)),
                       std::min(wanted, m_surroundings.partSize / usualCellBytes));
    }
    m_xml.skip();
}

void SheetReader::readView()
{
    if (m_viewRead)
        return m_xml.skip();
    m_viewRead = true;
    SheetView& view = m_content.view;
    view.gridLines = flagFrom(m_xml.attribute("showGridLines"), true);
    view.headings = flagFrom(m_xml.attribute("showRowColHeaders"), true);
    view.rightToLeft = flagFrom(m_xml.attribute("rightToLeft"), false);
    view.showFormulas = flagFrom(m_xml.attribute("showFormulas"), false);
    view.showZeros = flagFrom(m_xml.attribute("showZeros"), true);
    view.zoom = std::clamp(integerFrom(m_xml.attribute("zoomScale")).value_or(100), 10, 400);
    if (!flagFrom(m_xml.attribute("defaultGridColor"), true)) {
        const int index = integerFrom(m_xml.attribute("colorId")).value_or(-1);
        view.gridColor = m_surroundings.palette.indexedColor(index).value_or(view.gridColor);
    }
    if (const std::optional<CellPlace> corner = placeFrom(m_xml.attribute("topLeftCell"))) {
        view.topRow = view.paneTopRow = corner->row;
        view.leftColumn = view.paneLeftColumn = corner->column;
    }
    std::string activePane = "topLeft";
    forChildren([&](quint64 name) {
        if (name == nameKey("pane")) {
            if (const std::string_view active = m_xml.attribute("activePane"); !active.empty())
                activePane = active;
            readPane();
        } else if (name == nameKey("selection")) {
            const std::string_view pane = m_xml.attribute("pane");
            if ((pane.empty() ? "topLeft" : pane) == activePane) {
                view.activeCell = textFrom(m_xml.attribute("activeCell"));
                view.selection = textFrom(m_xml.attribute("sqref"));
            }
        }
        m_xml.skip();
    });
}

/// Takes over the pane whose Start came last; leaves it to be skipped.
void SheetReader::readPane()
{
    SheetView& view = m_content.view;
    const std::string_view state = m_xml.attribute("state");
    view.panes = state == "frozen" || state == "frozenSplit" ? PaneKind::Frozen : PaneKind::Split;
    view.xSplit = std::max(0.0, numberFrom(m_xml.attribute("xSplit")).value_or(0));
    view.ySplit = std::max(0.0, numberFrom(m_xml.attribute("ySplit")).value_or(0));
    if (view.xSplit == 0 && view.ySplit == 0)
        view.panes = PaneKind::None;
    if (view.panes == PaneKind::Frozen) {
        view.xSplit = std::min(view.xSplit, double(maxColumn - 1));
        view.ySplit = std::min(view.ySplit, double(maxRow - 1));
        view.paneTopRow = std::min(view.topRow + static_cast<int>(view.ySplit), maxRow);
        view.paneLeftColumn = std::min(view.leftColumn + static_cast<int>(view.xSplit), maxColumn);
    }
    if (const std::optional<CellPlace> corner = placeFrom(m_xml.attribute("topLeftCell"))) {
        view.paneTopRow = corner->row;
        view.paneLeftColumn = corner->column;
    }
}

void SheetReader::readDefaults()
{
    const double height = numberFrom(m_xml.attribute("defaultRowHeight")).value_or(-1);
    m_content.defaultRowHeight = height >= 0 ? std::min(height, maxHeight) : -1;
    m_content.customDefaultHeight = flagFrom(m_xml.attribute("customHeight"), false);
    m_content.defaultRowsHidden = flagFrom(m_xml.attribute("zeroHeight"), false);
    const double width = numberFrom(m_xml.attribute("defaultColWidth")).value_or(-1);
    m_content.defaultColumnWidth = width >= 0 ? std::min(width, maxWidth) : -1;
    m_content.baseColumnWidth = std::clamp(integerFrom(m_xml.attribute("baseColWidth")).value_or(8), 0, 255);
    m_xml.skip();
}

void SheetReader::readColumns()
{
    forChildren([this](quint64 name) {
        if (name == nameKey("col"))
            readColumn();
        m_xml.skip();
    });
    std::vector<ColumnContent>& columns = m_content.columns;
    std::stable_sort(columns.begin(), columns.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    // Where two entries claim a column, it belongs to the one that begins first.
    int taken = 0;
    size_t kept = 0;
    for (ColumnContent column : columns) {
        column.first = std::max(column.first, taken + 1);
        if (column.first > column.last)
            continue;
        taken = column.last;
        columns[kept++] = column;
    }
    columns.resize(kept);
}

void SheetReader::readColumn()
{
    ColumnContent column;
    column.first = std::max(1, integerFrom(m_xml.attribute("min")).value_or(0));
    column.last = std::min(maxColumn, integerFrom(m_xml.attribute("max")).value_or(0));
    if (column.first > column.last || m_content.columns.size() >= size_t(maxColumn))
        return;
    const double width = numberFrom(m_xml.attribute("width")).value_or(-1);
    column.width = width >= 0 ? std::min(width, maxWidth) : -1;
    column.customWidth = flagFrom(m_xml.attribute("customWidth"), false);
    column.hidden = flagFrom(m_xml.attribute("hidden"), false) || (width == 0 && column.customWidth);
    column.style = styleFrom(m_xml.attribute("style"));
    column.outlineLevel =
        static_cast<quint8>(std::clamp(integerFrom(m_xml.attribute("outlineLevel")).value_or(0), 0, 7));
    column.collapsed = flagFrom(m_xml.attribute("collapsed"), false);
    m_content.columns.push_back(column);
}

void SheetReader::readRows()
{
    forChildren([this](quint64 name) { name == nameKey("row") ? readRow() : m_xml.skip(); });
}

void SheetReader::readRow()
{
    RowContent row;
    int number = m_row + 1;
    bool hasStyle = false;
    for (const XmlScanner::Attribute& attribute : m_xml.attributes()) {
        if (attribute.name == "r") {
            number = integerFrom(attribute.value).value_or(0);
        } else if (attribute.name == "ht") {
            const double height = numberFrom(attribute.value).value_or(-1);
            row.height = height >= 0 ? static_cast<float>(std::min(height, maxHeight)) : -1;
        } else if (attribute.name == "customHeight") {
            row.customHeight = flagFrom(attribute.value, false);
        } else if (attribute.name == "hidden") {
            row.hidden = flagFrom(attribute.value, false);
        } else if (attribute.name == "outlineLevel") {
            row.outlineLevel = static_cast<quint8>(std::clamp(integerFrom(attribute.value).value_or(0), 0, 7));
        } else if (attribute.name == "collapsed") {
            row.collapsed = flagFrom(attribute.value, false);
        } else if (attribute.name == "s") {
            row.style = styleFrom(attribute.value);
        } else if (attribute.name == "customFormat") {
            hasStyle = flagFrom(attribute.value, false);
        }
    }
    if (number < 1 || number > maxRow)
        throw Fault{u"it has a row with the number \"%1\""_s.arg(textFrom(m_xml.attribute("r")))};
    if (!hasStyle)
        row.style = -1;
    row.hidden = row.hidden || (row.height == 0 && row.customHeight);
    row.row = m_row = m_cellRow = number;
    m_column = 0;
    m_rows.startRow(row);
    forChildren([this](quint64 name) { name == nameKey("c") ? readCell() : m_xml.skip(); });
    m_rows.endRow();
}

SheetReader::CellStart SheetReader::cellStart()
{
    CellStart start;
    int row = m_row, column = m_column + 1;
    for (const XmlScanner::Attribute& attribute : m_xml.attributes()) {
        if (attribute.name.size() != 1)
            continue;
        switch (attribute.name[0]) {
        case 'r':
            if (!plainPlace(attribute.value, row, column)) {
                const std::optional<CellPlace> place = placeFrom(attribute.value);
                if (!place)
                    throw Fault{u"it has a cell with the address \"%1\""_s.arg(textFrom(attribute.value))};
                row = place->row;
                column = place->column;
            }
            break;
        case 's':
            start.cell.style = static_cast<quint32>(std::max(0, styleFrom(attribute.value)));
            break;
        case 't':
            start.type = attribute.value;
            break;
        }
    }
    if (column > maxColumn)
        throw Fault{u"row %1 has more cells than a sheet has columns"_s.arg(row)};
    // A cell that names another row than the one it stands in belongs where it says.
    if (row != m_cellRow) {
        m_rows.endRow();
        RowContent other;
        other.row = m_cellRow = row;
        m_rows.startRow(other);
    }
    m_column = column;
    start.cell.column = static_cast<quint16>(column);
    return start;
}

void SheetReader::readCell()
{
    CellStart start = cellStart();
    std::string_view raw;
    if (!m_xml.takeValue(raw))
        return finishCell(start);
    if (raw.find('&') != std::string_view::npos) {
        m_value.clear();
        appendDecoded(m_value, raw);
        raw = m_value;
    }
    if (!raw.empty() || start.type == "str")
        setValue(start, raw);
    m_rows.append(start.cell);
}

/// The cell's elements one by one, for all that are not just a value.
void SheetReader::finishCell(CellStart& start)
{
    // The scanner's views end with its next step.
    const std::string type(start.type);
    start.type = type;
    bool formula = false, valued = false;
    m_value.clear();
    forChildren([&](quint64 name) {
        switch (name) {
        case nameKey("v"):
            valued = true;
            return m_xml.appendText(m_value);
        case nameKey("f"):
            formula = true;
            return m_xml.skip();
        case nameKey("is"):
            start.cell.kind = CellKind::SheetText;
            start.cell.text =
                static_cast<quint64>(readRichText(m_xml, m_surroundings.palette, m_content.texts, m_buffer));
            return m_rows.checkBytes();
        default:
            return m_xml.skip();
        }
    });
    start.cell.formula = formula;
    const bool isText = type == "str";
    if (isText ? valued || formula : !m_value.empty())
        setValue(start, m_value);
    else if (formula && start.cell.kind == CellKind::Blank)
        start.cell.kind = CellKind::Uncomputed;
    m_rows.append(start.cell);
}

void SheetReader::setValue(CellStart& start, std::string_view raw)
{
    Cell& cell = start.cell;
    if (start.type.empty() || start.type == "n") {
        setNumber(cell, raw);
    } else if (start.type == "s") {
        setSharedText(cell, raw);
    } else if (start.type == "str" || start.type == "inlineStr") {
        m_buffer.assign(raw);
        resolveEscapes(m_buffer);
        cell.kind = CellKind::SheetText;
        cell.text = m_rows.appendText(m_buffer);
    } else if (start.type == "b") {
        cell.kind = CellKind::Boolean;
        cell.number = flagFrom(raw, false) ? 1 : 0;
    } else if (start.type == "e") {
        cell.kind = CellKind::Error;
        cell.text = static_cast<quint64>(errorFrom(raw).value_or(ErrorCode::Value));
    } else if (start.type == "d") {
        setDate(cell, raw);
    } else {
        failCell(cell, "an unknown type", start.type);
    }
}

void SheetReader::setNumber(Cell& cell, std::string_view raw)
{
    double value = 0;
    const auto [end, error] = std::from_chars(raw.data(), raw.data() + raw.size(), value);
    if (error != std::errc() || end != raw.data() + raw.size() || !std::isfinite(value)) {
        const std::optional<double> other = numberFrom(raw);
        if (!other && (raw == "NaN" || raw == "INF" || raw == "-INF")) {
            cell.kind = CellKind::Error;
            cell.text = static_cast<quint64>(ErrorCode::Num);
            return;
        }
        if (!other)
            failCell(cell, "a number that is none", raw);
        value = *other;
    }
    cell.kind = CellKind::Number;
    cell.number = value;
}

void SheetReader::setDate(Cell& cell, std::string_view raw)
{
    const std::optional<double> serial = serialFromIso(raw, m_surroundings.date1904);
    if (!serial)
        failCell(cell, "a date that is none", raw);
    cell.kind = CellKind::Number;
    cell.number = *serial;
}

void SheetReader::setSharedText(Cell& cell, std::string_view raw)
{
    int index = -1;
    const auto [end, error] = std::from_chars(raw.data(), raw.data() + raw.size(), index);
    if (error != std::errc() || end != raw.data() + raw.size())
        index = integerFrom(raw).value_or(-1);
    if (index < 0 || index >= m_surroundings.sharedTexts)
        failCell(cell, "the number of a text that the workbook does not have", raw);
    cell.kind = CellKind::Text;
    cell.text = static_cast<quint64>(index);
}

void SheetReader::failCell(const Cell& cell, const char* what, std::string_view value) const
{
    const QString address = columnLetters(cell.column) + QString::number(m_cellRow);
    throw Fault{u"cell %1 holds %2: \"%3\""_s.arg(address, QLatin1StringView(what), textFrom(value.substr(0, 100)))};
}

/// -1 for a style that the workbook does not have.
qint32 SheetReader::styleFrom(std::string_view text) const
{
    const int index = integerFrom(text).value_or(-1);
    return index >= 0 && index < m_surroundings.styles ? index : -1;
}

void SheetReader::readSheetFilter()
{
    // A sheet has one, a table brings its own.
    if (!m_content.filtered.empty())
        return m_xml.skip();
    pugi::xml_document document;
    readTree(m_xml, document, maxTreeElements);
    readFilter(document.document_element(), m_content);
}

void SheetReader::readMerges()
{
    std::vector<CellArea> found;
    forChildren([&](quint64 name) {
        if (name == nameKey("mergeCell")) {
            const std::optional<CellArea> area = areaFrom(m_xml.attribute("ref"));
            if (!area)
                throw Fault{u"it has merged cells at \"%1\""_s.arg(textFrom(m_xml.attribute("ref")))};
            if (area->rows() > 1 || area->columns() > 1)
                found.push_back(*area);
            if (found.size() > maxMerges)
                throw Fault{u"it has more than %1 merged ranges"_s.arg(maxMerges), ReadCause::TooLarge};
        }
        m_xml.skip();
    });
    m_content.merged = MergedCells(withoutOverlaps(found));
}

void SheetReader::readTableParts()
{
    forChildren([this](quint64) {
        for (const XmlScanner::Attribute& attribute : m_xml.attributes()) {
            if (attribute.name.ends_with(":id") && m_tableIds.size() < maxTableIds)
                m_tableIds.emplace_back(attribute.value);
        }
        m_xml.skip();
    });
}

void SheetReader::readConditions()
{
    pugi::xml_document tree;
    readTree(m_xml, tree, maxTreeElements);
    m_conditions.read(tree.document_element());
}

/// Controls and objects, which lie in forms to choose from, each alone or all of them.
void SheetReader::readObjects()
{
    pugi::xml_document tree;
    readTree(m_xml, tree, maxTreeElements);
    readSheetObjects(tree.document_element(), m_objects);
}

/// Later versions put here what earlier ones do not know; of interest is only what changes the look of cells.
void SheetReader::readExtensions()
{
    const size_t outside = m_xml.depth() - 1;
    pugi::xml_document tree;
    while (true) {
        const Token token = m_xml.next();
        if (token == Token::End && m_xml.depth() == outside)
            return;
        if (token != Token::Start)
            continue;
        if (m_xml.name() == nameKey("conditionalFormatting")) {
            readConditions();
        } else if (m_xml.name() == nameKey("sparklineGroup")) {
            readTree(m_xml, tree, maxTreeElements);
            addSparklines(readSparklines(tree.document_element(), m_surroundings.palette));
        }
    }
}

void SheetReader::addSparklines(SparklineGroup group)
{
    m_sparklinesRead += group.members.size();
    if (m_content.sparklines.size() < maxSparklineGroups && m_sparklinesRead <= maxSparklines)
        m_content.sparklines.push_back(std::move(group));
    else
        m_sparklinesMissing = true;
}

} // namespace lumivane::engine
