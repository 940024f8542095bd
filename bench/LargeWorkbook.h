#pragma once

#include <QByteArray>

namespace lumivane::bench {

/// A workbook of one sheet of the size asked for, deflated as usual: numbers of various lengths, shared texts, dates,
/// truth values, a formula in each row, half a dozen styles. The same bytes at every call.
QByteArray largeWorkbook(int rows, int columns);

} // namespace lumivane::bench
