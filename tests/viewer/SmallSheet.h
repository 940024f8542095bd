#pragma once

#include "support/XlsxWriter.h"
#include "viewer/ViewedSheet.h"

namespace lumivane::test {

/// Sheet "Data" of a small workbook, with `views` as its <sheetViews> and a chart "Sales" and a picture "Logo":
///
///       A  B      C    D    E(hidden)  F
///    2     Name   Q1   Q2
///    3     Ann    1    2
///    4     Bob    3               10   10
///    5     Cid    5    6
///    6 (hidden)   100
///    7            7
///    9     Total (merged B9:D9)
///
/// Beside it "My notes" with a text in H30 that runs over its neighbours, the hidden "Secret" and the names Table
/// (Data!B2:D5), Note (My notes, local and global), Away (in Secret) and Moving (a formula).
WorkbookParts smallWorkbook(const std::string& views = std::string());

/// The sheet of a workbook, read from a file.
std::shared_ptr<const ViewedSheet> viewedSheet(const WorkbookParts& parts, int index = 0);

/// A frozen or split view as stored.
std::string paneView(const std::string& pane, const std::string& attributes = std::string());

} // namespace lumivane::test
