#include "sharing/ImportPreview.h"

#include "platform/ApplicationInfo.h"
#include "platform/CellArea.h"
#include "platform/Checked.h"
#include "platform/ShownText.h"
#include "repository/Database.h"
#include "repository/SqlText.h"
#include "repository/clsPanelSource.h"
#include "services/modUtilsFile.h"
#include "sharing/SourceTransfer.h"
#include "sharing/ThresholdTransfer.h"

#include <QDir>
#include <QTemporaryDir>
#include <algorithm>
#include <limits>
#include <map>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

/// Panels and sources are numbered by 16 bits for as long as a project lives; a number is not given twice.
constexpr qint64 lastUsableId = std::numeric_limits<qint16>::max();
constexpr qint64 mostDashboards = 10'000;
constexpr qint64 mostPanels = lastUsableId;
constexpr qint64 mostSources = 5'000;
constexpr qint64 mostThresholds = 50'000;
constexpr qint64 mostAlternatePaths = 500;
constexpr qsizetype longestText = 32'000;
/// Rows between two signs of life.
constexpr qint64 rowsALook = 200;

struct PreviewRefusal
{
    QString sentence;
};

enum class Empty { Allowed, Refused };

struct NumberColumn
{
    QString name;
    Empty empty;
    qint64 least;
    qint64 most;
    QString hint = {}; ///< how more is possible
};

template <class Number>
NumberColumn numberColumn(const QString& name, Empty empty)
{
    return {name, empty, std::numeric_limits<Number>::min(), std::numeric_limits<Number>::max()};
}

/// A place or size of a panel on its dashboard.
NumberColumn twipsColumn(const QString& name)
{
    return {name, Empty::Refused, -qint64(twipsLimit()) - 1, twipsLimit(), largeSheetsHint()};
}

/// Rows of one table of the shared file, in the words of the user. Without a number or a date that the records read,
/// a dashboard would break off when it is loaded.
struct CheckedTable
{
    QString noun; ///< "dashboard", "panel", "source"
    QString query;
    qint64 most;
    std::vector<NumberColumn> numbers;
    QStringList dates = {};
    QString key = u"ID"_s; ///< names the row to the user
};

QString shortened(QString text)
{
    text = shownName(text);
    return text.size() > 60 ? QString(text.left(60) + u"..."_s) : text;
}

bool isPlainText(const QString& text)
{
    for (const QChar c : text) {
        if (c.category() == QChar::Other_Control && c != u'\t' && c != u'\r' && c != u'\n')
            return false;
    }
    return true;
}

void refuseValue(const CheckedTable& table, Recordset& rows, const QString& column, const QString& fault,
                 const QString& hint = {})
{
    const QString wayOut = hint.isEmpty() ? u" Ask for a new export of it."_s : hint;
    throw PreviewRefusal{u"The %1 %2 of the shared file cannot be imported: its column %3 %4."_s.arg(
                             table.noun, shortened(rows.text(table.key)), column, fault) %
                         wayOut};
}

void checkNumber(const CheckedTable& table, Recordset& rows, const NumberColumn& column)
{
    if (rows.isNull(column.name) && column.empty == Empty::Allowed)
        return;
    if (rows.isNull(column.name))
        refuseValue(table, rows, column.name, u"is empty"_s);
    try {
        const qint64 value = rows.number(column.name);
        if (value >= column.least && value <= column.most)
            return;
    } catch (const RuntimeError&) {
    }
    refuseValue(table, rows, column.name,
                u"holds [%1], which is no number that fits"_s.arg(shortened(rows.text(column.name))), column.hint);
}

void checkDate(const CheckedTable& table, Recordset& rows, const QString& column)
{
    try {
        rows.date(column);
    } catch (const RuntimeError&) {
        refuseValue(table, rows, column, u"holds [%1], which is no date"_s.arg(shortened(rows.text(column))));
    }
}

