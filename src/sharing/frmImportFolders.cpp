#include "sharing/frmImportFolders.h"

#include "controls/HelpButton.h"
#include "platform/ShownText.h"
#include "sharing/ImportPreview.h"

#include <QHeaderView>
#include <QStyle>

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
    grid.setHorizontalHeaderLabels({u"Place"_s, u"Use"_s, u"On this machine"_s});
    qsizetype missing = 0;
    for (const ImportFolder& folder : preview.folders) {
        addPlace(folder.path, useOf(folder), folder.exists);
        missing += folder.exists ? 0 : 1;
    }
    for (const QString& workbook : preview.missingWorkbooks)
        addPlace(workbook, u"workbook"_s, false);
    grid.verticalHeader()->hide();
    grid.horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    grid.horizontalHeader()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    grid.horizontalHeader()->setSectionResizeMode(2, QHeaderView::ResizeToContents);

    QStringList notices;
    if (missing > 0)
        notices.append(u"%1 of %2 folders do not exist here."_s.arg(missing).arg(preview.folders.size()));
    if (!preview.missingWorkbooks.isEmpty())
        notices.append(u"Missing workbooks: %1. Their panels will ask for a file when they are loaded."_s.arg(
            preview.missingWorkbooks.size()));
    ui->lblMissing->setVisible(!notices.isEmpty());
    ui->lblMissing->setText(notices.join(u' '));
}

void frmImportFolders::addPlace(const QString& path, const QString& use, bool exists)
{
    QTableWidget& grid = *ui->grdFolders;
    const int row = grid.rowCount();
    grid.insertRow(row);
    const QString name = shownName(path);
    grid.setItem(row, 0, new QTableWidgetItem(name));
    grid.item(row, 0)->setToolTip(name.toHtmlEscaped());
    grid.setItem(row, 1, new QTableWidgetItem(use));
    auto* state = new QTableWidgetItem(exists ? u"exists"_s : u"does not exist"_s);
    if (!exists) {
        QFont bold = grid.font();
        bold.setBold(true);
        state->setFont(bold);
        state->setIcon(style()->standardIcon(QStyle::SP_MessageBoxWarning));
    }
    grid.setItem(row, 2, state);
}

} // namespace lumivane
