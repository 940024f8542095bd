#pragma once

#include <QDialog>
#include <memory>

namespace Ui {
class frmTip;
}

namespace lumivane {

/// Tells somebody who starts on an empty project how a dashboard comes about.
class frmTip : public QDialog
{
    Q_OBJECT

public:
    explicit frmTip(QWidget* parent = nullptr);
    ~frmTip() override;

private:
    void cmdGuide_Click();

    const QString m_guide;
    const std::unique_ptr<Ui::frmTip> ui;
};

} // namespace lumivane
