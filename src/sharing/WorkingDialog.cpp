#include "sharing/WorkingDialog.h"

#include "platform/Prompts.h"

#include <QLabel>
#include <QProgressBar>
#include <QScopeGuard>

namespace lumivane {

using namespace Qt::StringLiterals;

void WorkingDialog::setWorkParts(const WorkParts& parts)
{
    m_parts = parts;
    m_parts.bar->hide();
    setStatus({});
}

void WorkingDialog::reject()
{
    if (!m_isWorking)
        QDialog::reject();
    else if (m_cancel == Cancel::Possible)
        m_isCancelled = true;
}

void WorkingDialog::work(const QString& what, Cancel cancel, const std::function<void()>& steps)
{
    m_cancel = cancel;
    m_isCancelled = false;
    setStatus(what);
    setWorking(true);
    const auto ending = qScopeGuard([this] {
        setWorking(false);
        setStatus({});
    });
    steps();
}

bool WorkingDialog::goOn(qint64 done, qint64 total)
{
    m_parts.bar->setMaximum(int(total));
    m_parts.bar->setValue(int(done));
    prompts().doEvents();
    return !m_isCancelled;
}

void WorkingDialog::setStatus(const QString& text)
{
    m_parts.status->setText(text);
    m_parts.status->setVisible(!text.isEmpty());
}

void WorkingDialog::setWorking(bool isWorking)
{
    m_isWorking = isWorking;
    QWidget* const focused = focusWidget();
    for (QWidget* control : m_parts.locked)
        control->setEnabled(!isWorking);
    m_parts.cancel->setEnabled(!isWorking || m_cancel == Cancel::Possible);
    m_parts.bar->setRange(0, 0);
    m_parts.bar->setVisible(isWorking);
    // What is disabled loses the focus; the user finds it again where it was.
    if (isWorking)
        m_focused = focused;
    else if (m_focused)
        m_focused->setFocus();
    prompts().setPointer(isWorking ? Prompts::Pointer::Hourglass : Prompts::Pointer::Default);
    Q_EMIT working(isWorking);
    if (isWorking)
        prompts().doEvents();
}

} // namespace lumivane
