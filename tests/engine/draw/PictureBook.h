#pragma once

#include "platform/CellArea.h"

#include <QByteArray>
#include <QImage>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace lumivane::test {

/// A workbook of one sheet with small cells, made cell by cell.
class PictureBook
{
public:
    /// Widths are in characters.
    explicit PictureBook(double columnWidth = 6) : m_width(columnWidth) {}

    /// The index of a look.
    int look(const std::string& fill, const std::string& border = "", const std::string& more = "")
    {
        m_fills += "<fill>" + fill + "</fill>";
        m_borders += border.empty() ? "<border/>" : border;
        ++m_looks;
        const std::string index = std::to_string(m_looks);
        m_formats += "<xf fillId='" + index + "' borderId='" + index + "'>" + more + "</xf>";
        return m_looks;
    }
    int solid(const std::string& color)
    {
        return look("<patternFill patternType='solid'><fgColor rgb='FF" + color + "'/></patternFill>");
    }
    PictureBook& put(int row, int column, const std::string& text, int look = 0)
    {
        const bool isNumber = !text.empty() && text.find_first_not_of("-.0123456789") == std::string::npos;
        m_cells[{row, column}] = "<c r='" + CellArea::cell(row, column).relative().toStdString() + "' s='" +
                                 std::to_string(look) +
                                 (isNumber       ? "'><v>" + text + "</v></c>"
                                  : text.empty() ? "'/>"
                                                 : "' t='inlineStr'><is><t>" + text + "</t></is></c>");
        return *this;
    }
    /// Numbers downwards.
    PictureBook& putAll(int row, int column, const std::vector<double>& values)
    {
        for (const double value : values)
            put(row++, column, QString::number(value).toStdString());
        return *this;
    }
    PictureBook& height(int row, int points)
    {
        m_heights[row] = points;
        return *this;
    }
    /// Elements of the sheet behind its cells.
    PictureBook& behind(const std::string& xml)
    {
        m_behind += xml;
        return *this;
    }
    /// A part that the sheet refers to by the id "r1", "r2"...
    PictureBook& part(const std::string& kind, const std::string& xml)
    {
        const std::string number = std::to_string(++m_parts), name = "part" + number + ".xml";
        m_references += "<Relationship Id='r" + number + "' Type='x/" + kind + "' Target='" + name + "'/>";
        m_entries.emplace_back("xl/worksheets/" + name, xml);
        return *this;
    }
    PictureBook& picture(const QByteArray& png)
    {
        m_entries.emplace_back("xl/media/image1.png", png.toStdString());
        m_entries.emplace_back("xl/worksheets/_rels/part1.xml.rels",
                               "<R><Relationship Id='p' Type='x/image' Target='../media/image1.png'/></R>");
        return *this;
    }
    PictureBook& conditionLooks(const std::string& dxfs)
    {
        m_dxfs = dxfs;
        return *this;
    }

    /// Draws a part of the sheet as it comes from its file, which must have no problem.
    QImage image(const QString& area, double scale = 1) const;

private:
    double m_width;
    int m_looks = 0, m_parts = 0;
    std::string m_fills, m_borders, m_formats, m_dxfs, m_behind, m_references;
    std::map<std::pair<int, int>, std::string> m_cells;
    std::map<int, int> m_heights;
    std::vector<std::pair<std::string, std::string>> m_entries;
};

} // namespace lumivane::test
