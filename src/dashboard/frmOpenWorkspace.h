#pragma once

#include <QDialog>
#include <memory>

namespace Ui {
class frmOpenWorkspace;
}

namespace lumivane {

/// Lets the user pick one of the project's dashboards: to open it, or as the target of a panel.
class frmOpenWorkspace : public QDialog
{
    Q_OBJECT

public:
    qint32 WorkspaceID = -1; ///< -1: nothing was chosen

    /// `Mode` is empty to open a dashboard, or the verb of what is done with a panel: "Copy", "Move" (which leaves out
    /// the dashboard on screen).
    explicit frmOpenWorkspace(const QString& Mode, QWidget* parent = nullptr);
    ~frmOpenWorkspace() override;

public Q_SLOTS:
    /// Says so instead where there is nothing to choose from.
    int exec() override;

private:
    void Form_Load();
    void cmbSource_Load();
    void cmdOK_Click();

    const QString m_mode;
    const std::unique_ptr<Ui::frmOpenWorkspace> ui;
};

} // namespace lumivane
