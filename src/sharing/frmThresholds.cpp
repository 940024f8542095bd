#include "sharing/frmThresholds.h"

#include "platform/Prompts.h"
#include "repository/clsWorkspacePanel.h"
#include "session/modMain.h"
#include "sharing/DashboardListBox.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QPainter>

#include "ui_frmThresholds.h"

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

enum RuleColumn { CellColumn, SignColumn, LimitColumn, MarkColumn };
enum RuleData { RowRole = Qt::UserRole, ColumnRole, ActionRole };

const QStringList comparisonSigns{u">"_s, u">="_s, u"<"_s, u"<="_s, u"="_s, u"<>"_s};
const QString formulaSign = u"formula"_s; ///< the limit holds the whole comparison

QIcon colorIcon(QRgb color)
{
    QPixmap pixmap(16, 16);
    pixmap.fill(QColor(color));
    QPainter(&pixmap).drawRect(0, 0, 15, 15);
    return pixmap;
}

/// The longest sign that the comparison begins with and that leaves a plain rest.
std::pair<QString, QString> splitComparison(const QString& comparison)
{
    const QString text = comparison.trimmed();
    QString sign;
    for (const QString& candidate : comparisonSigns) {
        if (text.startsWith(candidate) && candidate.size() > sign.size())
            sign = candidate;
    }
    return sign.isEmpty() ? std::pair(formulaSign, comparison) : std::pair(sign, text.mid(sign.size()).trimmed());
}

