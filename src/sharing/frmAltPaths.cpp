#include "sharing/frmAltPaths.h"

#include "controls/HelpButton.h"
#include "sharing/AltPaths.h"
#include "sharing/frmAddAltPath.h"

#include <QHeaderView>

#include "ui_frmAltPaths.h"

namespace lumivane {

using namespace Qt::StringLiterals;

frmAltPaths::frmAltPaths(QWidget* parent) : QDialog(parent), ui(std::make_unique<Ui::frmAltPaths>())
{
    ui->setupUi(this);
    connect(ui->cmdAdd, &QPushButton::clicked, this, &frmAltPaths::cmdAdd_Click);
    connect(ui->cmdDelete, &QPushButton::clicked, this, &frmAltPaths::cmdDelete_Click);
    connect(ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    connectHelp(*ui->cmdHelp, objectName());
    ui->grdAltPaths->verticalHeader()->hide();
    FillGrid();
}

frmAltPaths::~frmAltPaths() = default;

void frmAltPaths::FillGrid()
{
    QTableWidget& grid = *ui->grdAltPaths;
    const std::vector<AlternatePath> pairs = alternatePaths();
    grid.clear();
    grid.setColumnCount(2);
    grid.setHorizontalHeaderLabels({u"Base Path"_s, u"Alternate Path"_s});
    grid.horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    grid.setRowCount(int(pairs.size()));
    int row = 0;
    for (const AlternatePath& pair : pairs) {
        grid.setItem(row, 0, new QTableWidgetItem(pair.BasePath));
        grid.setItem(row++, 1, new QTableWidgetItem(pair.AltPath));
    }
    if (!pairs.empty())
        grid.selectRow(0);
    ui->cmdDelete->setEnabled(!pairs.empty());
}

void frmAltPaths::cmdAdd_Click()
{
    frmAddAltPath dialog(this);
    const bool isAdded = dialog.exec() == Accepted;
    FillGrid();
    if (isAdded)
        select(dialog.added());
}

void frmAltPaths::select(const AlternatePath& pair)
{
    QTableWidget& grid = *ui->grdAltPaths;
    for (int row = 0; row < grid.rowCount(); ++row) {
        if (pairAt(row) == pair) {
            grid.selectRow(row);
            return;
        }
    }
}

AlternatePath frmAltPaths::pairAt(int row) const
{
    return {ui->grdAltPaths->item(row, 0)->text(), ui->grdAltPaths->item(row, 1)->text()};
}

void frmAltPaths::cmdDelete_Click()
{
    const int row = ui->grdAltPaths->currentRow();
    if (row < 0)
        return;
    deleteAlternatePath(pairAt(row));
    FillGrid();
}

} // namespace lumivane
