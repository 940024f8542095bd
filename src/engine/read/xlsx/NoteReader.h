#pragma once

#include "engine/content/SheetContent.h"
#include "engine/read/package/SmallParts.h"
#include "engine/read/xlsx/Palette.h"

namespace lumivane::engine {

/// Comments of cells from their part: the marks, and the texts as texts of the sheet, as many as fit into `maxBytes`.
/// Throws Fault when the part is broken.
void readComments(ByteStream& bytes, const Palette& palette, qint64 maxBytes, SheetContent& content);

/// From the part with conversations: what is said in them, in place of the notes that stand for them.
void readConversations(pugi::xml_node root, qint64 maxBytes, SheetContent& content);

/// From the older part with drawings (VML): the boxes of those comments that stand open.
void readOpenNotes(pugi::xml_node root, SheetContent& content);

} // namespace lumivane::engine
