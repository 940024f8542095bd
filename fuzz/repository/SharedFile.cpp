#include "platform/RuntimeError.h"
#include "repository/Database.h"
#include "repository/clsPanelSource.h"
#include "repository/clsWorkspace.h"

#include <QFile>
#include <QTemporaryDir>

using namespace lumivane;
using namespace Qt::StringLiterals;

namespace {

void readEverything(const std::shared_ptr<Database>& shared)
{
    clsSources().LoadAll(shared);
    gDB = shared;
    const auto rows = shared->OpenRecordset(u"SELECT * FROM LvnSavedWorkspace"_s);
    for (; !rows->EOF_(); rows->MoveNext())
        clsWorkspace().LoadFromDB(rows->number32(u"ID"), shared);
    gDB.reset();
}

QByteArray soundFile(const QString& file)
{
    Database::create(file);
    const auto project = Database::open(file, databaseConnect());
    project->Execute(u"INSERT INTO LvnSavedWorkspace (Name) VALUES ('a')"_s);
    project->Execute(u"INSERT INTO LvnPanelSource (FullPath) VALUES ('C:\\a.xls')"_s);
    project->Execute(u"INSERT INTO LvnSavedPanel (WorkspaceID, SourceID, Caption, [Top], [Left], Height, Width) "
                     "VALUES (1, 1, 'x', 1, 2, 3, 4)"_s);
    project->Close();
    QFile bytes(file);
    return bytes.open(QIODevice::ReadOnly) ? bytes.readAll() : QByteArray();
}

} // namespace

/// The input is a list of changes (place, place, byte) to a sound file, since random bytes never get past its header.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size)
{
    static QTemporaryDir folder;
    const QString file = folder.filePath(u"fuzz.lvds"_s);
    static const QByteArray sound = soundFile(folder.filePath(u"sound.lvds"_s));
    QByteArray changed = sound;
    for (size_t i = 0; i + 2 < size; i += 3)
        changed[(qsizetype(data[i]) << 8 | data[i + 1]) % changed.size()] = char(data[i + 2]);
    {
        QFile bytes(file);
        if (!bytes.open(QIODevice::WriteOnly))
            return 0;
        bytes.write(changed);
    }
    try {
        readEverything(Database::open(file, databaseConnect(), Database::Trust::Stranger));
    } catch (const RuntimeError&) {
        gDB.reset();
    }
    return 0;
}
