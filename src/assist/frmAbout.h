#pragma once

#include <QDialog>
#include <memory>

namespace Ui {
class frmAbout;
}

namespace lumivane {

/// Says what the program is and which version runs.
class frmAbout : public QDialog
{
    Q_OBJECT

public:
    explicit frmAbout(QWidget* parent = nullptr);
    ~frmAbout() override;

private:
    void StartSysInfo();

    const std::unique_ptr<Ui::frmAbout> ui;
};

} // namespace lumivane
