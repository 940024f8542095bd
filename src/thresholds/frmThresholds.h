#pragma once

#include "thresholds/ThresholdRules.h"

#include <QDialog>
#include <memory>

namespace Ui {
class frmThresholds;
}

namespace lumivane {

class ThresholdCells;

/// The rules that mark cells of one panel, with the panel's cells to pick from.
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

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void connectButtons();
    void prepareGrids();
    void load(const clsWorkspacePanel& panel);
    void fillCells(const clsWorkspacePanel& panel);
    void insertRule(int row, const ThresholdRule& rule);
    ThresholdRule ruleAt(int row) const;
    int currentRule() const;
    void leaveEditors();
    void moveRule(int step);
    void selectRuleOf(const QObject* editor);
    void showCurrentRule();
    void cmdAdd_Click();
    void cmdDelete_Click();
    void cmdOK_Click();
    bool ValidateForm();

    const int m_panelID;
    std::optional<PanelCells> m_cells;
    ThresholdCells* m_table = nullptr; ///< null where there is nothing to show
    QString m_problem;                 ///< why there is nothing to show

    const std::unique_ptr<Ui::frmThresholds> ui;
};

} // namespace lumivane
