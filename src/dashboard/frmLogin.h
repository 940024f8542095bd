#pragma once

#include <QDialog>
#include <memory>

namespace Ui {
class frmLogin;
}

namespace lumivane {

class Database;
class ProgramWindows;

/// Asks for a project file and opens it in place of the one that is open. A file that is refused leaves the open
/// project as it is.
class frmLogin : public QDialog
{
    Q_OBJECT

public:
    QString Mode; ///< "switch" while a project is on screen; otherwise Cancel ends the run

    explicit frmLogin(ProgramWindows& windows, QWidget* parent = nullptr);
    ~frmLogin() override;

    void reject() override; // cmdCancel

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void Form_Load();
    void Form_Resize();
    void enableOK();
    void cmdBrowse_Click();
    void cmdOK_Click();
    void openProject(const QString& fileName);
    /// Puts the new project in the place of the old one, in the session and on the screen. False when the user stays
    /// with the old one because of unsaved work; nothing has changed then.
    bool takeOver(std::shared_ptr<Database>& opened);

    ProgramWindows& m_windows;
    const std::unique_ptr<Ui::frmLogin> ui;
};

} // namespace lumivane
