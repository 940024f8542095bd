#pragma once

#include <QList>
#include <QPointer>
#include <functional>

namespace lumivane {

class frmPanel;

/// The marks of layout mode: the panels that are lined up, and the base among them that they follow. Panels show their
/// marks in their captions.
class LayoutMarks
{
public:
    /// `panels` gives the windows of the dashboard, which come and go.
    explicit LayoutMarks(std::function<QList<frmPanel*>()> panels);

    void setBase(frmPanel& base);
    void clear();
    frmPanel* base() const;          ///< null once its window is gone
    QList<frmPanel*> marked() const; ///< the base among them
    /// Runs steps that make all windows anew, and marks those of the same records. The base may be missing then.
    void keepThrough(const std::function<void()>& steps);

private:
    std::function<QList<frmPanel*>()> m_panels;
    QPointer<frmPanel> BasePanel;
};

} // namespace lumivane
