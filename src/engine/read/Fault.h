#pragma once

#include <QString>

namespace lumivane::engine {

/// What is wrong with a file, as the end of a sentence: "entry "xl/styles.xml" does not match its checksum". Thrown
/// inside the reader only; readWorkbook and WorkbookContent::sheet turn it into the RuntimeError that names file and
/// sheet.
struct Fault
{
    QString what;
    bool otherFormat = false; ///< nothing is wrong with the file, only that it is not read here
};

} // namespace lumivane::engine
