#pragma once

#include <QDialog>
#include <memory>

namespace Ui {
class frmAddAltPath;
}

namespace lumivane {

/// Asks for one alternate path and stores it.
class frmAddAltPath : public QDialog
{
    Q_OBJECT

public:
    explicit frmAddAltPath(QWidget* parent = nullptr);
    ~frmAddAltPath() override;

private:
    void cmdOK_Click();
    bool ValidateForm();

    const std::unique_ptr<Ui::frmAddAltPath> ui;
};

} // namespace lumivane