QTableWidgetItem* cellItem(const QString& text, bool canWatch)
{
    auto* item = new QTableWidgetItem(text);
    // Figures stand below each other, as in the workbook.
    const bool isFigure = !text.isEmpty() && (text.back().isDigit() || text.back() == u'%');
    item->setTextAlignment((isFigure ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    if (!canWatch)
        item->setFlags(Qt::NoItemFlags);
    return item;
}

} // namespace

frmThresholds::frmThresholds(const clsWorkspacePanel& panel, QWidget* parent)
    : QDialog(parent), m_panelID(panel.ID), ui(std::make_unique<Ui::frmThresholds>())
{
    ui->setupUi(this);
    setWindowTitle(u"Thresholds of "_s + panel.Caption);
    connect(ui->cmdAdd, &QPushButton::clicked, this, &frmThresholds::cmdAdd_Click);
    connect(ui->grdCells, &QTableWidget::cellDoubleClicked, this, &frmThresholds::cmdAdd_Click);
    connect(ui->cmdDelete, &QPushButton::clicked, this, &frmThresholds::cmdDelete_Click);
    connect(ui->cmdOK, &QPushButton::clicked, this, &frmThresholds::cmdOK_Click);
    connect(ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    explainOnClick(*ui->cmdHelp, u"A rule marks a cell in the panel's picture when its number passes a limit. Where "
                                 "the panel's range moves in a new version of the workbook, the rules move with it. Of "
                                 "several rules for one cell, the last one that is met gives the colour."_s);
    ui->grdRules->setColumnCount(4);
    ui->grdRules->setHorizontalHeaderLabels({u"Cell"_s, u"When it is"_s, u"Limit"_s, u"Mark"_s});
    ui->grdRules->horizontalHeader()->setSectionResizeMode(LimitColumn, QHeaderView::Stretch);
    ui->grdRules->verticalHeader()->hide();
    ui->grdCells->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    ui->mainLayout->setStretch(1, 3);
    ui->mainLayout->setStretch(4, 2);
    fillCells(panel);
}

frmThresholds::~frmThresholds() = default;

int frmThresholds::exec()
{
    if (m_problem.isEmpty())
        return QDialog::exec();
    prompts().message(m_problem, Prompts::Icon::Exclamation);
    return Rejected;
}

void frmThresholds::fillCells(const clsWorkspacePanel& panel)
{
    if (panel.ID < 1)
        m_problem = u"Thresholds can be defined once the panel is saved. Save the dashboard first."_s;
    else if (panel.ContentType != u"S" && panel.ContentType != u"M")
        m_problem = u"Only panels that show a range of cells can have thresholds."_s;
    else if (!(m_cells = PanelCells::of(panel.PicRange)))
        m_problem = u"The range of the panel is not understood. Define the panel anew."_s;
    if (!m_problem.isEmpty())
        return;
    const auto rules = loadThresholds(m_panelID, *m_cells);
    if (!rules) {
        m_problem = rules.reason();
        return;
    }
    // Cells can be picked by their places even where the workbook is not at hand.
    if (const auto texts = readPanelTexts(panel, *m_cells))
        m_texts = texts.value();
    else
        ui->lblCells->setText(ui->lblCells->text() + u'\n' + texts.reason());

    const std::vector<int> rows = m_cells->rows(), columns = m_cells->columns();
    ui->grdCells->setRowCount(int(rows.size()));
    ui->grdCells->setColumnCount(int(columns.size()));
    for (int i = 0; i < int(rows.size()); ++i) {
        for (int j = 0; j < int(columns.size()); ++j) {
            const int row = rows[size_t(i)], column = columns[size_t(j)];
            auto* item = cellItem(m_texts.texts.value({row, column}), m_cells->canWatch(row, column));
            item->setData(RowRole, row);
            item->setData(ColumnRole, column);
            ui->grdCells->setItem(i, j, item);
        }
        const int row = rows[size_t(i)];
        ui->grdCells->setVerticalHeaderItem(
            i, new QTableWidgetItem(QString::number(m_cells->isFixedRow(row) ? row : row + m_texts.rowOffset)));
    }
    for (int j = 0; j < int(columns.size()); ++j) {
        const int column = columns[size_t(j)];
        ui->grdCells->setHorizontalHeaderItem(
            j, new QTableWidgetItem(
                   columnLetters(m_cells->isFixedColumn(column) ? column : column + m_texts.columnOffset)));
    }
    ui->grdCells->resizeColumnsToContents();
    for (const ThresholdRule& rule : rules.value())
        addRuleRow(rule);
}

QString frmThresholds::shownAddress(int row, int column) const
{
    const bool stays = m_cells->isFixedRow(row) && m_cells->isFixedColumn(column);
    return CellArea::cell(stays ? row : row + m_texts.rowOffset, stays ? column : column + m_texts.columnOffset)
        .relative();
}

void frmThresholds::addRuleRow(const ThresholdRule& rule)
{
    QTableWidget& grid = *ui->grdRules;
    const int row = grid.rowCount();
    grid.insertRow(row);
    auto* cell = new QTableWidgetItem(shownAddress(rule.row, rule.column));
    cell->setData(RowRole, rule.row);
    cell->setData(ColumnRole, rule.column);
    cell->setData(ActionRole, rule.action);
    grid.setItem(row, CellColumn, cell);

    const auto [sign, limit] = splitComparison(rule.comparison);
    auto* signs = new QComboBox;
    signs->addItems(comparisonSigns);
    signs->addItem(formulaSign);
    signs->setCurrentText(sign);
    signs->setAccessibleName(u"Comparison of cell "_s + cell->text());
    grid.setCellWidget(row, SignColumn, signs);
    auto* limitText = new QLineEdit(limit);
    limitText->setFrame(false);
    limitText->setAccessibleName(u"Limit of cell "_s + cell->text());
    grid.setCellWidget(row, LimitColumn, limitText);
    auto* marks = new QComboBox;
    marks->addItem(colorIcon(qRgb(128, 180, 180)), u"High mark"_s);
    marks->addItem(colorIcon(qRgb(180, 128, 180)), u"Low mark"_s);
    marks->setCurrentIndex(rule.isHigh ? 0 : 1);
    marks->setAccessibleName(u"Mark of cell "_s + cell->text());
    grid.setCellWidget(row, MarkColumn, marks);
    grid.resizeRowToContents(row);
    grid.resizeColumnToContents(SignColumn);
    grid.resizeColumnToContents(MarkColumn);
}

ThresholdRule frmThresholds::ruleAt(int row) const
{
    const QTableWidget& grid = *ui->grdRules;
    const QString sign = qobject_cast<QComboBox*>(grid.cellWidget(row, SignColumn))->currentText();
    const QString limit = qobject_cast<QLineEdit*>(grid.cellWidget(row, LimitColumn))->text();
    const auto* mark = qobject_cast<QComboBox*>(grid.cellWidget(row, MarkColumn));
    const QTableWidgetItem* cell = grid.item(row, CellColumn);
    return {cell->data(RowRole).toInt(), cell->data(ColumnRole).toInt(), mark->currentIndex() == 0,
            sign == formulaSign ? limit : QString(sign + limit.trimmed()), cell->data(ActionRole).toString()};
}

void frmThresholds::cmdAdd_Click()
{
    const QTableWidgetItem* cell = ui->grdCells->currentItem();
    if (!cell || !(cell->flags() & Qt::ItemIsEnabled)) {
        prompts().message(u"Pick a cell of the panel first."_s, Prompts::Icon::Information);
        ui->grdCells->setFocus();
        return;
    }
    ThresholdRule rule;
    rule.row = cell->data(RowRole).toInt();
    rule.column = cell->data(ColumnRole).toInt();
    rule.comparison = u">"_s;
    addRuleRow(rule);
    const int row = ui->grdRules->rowCount() - 1;
    ui->grdRules->selectRow(row);
    ui->grdRules->cellWidget(row, LimitColumn)->setFocus();
}

void frmThresholds::cmdDelete_Click()
{
    if (ui->grdRules->currentRow() >= 0)
        ui->grdRules->removeRow(ui->grdRules->currentRow());
}

bool frmThresholds::ValidateForm()
{
    for (int row = 0; row < ui->grdRules->rowCount(); ++row) {
        const QString fault = thresholdFault(ruleAt(row), *m_cells);
        if (fault.isEmpty())
            continue;
        prompts().message(fault, Prompts::Icon::Exclamation);
        ui->grdRules->selectRow(row);
        ui->grdRules->cellWidget(row, LimitColumn)->setFocus();
        return false;
    }
    return true;
}

void frmThresholds::cmdOK_Click()
{
    if (!ValidateForm())
        return;
    std::vector<ThresholdRule> rules;
    for (int row = 0; row < ui->grdRules->rowCount(); ++row)
        rules.push_back(ruleAt(row));
    const QString failure = saveThresholds(m_panelID, *m_cells, rules);
    if (failure.isEmpty())
        accept();
    else
        prompts().message(failure, Prompts::Icon::Exclamation);
}

} // namespace lumivane
