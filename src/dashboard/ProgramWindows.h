#pragma once

#include <QObject>
#include <QPointer>

namespace lumivane {

class frmLogin;
class frmWorkspace;

/// The windows that a run has once: the main window, which is loaded anew for each project, and the dialog that goes to
/// another project. The run ends with its main window, whatever else is open then.
class ProgramWindows : public QObject
{
    Q_OBJECT

public:
    explicit ProgramWindows(QObject* parent = nullptr);
    ~ProgramWindows() override;

    /// Loads the main window on the open project and shows it. One that is loaded already is only brought forward.
    void showWorkspace();
    /// Takes the main window away, unless its user wants to stay because of unsaved work. The run goes on.
    bool unloadWorkspace();
    /// Null while none is loaded.
    frmWorkspace* workspace() const;

    /// Shows the dialog that goes to another project, beside the main window.
    void showLogin();
    frmLogin* login() const;

Q_SIGNALS:
    /// The main window has been closed for good.
    void ended();

private:
    void workspaceUnloaded();

    QPointer<frmWorkspace> m_workspace;
    QPointer<frmLogin> m_login;
    bool m_goesOn = false; ///< the main window is being closed to be loaded anew
};

} // namespace lumivane
