#include "panel/frmPanel.h"

#include "assist/frmCaption.h"
#include "assist/frmDrillback.h"
#include "panel/frmPanelProperties.h"
#include "panel/frmRangeRelative.h"
#include "platform/RuntimeError.h"
#include "repository/clsWorkspacePanel.h"

// The dialogs of a panel's properties.

namespace lumivane {

namespace {

template <class Dialog>
void showPanelDialog(const frmPanel& panel, bool EditMode)
{
    Dialog dialog(panel.window());
    dialog.Index = panel.Index;
    dialog.EditMode = EditMode;
    dialog.exec();
}

} // namespace

void frmPanel::Panel_Caption(bool EditMode)
{
    showPanelDialog<frmCaption>(*this, EditMode);
    SetCaption();
    IsDirty = true;
}

void frmPanel::Panel_Range(bool EditMode)
{
    showPanelDialog<frmRangeRelative>(*this, EditMode);
    IsDirty = true;
}

void frmPanel::Panel_Properties(bool EditMode)
{
    showPanelDialog<frmPanelProperties>(*this, EditMode);
    IsDirty = true;
}

void frmPanel::Panel_DrillbackProperties()
{
    const auto panel = record();
    if (!panel)
        throw RuntimeError(RuntimeError::ObjectNotSet);
    frmDrillback dialog(window());
    dialog.SourceID = panel->SourceID;
    dialog.SheetName = panel->SheetName;
    dialog.exec();
}

} // namespace lumivane
