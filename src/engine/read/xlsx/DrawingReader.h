#pragma once

#include "engine/content/Drawings.h"
#include "engine/read/package/Package.h"
#include "engine/read/xlsx/Palette.h"

namespace lumivane::engine {

struct SheetDrawings
{
    std::vector<DrawingContent> drawings; ///< in the order of the file
    qint64 pictureBytes = 0;              ///< held by all of their pictures
    bool complete = true;                 ///< no bound was met
};

/// What lies on a sheet, from its drawing part. Shapes take their looks from the part with the theme, which may be
/// null, controls from one of their own, which may be null too. Pictures take at most `maxBytes`. Throws Fault when the
/// drawing part or the theme is broken.
SheetDrawings readDrawings(const Package& package, const Package::Entry& entry, const Palette& palette,
                           const Package::Entry* theme, const Package::Entry* controls, qint64 maxBytes);

} // namespace lumivane::engine
