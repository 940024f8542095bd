#include "support/TextTable.h"

namespace lumivane::test {

std::vector<QStringList> drawnCells(const char* drawn)
{
    std::vector<QStringList> rows;
    for (const QString& line : QString::fromUtf8(drawn).split(u'\n')) {
        if (line.trimmed().isEmpty())
            continue;
        QStringList& row = rows.emplace_back();
        for (const QString& cell : line.split(u'|'))
            row.append(cell.trimmed());
    }
    return rows;
}

QString cellMeaning(const QString& cell)
{
    return QString(cell).replace(u'·', u' ').replace(u'⏎', u'\n');
}

std::vector<std::pair<QString, QString>> textPairs(const QStringList& cells)
{
    std::vector<std::pair<QString, QString>> pairs;
    for (const QString& cell : cells) {
        const QStringList sides = cell.split(u'→');
        if (sides.size() != 2)
            throw std::logic_error("no pair: " + cell.toStdString());
        pairs.emplace_back(cellMeaning(sides[0].trimmed()), cellMeaning(sides[1].trimmed()));
    }
    return pairs;
}

std::vector<std::pair<QString, QString>> textPairs(const char* drawn)
{
    QStringList cells;
    for (const QStringList& row : drawnCells(drawn))
        cells += row;
    return textPairs(cells);
}

QStringList textList(const char* drawn)
{
    QStringList list;
    for (const QStringList& row : drawnCells(drawn))
        std::transform(row.begin(), row.end(), std::back_inserter(list), cellMeaning);
    return list;
}

} // namespace lumivane::test
