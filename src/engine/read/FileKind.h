#pragma once

#include <QString>

namespace lumivane::engine {

enum class FileKind { Package, Text };

/// What a file is, from its bytes. Throws Fault with a sentence for what is not read here: empty, protected by a
/// password, an old binary workbook, a picture, a web page.
FileKind fileKind(const QString& path);

} // namespace lumivane::engine
