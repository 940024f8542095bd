#include "repository/clsWorkspace.h"

#include "platform/Checked.h"
#include "platform/Clock.h"
#include "repository/Database.h"
#include "repository/SqlText.h"
#include "repository/clsWorkspacePanel.h"
#include "repository/modUtilsSQL.h"
#include "services/modUtilsLog.h"

namespace lumivane {

std::shared_ptr<clsWorkspace> gWorkspace;

using namespace Qt::StringLiterals;

namespace {

const QString& workspaceModule()
{
    static const QString name = u"clsWorkspace"_s;
    return name;
}

bool runForWorkspace(const std::shared_ptr<Database>& database, const QString& sql, const QString& procedure)
{
    return SQL_Execute(database, sql, true, workspaceModule(), procedure);
}

std::shared_ptr<Recordset> openForWorkspace(const std::shared_ptr<Database>& database, const QString& sql,
                                            const QString& procedure)
{
    std::shared_ptr<Recordset> rs;
    SQL_OpenRecordset(database, rs, sql, true, workspaceModule(), procedure);
    return rs;
}

} // namespace

qint16 clsWorkspace::NumPanels() const
{
    return toInt16(int(m_panels.size()));
}

std::shared_ptr<clsWorkspacePanel> clsWorkspace::Panels(int Index) const
{
    return Index >= 1 && Index <= int(m_panels.size()) ? m_panels[size_t(Index) - 1] : nullptr;
}

std::shared_ptr<clsWorkspacePanel> clsWorkspace::PanelsByID(int PanelID) const
{
    for (const auto& panel : m_panels) {
        if (panel && panel->ID == PanelID)
            return panel;
    }
    return nullptr;
}

qint16 clsWorkspace::AddPanel()
{
    const qint16 place = toInt16(int(m_panels.size()) + 1);
    m_panels.push_back(std::make_shared<clsWorkspacePanel>());
    return place;
}

void clsWorkspace::DelPanel(int Index, bool DelRecord)
{
    if (Index < 1 || Index > int(m_panels.size()))
        return;
    const auto at = m_panels.begin() + (Index - 1);
    if (DelRecord && *at)
        (*at)->Delete(gDB);
    m_panels.erase(at);
}

bool clsWorkspace::LoadFromDB(qint32 WorkspaceID, const std::shared_ptr<Database>& Database)
{
    try {
        const QString where = u" WHERE ID = "_s + QString::number(WorkspaceID);
        const auto rs = openForWorkspace(Database, u"SELECT * FROM LvnSavedWorkspace"_s + where, u"LoadFromDB"_s);
        if (!rs || rs->EOF_())
            return false;
        Name = rs->text(u"Name");
        Description = rs->text(u"Description");
        ID = WorkspaceID;
        // The dashboard looked at last is the newest, and the one that the next start opens.
        runForWorkspace(gDB, u"UPDATE LvnSavedWorkspace SET LastUpdated = "_s + dateLiteral(Clock::now()) + where,
                        u"LoadFromDB"_s);
        return LoadPanelsFromDB(Database);
    } catch (const RuntimeError& error) {
        LogError(workspaceModule(), u"LoadFromDB"_s, error.number(), error.description(), true);
        return false;
    }
}

bool clsWorkspace::LoadPanelsFromDB(const std::shared_ptr<Database>& Database)
{
    std::shared_ptr<Recordset> rs;
    try {
        if (ID < 1 || CountPanels(Database) < 1)
            return false;
        m_panels.clear();
        rs = openForWorkspace(Database,
                              u"SELECT * FROM LvnSavedPanel WHERE WorkspaceID = "_s + QString::number(ID) +
                                  u" ORDER BY SourceID"_s,
                              u"LoadPanelsFromDB"_s);
        if (!rs || rs->EOF_())
            return false;
        for (; !rs->EOF_(); rs->MoveNext()) {
            const auto panel = std::make_shared<clsWorkspacePanel>();
            panel->LoadFromRecSet(Database, rs);
            m_panels.push_back(panel);
            m_ownRows.insert(panel->ID);
        }
        return true;
    } catch (const RuntimeError& error) {
        const QString rest = u"  The panel with the ID %1 cannot be read. It and the panels behind it are not shown; "
                             "they stay in the project as they are, also when the dashboard is saved."_s;
        LogError(workspaceModule(), u"LoadPanelsFromDB"_s, error.number(),
                 error.description() + (rs ? rest.arg(rs->text(u"ID")) : QString()), true);
        return false;
    }
}

bool clsWorkspace::SaveToDB(const std::shared_ptr<Database>& Database)
{
    return ID < 1 ? InsertDB(Database) : UpdateDB(Database);
}

bool clsWorkspace::UpdateDB(const std::shared_ptr<Database>& Database)
{
    // A statement that fails fails the save; the others still keep what they can. Where the file itself cannot be
    // written, each of them would wait, fail and say so.
    const bool dropped = DelOrphanPanels(Database);
    if (!dropped && SQL_FileFailed())
        return false;
    // The blank in front of the name's closing apostrophe lets a saved name grow by one blank each time, and only an
    // apostrophe behind a blank is made harmless. Stored names are compared by files in use, so both stay.
    QString name = Name;
    name = textLiteral(name.replace(u" '"_s, u"''"_s) + u' ');
    const bool described =
        SQL_ExecuteOnRow(Database,
                         u"UPDATE LvnSavedWorkspace SET"_s + u" Name = "_s + name + u", "_s + u" Description = "_s +
                             doubledLiteral(Description) + u","_s + u" LastUpdated = "_s + dateLiteral(Clock::now()) +
                             u" WHERE ID = "_s + QString::number(ID),
                         u"dashboard [%1]"_s.arg(Name.trimmed()), workspaceModule(), u"UpdateDB"_s);
    if (!described && SQL_FileFailed())
        return false;
    return savePanels(Database) && dropped && described;
}

bool clsWorkspace::savePanels(const std::shared_ptr<Database>& Database)
{
    bool saved = true;
    for (const auto& panel : m_panels) {
        if (!panel)
            continue;
        const bool panelSaved = panel->SaveToDB(Database, ID);
        if (panel->ID > 0)
            m_ownRows.insert(panel->ID);
        if (panelSaved)
            continue;
        saved = false;
        if (SQL_FileFailed())
            break;
    }
    return saved;
}

bool clsWorkspace::InsertDB(const std::shared_ptr<Database>& Database)
{
    const QString name = doubledLiteral(Name);
    if (!runForWorkspace(Database,
                         u"INSERT INTO LvnSavedWorkspace(Name, Description, LastUpdated) VALUES ("_s + name + u","_s +
                             doubledLiteral(Description) + u","_s + dateLiteral(Clock::now()) + u")"_s,
                         u"InsertDB"_s))
        return false;
    const auto rs =
        openForWorkspace(Database, u"SELECT ID FROM LvnSavedWorkspace WHERE Name = "_s + name, u"InsertDB"_s);
    if (!rs || rs->EOF_())
        return false;
    ID = rs->number32(u"ID");
    return savePanels(Database);
}

void clsWorkspace::Delete(const std::shared_ptr<Database>& Database)
{
    if (ID <= 0)
        return;
    DelPanels(Database);
    m_panels.clear();
    runForWorkspace(Database, u"DELETE FROM LvnSavedWorkspace WHERE ID = "_s + QString::number(ID), u"DelSelf"_s);
}

void clsWorkspace::DelPanels(const std::shared_ptr<Database>& Database)
{
    runForWorkspace(Database, u"DELETE FROM LvnSavedPanel WHERE WorkspaceID = "_s + QString::number(ID),
                    u"DelPanels"_s);
}

bool clsWorkspace::DelOrphanPanels(const std::shared_ptr<Database>& Database)
{
    QStringList ids;
    for (const auto& panel : m_panels) {
        if (panel)
            ids.append(QString::number(panel->ID));
    }
    if (ids.isEmpty())
        return true;
    const auto foreign = foreignRows(Database);
    if (!foreign)
        return false;
    if (!foreign->isEmpty())
        LogEvent(workspaceModule(), u"DelOrphanPanels"_s,
                 u"The panels %1 of the dashboard [%2] were not loaded here, and stay in the project."_s.arg(
                     foreign->join(u", "_s), Name.trimmed()),
                 false);
    ids += *foreign;
    return runForWorkspace(Database,
                           u"DELETE FROM LvnSavedPanel WHERE WorkspaceID = "_s + QString::number(ID) +
                               u" AND ID NOT IN ("_s + ids.join(u',') + u")"_s,
                           u"DelOrphanPanels"_s);
}

std::optional<QStringList> clsWorkspace::foreignRows(const std::shared_ptr<Database>& Database) const
{
    QStringList foreign;
    const auto rs = openForWorkspace(
        Database, u"SELECT ID FROM LvnSavedPanel WHERE WorkspaceID = "_s + QString::number(ID), u"DelOrphanPanels"_s);
    if (!rs)
        return std::nullopt;
    for (; !rs->EOF_(); rs->MoveNext()) {
        if (!m_ownRows.contains(int(rs->number(u"ID"))))
            foreign.append(rs->text(u"ID"));
    }
    return foreign;
}

qint16 clsWorkspace::CountPanels(const std::shared_ptr<Database>& Database)
{
    const auto rs = openForWorkspace(
        Database, u"SELECT COUNT(*) AS PanelCount FROM LvnSavedPanel WHERE WorkspaceID = "_s + QString::number(ID),
        u"CountPanels"_s);
    return rs && !rs->EOF_() ? toInt16(rs->number32(u"PanelCount")) : qint16(0);
}

} // namespace lumivane
