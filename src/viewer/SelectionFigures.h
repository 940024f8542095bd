#pragma once

#include "viewer/ViewedSheet.h"

#include <QString>

namespace lumivane {

/// What can be said of selected cells at a glance. Cells of hidden rows and columns do not count: the figures are those
/// of what one sees.
struct SelectionFigures
{
    qint64 count = 0;   ///< cells with something in them
    qint64 numbers = 0; ///< of these, numbers
    double sum = 0;
    double smallest = 0, largest = 0;
    int style = 0; ///< of the first number; sum and average are shown through its number format
};

SelectionFigures figuresOf(const ViewedSheet& sheet, const std::vector<CellArea>& areas);
/// "Average: 2.50   Count: 4   Sum: 10.00"; empty where fewer than two cells are filled.
QString figuresText(const ViewedSheet& sheet, const SelectionFigures& figures);

/// The shown texts of the areas, cells separated by tabs and rows by line feeds; hidden rows and columns are left out,
/// and so is what lies beyond the cells in use. A text with a tab, a line break or a quote is put in quotes.
QString selectionText(const ViewedSheet& sheet, const std::vector<CellArea>& areas);

} // namespace lumivane
