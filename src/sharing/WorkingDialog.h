#pragma once

#include <QDialog>
#include <QPointer>
#include <functional>

class QLabel;
class QProgressBar;

namespace lumivane {

/// A dialog that stays alive while its command works: it shows how far the work is, takes no second command meanwhile,
/// and lets the user cancel where nothing half-done would stay.
class WorkingDialog : public QDialog
{
    Q_OBJECT

public:
    using QDialog::QDialog;

public Q_SLOTS:
    /// During work: asks it to end, where that is possible, and leaves the dialog open.
    void reject() override;

Q_SIGNALS:
    /// Events run while rows are looked at or written; nothing else may begin among them.
    void working(bool isWorking);

protected:
    enum class Cancel { Possible, Impossible };

    /// What the work is shown by. `locked` cannot be used meanwhile, `cancel` only where it is of use.
    struct WorkParts
    {
        QLabel* status;
        QProgressBar* bar;
        QWidget* cancel;
        QList<QWidget*> locked;
    };
    void setWorkParts(const WorkParts& parts);

    /// Runs the steps, which call `goOn` now and then.
    void work(const QString& what, Cancel cancel, const std::function<void()>& steps);
    /// Shows the progress and lets events run; false once the user has cancelled. A total of 0 stands for an unknown
    /// one.
    bool goOn(qint64 done, qint64 total);
    bool wasCancelled() const { return m_isCancelled; }
    /// What stays to be read in the dialog; empty: nothing.
    void setStatus(const QString& text);

private:
    void setWorking(bool isWorking);

    WorkParts m_parts{};
    Cancel m_cancel = Cancel::Impossible;
    bool m_isWorking = false;
    bool m_isCancelled = false;
    QPointer<QWidget> m_focused;
};

} // namespace lumivane
