#include "Book.h"

#include "Zip.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace lumivane::demo {

namespace {

constexpr auto xmlHeader = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";
constexpr auto mainNamespace = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";
constexpr auto relationNamespace = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";

QByteArray escaped(const QString& text)
{
    return text.toHtmlEscaped().toUtf8();
}

/// Hands out positions for equal contents, in the order in which they first came.
template <class T>
class Numbered
{
public:
    explicit Numbered(QList<T> first) : m_items(std::move(first)) {}
    qsizetype operator()(const T& item)
    {
        if (const auto known = m_items.indexOf(item); known >= 0)
            return known;
        m_items.append(item);
        return m_items.size() - 1;
    }
    const QList<T>& items() const { return m_items; }

private:
    QList<T> m_items;
};

QByteArray list(const QByteArray& element, const QList<QByteArray>& items)
{
    return "<" + element + " count=\"" + QByteArray::number(items.size()) + "\">" + items.join() + "</" + element + ">";
}

QByteArray fontXml(const Look& look)
{
    return "<font>"_ba + (look.bold ? "<b/>" : "") + (look.italic ? "<i/>" : "") + "<sz val=\"" +
           QByteArray::number(look.points) + "\"/><color rgb=\"FF" + look.color +
           "\"/><name val=\"Calibri\"/><family val=\"2\"/></font>";
}

QByteArray fillXml(const QByteArray& color)
{
    return "<fill><patternFill patternType=\"solid\"><fgColor rgb=\"FF" + color +
           "\"/><bgColor indexed=\"64\"/></patternFill></fill>";
}

QByteArray lineXml(const QByteArray& side, const QByteArray& line)
{
    if (line.isEmpty())
        return "<" + side + "/>";
    const QList<QByteArray> parts = line.split(' ');
    return "<" + side + " style=\"" + parts.at(0) + "\"><color rgb=\"FF" + parts.at(1) + "\"/></" + side + ">";
}

QByteArray borderXml(const Look& look)
{
    return "<border><left/><right/>" + lineXml("top", look.top) + lineXml("bottom", look.bottom) +
           "<diagonal/></border>";
}

QByteArray alignmentXml(const Look& look)
{
    static constexpr const char* sides[] = {"general", "left", "center", "right"};
    return "<alignment horizontal=\""_ba + sides[int(look.side)] + "\" vertical=\"center\"" +
           (look.indent ? " indent=\"" + QByteArray::number(look.indent) + "\"" : QByteArray()) +
           (look.wrap ? " wrapText=\"1\"" : "") + "/>";
}

/// The styles of a workbook, numbered as its cells ask for them.
class Styles
{
public:
    qsizetype number(const Look& look) { return m_looks(look); }
    QByteArray xml() const;

private:
    Numbered<Look> m_looks{{Look()}};
};

QByteArray Styles::xml() const
{
    constexpr int firstOwnFormat = 164;
    Numbered<QByteArray> formats({"General"}), borders({borderXml(Look())}), fonts({fontXml(Look())});
    Numbered<QByteArray> fills(
        {"<fill><patternFill patternType=\"none\"/></fill>", "<fill><patternFill patternType=\"gray125\"/></fill>"});
    QList<QByteArray> cells;
    for (const Look& look : m_looks.items()) {
        const qsizetype format = formats(look.format);
        cells.append("<xf numFmtId=\"" + QByteArray::number(format ? firstOwnFormat + format : 0) + "\" fontId=\"" +
                     QByteArray::number(fonts(fontXml(look))) + "\" fillId=\"" +
                     QByteArray::number(look.fill.isEmpty() ? 0 : fills(fillXml(look.fill))) + "\" borderId=\"" +
                     QByteArray::number(borders(borderXml(look))) +
                     "\" xfId=\"0\" applyNumberFormat=\"1\" applyFont=\"1\" applyFill=\"1\" applyBorder=\"1\" "
                     "applyAlignment=\"1\">" +
                     alignmentXml(look) + "</xf>");
    }
    QList<QByteArray> formatList;
    for (qsizetype i = 1; i < formats.items().size(); ++i)
        formatList.append("<numFmt numFmtId=\"" + QByteArray::number(firstOwnFormat + i) + "\" formatCode=\"" +
                          escaped(QString::fromUtf8(formats.items().at(i))) + "\"/>");
    return QByteArray(xmlHeader) + "<styleSheet xmlns=\"" + mainNamespace + "\">" +
           (formatList.isEmpty() ? QByteArray() : list("numFmts", formatList)) + list("fonts", fonts.items()) +
           list("fills", fills.items()) + list("borders", borders.items()) +
           "<cellStyleXfs count=\"1\"><xf numFmtId=\"0\" fontId=\"0\" fillId=\"0\" borderId=\"0\"/></cellStyleXfs>" +
           list("cellXfs", cells) +
           "<cellStyles count=\"1\"><cellStyle name=\"Normal\" xfId=\"0\" builtinId=\"0\"/></cellStyles></styleSheet>";
}

QByteArray relationsXml(const QList<std::pair<QByteArray, QByteArray>>& typesAndTargets)
{
    QByteArray xml = QByteArray(xmlHeader) +
                     "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">";
    int id = 0;
    for (const auto& [type, target] : typesAndTargets)
        xml += "<Relationship Id=\"rId" + QByteArray::number(++id) + "\" Type=\"" + relationNamespace + "/" + type +
               "\" Target=\"" + target + "\"/>";
    return xml + "</Relationships>";
}

QByteArray viewXml(int frozenRows, int frozenColumns)
{
    QByteArray pane;
    if (frozenRows > 0 || frozenColumns > 0) {
        const QByteArray side = frozenRows == 0 ? "topRight" : frozenColumns == 0 ? "bottomLeft" : "bottomRight";
        pane = "<pane" + (frozenColumns ? " xSplit=\"" + QByteArray::number(frozenColumns) + "\"" : QByteArray()) +
               (frozenRows ? " ySplit=\"" + QByteArray::number(frozenRows) + "\"" : QByteArray()) + " topLeftCell=\"" +
               cellName(frozenRows + 1, frozenColumns + 1).toLatin1() + "\" activePane=\"" + side +
               "\" state=\"frozen\"/>";
    }
    return "<sheetViews><sheetView showGridLines=\"0\" workbookViewId=\"0\">" + pane + "</sheetView></sheetViews>";
}

QByteArray cellXml(const QByteArray& place, qsizetype style, const Sheet::Value& value, const QString& formula)
{
    const QByteArray start = "<c r=\"" + place + "\" s=\"" + QByteArray::number(style) + "\"";
    const QByteArray f = formula.isEmpty() ? QByteArray() : "<f>" + escaped(formula) + "</f>";
    if (const auto* number = std::get_if<double>(&value))
        return start + ">" + f + "<v>" + QByteArray::number(*number, 'g', 15) + "</v></c>";
    if (const auto* date = std::get_if<QDate>(&value)) // days are counted so that March 1900 begins with 61
        return start + "><v>" + QByteArray::number(QDate(1899, 12, 30).daysTo(*date)) + "</v></c>";
    if (const auto* text = std::get_if<QString>(&value))
        return start + " t=\"inlineStr\"><is><t xml:space=\"preserve\">" + escaped(*text) + "</t></is></c>";
    return start + "/>";
}

} // namespace

