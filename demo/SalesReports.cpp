#include "ReportLooks.h"
#include "Reports.h"

using namespace Qt::StringLiterals;

namespace lumivane::demo {

namespace {

const QStringList salesRegions{u"North"_s, u"East"_s, u"South"_s, u"West"_s, u"Export"_s};

/// Ordered by the day; the first working day is the first of September.
QDate workingDay(int number)
{
    QDate day(2026, 9, 1);
    for (int counted = 0; counted < number; ++counted)
        do
            day = day.addDays(1);
        while (day.dayOfWeek() > 5);
    return day;
}

void putSalesHeader(Sheet& sheet, int row)
{
    sheet.set(row, 1, u"Day"_s, looks::headerLeft);
    for (int i = 0; i < salesRegions.size(); ++i)
        sheet.set(row, 2 + i, salesRegions.at(i), looks::header);
    sheet.set(row, 7, u"All regions"_s, looks::header);
    sheet.set(row, 8, u"vs. plan"_s, looks::header);
    sheet.setHeight(row, 21);
}

constexpr double plannedPerDay = 655;

void putSalesDay(Sheet& sheet, int row, int day)
{
    const QByteArray fill = day % 2 ? "F6F9FB" : "";
    const Look number = looks::number.filled(fill);
    Figures figures(1000 + quint64(day));
    sheet.set(row, 1, workingDay(day), looks::label.filled(fill).formatted("ddd d mmm"));
    double sum = 0;
    for (int i = 0; i < salesRegions.size(); ++i) {
        const int value = figures.between(80, 180) + (i == 0 ? 35 : 0) - (i == 4 ? 30 : 0);
        sheet.set(row, 2 + i, double(value), number);
        sum += value;
    }
    sheet.setFormula(row, 7, u"SUM(B%1:F%1)"_s.arg(row), sum, number.asBold());
    sheet.setFormula(row, 8, u"G%1/%2-1"_s.arg(row).arg(plannedPerDay), sum / plannedPerDay - 1,
                     number.formatted("+0.0%;[Red]-0.0%"));
}

/// The sheet whose days grow downwards; its total moves with them.
int putDailySales(Sheet& sheet, int version)
{
    constexpr int firstRow = 5;
    const int days = 20 + 5 * version;
    putTitle(sheet, u"Regional sales by day"_s, u"Thousand euros, net of returns"_s, 8);
    putSalesHeader(sheet, 4);
    for (int day = 0; day < days; ++day)
        putSalesDay(sheet, firstRow + day, day);
    const int totalRow = firstRow + days;
    sheet.addDataBars({firstRow, 7, totalRow - 1, 7}, "9CD3CB");
    sheet.addArrows({firstRow, 8, totalRow - 1, 8});
    sheet.set(totalRow, 1, u"Total"_s, looks::totalLabel);
    putSums(sheet, totalRow, firstRow, totalRow - 1, 2, 7, looks::total);
    sheet.setFormula(totalRow, 8, u"G%1/%2-1"_s.arg(totalRow).arg(plannedPerDay * days),
                     sheet.number(totalRow, 7) / (plannedPerDay * days) - 1,
                     looks::total.formatted("+0.0%;[Red]-0.0%"));
    sheet.setHeight(totalRow, 19.5);
    sheet.setWidth(1, 1, 13.71);
    sheet.setWidth(2, 6, 9.71);
    sheet.setWidth(7, 8, 11.71);
    sheet.freeze(4, 0);
    return totalRow;
}

/// Attainment of the plan by region, always in the same place.
void putAttainment(Sheet& sheet, const Sheet& daily, int totalRow, int version)
{
    putTitle(sheet, u"Plan attainment"_s, u"Since the first of September, thousand euros"_s, 5);
    const QStringList heads{u"Region"_s, u"Sales"_s, u"Plan"_s, u"Gap"_s, u"Attained"_s};
    for (int i = 0; i < heads.size(); ++i)
        sheet.set(4, 1 + i, heads.at(i), i ? looks::header : looks::headerLeft);
    sheet.setHeight(4, 21);
    const double planOfRegion[] = {165, 130, 130, 130, 100};
    const int days = 20 + 5 * version;
    for (int i = 0; i < salesRegions.size(); ++i) {
        const int row = 5 + i;
        const double sales = daily.number(totalRow, 2 + i), plan = planOfRegion[i] * days;
        sheet.set(row, 1, salesRegions.at(i), looks::label);
        sheet.setFormula(row, 2, u"Daily!%1"_s.arg(cellName(totalRow, 2 + i)), sales, looks::number);
        sheet.set(row, 3, plan, looks::number.colored("64748B"));
        sheet.setFormula(row, 4, u"B%1-C%1"_s.arg(row), sales - plan, looks::number.formatted(looks::signedNumber));
        sheet.setFormula(row, 5, u"B%1/C%1"_s.arg(row), sales / plan,
                         looks::number.asBold()
                             .formatted(looks::percent)
                             .filled(sales >= plan ? "D9F2E6" : "FDE7E4")
                             .aligned(Look::Side::Center));
    }
    sheet.set(10, 1, u"All regions"_s, looks::totalLabel);
    putSums(sheet, 10, 5, 9, 2, 3, looks::total);
    putSums(sheet, 10, 5, 9, 4, 4, looks::total.formatted(looks::signedNumber));
    sheet.setFormula(10, 5, u"B10/C10"_s, sheet.number(10, 2) / sheet.number(10, 3),
                     looks::total.formatted(looks::percent).aligned(Look::Side::Center));
    sheet.setWidth(1, 1, 14.71);
    sheet.setWidth(2, 5, 11.71);
}

} // namespace

QByteArray regionalSales(int version)
{
    Book book;
    Sheet& daily = book.add(u"Daily"_s);
    const int totalRow = putDailySales(daily, version);
    putAttainment(book.add(u"Attainment"_s), daily, totalRow, version);
    return book.bytes();
}

QByteArray priceList(int version)
{
    const QStringList items{u"Copper tube 15 mm"_s, u"Steel sheet 2 mm"_s, u"Aluminium bar"_s, u"Brass valve"_s,
                            u"Solder wire"_s};
    QByteArray text = "Valid from,Article,Unit,Price,Change\n";
    for (int day = 0; day < 12 + 3 * version; ++day) {
        const int item = day % int(items.size());
        Figures figures(7000 + quint64(day));
        const double price = (figures.between(900, 1250) + 740 * item) / 100.0;
        const double change = figures.between(-45, 60) / 10.0;
        text += workingDay(day * 2).toString(Qt::ISODate).toLatin1() + "," + items.at(item).toUtf8() + "," +
                (item < 3 ? "m" : "piece") + "," + QByteArray::number(price, 'f', 2) + "," +
                QByteArray::number(change, 'f', 1) + "%\n";
    }
    return text;
}

} // namespace lumivane::demo
