#pragma once

#include "engine/content/TextTable.h"
#include "engine/read/package/XmlScanner.h"
#include "engine/read/xlsx/Palette.h"

namespace lumivane::engine {

/// Right after the Start of a text (<si> or <is>), up to and including its End: appends its text to the table, with the
/// runs of a rich one. Phonetic hints are left out. `buffer` is only there to be reused. Returns the text's index.
int readRichText(XmlScanner& xml, const Palette& palette, TextTable& texts, std::string& buffer);

/// Replaces "_x000D_" and its like in place: what XML cannot carry is written so.
void resolveEscapes(std::string& text);

/// All texts of the workbook's shared part, which may take `maxBytes`. Throws Fault when it is broken.
void readSharedTexts(ByteStream& bytes, const Palette& palette, qint64 maxBytes, TextTable& texts);

} // namespace lumivane::engine
