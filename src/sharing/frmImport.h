#pragma once

#include "sharing/WorkingDialog.h"

#include <memory>
#include <vector>

namespace Ui {
class frmImport;
}

namespace lumivane {

class DashboardImport;

/// Lets the user choose dashboards of a shared file and imports them, once the folders that they lead to were shown.
class frmImport : public WorkingDialog
{
    Q_OBJECT

public:
    QString ImportFile; ///< full path of the shared file; set before exec

    explicit frmImport(QWidget* parent = nullptr);
    ~frmImport() override;

public Q_SLOTS:
    /// Says so instead where there is nothing to import.
    int exec() override;

private:
    bool Form_Activate();
    void cmdOK_Click();
    bool ValidateForm();
    bool confirmFolders(const std::vector<qint32>& ids);
    bool importSelected(const std::vector<qint32>& ids);

    std::unique_ptr<DashboardImport> m_import;
    const std::unique_ptr<Ui::frmImport> ui;
};

} // namespace lumivane
