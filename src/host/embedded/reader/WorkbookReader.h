#pragma once

#include "host/embedded/Content.h"

namespace lumivane::embedded {

/// Opens a workbook file. What it is, is seen from its first bytes, never from its name: a package with a workbook in
/// it, or text with separators. Throws RuntimeError with a sentence that names the file and what is wrong with it: not
/// there, empty, damaged (and which entry), encrypted, a format not read here, over a bound (and which).
std::shared_ptr<WorkbookContent> readWorkbook(const QString& path);

} // namespace lumivane::embedded