QString columnName(int column)
{
    QString name;
    for (; column > 0; column = (column - 1) / 26)
        name.prepend(QChar(u'A' + (column - 1) % 26));
    return name;
}

QString cellName(int row, int column)
{
    return columnName(column) + QString::number(row);
}

Look Look::asBold() const
{
    Look look = *this;
    look.bold = true;
    return look;
}

Look Look::sized(double newPoints) const
{
    Look look = *this;
    look.points = newPoints;
    return look;
}

Look Look::colored(const QByteArray& newColor) const
{
    Look look = *this;
    look.color = newColor;
    return look;
}

Look Look::filled(const QByteArray& newFill) const
{
    Look look = *this;
    look.fill = newFill;
    return look;
}

Look Look::formatted(const QByteArray& code) const
{
    Look look = *this;
    look.format = code;
    return look;
}

Look Look::aligned(Side newSide, int newIndent) const
{
    Look look = *this;
    look.side = newSide;
    look.indent = newIndent;
    return look;
}

Look Look::lined(const QByteArray& above, const QByteArray& below) const
{
    Look look = *this;
    look.top = above;
    look.bottom = below;
    return look;
}

void Sheet::set(int row, int column, Value value, const Look& look)
{
    m_cells[row][column] = {std::move(value), QString(), look};
}

void Sheet::setFormula(int row, int column, const QString& formula, double result, const Look& look)
{
    m_cells[row][column] = {result, formula, look};
}

void Sheet::fillRow(int row, int firstColumn, int lastColumn, const Look& look)
{
    for (int column = firstColumn; column <= lastColumn; ++column)
        set(row, column, {}, look);
}

void Sheet::setWidth(int firstColumn, int lastColumn, double characters)
{
    m_widths.append({firstColumn, lastColumn, characters});
}

void Sheet::setHeight(int row, double points)
{
    m_rows[row].height = points;
}

