#pragma once

#include "engine/content/Drawings.h"

#include <pugixml.hpp>
#include <string>
#include <vector>

namespace lumivane::engine {

/// A control or an object of another program as the part of its sheet lists it. How it looks stands elsewhere.
struct SheetObject
{
    int shape = 0; ///< number of its shape
    std::string name;
    std::string properties; ///< relationship's id of what a control is
    std::string preview;    ///< of an object's picture
    std::string program;    ///< that made an object ("Word.Document.12"); empty for a control
    DrawingContent place;   ///< its anchor alone
    bool hasPlace = false;
};

/// Adds those of a list, <controls> or <oleObjects>, each once.
void readSheetObjects(pugi::xml_node list, std::vector<SheetObject>& objects);

/// State and bounds of a form control as its own part stores them, over those known before.
void readControlProperties(pugi::xml_node properties, ControlContent& control);

} // namespace lumivane::engine
