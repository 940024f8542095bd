#include "tools/OpenProject.h"

#include "platform/ApplicationInfo.h"
#include "platform/RuntimeError.h"
#include "repository/Database.h"
#include "repository/clsPanelSource.h"
#include "repository/clsWorkspace.h"
#include "session/Startup.h"

namespace lumivane {

using namespace Qt::StringLiterals;

void useProgramFolder(const QString& home)
{
    if (!home.isEmpty())
        setProgramFolder(home);
    GetOptionsSettings();
}

OpenProject::OpenProject(const QString& file, const QString& home)
{
    useProgramFolder(home);
    gDB = Database::open(file, databaseConnect());
    gSources = std::make_shared<clsSources>();
    if (!gSources->LoadAll(gDB))
        throw RuntimeError(RuntimeError::ApplicationDefined, u"The sources of %1 cannot be read."_s.arg(file));
}

OpenProject::~OpenProject()
{
    gWorkspace.reset();
    gSources.reset();
    if (gDB)
        gDB->Close();
    gDB.reset();
}

void OpenProject::loadDashboard(const QString& name)
{
    const auto rows = gDB->OpenRecordset(u"SELECT * FROM LvnSavedWorkspace ORDER BY LastUpdated DESC"_s);
    QStringList names;
    for (; !rows->EOF_(); rows->MoveNext()) {
        names.append(rows->text(u"Name"));
        if (!name.isEmpty() && names.last().compare(name, Qt::CaseInsensitive) != 0)
            continue;
        gWorkspace = std::make_shared<clsWorkspace>();
        const qint32 id = rows->number32(u"ID");
        if (!gWorkspace->LoadFromDB(id, gDB)) {
            const auto panels =
                gDB->OpenRecordset(u"SELECT ID FROM LvnSavedPanel WHERE WorkspaceID = "_s + QString::number(id));
            throw RuntimeError(RuntimeError::ApplicationDefined,
                               (panels->EOF_() ? u"The dashboard \"%1\" has no panels."_s
                                               : u"The dashboard \"%1\" cannot be read. The message before this one "
                                                 "says which panel is damaged."_s)
                                   .arg(names.last()));
        }
        return;
    }
    if (names.isEmpty())
        throw RuntimeError(RuntimeError::ApplicationDefined, u"The project %1 has no dashboard."_s.arg(gDB->Name()));
    throw RuntimeError(
        RuntimeError::ApplicationDefined,
        u"The project %1 has no dashboard \"%2\"; there are: %3."_s.arg(gDB->Name(), name, names.join(u", "_s)));
}

} // namespace lumivane
