#pragma once

#include <QDialog>
#include <memory>

namespace Ui {
class frmSaveWorkspace;
}

namespace lumivane {

/// Asks for the name under which the dashboard is to be stored, and refuses one that is taken.
class frmSaveWorkspace : public QDialog
{
    Q_OBJECT

public:
    QString WorkspaceName; ///< empty if cancelled

    /// `Mode` is "SaveAs", "Rename" or anything else for a plain save; `presentName` is only shown as a hint.
    explicit frmSaveWorkspace(const QString& Mode, const QString& presentName, QWidget* parent = nullptr);
    ~frmSaveWorkspace() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Form_Load(const QString& Mode, const QString& presentName);
    void cmdOK_Click();
    bool ExistWorkspace(const QString& name) const;
    void refuse(const QString& text);

    const std::unique_ptr<Ui::frmSaveWorkspace> ui;
};

} // namespace lumivane
