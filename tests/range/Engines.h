#pragma once

#include "host/Host.h"
#include "support/QtPrinting.h"

#include <memory>
#include <ostream>

// One suite for every engine: the rules of range tracking hold whatever opens the workbook.

namespace lumivane::test {

/// A sheet as a test puts it down: "C9=Total" for a cell, "5=0" for the height of a row, "C=8.43" for the width of a
/// column. A number is stored as one.
struct Grid
{
    QStringList cells;
    QStringList heights;
    QStringList widths;
};

struct Engine
{
    const char* name;
    /// The worksheet and whatever keeps it open.
    std::shared_ptr<Worksheet> (*open)(const Grid& grid);
};

extern const Engine engines[];
extern const int engineCount;

inline std::ostream& operator<<(std::ostream& out, const Engine& engine)
{
    return out << engine.name;
}

} // namespace lumivane::test
