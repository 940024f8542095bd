#include "platform/RuntimeError.h"
#include "repository/Database.h"
#include "repository/clsPanelSource.h"
#include "sharing/DashboardImport.h"

#include <QFile>
#include <QTemporaryDir>
#include <cstdlib>
#include <sqlite3.h>

using namespace lumivane;
using namespace Qt::StringLiterals;

namespace {

// Columns that hostile texts and values are put into.
const char* const columns[] = {
    "LvnSavedWorkspace SET Name",      "LvnSavedWorkspace SET Description", "LvnSavedWorkspace SET LastUpdated",
    "LvnSavedPanel SET Caption",       "LvnSavedPanel SET SourceID",        "LvnSavedPanel SET \"Top\"",
    "LvnSavedPanel SET LastViewed",    "LvnSavedPanel SET WorkspaceID",     "LvnPanelSource SET FullPath",
    "LvnPanelSource SET Mask",         "LvnPanelSource SET DestFolder",     "LvnPanelSource SET UpdateType",
    "LvnPanelSource SET SourceFolder", "LvnPanelSource SET CheckEveryNMin", "LvnAltPaths SET BasePath",
    "LvnAltPaths SET AltPath",
};

QByteArray bytesOf(const QString& file)
{
    QFile bytes(file);
    return bytes.open(QIODevice::ReadOnly) ? bytes.readAll() : QByteArray();
}

void writeBytes(const QString& file, const QByteArray& content)
{
    QFile bytes(file);
    if (!bytes.open(QIODevice::WriteOnly) || bytes.write(content) != content.size())
        std::abort();
}

QByteArray soundFile(const QString& file)
{
    Database::create(file);
    const auto project = Database::open(file, databaseConnect());
    for (const QString& sql :
         {u"INSERT INTO LvnSavedWorkspace (Name) VALUES ('theirs')"_s,
          u"INSERT INTO LvnPanelSource (FullPath, Mask, DestFolder, UpdateType, SourceFolder) VALUES "
          "('C:\\a\\a.xls', 'a*.xls', 'C:\\a\\', 'folder', 'C:\\b\\')"_s,
          u"INSERT INTO LvnPanelSource (FullPath, Mask, DestFolder, UpdateType, SourceFolder) VALUES "
          "('C:\\a\\b.xls', 'b*.xls', 'C:\\a\\', 'folder', 'C:\\b\\')"_s,
          u"INSERT INTO LvnSavedPanel (WorkspaceID, SourceID, Caption, [Top], [Left], Height, Width) VALUES "
          "(1, 1, 'x', 1, 2, 3, 4)"_s,
          u"INSERT INTO LvnSavedPanel (WorkspaceID, SourceID, Caption, [Top], [Left], Height, Width) VALUES "
          "(1, 2, 'y', 1, 2, 3, 4)"_s,
          u"INSERT INTO LvnAltPaths (BasePath, AltPath) VALUES ('C:\\a\\', '/')"_s})
        project->Execute(sql);
    project->Close();
    return bytesOf(file);
}

QByteArray ownProject(const QString& file)
{
    Database::create(file);
    const auto project = Database::open(file, databaseConnect());
    project->Execute(u"INSERT INTO LvnSavedWorkspace (Name) VALUES ('mine')"_s);
    project->Execute(u"INSERT INTO LvnSystem (PropertyKey, PropertyValue) VALUES ('key', 'secret')"_s);
    project->Execute(u"INSERT INTO LvnPanelSource (FullPath, Mask, DestFolder, UpdateType) VALUES "
                     "('/m.xls', 'm.xls', '/', 'default')"_s);
    project->Close();
    return bytesOf(file);
}

class Input
{
public:
    Input(const unsigned char* data, size_t size) : m_data(data), m_size(size) {}
    bool atEnd() const { return m_size == 0; }
    unsigned char byte()
    {
        if (m_size == 0)
            return 0;
        --m_size;
        return *m_data++;
    }
    QByteArray bytes(size_t count)
    {
        count = std::min(count, m_size);
        const QByteArray taken(reinterpret_cast<const char*>(m_data), qsizetype(count));
        m_data += count;
        m_size -= count;
        return taken;
    }

private:
    const unsigned char* m_data;
    size_t m_size;
};

void setColumn(sqlite3* handle, Input& input)
{
    const QByteArray sql = QByteArray("UPDATE ") + columns[input.byte() % std::size(columns)] + " = ?";
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(handle, sql.constData(), -1, &statement, nullptr) == SQLITE_OK) {
        const int kind = input.byte() % 8;
        const QByteArray value = input.bytes(input.byte());
        if (kind == 0)
            sqlite3_bind_null(statement, 1);
        else if (kind == 1)
            sqlite3_bind_blob(statement, 1, value.constData(), int(value.size()), SQLITE_TRANSIENT);
        else if (kind == 2)
            sqlite3_bind_double(statement, 1, value.toDouble());
        else
            sqlite3_bind_text(statement, 1, value.constData(), int(value.size()), SQLITE_TRANSIENT);
        sqlite3_step(statement);
    }
    sqlite3_finalize(statement);
}

