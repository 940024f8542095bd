#pragma once

#include <QDialog>
#include <memory>

namespace Ui {
class frmOptions;
}

namespace lumivane {

/// Edits the options of this installation. They become valid and are written to the settings file with OK; whoever
/// shows the dialog applies them to the windows.
class frmOptions : public QDialog
{
    Q_OBJECT

public:
    /// `background` is the colour that the main window has now.
    explicit frmOptions(const QColor& background, QWidget* parent = nullptr);
    ~frmOptions() override;

private:
    void cmbCaptionAlign_Load();
    void showOptions(const QColor& background);
    void cmdWorkspaceColor_Click();
    void cmdOK_Click();
    /// The frequency typed, once it passes; otherwise a box has said why.
    bool ValidateForm(double& frequency);
    void refuse(const QString& text);
    QColor swatchColor() const;
    void setSwatchColor(const QColor& color);

    const std::unique_ptr<Ui::frmOptions> ui;
};

} // namespace lumivane
