#pragma once

class QDropEvent;

namespace lumivane {

/// Takes dropped files to be opened only: whoever they come from must not think them moved, and delete its own.
void acceptCopy(QDropEvent& event);

} // namespace lumivane
