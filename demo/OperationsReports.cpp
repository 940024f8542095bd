#include "ReportLooks.h"
#include "Reports.h"

using namespace Qt::StringLiterals;

namespace lumivane::demo {

namespace {

const QStringList weekDays{u"Mon"_s, u"Tue"_s, u"Wed"_s, u"Thu"_s, u"Fri"_s, u"Sat"_s};

struct ProductionLine
{
    QString name;
    int machines;
};

void putProductionHeader(Sheet& sheet)
{
    putTitle(sheet, u"Production by line"_s, u"Pieces made; single machines are hidden"_s, 10);
    sheet.set(4, 1, u"Line"_s, looks::headerLeft);
    sheet.set(4, 2, u"Machine"_s, looks::headerLeft);
    for (int i = 0; i < weekDays.size(); ++i)
        sheet.set(4, 3 + i, weekDays.at(i), looks::header);
    sheet.set(4, 9, u"Week"_s, looks::header);
    sheet.set(4, 10, u"Target"_s, looks::header);
    sheet.setHeight(4, 21);
}

void putMachine(Sheet& sheet, int row, const ProductionLine& line, int machine, int version)
{
    sheet.set(row, 1, QString(), looks::label);
    sheet.set(row, 2, u"%1-%2"_s.arg(line.name.left(1)).arg(machine, 2, 10, QChar(u'0')), looks::label);
    for (int day = 0; day < weekDays.size(); ++day)
        sheet.set(row, 3 + day, double(Figures(quint64(9000 + 700 * version + 31 * row + day)).between(310, 480)),
                  looks::number);
    double week = 0;
    for (int column = 3; column <= 8; ++column)
        week += sheet.number(row, column);
    sheet.setFormula(row, 9, u"SUM(C%1:H%1)"_s.arg(row), week, looks::number);
    sheet.set(row, 10, 2400.0, looks::number.colored("64748B"));
    sheet.hideRow(row);
}

/// The machines of a line, hidden, and the line's sum below them. Returns the row of the sum.
int putLine(Sheet& sheet, int firstRow, const ProductionLine& line, int version)
{
    for (int machine = 1; machine <= line.machines; ++machine)
        putMachine(sheet, firstRow + machine - 1, line, machine, version);
    const int sumRow = firstRow + line.machines;
    sheet.set(sumRow, 1, line.name, looks::label.asBold());
    sheet.set(sumRow, 2, u"%1 machines"_s.arg(line.machines), looks::label.colored("64748B"));
    putSums(sheet, sumRow, firstRow, sumRow - 1, 3, 8, looks::number);
    putSums(sheet, sumRow, firstRow, sumRow - 1, 9, 9,
            looks::number.asBold().filled(Figures(quint64(sumRow)).between(0, 1) ? "D9F2E6" : ""));
    putSums(sheet, sumRow, firstRow, sumRow - 1, 10, 10, looks::number.colored("64748B"));
    return sumRow;
}

} // namespace

QByteArray productionReport(int version)
{
    Book book;
    Sheet& sheet = book.add(u"Lines"_s);
    putProductionHeader(sheet);
    // Machines are added to the first line only: what stands below it keeps its shape and moves.
    const ProductionLine lines[] = {
        {u"Assembly"_s, 3 + 2 * version}, {u"Moulding"_s, 3}, {u"Painting"_s, 2}, {u"Packing"_s, 3}};
    int row = 5;
    QList<int> sumRows;
    for (const ProductionLine& line : lines) {
        sumRows.append(putLine(sheet, row, line, version));
        row = sumRows.last() + 1;
    }
    sheet.set(row, 1, u"Plant total"_s, looks::totalLabel);
    sheet.set(row, 2, {}, looks::total);
    for (int column = 3; column <= 10; ++column) {
        double sum = 0;
        QStringList terms;
        for (const int sumRow : sumRows) {
            sum += sheet.number(sumRow, column);
            terms.append(cellName(sumRow, column));
        }
        sheet.setFormula(row, column, terms.join(u'+'), sum, looks::total);
    }
    sheet.setHeight(row, 19.5);
    sheet.setWidth(1, 1, 14.71);
    sheet.setWidth(2, 2, 13.71);
    sheet.setWidth(3, 8, 10.71);
    sheet.setWidth(9, 10, 11.71);
    sheet.freeze(4, 2);
    return book.bytes();
}

QByteArray serviceDesk(int version)
{
    Book book;
    Sheet& sheet = book.add(u"Board"_s);
    putTitle(sheet, u"Service desk"_s, u"Tickets of the last seven days"_s, 6);
    Figures figures(quint64(40 + version));

    // Four tiles with one large figure each.
    struct Tile
    {
        QString caption, format;
        double value;
        QByteArray fill, color;
    };
    const Tile tiles[] = {{u"Open"_s, u"0"_s, double(figures.between(28, 61)), "E3EDF3", "1B3A57"},
                          {u"Overdue"_s, u"0"_s, double(figures.between(1, 9)), "FDE7E4", "B42318"},
                          {u"Solved"_s, u"0"_s, double(figures.between(90, 160)), "D9F2E6", "12664F"},
                          {u"In time"_s, u"0.0%"_s, figures.between(880, 990) / 1000.0, "FFF6DD", "8A5A00"}};
    int column = 1;
    for (const Tile& tile : tiles) {
        const Look look = Look().filled(tile.fill).colored(tile.color).aligned(Look::Side::Center);
        sheet.set(4, column, tile.caption, look.sized(10));
        sheet.set(5, column, tile.value, look.asBold().sized(22).formatted(tile.format.toUtf8()));
        ++column;
    }
    sheet.setHeight(4, 18);
    sheet.setHeight(5, 33);

    const QStringList heads{u"Priority"_s, u"Opened"_s, u"Solved"_s, u"Hours to solve"_s};
    for (int i = 0; i < heads.size(); ++i)
        sheet.set(7, 1 + i, heads.at(i), i ? looks::header : looks::headerLeft);
    sheet.setHeight(7, 21);
    const QStringList priorities{u"1  Standstill"_s, u"2  High"_s, u"3  Normal"_s, u"4  Low"_s};
    for (int i = 0; i < priorities.size(); ++i) {
        sheet.set(8 + i, 1, priorities.at(i), looks::label);
        sheet.set(8 + i, 2, double(figures.between(3 + 12 * i, 9 + 16 * i)), looks::number);
        sheet.set(8 + i, 3, double(figures.between(2 + 11 * i, 8 + 15 * i)), looks::number);
        sheet.set(8 + i, 4, figures.between(12 + 60 * i, 40 + 120 * i) / 10.0, looks::number.formatted("0.0"));
    }
    sheet.set(12, 1, u"All"_s, looks::totalLabel);
    putSums(sheet, 12, 8, 11, 2, 3, looks::total);
    sheet.set(12, 4, {}, looks::total);
    sheet.setWidth(1, 1, 16.71);
    sheet.setWidth(2, 4, 14.71);
    return book.bytes();
}

} // namespace lumivane::demo
