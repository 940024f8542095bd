#pragma once

#include <QDialog>
#include <memory>

namespace Ui {
class frmDrillback;
}

namespace lumivane {

/// Offers the documents that the data behind a sheet may come from. It asks for one and stores nothing: what a
/// definition holds is not settled.
class frmDrillback : public QDialog
{
    Q_OBJECT

public:
    qint32 SourceID = 0; ///< of the panel's source
    QString SheetName;

    explicit frmDrillback(QWidget* parent = nullptr);
    ~frmDrillback() override;

public Q_SLOTS:
    /// Says so instead where the panel has no valid source.
    int exec() override;

private:
    void cmbSourceDoc_Load();
    void cmdOK_Click();
    bool ValidateForm();

    const std::unique_ptr<Ui::frmDrillback> ui;
};

} // namespace lumivane
