#pragma once

#include <QDialog>
#include <memory>

namespace Ui {
class frmImportFolders;
}

namespace lumivane {

struct ImportPreview;

/// Shows the folders that an import will lead to, and the workbooks that are not there, before anything is written;
/// accepted by "Import".
class frmImportFolders : public QDialog
{
    Q_OBJECT

public:
    explicit frmImportFolders(const ImportPreview& preview, QWidget* parent = nullptr);
    ~frmImportFolders() override;

private:
    void fillFolders(const ImportPreview& preview);
    void addPlace(const QString& path, const QString& use, bool exists);

    const std::unique_ptr<Ui::frmImportFolders> ui;
};

} // namespace lumivane
