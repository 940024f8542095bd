#pragma once

#include "viewer/ViewedSheet.h"

#include <optional>

namespace lumivane {

/// The next cell (or the one before) whose shown or plain text holds a text without regard to case, row by row from a
/// cell on and round at the sheet's end; that cell itself comes last. Cells that cannot be seen are passed over. An
/// empty text is found nowhere.
std::optional<CellSpot> findText(const ViewedSheet& sheet, const QString& text, const CellSpot& from, bool forward);

} // namespace lumivane