void checkValue(const CheckedTable& table, Recordset& rows, const QString& column)
{
    const QVariant value = rows.Field(column);
    if (value.typeId() == QMetaType::QByteArray)
        refuseValue(table, rows, column, u"holds bytes instead of a text"_s);
    if (value.typeId() != QMetaType::QString)
        return;
    const QString text = value.toString();
    if (text.size() > longestText)
        refuseValue(table, rows, column, u"holds a text of %1 characters"_s.arg(text.size()));
    if (!isPlainText(text))
        refuseValue(table, rows, column, u"holds characters that cannot be shown"_s);
}

void showStep(const SharingProgress& progress, qint64 done, qint64 total)
{
    if (progress && done % rowsALook == 0 && !progress(done, total))
        throw PreviewRefusal{u"The import was cancelled."_s};
}

/// Answers the number of rows.
template <class MoreChecks>
qint64 checkTable(Database& shared, const CheckedTable& table, const SharingProgress& progress, MoreChecks moreChecks)
{
    const auto rows = shared.OpenRecordset(table.query);
    if (rows->rowCount() > table.most)
        throw PreviewRefusal{u"The shared file holds %1 %2s for this import; at most %3 are taken. Choose fewer "
                             "dashboards."_s.arg(rows->rowCount())
                                 .arg(table.noun)
                                 .arg(table.most)};
    const QStringList columns = rows->fieldNames();
    for (qint64 done = 1; !rows->EOF_(); rows->MoveNext(), ++done) {
        showStep(progress, done, rows->rowCount());
        for (const NumberColumn& number : table.numbers)
            checkNumber(table, *rows, number);
        for (const QString& date : table.dates)
            checkDate(table, *rows, date);
        for (const QString& column : columns)
            checkValue(table, *rows, column);
        moreChecks(*rows);
    }
    return rows->rowCount();
}

void checkDashboards(Database& shared, const QString& ids, const SharingProgress& progress)
{
    const CheckedTable table{u"dashboard"_s,
                             u"SELECT * FROM LvnSavedWorkspace WHERE ID IN ("_s + ids + u')',
                             mostDashboards,
                             {numberColumn<qint32>(u"ID"_s, Empty::Refused)},
                             {u"LastUpdated"_s, u"LastViewed"_s}};
    checkTable(shared, table, progress, [&](Recordset& row) {
        // The next import lists the names of the project between apostrophes in one statement, which would fail.
        if (row.text(u"Name").contains(u'\''))
            refuseValue(table, row, u"Name"_s,
                        u"holds an apostrophe ([%1]), which no name may"_s.arg(shortened(row.text(u"Name"))));
    });
}

/// A panel from an installation with Large Sheets may lie where this one cannot follow it.
void checkRange(const CheckedTable& table, Recordset& row)
{
    if (row.text(u"ContentType") == u"C" || row.text(u"ContentType") == u"P")
        return; // a name
    for (const QString& part : row.text(u"PicRange").split(u'`')) {
        const auto area = CellArea::parse(part);
        const bool wholeRows = area && area->columns() == maxColumn;
        const bool wholeColumns = area && area->rows() == maxRow;
        if (area && ((!wholeColumns && area->lastRow > rowLimit()) || (!wholeRows && area->lastColumn > columnLimit())))
            refuseValue(table, row, u"PicRange"_s,
                        u"holds [%1], which lies beyond the cells that a panel may use"_s.arg(shortened(part)),
                        largeSheetsHint());
    }
}

qint64 checkPanels(Database& shared, const QString& ids, const SharingProgress& progress)
{
    const CheckedTable table{u"panel"_s,
                             u"SELECT * FROM LvnSavedPanel WHERE WorkspaceID IN ("_s + ids + u')',
                             mostPanels,
                             {numberColumn<qint32>(u"SourceID"_s, Empty::Refused), twipsColumn(u"Top"_s),
                              twipsColumn(u"Left"_s), twipsColumn(u"Height"_s), twipsColumn(u"Width"_s),
                              numberColumn<qint32>(u"Ndx"_s, Empty::Allowed)},
                             {u"LastViewed"_s}};
    return checkTable(shared, table, progress, [&](Recordset& row) { checkRange(table, row); });
}

