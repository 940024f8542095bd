#include "thresholds/frmThresholds.h"

#include "controls/HelpButton.h"
#include "platform/Prompts.h"
#include "repository/clsWorkspacePanel.h"
#include "services/ProgramFiles.h"
#include "thresholds/ThresholdCells.h"
#include "thresholds/ThresholdMarks.h"

#include <QComboBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <algorithm>

#include "ui_frmThresholds.h"

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

enum RuleColumn { CellColumn, SignColumn, LimitColumn, MarkColumn };
enum RuleData { RowRole = Qt::UserRole, ColumnRole, ActionRole };
constexpr int editedColumns[] = {SignColumn, LimitColumn, MarkColumn};
constexpr int widestCell = 240;
constexpr int mostCellsAtOnce = 200; ///< more rules than anybody reads, and each row of editors takes its time

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

} // namespace

frmThresholds::frmThresholds(const clsWorkspacePanel& panel, QWidget* parent)
    : QDialog(parent), m_panelID(panel.ID), ui(std::make_unique<Ui::frmThresholds>())
{
    ui->setupUi(this);
    setWindowTitle(u"Thresholds of "_s + panel.Caption);
    connectButtons();
    prepareGrids();
    load(panel);
}

frmThresholds::~frmThresholds() = default;

int frmThresholds::exec()
{
    if (m_problem.isEmpty())
        return QDialog::exec();
    prompts().message(m_problem, Prompts::Icon::Exclamation);
    return Rejected;
}

void frmThresholds::reject()
{
    const bool isLost = isVisible() && rules() != m_stored;
    if (!isLost ||
        ConfirmAction(u"The rules have been changed and are not stored. Do you want to close without them?"_s))
        QDialog::reject();
}

void frmThresholds::connectButtons()
{
    connect(ui->cmdAdd, &QPushButton::clicked, this, &frmThresholds::cmdAdd_Click);
    connect(ui->grdCells, &QTableView::doubleClicked, this, &frmThresholds::cmdAdd_Click);
    connect(ui->cmdDelete, &QPushButton::clicked, this, &frmThresholds::cmdDelete_Click);
    connect(ui->cmdUp, &QPushButton::clicked, this, [this] { moveRule(-1); });
    connect(ui->cmdDown, &QPushButton::clicked, this, [this] { moveRule(1); });
    connect(ui->cmdOK, &QPushButton::clicked, this, &frmThresholds::cmdOK_Click);
    connect(ui->cmdCancel, &QPushButton::clicked, this, &frmThresholds::reject);
    connectHelp(*ui->cmdHelp, objectName());
    ui->grdRules->installEventFilter(this);
}

void frmThresholds::prepareGrids()
{
    ui->grdCells->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    ui->grdCells->horizontalHeader()->setResizeContentsPrecision(100); // of 30,000 rows all would take seconds
    ui->grdCells->horizontalHeader()->setMaximumSectionSize(widestCell);
    QTableWidget& rules = *ui->grdRules;
    rules.setColumnCount(4);
    rules.setHorizontalHeaderLabels({u"Cell"_s, u"When it is"_s, u"Limit"_s, u"Mark"_s});
    rules.horizontalHeader()->setSectionResizeMode(LimitColumn, QHeaderView::Stretch);
    rules.verticalHeader()->hide();
    connect(rules.selectionModel(), &QItemSelectionModel::currentRowChanged, this, &frmThresholds::showCurrentRule);
    connect(rules.selectionModel(), &QItemSelectionModel::selectionChanged, this, &frmThresholds::showCurrentRule);
}

void frmThresholds::load(const clsWorkspacePanel& panel)
{
    if (panel.ID < 1)
        m_problem = u"Thresholds can be defined once the panel is saved. Save the dashboard first."_s;
    else if (panel.ContentType != u"S" && panel.ContentType != u"M")
        m_problem = u"Only panels that show a range of cells can have thresholds."_s;
    else if (!(m_cells = PanelCells::of(panel.PicRange)))
        m_problem = u"The range of the panel is not understood. Define the panel anew."_s;
    if (!m_problem.isEmpty())
        return;
    const auto stored = loadThresholds(m_panelID, *m_cells);
    if (!stored) {
        m_problem = stored.reason();
        return;
    }
    fillCells(panel);
    for (const ThresholdRule& rule : stored.value())
        insertRule(ui->grdRules->rowCount(), rule);
    m_stored = rules();
    showCurrentRule();
}

