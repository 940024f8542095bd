#include "ReportLooks.h"
#include "Reports.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace lumivane::demo {

namespace {

/// The mark of the made-up company, 48 pixels in the square.
QByteArray logo()
{
    QImage image(48, 48, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(u"#1B3A57"_s));
    painter.drawEllipse(0, 0, 48, 48);
    painter.setBrush(QColor(u"#2A9D8F"_s));
    painter.drawPolygon(QPolygonF({{10, 34}, {24, 10}, {38, 34}}));
    painter.setBrush(QColor(u"#FFF6DD"_s));
    painter.drawEllipse(QPointF(24, 30), 6, 6);
    painter.end();
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return png;
}

constexpr auto money = "#,##0.0;[Red]-#,##0.0;\"–\"";

/// Bank accounts, one more in every version, so that the reserve below them moves down.
void putAccounts(Sheet& sheet, int version)
{
    const QStringList banks{u"House bank, current"_s,   u"House bank, payroll"_s, u"Savings bank, current"_s,
                            u"Savings bank, deposit"_s, u"Clearing account"_s,    u"Branch North"_s,
                            u"Branch South"_s,          u"Dollar account"_s,      u"Sterling account"_s};
    putTitle(sheet, u"Cash by account"_s, u"Thousand euros at the close of the day"_s, 4);
    const QStringList heads{u"Account"_s, u"Balance"_s, u"Credit line"_s, u"Available"_s};
    for (int i = 0; i < heads.size(); ++i)
        sheet.set(4, 1 + i, heads.at(i), i ? looks::header : looks::headerLeft);
    sheet.setHeight(4, 21);
    const Look amount = looks::number.formatted(money);
    const int accounts = 4 + version, last = 4 + accounts;
    for (int row = 5; row <= last; ++row) {
        Figures figures(quint64(100 * row + version));
        const double balance = figures.between(-400, 4200) / 10.0, line = 50 * figures.between(0, 6);
        sheet.set(row, 1, banks.at(row - 5), looks::label);
        sheet.set(row, 2, balance, amount);
        sheet.set(row, 3, line, amount.colored("64748B"));
        sheet.setFormula(row, 4, u"B%1+C%1"_s.arg(row), balance + line, amount);
    }
    const Look sum = looks::total.formatted(money);
    sheet.set(last + 1, 1, u"All accounts"_s, looks::totalLabel);
    putSums(sheet, last + 1, 5, last, 2, 4, sum);

    const int reserve = last + 3;
    const double available = sheet.number(last + 1, 4), due = 310.5 + 42.3 * version, wages = 480;
    sheet.set(reserve, 1, u"Liquidity reserve"_s, looks::headerLeft);
    sheet.fillRow(reserve, 2, 4, looks::header);
    sheet.set(reserve, 4, u"Thousand euros"_s, looks::header);
    const std::pair<QString, double> lines[] = {
        {u"Available on all accounts"_s, available}, {u"Suppliers due this week"_s, -due}, {u"Wages due"_s, -wages}};
    for (int i = 0; i < 3; ++i) {
        sheet.fillRow(reserve + 1 + i, 1, 4, looks::label);
        sheet.set(reserve + 1 + i, 1, lines[i].first, looks::label);
        sheet.set(reserve + 1 + i, 4, lines[i].second, amount);
    }
    const double weeks = (available - due) / wages;
    sheet.addPicture(reserve + 1, 2, u"Logo of the house"_s, logo());
    sheet.addTextBox({{reserve + 1, 3, reserve + 3, 3},
                      u"Note"_s,
                      u"Covers the wages of %1 weeks"_s.arg(QLocale::c().toString(weeks, 'f', 1))});
    sheet.fillRow(reserve + 4, 1, 4, sum);
    sheet.set(reserve + 4, 1, u"Left over"_s, looks::totalLabel);
    sheet.setFormula(reserve + 4, 4, sumFormula(reserve + 1, reserve + 3, 4), available - due - wages, sum);
    sheet.setWidth(1, 1, 36.71);
    sheet.setWidth(2, 4, 18.29);
}

/// Weeks side by side. Each version closes one more week, so that "This week" stands one column further right.
void putWeeks(Sheet& sheet, int version)
{
    const QStringList lines{u"Opening balance"_s, u"Customers"_s,       u"Other receipts"_s,
                            u"Suppliers"_s,       u"Wages and taxes"_s, u"Investments"_s};
    const int thisWeek = 3 + version, lastColumn = thisWeek + 4;
    putTitle(sheet, u"Cash by week"_s, u"Thousand euros; weeks behind us are actual figures"_s, 6);
    sheet.set(4, 1, u"Week"_s, looks::headerLeft);
    sheet.set(5, 1, u"State"_s, looks::label.colored("64748B"));
    double opening = 820;
    for (int column = 2; column <= lastColumn; ++column) {
        const bool present = column == thisWeek;
        const QByteArray fill = present ? "FFF6DD" : column < thisWeek ? "F1F5F9" : "";
        sheet.set(4, column, u"Week %1"_s.arg(37 + column), looks::header);
        sheet.set(5, column,
                  present             ? u"This week"_s
                  : column < thisWeek ? u"Actual"_s
                                      : u"Forecast"_s,
                  looks::label.colored("64748B").filled(fill).aligned(Look::Side::Center));
        Figures figures(quint64(500 + column));
        const double flows[] = {opening,
                                double(figures.between(420, 640)),
                                double(figures.between(10, 60)),
                                double(-figures.between(250, 390)),
                                double(-figures.between(140, 210)),
                                column % 3 ? 0.0 : double(-figures.between(40, 110))};
        double closing = 0;
        for (int i = 0; i < lines.size(); ++i) {
            sheet.set(6 + i, column, flows[i], looks::number.formatted(looks::signedNumber).filled(fill));
            closing += flows[i];
        }
        sheet.setFormula(12, column, sumFormula(6, 11, column), closing, looks::total.formatted(looks::signedNumber));
        opening = closing;
    }
    for (int i = 0; i < lines.size(); ++i)
        sheet.set(6 + i, 1, lines.at(i), looks::label);
    sheet.set(12, 1, u"Closing balance"_s, looks::totalLabel);
    sheet.setHeight(4, 21);
    sheet.setWidth(1, 1, 18.71);
    sheet.setWidth(2, lastColumn, 11.71);
    sheet.freeze(0, 1);
}

} // namespace

