#pragma once

#include "TextBoxes.h"

#include <QByteArray>
#include <QDate>
#include <QList>
#include <QString>
#include <QStringList>
#include <functional>
#include <list>
#include <map>
#include <variant>
#include <vector>

struct lxw_format;
struct lxw_worksheet;

namespace lumivane::demo {

/// How a cell looks. Colours are "RRGGBB"; an empty one means none.
struct Look
{
    enum class Side { General, Left, Center, Right };

    bool bold = false;
    bool italic = false;
    double points = 11;
    QByteArray color = "1F2933";
    QByteArray fill;
    QByteArray format = "General";
    Side side = Side::General;
    int indent = 0;
    bool wrap = false;
    QByteArray top, bottom; ///< style and colour of the lines, as in "thin D0D7DE"

    bool operator==(const Look&) const = default;

    // Variations, so that a report can derive its looks from a few.
    Look asBold() const;
    Look sized(double newPoints) const;
    Look colored(const QByteArray& newColor) const;
    Look filled(const QByteArray& newFill) const;
    Look formatted(const QByteArray& code) const;
    Look aligned(Side newSide, int newIndent = 0) const;
    Look lined(const QByteArray& above, const QByteArray& below) const;
};

/// One sheet of a workbook being made. Rows and columns count from 1.
class Sheet
{
public:
    using Value = std::variant<std::monostate, double, QString, QDate>;

    explicit Sheet(QString name) : m_name(std::move(name)) {}

    void set(int row, int column, Value value, const Look& look);
    /// A formula with the result that a spreadsheet program would have stored.
    void setFormula(int row, int column, const QString& formula, double result, const Look& look);
    void fillRow(int row, int firstColumn, int lastColumn, const Look& look); ///< blank cells of that look
    void setWidth(int firstColumn, int lastColumn, double characters);
    void setHeight(int row, double points);
    void hideRow(int row);
    void merge(const QString& area);
    void freeze(int rows, int columns);
    void addDataBars(const CellArea& cells, const QByteArray& color);
    void addArrows(const CellArea& cells); ///< up for the upper third of the values, down for the lower one
    /// A PNG at the top left of a cell, in its own size; it moves with the cell.
    void addPicture(int row, int column, const QString& description, const QByteArray& png);
    void addTextBox(const TextBox& box); ///< on a sheet that has a picture

    double number(int row, int column) const; ///< of a cell set before; 0 for others

private:
    friend class Book;
    using FormatOf = std::function<lxw_format*(const Look&)>;

    struct Cell
    {
        Value value;
        QString formula;
        Look look;

        void write(lxw_worksheet* sheet, int row, int column, lxw_format* format) const;
    };
    struct RowFormat
    {
        double height = 0; ///< 0: from its texts
        bool hidden = false;
    };
    struct Picture
    {
        int row, column;
        QByteArray description, png;
    };
    struct Width
    {
        int first, last;
        double characters;
    };

    void write(lxw_worksheet* sheet, const FormatOf& formatOf) const;
    void writeConditions(lxw_worksheet* sheet) const;
    void writePictures(lxw_worksheet* sheet) const;

    QString m_name;
    std::map<int, std::map<int, Cell>> m_cells;
    std::map<int, RowFormat> m_rows;
    QList<Width> m_widths;
    QStringList m_merged;
    std::vector<std::pair<CellArea, QByteArray>> m_bars; ///< with their colours
    std::vector<CellArea> m_arrows;
    std::vector<Picture> m_pictures;
    QList<TextBox> m_boxes;
    int m_frozenRows = 0, m_frozenColumns = 0;
};

/// A workbook being made, in the package form that spreadsheet programs write.
class Book
{
public:
    Sheet& add(const QString& name);
    QByteArray bytes() const;

private:
    std::list<Sheet> m_sheets; // a list: the references handed out stay valid
};

QString cellName(int row, int column);

} // namespace lumivane::demo
