#pragma once

#include <QDialog>
#include <memory>
#include <vector>

namespace Ui {
class frmImport;
}

namespace lumivane {

class DashboardImport;

/// Lets the user choose dashboards of a shared file and imports them, once the folders that they lead to were shown.
class frmImport : public QDialog
{
    Q_OBJECT

public:
    QString ImportFile; ///< full path of the shared file; set before exec

    explicit frmImport(QWidget* parent = nullptr);
    ~frmImport() override;

public Q_SLOTS:
    /// Says so instead where there is nothing to import.
    int exec() override;
    void reject() override;

Q_SIGNALS:
    /// Rows are being looked at or written, and events run meanwhile.
    void working(bool isWorking);

private:
    bool Form_Activate();
    void cmdOK_Click();
    bool ValidateForm();
    bool confirmFolders(const std::vector<qint32>& ids);
    bool importSelected(const std::vector<qint32>& ids);
    void showProgress(qint64 done, qint64 total);
    void setWorking(bool isWorking);

    std::unique_ptr<DashboardImport> m_import;
    bool m_working = false;
    const std::unique_ptr<Ui::frmImport> ui;
};

} // namespace lumivane
