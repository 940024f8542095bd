#pragma once

#include "platform/Checked.h"

namespace lumivane::test {

/// An installation with the key "Large Sheets", for as long as this object lives.
struct LargeSheets
{
    LargeSheets() { setLargeSheets(true); }
    ~LargeSheets() { setLargeSheets(false); }
};

} // namespace lumivane::test
