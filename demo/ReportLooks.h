#pragma once

#include "Book.h"

#include <QtGlobal>

// What the reports share: the house colours and figures that are the same every time.

namespace lumivane::demo {

namespace looks {

inline const Look text;
inline const Look title = Look().asBold().sized(16).colored("1B3A57");
inline const Look subtitle = Look().sized(10).colored("64748B");
inline const Look header =
    Look().asBold().colored("FFFFFF").filled("1B3A57").aligned(Look::Side::Center).lined({}, "medium 2A9D8F");
inline const Look headerLeft = header.aligned(Look::Side::Left, 1);
inline const Look label = Look().aligned(Look::Side::Left, 1).lined({}, "hair CBD5E1");
inline const Look number = Look().formatted("#,##0").lined({}, "hair CBD5E1");
inline const Look total = Look().asBold().filled("E3EDF3").formatted("#,##0").lined("thin 1B3A57", "thin 1B3A57");
inline const Look totalLabel = total.aligned(Look::Side::Left, 1);

inline constexpr auto signedNumber = "#,##0;[Red]-#,##0;\"–\"";
inline constexpr auto percent = "0.0%";

} // namespace looks

/// Figures that look random and are the same for the same seed on every machine.
class Figures
{
public:
    explicit Figures(quint64 seed) : m_state(seed * 0x9e3779b97f4a7c15u + 0x2545f4914f6cdd1du) {}
    /// Both bounds can occur.
    int between(int least, int most) { return least + int(next() % quint64(most - least + 1)); }

private:
    quint64 next()
    {
        m_state ^= m_state << 13;
        m_state ^= m_state >> 7;
        m_state ^= m_state << 17;
        return m_state >> 11;
    }
    quint64 m_state;
};

/// Title, subtitle and their heights, in the first two rows from column 1 on.
inline void putTitle(Sheet& sheet, const QString& title, const QString& subtitle, int lastColumn)
{
    sheet.set(1, 1, title, looks::title);
    sheet.merge(QStringLiteral("A1:") + cellName(1, lastColumn));
    sheet.setHeight(1, 26);
    sheet.set(2, 1, subtitle, looks::subtitle);
    sheet.setHeight(2, 16.5);
}

inline QString sumFormula(int firstRow, int lastRow, int column)
{
    return QStringLiteral("SUM(%1:%2)").arg(cellName(firstRow, column), cellName(lastRow, column));
}

/// A row of sums over the rows above, the sums also returned by the sheet's number().
inline void putSums(Sheet& sheet, int row, int firstRow, int lastRow, int firstColumn, int lastColumn, const Look& look)
{
    for (int column = firstColumn; column <= lastColumn; ++column) {
        double sum = 0;
        for (int above = firstRow; above <= lastRow; ++above)
            sum += sheet.number(above, column);
        sheet.setFormula(row, column, sumFormula(firstRow, lastRow, column), sum, look);
    }
}

} // namespace lumivane::demo
