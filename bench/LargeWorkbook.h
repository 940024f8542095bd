#pragma once

#include <QByteArray>
#include <string>

namespace lumivane::bench {

/// A workbook of one sheet of the size asked for, deflated as usual: numbers of various lengths, shared texts, dates,
/// truth values, a formula in each row, half a dozen styles. The same bytes at every call. `conditions` are elements of
/// conditional formats, whose rules may name the one differential format 0.
QByteArray largeWorkbook(int rows, int columns, const std::string& conditions = {});

/// A conditional format of every kind over the same cells, such as "A1:L30".
std::string everyCondition(const std::string& cells);

} // namespace lumivane::bench
