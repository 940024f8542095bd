#pragma once

#include <QDialog>
#include <QTimer>
#include <memory>

class QLineEdit;
class QWidget;

namespace Ui {
class frmPanelProperties;
}

namespace lumivane {

class clsPanelSource;

/// Lets the user say how the workbook behind a panel gets its new versions. What is confirmed is stored at once and
/// holds for every panel of that workbook.
class frmPanelProperties : public QDialog
{
    Q_OBJECT

public:
    qint16 Index = -1;     ///< place of the panel in gWorkspace
    bool EditMode = false; ///< whether the dashboard is in layout mode; makes no difference here
    qint32 SourceID = 0;   ///< taken from the panel

    explicit frmPanelProperties(QWidget* parent = nullptr);
    ~frmPanelProperties() override;

public Q_SLOTS:
    /// Says so instead where there is no such panel, or where it has no source.
    int exec() override;

private:
    bool Form_Activate();
    void FillTypes();
    void LoadFields();
    void cmbUpdateType_Click();
    void cmdSourceFolder_Click();
    void cmdOFolder_Click();
    void cmdOK_Click();
    void showFittingFile();

    bool ValidateFields();
    bool ValidateFolder();
    bool ValidateInbox();
    bool confirmMissingFolder();
    bool ValidateFrequency();
    bool refuse(const QString& text, QWidget& place);
    bool refuseFrequency(const QString& text);
    std::shared_ptr<clsPanelSource> source() const; ///< throws where the project has none of this id
    void takeFields(clsPanelSource& source) const;

    QTimer m_typingPaused; ///< runs while the user may still be typing a folder or a mask
    QString m_olFolder;    ///< the folder chosen in this dialog, as it is stored; empty stands for the default inbox
    const std::unique_ptr<Ui::frmPanelProperties> ui;
};

} // namespace lumivane
