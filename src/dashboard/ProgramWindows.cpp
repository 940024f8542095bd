#include "dashboard/ProgramWindows.h"

#include "dashboard/frmLogin.h"
#include "dashboard/frmWorkspace.h"

#include <QWindow>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

void bringForward(QWidget& window)
{
    window.show();
    window.raise();
    window.activateWindow();
}

} // namespace

ProgramWindows::ProgramWindows(QObject* parent) : QObject(parent) {}

ProgramWindows::~ProgramWindows()
{
    delete m_login;
    delete m_workspace;
}

frmWorkspace* ProgramWindows::workspace() const
{
    return m_workspace;
}

frmLogin* ProgramWindows::login() const
{
    return m_login;
}

void ProgramWindows::showWorkspace()
{
    if (!m_workspace) {
        m_workspace = new frmWorkspace;
        connect(m_workspace, &frmWorkspace::unloaded, this, &ProgramWindows::workspaceUnloaded);
        connect(m_workspace, &frmWorkspace::switchRequested, this, &ProgramWindows::showLogin);
    }
    bringForward(*m_workspace);
}

bool ProgramWindows::unloadWorkspace()
{
    if (!m_workspace)
        return true;
    m_goesOn = true;
    const bool unloaded = m_workspace->close();
    m_goesOn = false;
    if (!unloaded)
        return false;
    m_workspace->retire();
    m_workspace.clear();
    return true;
}

void ProgramWindows::workspaceUnloaded()
{
    if (m_goesOn)
        return;
    if (m_login)
        m_login->close();
    Q_EMIT ended();
}

void ProgramWindows::showLogin()
{
    if (!m_login) {
        m_login = new frmLogin(*this);
        m_login->Mode = u"switch"_s;
        connect(m_login, &QDialog::finished, m_login, &QObject::deleteLater);
        // After a change of project that failed half way there is nothing left to close.
        connect(m_login, &QDialog::finished, this, [this] {
            if (!m_workspace)
                Q_EMIT ended();
        });
    }
    // No child of the main window, which goes while the dialog still works; but it lies above it.
    m_login->winId();
    if (m_workspace)
        m_login->windowHandle()->setTransientParent(m_workspace->windowHandle());
    bringForward(*m_login);
}

} // namespace lumivane
