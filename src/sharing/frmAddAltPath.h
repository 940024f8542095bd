#pragma once

#include "sharing/AltPaths.h"

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
    /// The pair that was stored; once accepted.
    const AlternatePath& added() const { return m_added; }

private:
    void cmdOK_Click();
    bool ValidateForm();

    AlternatePath m_added;
    const std::unique_ptr<Ui::frmAddAltPath> ui;
};

} // namespace lumivane
