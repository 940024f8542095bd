#pragma once

#include <QDialog>
#include <memory>

namespace Ui {
class frmCaption;
}

namespace lumivane {

/// Lets the user give a panel another caption, or none. It stands in the record and is stored with the dashboard.
class frmCaption : public QDialog
{
    Q_OBJECT

public:
    qint16 Index = -1;     ///< place of the panel in gWorkspace
    bool EditMode = false; ///< whether the dashboard is in layout mode; makes no difference here

    explicit frmCaption(QWidget* parent = nullptr);
    ~frmCaption() override;

public Q_SLOTS:
    int exec() override;

private:
    void cmdOK_Click();

    const std::unique_ptr<Ui::frmCaption> ui;
};

} // namespace lumivane