void checkSource(const CheckedTable& table, Recordset& row)
{
    const QString mask = row.text(u"Mask");
    if (mask.contains(u'/') || mask.contains(u'\\'))
        refuseValue(table, row, u"Mask"_s, u"holds [%1], which leads into a folder"_s.arg(shortened(mask)));
    for (const QString& column : {u"UpdateType"_s, u"Mask"_s, u"DestFolder"_s}) {
        if (row.isNull(column))
            refuseValue(table, row, column, u"is empty"_s);
        if (!staysOneText(row.text(column)))
            refuseValue(
                table, row, column,
                u"holds an apostrophe ([%1]), which the project cannot look for"_s.arg(shortened(row.text(column))));
    }
}

qint64 checkSources(Database& shared, const QString& ids, const SharingProgress& progress)
{
    const CheckedTable table{
        u"source"_s,
        u"SELECT * FROM LvnPanelSource WHERE ID IN ( SELECT DISTINCT SourceID FROM LvnSavedPanel"
        " WHERE WorkspaceID IN ("_s +
            ids + u"))"_s,
        mostSources,
        {numberColumn<qint32>(u"ID"_s, Empty::Refused), numberColumn<qint32>(u"CheckEveryNMin"_s, Empty::Allowed)}};
    return checkTable(shared, table, progress, [&](Recordset& row) { checkSource(table, row); });
}

void checkThresholds(Database& shared, const QString& ids, const SharingProgress& progress)
{
    if (!holdsThresholds(shared))
        return;
    checkTable(
        shared,
        {u"threshold of panel"_s,
         thresholdsQuery(ids),
         mostThresholds,
         {numberColumn<qint32>(u"rowOffset"_s, Empty::Refused), numberColumn<qint32>(u"colOffset"_s, Empty::Refused)},
         {},
         u"PanelID"_s},
        progress, [](Recordset&) {});
}

void checkRoom(const Database& project, const QString& table, const QString& noun, qint64 count)
{
    const qint64 room = lastUsableId - project.lastIdOf(table);
    if (count > room)
        throw PreviewRefusal{u"The project can take %1 more %2s, and these dashboards bring %3. Choose fewer "
                             "dashboards, or import them into another project."_s.arg(qMax(room, qint64(0)))
                                 .arg(noun)
                                 .arg(count)};
}

void checkAlternatePaths(Database& shared)
{
    const auto rows = shared.OpenRecordset(u"SELECT * FROM LvnAltPaths"_s);
    if (rows->rowCount() > mostAlternatePaths)
        throw PreviewRefusal{u"The shared file holds %1 alternate paths; at most %2 are taken. Ask for an export with "
                             "fewer."_s.arg(rows->rowCount())
                                 .arg(mostAlternatePaths)};
}

/// A path of this machine without the steps upwards that could hide where it leads; others stay as they are.
QString resolved(const QString& path)
{
    return path.startsWith(u'/') ? QDir::cleanPath(path) : path;
}

class FolderList
{
public:
    void add(const QString& folder, bool isWritten)
    {
        if (folder.isEmpty() || folder == u"/" || folder == u"\\")
            return; // an empty folder text of the record
        const QString path = folder.startsWith(u'/') ? withDelimiter(resolved(folder)) : folder;
        ImportFolder& entry = m_folders[path];
        entry.path = path;
        (isWritten ? entry.isWritten : entry.isRead) = true;
    }

    std::vector<ImportFolder> folders() const
    {
        std::vector<ImportFolder> result;
        for (const auto& [path, folder] : m_folders) {
            result.push_back(folder);
            result.back().exists = FolderExists(path);
        }
        return result;
    }

private:
    std::map<QString, ImportFolder> m_folders;
};

/// A source as the record will read it and the update engine will use it.
struct ComingSource
{
    explicit ComingSource(Recordset& row)
    {
        source.UpdateType = row.text(u"UpdateType");
        source.Mask = row.text(u"Mask");
        source.DestFolder = withDelimiter(row.text(u"DestFolder"));
        source.SourceFolder = withDelimiter(row.text(u"SourceFolder"));
        source.FullPath = row.text(u"FullPath");
    }