void frmThresholds::fillCells(const clsWorkspacePanel& panel)
{
    QStringList notices;
    auto view = readPanelView(panel, *m_cells);
    // Cells can be picked by their places even where the workbook is not at hand.
    if (!view)
        notices.append(view.reason());
    if (!m_cells->areAllListed())
        notices.append(u"The range is large; the cells at its end are not listed."_s);
    ui->lblNotice->setText(notices.join(u'\n'));
    ui->lblNotice->setVisible(!notices.isEmpty());
    m_table = new ThresholdCells(*m_cells, view ? std::move(view).value() : viewWithoutWorkbook(*m_cells), this);
    ui->grdCells->setModel(m_table);
    ui->grdCells->resizeColumnsToContents();
}

void frmThresholds::insertRule(int row, const ThresholdRule& rule)
{
    QTableWidget& grid = *ui->grdRules;
    grid.insertRow(row);
    auto* cell = new QTableWidgetItem(m_table->shownAddress({rule.row, rule.column}));
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
    auto* limitText = new QLineEdit(limit);
    limitText->setFrame(false);
    limitText->setAccessibleName(u"Limit of cell "_s + cell->text());
    auto* marks = new QComboBox;
    marks->addItem(colorIcon(highMark), u"High mark"_s);
    marks->addItem(colorIcon(lowMark), u"Low mark"_s);
    marks->setCurrentIndex(rule.isHigh ? 0 : 1);
    marks->setAccessibleName(u"Mark of cell "_s + cell->text());
    const QList<std::pair<int, QWidget*>> editors{{SignColumn, signs}, {LimitColumn, limitText}, {MarkColumn, marks}};
    for (const auto& [column, editor] : editors) {
        grid.setCellWidget(row, column, editor);
        editor->installEventFilter(this); // asked before the table, which selects the rule of an editor alone
    }
    connect(signs, &QComboBox::activated, this, [this, signs] { enterInSelected(SignColumn, *signs); });
    connect(limitText, &QLineEdit::textEdited, this, [this, limitText] { enterInSelected(LimitColumn, *limitText); });
    connect(marks, &QComboBox::activated, this, [this, marks] { enterInSelected(MarkColumn, *marks); });
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

std::vector<ThresholdRule> frmThresholds::rules() const
{
    std::vector<ThresholdRule> all;
    for (int row = 0; row < ui->grdRules->rowCount(); ++row)
        all.push_back(ruleAt(row));
    return all;
}

int frmThresholds::currentRule() const
{
    return ui->grdRules->currentRow();
}

QList<int> frmThresholds::selectedRules() const
{
    QList<int> rows;
    for (const QModelIndex& rule : ui->grdRules->selectionModel()->selectedRows())
        rows.append(rule.row());
    std::sort(rows.begin(), rows.end());
    return rows;
}

void frmThresholds::enterInSelected(int column, const QWidget& editor)
{
    for (const int row : selectedRules()) {
        QWidget* other = ui->grdRules->cellWidget(row, column);
        if (other == &editor)
            continue;
        if (auto* limit = qobject_cast<QLineEdit*>(other))
            limit->setText(static_cast<const QLineEdit&>(editor).text());
        else if (auto* choice = qobject_cast<QComboBox*>(other))
            choice->setCurrentIndex(static_cast<const QComboBox&>(editor).currentIndex());
    }
}

bool frmThresholds::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::FocusIn)
        selectRuleOf(watched);
    const bool isDeletion = watched == ui->grdRules && event->type() == QEvent::KeyPress &&
                            static_cast<QKeyEvent*>(event)->key() == Qt::Key_Delete;
    if (!isDeletion)
        return QDialog::eventFilter(watched, event);
    cmdDelete_Click();
    return true;
}

/// The rule in whose editor the user works becomes the current one, to which the buttons apply. One of several selected
/// rules leaves them selected.
void frmThresholds::selectRuleOf(const QObject* editor)
{
    QTableWidget& grid = *ui->grdRules;
    const QList<int> selected = selectedRules();
    for (int row = 0; row < grid.rowCount(); ++row) {
        for (const int column : editedColumns) {
            if (grid.cellWidget(row, column) != editor)
                continue;
            if (selected.contains(row))
                keepSelection(row, column);
            else
                grid.selectRow(row);
        }
    }
}

