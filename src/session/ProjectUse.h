#pragma once

#include <QString>
#include <QtGlobal>

namespace lumivane {

/// The sign by which programs see that one of them has a project open: a lock on a hidden file beside it. The system
/// takes the lock back when the program ends, however it ends, so a killed one leaves no sign behind; and it holds for
/// other computers too when the project lies in a shared folder. A row of the project would outlive a kill.
class ProjectUse
{
public:
    /// Takes the sign. Where it cannot be made or locked at all, this program counts as the only one.
    explicit ProjectUse(const QString& projectFile);
    ~ProjectUse();
    Q_DISABLE_COPY_MOVE(ProjectUse)

    /// Who has the sign instead, as "ann on the computer office since 2026-11-24 10:30:00"; empty when it is this one.
    const QString& other() const { return m_other; }

private:
    bool take();

    const QString m_sign;
    QString m_other;
    int m_descriptor = -1;
};

/// Gives up the sign at the project that was open and takes that of another. Says in a box who has it open already.
void announceProject(const QString& projectFile);

} // namespace lumivane
