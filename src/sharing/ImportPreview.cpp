#include "sharing/ImportPreview.h"

#include "platform/ApplicationInfo.h"
#include "platform/CellArea.h"
#include "platform/Checked.h"
#include "platform/ShownText.h"
#include "repository/Database.h"
#include "repository/SqlText.h"
#include "services/modUtilsFile.h"
#include "sharing/SourceTransfer.h"

#include <QDir>
#include <QTemporaryDir>
#include <limits>
#include <map>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 mostDashboards = 10'000;
constexpr qint64 mostPanels = 100'000;
constexpr qint64 mostSources = 5'000;
constexpr qint64 mostAlternatePaths = 500;
constexpr qsizetype longestText = 32'000;
/// Rows between two signs of life.
constexpr qint64 rowsALook = 200;

struct PreviewRefusal
{
    QString sentence;
};

struct NumberColumn
{
    QString name;
    qint64 least;
    qint64 most;
    QString hint = {}; ///< how more is possible
};

template <class Number>
NumberColumn numberColumn(const QString& name)
{
    return {name, std::numeric_limits<Number>::min(), std::numeric_limits<Number>::max()};
}

/// A place or size of a panel on its dashboard.
NumberColumn twipsColumn(const QString& name)
{
    return {name, -qint64(twipsLimit()) - 1, twipsLimit(), largeSheetsHint()};
}

/// Rows of one table of the shared file, in the words of the user.
struct CheckedTable
{
    QString noun; ///< "dashboard", "panel", "source"
    QString query;
    qint64 most;
    std::vector<NumberColumn> numbers;
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
                             table.noun, shortened(rows.text(u"ID")), column, fault) %
                         wayOut};
}

void checkNumber(const CheckedTable& table, Recordset& rows, const NumberColumn& column)
{
    if (rows.isNull(column.name))
        return;
    try {
        const qint64 value = rows.number(column.name);
        if (value >= column.least && value <= column.most)
            return;
    } catch (const RuntimeError&) {
    }
    refuseValue(table, rows, column.name,
                u"holds [%1], which is no number that fits"_s.arg(shortened(rows.text(column.name))), column.hint);
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
                             {numberColumn<qint32>(u"ID"_s)}};
    checkTable(shared, table, progress, [&](Recordset& row) {
        // The list of names that the next import asks with would fall apart.
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
                             {numberColumn<qint32>(u"WorkspaceID"_s), numberColumn<qint32>(u"SourceID"_s),
                              twipsColumn(u"Top"_s), twipsColumn(u"Left"_s), twipsColumn(u"Height"_s),
                              twipsColumn(u"Width"_s), numberColumn<qint32>(u"Ndx"_s)}};
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
    const CheckedTable table{u"source"_s,
                             u"SELECT * FROM LvnPanelSource WHERE ID IN ( SELECT DISTINCT SourceID FROM LvnSavedPanel"
                             " WHERE WorkspaceID IN ("_s +
                                 ids + u"))"_s,
                             mostSources,
                             {numberColumn<qint32>(u"ID"_s), numberColumn<qint32>(u"CheckEveryNMin"_s)}};
    return checkTable(shared, table, progress, [&](Recordset& row) { checkSource(table, row); });
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
QString resolvedFolder(const QString& folder)
{
    return folder.startsWith(u'/') ? withDelimiter(QDir::cleanPath(folder)) : folder;
}

class FolderList
{
public:
    void add(const QString& folder, bool isWritten)
    {
        if (folder.isEmpty() || folder == u"/" || folder == u"\\")
            return; // an empty folder text of the record
        const QString path = resolvedFolder(folder);
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

/// As the records will read the columns, and as the update engine will use them.
std::vector<ImportFolder> foldersOf(Recordset& sources)
{
    FolderList list;
    for (; !sources.EOF_(); sources.MoveNext()) {
        const QString type = sources.text(u"UpdateType");
        const QString destination = withDelimiter(sources.text(u"DestFolder"));
        const QString path = sources.text(u"FullPath");
        const QString folder = FileFolder(path);
        if (!folder.isEmpty())
            list.add(folder + PathDelimiter(path), false);
        list.add(destination, false);
        if (type == u"folder")
            list.add(withDelimiter(sources.text(u"SourceFolder")), false);
        if (type == u"folder" || type == u"inbox" || type == u"refresh")
            list.add(destination, true);
    }
    return list.folders();
}

/// The first part of the import, done in a project of its own that is thrown away.
std::vector<ImportFolder> rewrittenFolders(const std::shared_ptr<Database>& shared, const QString& ids,
                                           const SharingProgress& progress)
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
    const auto sources = scratch->OpenRecordset(u"SELECT * FROM TempSources"_s);
    auto folders = foldersOf(*sources);
    scratch->Close();
    return folders;
}

} // namespace

Result<ImportPreview> previewImport(const std::shared_ptr<Database>& shared, const QString& ids,
                                    const SharingProgress& progress)
{
    try {
        checkDashboards(*shared, ids, progress);
        checkAlternatePaths(*shared);
        ImportPreview preview;
        preview.panels = checkPanels(*shared, ids, progress);
        preview.sources = checkSources(*shared, ids, progress);
        preview.folders = rewrittenFolders(shared, ids, progress);
        return preview;
    } catch (const PreviewRefusal& refusal) {
        return Failure{refusal.sentence};
    } catch (const RuntimeError& error) {
        return Failure{u"The shared file cannot be imported: "_s + error.description()};
    }
}

} // namespace lumivane
