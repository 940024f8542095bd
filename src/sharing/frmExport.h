#pragma once

#include "sharing/WorkingDialog.h"

#include <memory>

namespace Ui {
class frmExport;
}

namespace lumivane {

/// Lets the user choose dashboards of the project and writes them into a shared file.
class frmExport : public WorkingDialog
{
    Q_OBJECT

public:
    explicit frmExport(QWidget* parent = nullptr);
    ~frmExport() override;

public Q_SLOTS:
    /// Says so instead where there is nothing to export.
    int exec() override;

private:
    void lstWorkspaces_Load();
    void cmdOK_Click();
    void cmdAltPath_Click();
    bool ValidateForm();
    QString ExportFileName();

    QString m_exportFile;
    const std::unique_ptr<Ui::frmExport> ui;
};

} // namespace lumivane
