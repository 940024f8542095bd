#include "dashboard/LayoutMarks.h"

#include "panel/frmPanel.h"
#include "repository/clsWorkspace.h"
#include "repository/clsWorkspacePanel.h"

#include <QSet>

namespace lumivane {

LayoutMarks::LayoutMarks(std::function<QList<frmPanel*>()> panels) : m_panels(std::move(panels)) {}

void LayoutMarks::setBase(frmPanel& base)
{
    BasePanel = &base;
    base.IsBase = true;
    base.IsMarked = true;
    base.SetCaption();
}

void LayoutMarks::clear()
{
    for (frmPanel* panel : m_panels()) {
        panel->IsBase = false;
        panel->IsMarked = false;
        panel->SetCaption();
    }
}

frmPanel* LayoutMarks::base() const
{
    return BasePanel;
}

QList<frmPanel*> LayoutMarks::marked() const
{
    QList<frmPanel*> panels = m_panels();
    panels.removeIf([](const frmPanel* panel) { return !panel->IsMarked; });
    return panels;
}

void LayoutMarks::keepThrough(const std::function<void()>& steps)
{
    // Windows come and go, records stay.
    const auto recordOf = [](const frmPanel* panel) { return gWorkspace->Panels(panel->Index); };
    QSet<const clsWorkspacePanel*> records;
    for (const frmPanel* panel : marked())
        records.insert(recordOf(panel).get());
    const auto base = BasePanel ? recordOf(BasePanel) : nullptr;
    steps();
    BasePanel = nullptr;
    for (frmPanel* panel : m_panels()) {
        const auto record = recordOf(panel);
        panel->IsMarked = record && records.contains(record.get());
        panel->IsBase = record && record == base;
        if (panel->IsBase)
            BasePanel = panel;
        panel->SetCaption();
    }
}

} // namespace lumivane
