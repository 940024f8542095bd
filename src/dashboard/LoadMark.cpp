#include "dashboard/LoadMark.h"

#include "services/ProgramFiles.h"

#include <QFile>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

QString noteFile()
{
    return GetPanelsFolder() + u"loading.txt"_s;
}

} // namespace

LoadMark::LoadMark(const QString& project, int panelID)
{
    // Without a note, for want of a folder that can be written, the next start loads all panels as ever.
    QFile note(noteFile());
    if (note.open(QIODevice::WriteOnly | QIODevice::Text))
        note.write(u"%1\n%2\n"_s.arg(QString::number(panelID), project).toUtf8());
}

LoadMark::~LoadMark()
{
    QFile::remove(noteFile());
}

int LoadMark::takeLeftOver(const QString& project)
{
    QFile note(noteFile());
    if (!note.open(QIODevice::ReadOnly | QIODevice::Text))
        return -1;
    const QStringList lines = QString::fromUtf8(note.read(1 << 16)).split(u'\n');
    note.remove();
    return lines.value(1) == project ? lines.value(0).toInt() : -1;
}

} // namespace lumivane
