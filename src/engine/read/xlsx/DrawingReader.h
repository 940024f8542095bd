#pragma once

#include "engine/content/Drawings.h"
#include "engine/read/package/Package.h"
#include "engine/read/package/SmallParts.h"
#include "engine/read/xlsx/Palette.h"
#include "engine/read/xlsx/SheetObjects.h"

namespace lumivane::engine {

struct SheetDrawings
{
    std::vector<DrawingContent> drawings; ///< in the order of the file
    qint64 pictureBytes = 0;              ///< held by all of their pictures
    bool complete = true;                 ///< no bound was met
};

/// The parts in which the drawings of a sheet are found; each may be null.
struct DrawingParts
{
    const Package::Entry* drawings = nullptr;
    const Package::Entry* older = nullptr;          ///< with controls and the boxes of comments (VML)
    pugi::xml_node olderRoot{};                     ///< what it holds; null where it is broken
    const Package::Entry* theme = nullptr;          ///< from which shapes take their looks
    const std::vector<SheetObject>& objects;        ///< of the sheet
    const std::vector<Relationship>& relationships; ///< of the sheet
};

/// What lies on a sheet. Pictures take at most `maxBytes`. Throws Fault when the drawing part or the theme is broken.
SheetDrawings readDrawings(const Package& package, const DrawingParts& parts, const Palette& palette, qint64 maxBytes);

} // namespace lumivane::engine
