#pragma once

#include "support/QtPrinting.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <gtest/gtest.h>
#include <stdexcept>
#include <utility>
#include <vector>

namespace lumivane::test {

/// The cells of a table drawn as text: a line a row, cells between "|" without the blanks round them. Empty lines do
/// not count.
std::vector<QStringList> drawnCells(const char* drawn);

/// What a drawn cell stands for: "·" is a blank and "⏎" a line feed, for where those matter.
QString cellMeaning(const QString& cell);

/// The rows of a drawn table, as in `for (const auto& [name, input, expected] : textTable<3>(R"(...)"))`. A row may end
/// early.
template <size_t columns>
std::vector<std::array<QString, columns>> textTable(const char* drawn)
{
    std::vector<std::array<QString, columns>> rows;
    for (const QStringList& cells : drawnCells(drawn)) {
        if (size_t(cells.size()) > columns)
            throw std::logic_error("too many cells: " + cells.join(u'|').toStdString());
        std::transform(cells.begin(), cells.end(), rows.emplace_back().begin(), cellMeaning);
    }
    return rows;
}

/// For tests that take a row of a drawn table as their parameter, each with a fixture of its own.
template <class Fixture, size_t columns>
class OfEachRow : public Fixture, public testing::WithParamInterface<std::array<QString, columns>>
{
};

/// The row's first cell is its name.
inline const auto rowName = [](const auto& info) {
    std::string name = info.param[0].toStdString();
    std::replace_if(
        name.begin(), name.end(), [](unsigned char letter) { return !std::isalnum(letter); }, '_');
    return name;
};

/// All cells of a drawn table.
QStringList textList(const char* drawn);

/// Drawn cells "5 → five" taken apart at their arrows.
std::vector<std::pair<QString, QString>> textPairs(const QStringList& cells);
/// The same for a whole table, as many pairs in a line as there is room for.
std::vector<std::pair<QString, QString>> textPairs(const char* drawn);

} // namespace lumivane::test
