#include "panel/frmPanel.h"

#include "panel/frmPanelProperties.h"
#include "panel/frmRangeRelative.h"

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

} // namespace lumivane
