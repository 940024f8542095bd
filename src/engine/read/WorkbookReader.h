#pragma once

#include "engine/content/WorkbookContent.h"
#include "platform/RuntimeError.h"

namespace lumivane::engine {

/// Thrown for a workbook in a format that is not read here but that a spreadsheet program may well open.
class FormatNotRead : public RuntimeError
{
public:
    using RuntimeError::RuntimeError;
};

/// Opens a workbook file. What it is, is seen from its first bytes, never from its name: a package with a workbook in
/// it, or text with separators. Throws RuntimeError with a sentence that names the file and what is wrong with it: not
/// there, empty, damaged (and which entry), encrypted, over a bound (and which), or
/// FormatNotRead.
std::shared_ptr<WorkbookContent> readWorkbook(const QString& path);

} // namespace lumivane::engine
