#pragma once

#include <QString>

namespace lumivane::engine {

/// The kinds of workbook files.
enum class FileKind { Xlsx, Xlsb, OpenDocument, OldBinary, Text };

/// What a file is, from its first bytes and, for a package, from its parts. Throws Fault with a sentence for what is no
/// workbook: empty, protected by a password, a picture, a web page.
FileKind fileKind(const QString& path);

} // namespace lumivane::engine