void Sheet::hideRow(int row)
{
    m_rows[row].hidden = true;
}

void Sheet::merge(const QString& area)
{
    m_merged.append(area);
}

void Sheet::freeze(int rows, int columns)
{
    m_frozenRows = rows;
    m_frozenColumns = columns;
}

double Sheet::number(int row, int column) const
{
    const auto cells = m_cells.find(row);
    if (cells == m_cells.end() || !cells->second.contains(column))
        return 0;
    const auto* number = std::get_if<double>(&cells->second.at(column).value);
    return number ? *number : 0;
}

Sheet& Book::add(const QString& name)
{
    return m_sheets.emplace_back(name);
}

QByteArray Book::bytes() const
{
    Styles styles;
    QList<std::pair<QByteArray, QByteArray>> parts, relations;
    QByteArray types, entries;
    for (const Sheet& sheet : m_sheets) {
        const QByteArray number = QByteArray::number(relations.size() + 1);
        const QByteArray target = "worksheets/sheet" + number + ".xml";
        parts.append({"xl/" + target, sheetXml(sheet, [&](const Look& look) { return styles.number(look); })});
        relations.emplaceBack("worksheet", target);
        types += "<Override PartName=\"/xl/" + target +
                 "\" ContentType=\"application/vnd.openxmlformats-officedocument.spreadsheetml.worksheet+xml\"/>";
        entries +=
            "<sheet name=\"" + escaped(sheet.m_name) + "\" sheetId=\"" + number + "\" r:id=\"rId" + number + "\"/>";
    }
    relations.emplaceBack("styles", "styles.xml");
    parts.append({"xl/styles.xml", styles.xml()});
    parts.append({"xl/_rels/workbook.xml.rels", relationsXml(relations)});
    parts.prepend({"xl/workbook.xml", QByteArray(xmlHeader) + "<workbook xmlns=\"" + mainNamespace + "\" xmlns:r=\"" +
                                          relationNamespace + "\"><sheets>" + entries + "</sheets></workbook>"});
    parts.prepend({"_rels/.rels", relationsXml({{"officeDocument", "xl/workbook.xml"}})});
    parts.prepend(
        {"[Content_Types].xml",
         QByteArray(xmlHeader) + "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">" +
             "<Default Extension=\"rels\" ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>" +
             "<Default Extension=\"xml\" ContentType=\"application/xml\"/><Override PartName=\"/xl/workbook.xml\" "
             "ContentType=\"application/vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml\"/>" +
             "<Override PartName=\"/xl/styles.xml\" "
             "ContentType=\"application/vnd.openxmlformats-officedocument.spreadsheetml.styles+xml\"/>" +
             types + "</Types>"});
    return zipArchive(parts);
}

QByteArray Book::sheetXml(const Sheet& sheet, const std::function<qsizetype(const Look&)>& styleNumber)
{
    QByteArray columns, rows, merged;
    for (const Sheet::Width& width : sheet.m_widths)
        columns += "<col min=\"" + QByteArray::number(width.first) + "\" max=\"" + QByteArray::number(width.last) +
                   "\" width=\"" + QByteArray::number(width.characters) + "\" customWidth=\"1\"/>";
    for (const auto& [row, cells] : sheet.m_cells) {
        const auto format = sheet.m_rows.find(row);
        rows += "<row r=\"" + QByteArray::number(row) + "\"";
        if (format != sheet.m_rows.end() && format->second.height > 0)
            rows += " ht=\"" + QByteArray::number(format->second.height) + "\" customHeight=\"1\"";
        if (format != sheet.m_rows.end() && format->second.hidden)
            rows += " hidden=\"1\"";
        rows += ">";
        for (const auto& [column, cell] : cells)
            rows += cellXml(cellName(row, column).toLatin1(), styleNumber(cell.look), cell.value, cell.formula);
        rows += "</row>";
    }
    for (const QString& area : sheet.m_merged)
        merged += "<mergeCell ref=\"" + area.toLatin1() + "\"/>";
    return QByteArray(xmlHeader) + "<worksheet xmlns=\"" + mainNamespace + "\">" +
           viewXml(sheet.m_frozenRows, sheet.m_frozenColumns) + "<sheetFormatPr defaultRowHeight=\"15\"/>" +
           (columns.isEmpty() ? QByteArray() : "<cols>" + columns + "</cols>") + "<sheetData>" + rows + "</sheetData>" +
           (merged.isEmpty() ? QByteArray() : "<mergeCells>" + merged + "</mergeCells>") + "</worksheet>";
}

} // namespace lumivane::demo
