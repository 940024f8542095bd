#pragma once

#include "platform/CellArea.h"

#include <QList>
#include <QString>

namespace lumivane::demo {

/// A box of text that lies over cells and moves with them.
struct TextBox
{
    CellArea cells;
    QString name;
    QString text;
};

/// Adds boxes to a workbook on the disk, whose drawings of the numbered part ("xl/drawings/drawing1.xml" is the first)
/// must exist. The library that writes the workbooks has none. Throws RuntimeError.
void addTextBoxes(const QString& workbook, int drawing, const QList<TextBox>& boxes);

} // namespace lumivane::demo
