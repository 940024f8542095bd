#pragma once

#include "assist/modHTMLHelp.h"

namespace lumivane {

/// Shows help, documents and web pages in the programs that the desktop has for them.
DocumentViewer desktopDocuments();

} // namespace lumivane
