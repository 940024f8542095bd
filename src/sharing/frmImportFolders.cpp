#include "sharing/frmImportFolders.h"

#include "controls/HelpButton.h"
#include "platform/ShownText.h"
#include "sharing/ImportPreview.h"

#include <QHeaderView>
#include <QStyle>
#include <algorithm>

#include "ui_frmImportFolders.h"

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

QString useOf(const ImportFolder& folder)
{
    if (folder.isRead && folder.isWritten)
        return u"read and written"_s;
    return folder.isWritten ? u"written"_s : u"read"_s;
}

} // namespace

frmImportFolders::frmImportFolders(const ImportPreview& preview, QWidget* parent)
    : QDialog(parent), ui(std::make_unique<Ui::frmImportFolders>())
{
    ui->setupUi(this);
    connect(ui->cmdOK, &QPushButton::clicked, this, &QDialog::accept);
    connect(ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    connectHelp(*ui->cmdHelp, objectName());
    fillFolders(preview);
}

frmImportFolders::~frmImportFolders() = default;

void frmImportFolders::fillFolders(const ImportPreview& preview)
{
    QTableWidget& grid = *ui->grdFolders;
    grid.setColumnCount(3);
    grid.setHorizontalHeaderLabels({u"Folder"_s, u"Use"_s, u"On this machine"_s});
    grid.setRowCount(int(preview.folders.size()));
    int row = 0, missing = 0;
    for (const ImportFolder& folder : preview.folders) {
        const QString path = shownName(folder.path);
        grid.setItem(row, 0, new QTableWidgetItem(path));
        grid.item(row, 0)->setToolTip(path.toHtmlEscaped());
        grid.setItem(row, 1, new QTableWidgetItem(useOf(folder)));
        auto* state = new QTableWidgetItem(folder.exists ? u"exists"_s : u"does not exist"_s);
        if (!folder.exists) {
            ++missing;
            QFont bold = grid.font();
            bold.setBold(true);
            state->setFont(bold);
            state->setIcon(style()->standardIcon(QStyle::SP_MessageBoxWarning));
        }
        grid.setItem(row++, 2, state);
    }
    grid.verticalHeader()->hide();
    grid.horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    grid.horizontalHeader()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    grid.horizontalHeader()->setSectionResizeMode(2, QHeaderView::ResizeToContents);
    ui->lblMissing->setVisible(missing > 0);
    ui->lblMissing->setText(u"%1 of %2 folders do not exist here. Panels of their workbooks will ask for another "
                            "folder when they are loaded."_s.arg(missing)
                                .arg(preview.folders.size()));
}

} // namespace lumivane
