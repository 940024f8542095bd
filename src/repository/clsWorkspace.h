#pragma once

#include <QString>
#include <QStringList>
#include <memory>
#include <optional>
#include <set>
#include <vector>

namespace lumivane {

class Database;
class clsWorkspacePanel;

/// One dashboard in memory: its row of LvnSavedWorkspace and its panels, counted from 1. A panel window is tied to its
/// record by that place alone.
class clsWorkspace
{
public:
    qint32 ID = 0; ///< 0 until stored
    QString Name;
    QString Description;

    qint16 NumPanels() const;
    /// The panel at a place, or null outside 1 to NumPanels.
    std::shared_ptr<clsWorkspacePanel> Panels(int Index) const;
    std::shared_ptr<clsWorkspacePanel> PanelsByID(int PanelID) const;
    /// Appends an empty panel and answers its place.
    qint16 AddPanel();
    /// Drops a panel, its row too if asked; later panels move down one place, so their windows must be renumbered.
    void DelPanel(int Index, bool DelRecord);
    /// Reads the dashboard and its panels, and marks it in gDB as the newest. False for a dashboard without panels too.
    /// A panel that cannot be read ends the load: neither it nor those behind it come into the dashboard, and saving it
    /// leaves their rows alone.
    bool LoadFromDB(qint32 WorkspaceID, const std::shared_ptr<Database>& Database);
    /// False when a part of it could not be stored, which has then been shown. Stops at the first failure that lies in
    /// the file; a statement that fails alone keeps nothing else from being stored.
    bool SaveToDB(const std::shared_ptr<Database>& Database);
    /// Removes the rows of the dashboard and its panels; sources and cached pictures stay.
    void Delete(const std::shared_ptr<Database>& Database);

private:
    bool LoadPanelsFromDB(const std::shared_ptr<Database>& Database);
    bool UpdateDB(const std::shared_ptr<Database>& Database);
    bool InsertDB(const std::shared_ptr<Database>& Database);
    bool savePanels(const std::shared_ptr<Database>& Database);
    void DelPanels(const std::shared_ptr<Database>& Database);
    bool DelOrphanPanels(const std::shared_ptr<Database>& Database);
    qint16 CountPanels(const std::shared_ptr<Database>& Database);

    /// Rows of this dashboard that it has neither read nor written: they are not its own to delete.
    std::optional<QStringList> foreignRows(const std::shared_ptr<Database>& Database) const;

    std::vector<std::shared_ptr<clsWorkspacePanel>> m_panels;
    std::set<int> m_ownRows; ///< ids of panels that have been read whole or stored
};

/// The dashboard on screen; written by frmWorkspace, and by OpenProject for scripts.
extern std::shared_ptr<clsWorkspace> gWorkspace;

} // namespace lumivane
