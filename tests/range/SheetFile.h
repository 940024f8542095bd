#pragma once

#include "host/Host.h"
#include "support/QtPrinting.h"

namespace lumivane::test {

/// Sheet "Data" of a workbook Report.xlsx, written and opened again: cells "C9=Total|B2=5|B3==SUM" (a formula without a
/// result), heights of rows "5=0|7:9=30" in points, widths of columns "C=8.43|A:B=0" in characters.
std::shared_ptr<Worksheet> openSheet(const QString& cells, const QString& heights = {}, const QString& widths = {});

} // namespace lumivane::test
