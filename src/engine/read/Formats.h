#pragma once

#include "engine/read/FormatReader.h"

#include <QString>

namespace lumivane::engine {

/// A reader for the file, chosen by its bytes. Throws Fault for a file that is no workbook, and for one in a format
/// that has no reader.
std::unique_ptr<FormatReader> openFormat(const QString& path);

} // namespace lumivane::engine
