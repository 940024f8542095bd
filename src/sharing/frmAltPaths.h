#pragma once

#include "sharing/AltPaths.h"

#include <QDialog>
#include <memory>

namespace Ui {
class frmAltPaths;
}

namespace lumivane {

/// The list of the project's alternate paths. Each change goes to the project at once.
class frmAltPaths : public QDialog
{
    Q_OBJECT

public:
    explicit frmAltPaths(QWidget* parent = nullptr);
    ~frmAltPaths() override;

private:
    void FillGrid();
    void select(const AlternatePath& pair);
    AlternatePath pairAt(int row) const;
    void cmdAdd_Click();
    void cmdDelete_Click();

    const std::unique_ptr<Ui::frmAltPaths> ui;
};

} // namespace lumivane