void frmThresholds::keepSelection(int row, int column)
{
    QItemSelectionModel* rules = ui->grdRules->selectionModel();
    const QItemSelection selected = rules->selection();
    ui->grdRules->setCurrentCell(row, column, QItemSelectionModel::NoUpdate);
    QMetaObject::invokeMethod(
        this, [rules, selected] { rules->select(selected, QItemSelectionModel::ClearAndSelect); },
        Qt::QueuedConnection);
}

void frmThresholds::showCurrentRule()
{
    const int row = currentRule();
    ui->cmdDelete->setEnabled(row >= 0);
    const bool isAlone = selectedRules().size() == 1;
    ui->cmdUp->setEnabled(isAlone && row > 0);
    ui->cmdDown->setEnabled(isAlone && row >= 0 && row + 1 < ui->grdRules->rowCount());
    const QTableWidgetItem* cell = row < 0 ? nullptr : ui->grdRules->item(row, CellColumn);
    if (!cell)
        return;
    const QModelIndex place = m_table->indexOf({cell->data(RowRole).toInt(), cell->data(ColumnRole).toInt()});
    if (place.isValid())
        ui->grdCells->setCurrentIndex(place);
}

QModelIndexList frmThresholds::pickedCells() const
{
    QModelIndexList cells = ui->grdCells->selectionModel()->selectedIndexes();
    std::sort(cells.begin(), cells.end());
    return cells;
}

void frmThresholds::cmdAdd_Click()
{
    const QModelIndexList cells = pickedCells();
    if (cells.isEmpty() || cells.size() > mostCellsAtOnce) {
        prompts().message(
            cells.isEmpty() ? u"Pick a cell of the panel first."_s
                            : u"%1 cells are picked. Pick at most %2 at once."_s.arg(cells.size()).arg(mostCellsAtOnce),
            Prompts::Icon::Information);
        ui->grdCells->setFocus();
        return;
    }
    QTableWidget& grid = *ui->grdRules;
    const int first = grid.rowCount();
    for (const QModelIndex& cell : cells) {
        ThresholdRule rule;
        std::tie(rule.row, rule.column) = m_table->place(cell);
        rule.comparison = u">"_s;
        insertRule(grid.rowCount(), rule);
    }
    grid.clearSelection();
    grid.setRangeSelected({first, CellColumn, grid.rowCount() - 1, MarkColumn}, true);
    grid.setCurrentCell(first, LimitColumn, QItemSelectionModel::NoUpdate);
    grid.cellWidget(first, LimitColumn)->setFocus();
}

void frmThresholds::cmdDelete_Click()
{
    const QList<int> rows = selectedRules();
    if (rows.isEmpty())
        return;
    leaveEditors();
    for (auto row = rows.crbegin(); row != rows.crend(); ++row)
        ui->grdRules->removeRow(*row);
    ui->grdRules->selectRow(std::min(rows.first(), ui->grdRules->rowCount() - 1));
    showCurrentRule();
}

/// A row is removed with its editors. If one of them had the focus, another editor would get it and select its rule.
void frmThresholds::leaveEditors()
{
    ui->grdRules->setFocus();
}

void frmThresholds::moveRule(int step)
{
    const int row = currentRule();
    if (row < 0 || row + step < 0 || row + step >= ui->grdRules->rowCount())
        return;
    const ThresholdRule rule = ruleAt(row);
    leaveEditors();
    ui->grdRules->removeRow(row);
    insertRule(row + step, rule);
    ui->grdRules->selectRow(row + step);
    showCurrentRule();
}

bool frmThresholds::ValidateForm()
{
    for (int row = 0; row < ui->grdRules->rowCount(); ++row) {
        const QString fault = thresholdFault(ruleAt(row), *m_cells, ui->grdRules->item(row, CellColumn)->text());
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
    const QString failure = saveThresholds(m_panelID, *m_cells, rules());
    if (failure.isEmpty())
        accept();
    else
        prompts().message(failure, Prompts::Icon::Exclamation);
}

} // namespace lumivane