QByteArray cashPosition(int version)
{
    Book book;
    putAccounts(book.add(u"Accounts"_s), version);
    putWeeks(book.add(u"Weeks"_s), version);
    return book.bytes();
}

QByteArray budget(int version)
{
    const QStringList kinds{u"Personnel"_s,          u"Material"_s,  u"Energy"_s,
                            u"Rent and buildings"_s, u"Logistics"_s, u"Marketing"_s,
                            u"IT services"_s,        u"Travel"_s,    u"Training"_s};
    const int months = 5 + version;
    Book book;
    Sheet& sheet = book.add(u"Budget"_s);
    putTitle(sheet, u"Budget 2026"_s, u"Thousand euros, January to %1"_s.arg(QLocale::c().standaloneMonthName(months)),
             5);
    const QStringList heads{u"Kind of cost"_s, u"Budget"_s, u"Actual"_s, u"Variance"_s, u"Used"_s};
    for (int i = 0; i < heads.size(); ++i)
        sheet.set(4, 1 + i, heads.at(i), i ? looks::header : looks::headerLeft);
    sheet.setHeight(4, 21);
    for (int i = 0; i < kinds.size(); ++i) {
        const int row = 5 + i;
        const double perMonth = 18 + 61.0 * ((i * 5) % 9);
        double actual = 0;
        for (int month = 0; month < months; ++month)
            actual += perMonth * Figures(quint64(3000 + 20 * i + month)).between(86, 112) / 100;
        const double planned = perMonth * 12;
        sheet.set(row, 1, kinds.at(i), looks::label);
        sheet.set(row, 2, planned, looks::number);
        sheet.set(row, 3, actual, looks::number);
        sheet.setFormula(row, 4, u"B%1*%2/12-C%1"_s.arg(row).arg(months), planned * months / 12 - actual,
                         looks::number.formatted(looks::signedNumber));
        sheet.setFormula(
            row, 5, u"C%1/B%1"_s.arg(row), actual / planned,
            looks::number.formatted(looks::percent).filled(actual / planned > months / 12.0 ? "FDE7E4" : ""));
    }
    sheet.set(14, 1, u"All costs"_s, looks::totalLabel);
    putSums(sheet, 14, 5, 13, 2, 3, looks::total);
    putSums(sheet, 14, 5, 13, 4, 4, looks::total.formatted(looks::signedNumber));
    sheet.setFormula(14, 5, u"C14/B14"_s, sheet.number(14, 3) / sheet.number(14, 2),
                     looks::total.formatted(looks::percent));
    sheet.setWidth(1, 1, 20.71);
    sheet.setWidth(2, 5, 11.71);
    return book.bytes();
}

} // namespace lumivane::demo
