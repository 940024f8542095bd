#pragma once

#include "thresholds/ThresholdRules.h"

#include <QDialog>
#include <QModelIndex>
#include <memory>

namespace Ui {
class frmThresholds;
}

namespace lumivane {

class ThresholdCells;

/// The rules that mark cells of one panel, with the panel's cells to pick from. What is entered in one of several
/// selected rules goes to all of them, so that the rules of a block of cells are entered once.
class frmThresholds : public QDialog
{
    Q_OBJECT

public:
    /// `panel` shows a range and is stored. The rules are written when the dialog is accepted.
    explicit frmThresholds(const clsWorkspacePanel& panel, QWidget* parent = nullptr);
    ~frmThresholds() override;

public Q_SLOTS:
    /// Says so instead where the panel cannot have thresholds.
    int exec() override;
    /// Asks first where changed rules would be lost.
    void reject() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void connectButtons();
    void prepareGrids();
    void load(const clsWorkspacePanel& panel);
    void fillCells(const clsWorkspacePanel& panel);
    void insertRule(int row, const ThresholdRule& rule);
    ThresholdRule ruleAt(int row) const;
    std::vector<ThresholdRule> rules() const;
    int currentRule() const;
    QList<int> selectedRules() const; ///< rows, from the top
    void enterInSelected(int column, const QWidget& editor);
    QModelIndexList pickedCells() const; ///< that can be watched, row by row
    void leaveEditors();
    void moveRule(int step);
    void selectRuleOf(const QObject* editor);
    void keepSelection(int row, int column); ///< whatever the table makes of the focus that comes to this cell
    void showCurrentRule();
    void cmdAdd_Click();
    void cmdDelete_Click();
    void cmdOK_Click();
    bool ValidateForm();

    const int m_panelID;
    std::vector<ThresholdRule> m_stored; ///< as the dialog shows them when it opens
    std::optional<PanelCells> m_cells;
    ThresholdCells* m_table = nullptr; ///< null where there is nothing to show
    QString m_problem;                 ///< why there is nothing to show

    const std::unique_ptr<Ui::frmThresholds> ui;
};

} // namespace lumivane