/// Half of the inputs change values of a sound file, the others bytes of its pages as well.
void makeHostile(const QString& file, const QByteArray& sound, Input& input)
{
    writeBytes(file, sound);
    const bool damages = input.byte() % 2 == 1;
    sqlite3* handle = nullptr;
    if (sqlite3_open(QFile::encodeName(file).constData(), &handle) == SQLITE_OK) {
        sqlite3_exec(handle, "PRAGMA synchronous = OFF", nullptr, nullptr, nullptr);
        for (int count = input.byte() % 6; count > 0; --count)
            setColumn(handle, input);
    }
    sqlite3_close(handle);
    if (!damages)
        return;
    QByteArray bytes = bytesOf(file);
    while (!input.atEnd()) {
        const qsizetype place = (qsizetype(input.byte()) << 8 | input.byte()) % bytes.size();
        bytes[place] = char(input.byte());
    }
    writeBytes(file, bytes);
}

QString ownRows(Database& project)
{
    QString all;
    for (const QString& sql :
         {u"SELECT * FROM LvnSavedWorkspace WHERE ID = 1"_s, u"SELECT * FROM LvnPanelSource WHERE ID = 1"_s,
          u"SELECT * FROM LvnSystem"_s, u"SELECT * FROM LvnAltPaths"_s, u"SELECT * FROM LvnpanelThresholds"_s}) {
        const auto rows = project.OpenRecordset(sql);
        for (; !rows->EOF_(); rows->MoveNext()) {
            for (const QString& name : rows->fieldNames())
                all += rows->text(name) + u'|';
        }
    }
    return all;
}

void importEverything(const QString& file)
{
    DashboardImport import(file);
    std::vector<DashboardEntry> dashboards;
    if (!import.Open() || !import.importableDashboards(dashboards))
        return;
    std::vector<qint32> ids;
    for (const DashboardEntry& dashboard : dashboards)
        ids.push_back(dashboard.ID);
    // The import must hold by itself, not only behind the look ahead.
    if (!ids.empty()) {
        (void)import.preview(ids);
        import.ImportDashboard(ids);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size)
{
    // In memory where the system has such a folder: every statement is brought to the disk.
    static QTemporaryDir folder(QFile::exists(u"/dev/shm"_s) ? u"/dev/shm/import-XXXXXX"_s : QString());
    static const QByteArray sound = soundFile(folder.filePath(u"sound.lvds"_s));
    static const QByteArray own = ownProject(folder.filePath(u"own.lvdu"_s));
    const QString shared = folder.filePath(u"fuzz.lvds"_s), project = folder.filePath(u"mine.lvdu"_s);
    Input input(data, size);
    makeHostile(shared, sound, input);
    writeBytes(project, own);
    gDB = Database::open(project, databaseConnect());
    const QString before = ownRows(*gDB);
    importEverything(shared);
    if (ownRows(*gDB) != before)
        std::abort();
    gDB->Close();
    gDB.reset();
    return 0;
}
