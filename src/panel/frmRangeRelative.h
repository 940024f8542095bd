#pragma once

#include "range/AnchorChoices.h"

#include <QDialog>
#include <memory>
#include <optional>

namespace Ui {
class frmRangeRelative;
}

namespace lumivane {

class PanelSheet;
class Worksheet;
class clsWorkspacePanel;

/// Lets the user say how a panel's range is found in another version of its workbook. The answer is written into the
/// panel's record; the store is not touched.
class frmRangeRelative : public QDialog
{
    Q_OBJECT

public:
    qint16 Index = -1;     ///< place of the panel in gWorkspace
    bool EditMode = false; ///< whether the dashboard is in layout mode; makes no difference here

    explicit frmRangeRelative(QWidget* parent = nullptr);
    ~frmRangeRelative() override;

public Q_SLOTS:
    /// Says so instead where there is no such panel.
    int exec() override;

private:
    void Form_Load();
    bool Form_Activate();
    void showPanel();
    void lookAtWorkbook();
    Worksheet& sheet();
    void showFound();
    QString foundText();
    void cmbRelativeTo_Click();
    void PrepAnchorChoice();
    void readChoices(Worksheet& ws);
    void fillAnchors();
    void cmbAnchor_Click();
    void selectStoredValue();
    std::optional<AnchorCell> chosenCell() const;
    void cmdOK_Click();
    bool CheckFix() const { return true; } ///< whether the dialog may close; there is nothing to refuse
    void store(const QString& rule);
    /// The panel as OK would leave it.
    clsWorkspacePanel answer(const QString& rule) const;

    std::shared_ptr<clsWorkspacePanel> m_panel;
    QString m_path; ///< the panel's workbook; empty without a source
    QString m_bottom, m_anchor, m_content;
    bool m_hasStoredValue = false; ///< m_anchor and m_content stand in the panel, and nothing else has been chosen
    QString m_anchorNow;           ///< the cell of the stored value in the present version
    std::unique_ptr<PanelSheet> m_opened;
    std::vector<AnchorChoice> m_choices;
    int m_firstRow = 1, m_firstColumn = 1; ///< of the range in the workbook's present version
    /// The panel's definition in the present version of the workbook, where the range has moved.
    std::shared_ptr<const clsWorkspacePanel> m_moved;

    const std::unique_ptr<Ui::frmRangeRelative> ui;
};

} // namespace lumivane