    bool fetches() const { return source.UpdateType == u"folder"; }
    void listFolders(FolderList& list) const
    {
        const QString folder = FileFolder(source.currentPath());
        if (!folder.isEmpty())
            list.add(folder + PathDelimiter(source.FullPath), false);
        list.add(source.DestFolder, false);
        if (fetches())
            list.add(source.SourceFolder, false);
        if (fetches() || source.UpdateType == u"inbox" || source.UpdateType == u"refresh")
            list.add(source.DestFolder, true);
    }
    bool hasFile() const
    {
        return FileExists(source.currentPath()) || FileExists(source.DestFolder + source.Mask) ||
               (fetches() && FileExists(source.SourceFolder + source.Mask));
    }
    QString sought() const
    {
        const QString path = source.currentPath();
        return resolved(path.isEmpty() ? QString(source.DestFolder + source.Mask) : path);
    }

    clsPanelSource source;
};

void lookAtSources(Recordset& sources, ImportPreview& preview, const SharingProgress& progress)
{
    FolderList folders;
    for (qint64 done = 1; !sources.EOF_(); sources.MoveNext(), ++done) {
        showStep(progress, done, sources.rowCount());
        const ComingSource coming(sources);
        coming.listFolders(folders);
        if (!coming.hasFile())
            preview.missingWorkbooks.append(coming.sought());
    }
    preview.folders = folders.folders();
    preview.missingWorkbooks.sort();
    preview.missingWorkbooks.removeDuplicates();
}

qint64 newSources(Recordset& coming, Recordset& known)
{
    const QHash<QString, qint64> present = knownSources(known);
    const QHash<QString, qint64> all = knownSources(coming);
    return std::count_if(all.keyBegin(), all.keyEnd(),
                         [&](const QString& source) { return !present.contains(source); });
}

/// The first part of the import, done in a project of its own that is thrown away.
void tryFirstPart(const std::shared_ptr<Database>& shared, const std::shared_ptr<Database>& project, const QString& ids,
                  ImportPreview& preview, const SharingProgress& progress)
{
    const QTemporaryDir place;
    const QString file = place.filePath(u"preview.lvdu"_s);
    if (!place.isValid())
        throw PreviewRefusal{u"No temporary folder can be made to look at the import: %1."_s.arg(place.errorString())};
    Database::create(file);
    const auto scratch = Database::open(file, databaseConnect());
    if (!makeTempSources(shared, scratch, ids))
        throw PreviewRefusal{u"The sources of the shared file cannot be read. Ask for a new export."_s};
    rewritePaths(shared, scratch, progress);
    const auto rows = [&scratch] { return scratch->OpenRecordset(u"SELECT * FROM TempSources"_s); };
    checkRoom(*project, u"LvnPanelSource"_s, u"source"_s,
              newSources(*rows(), *project->OpenRecordset(u"SELECT * FROM LvnPanelSource"_s)));
    lookAtSources(*rows(), preview, progress);
    scratch->Close();
}

} // namespace

Result<ImportPreview> previewImport(const std::shared_ptr<Database>& shared, const std::shared_ptr<Database>& project,
                                    const QString& ids, const SharingProgress& progress)
{
    try {
        checkDashboards(*shared, ids, progress);
        checkAlternatePaths(*shared);
        ImportPreview preview;
        preview.panels = checkPanels(*shared, ids, progress);
        preview.sources = checkSources(*shared, ids, progress);
        checkThresholds(*shared, ids, progress);
        checkRoom(*project, u"LvnSavedPanel"_s, u"panel"_s, preview.panels);
        tryFirstPart(shared, project, ids, preview, progress);
        return preview;
    } catch (const PreviewRefusal& refusal) {
        return Failure{refusal.sentence};
    } catch (const RuntimeError& error) {
        return Failure{u"The shared file cannot be imported: "_s + error.description()};
    }
}

} // namespace lumivane
