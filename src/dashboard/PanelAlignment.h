#pragma once

class QPoint;

namespace lumivane {

class clsWorkspacePanel;
class frmPanel;

// What the commands of layout mode do with one marked panel: it takes a place or a size from the base, which stays. The
// record gets what the window then has.

void alignLeft(frmPanel& panel, clsWorkspacePanel& record, const frmPanel& base);
void alignRight(frmPanel& panel, clsWorkspacePanel& record, const frmPanel& base);
void alignTop(frmPanel& panel, clsWorkspacePanel& record, const frmPanel& base);
void alignBottom(frmPanel& panel, clsWorkspacePanel& record, const frmPanel& base);

// These make a cropped panel of it: in the other views its picture decides about its size.

void takeWidth(frmPanel& panel, clsWorkspacePanel& record, const frmPanel& base);
void takeHeight(frmPanel& panel, clsWorkspacePanel& record, const frmPanel& base);
void takeSize(frmPanel& panel, clsWorkspacePanel& record, const frmPanel& base);

void nudge(frmPanel& panel, clsWorkspacePanel& record, const QPoint& pixels);

} // namespace lumivane
