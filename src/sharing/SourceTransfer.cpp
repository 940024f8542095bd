#include "sharing/SourceTransfer.h"

#include "repository/Database.h"
#include "repository/Dialect.h"
#include "repository/SqlText.h"
#include "repository/modUtilsSQL.h"
#include "services/modUtilsFile.h"
#include "services/modUtilsLog.h"
#include "sharing/AltPaths.h"

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

const QString transferModule = u"frmImport"_s;
const QString transferProcedure = u"ImportSources"_s;
/// Alternate paths between two signs of life.
constexpr int pairsAStep = 10;

bool isUsable(const AlternatePath& pair)
{
    return !FolderExists(pair.BasePath) && FolderExists(pair.AltPath);
}

/// An alternate may have been given the delimiter of its base, of which this machine's folders know nothing.
QString inItsWorld(QString alternate)
{
    if (alternate.endsWith(u'\\') && PathDelimiter(alternate) == u"/")
        alternate.back() = u'/';
    return alternate;
}

bool isUnder(const QString& path, const QString& base)
{
    try {
        return matchesLikePattern(path, QString(base + u'*'));
    } catch (const RuntimeError&) {
        return false;
    }
}

/// The value that all paths under a base end with. Each of them in turn, rewritten, is written to all that are still
/// under the base; so it is the first that leads away from the base, or else the last.
QString pathForAll(Recordset& paths, const QString& column, const AlternatePath& pair)
{
    QString last;
    for (; !paths.EOF_(); paths.MoveNext()) {
        const QString path = rewrittenPath(paths.text(column), pair.BasePath, pair.AltPath);
        if (!staysOneText(path)) {
            LogEvent(transferModule, transferProcedure,
                     u"The path ["_s + path + u"] holds an apostrophe and cannot be written."_s, false);
            continue;
        }
        last = path;
        if (!isUnder(path, pair.BasePath))
            break;
    }
    return last;
}

void rewriteColumn(const std::shared_ptr<Database>& project, const QString& column, const AlternatePath& pair)
{
    const QString where = u" WHERE "_s + column + u" LIKE "_s + textLiteral(pair.BasePath + u'*');
    std::shared_ptr<Recordset> paths;
    if (!SQL_OpenRecordset(project, paths, u"SELECT "_s + column + u" FROM TempSources "_s + where, false,
                           transferModule, transferProcedure))
        return;
    const QString path = pathForAll(*paths, column, pair);
    paths->Close();
    if (!path.isEmpty())
        SQL_Execute(project, u"UPDATE TempSources SET "_s + column + u" = "_s + textLiteral(path) + where, false,
                    transferModule, transferProcedure);
}

} // namespace

QString sourceIdentity(Recordset& row)
{
    QStringList parts;
    for (const char16_t* column : {u"UpdateType", u"Mask", u"DestFolder"}) {
        if (row.isNull(QStringView(column)))
            throw RuntimeError(RuntimeError::InvalidUseOfNull);
        parts.append(row.text(QStringView(column)));
    }
    QString identity = parts.join(QChar(u'\0'));
    for (QChar& c : identity)
        c = c.toCaseFolded();
    return identity;
}

QHash<QString, qint64> knownSources(Recordset& target)
{
    QHash<QString, qint64> known;
    for (; !target.EOF_(); target.MoveNext()) {
        if (target.isNull(u"UpdateType") || target.isNull(u"Mask") || target.isNull(u"DestFolder"))
            continue;
        const QString identity = sourceIdentity(target);
        if (!known.contains(identity))
            known.insert(identity, target.number(u"ID"));
    }
    return known;
}

void DelTempSources(const std::shared_ptr<Database>& project)
{
    try {
        const QStringList tables = project->TableNames();
        // The first table is never looked at.
        for (qsizetype index = tables.size() - 1; index >= 1; --index) {
            if (tables[index].compare(u"TempSources"_s, Qt::CaseInsensitive) == 0) {
                project->Execute(u"DROP TABLE TempSources"_s);
                return;
            }
        }
    } catch (const RuntimeError& error) {
        LogError(transferModule, u"DelTemps"_s, error.number(), error.description(), false);
    }
}

bool makeTempSources(const std::shared_ptr<Database>& shared, const std::shared_ptr<Database>& project,
                     const QString& ids)
{
    return SQL_Execute(shared,
                       u"SELECT 0 AS NewID, * INTO TempSources IN "_s + textLiteral(project->Name()) +
                           u" FROM LvnPanelSource WHERE ID IN ( SELECT DISTINCT SourceID FROM LvnSavedPanel"
                           " WHERE WorkspaceID IN ("_s +
                           ids + u"))"_s,
                       false, transferModule, transferProcedure);
}

void rewritePaths(const std::shared_ptr<Database>& shared, const std::shared_ptr<Database>& project,
                  const SharingProgress& progress)
{
    std::shared_ptr<Recordset> pairs;
    if (!SQL_OpenRecordset(shared, pairs, u"SELECT * FROM LvnAltPaths ORDER BY Len(BasePath) DESC"_s, false,
                           transferModule, transferProcedure))
        return;
    for (int done = 1; !pairs->EOF_(); pairs->MoveNext(), ++done) {
        if (progress && done % pairsAStep == 0 && !progress(done, pairs->rowCount()))
            break;
        if (pairs->isNull(u"BasePath"))
            continue;
        const AlternatePath pair{pairs->text(u"BasePath"), inItsWorld(pairs->text(u"AltPath"))};
        if (!staysOneText(pair.BasePath)) {
            LogEvent(transferModule, transferProcedure,
                     u"The base path ["_s + pair.BasePath + u"] holds an apostrophe and cannot be looked for."_s,
                     false);
            continue;
        }
        if (!isUsable(pair))
            continue;
        for (const QString& column : {u"FullPath"_s, u"DestFolder"_s, u"SourceFolder"_s})
            rewriteColumn(project, column, pair);
    }
    pairs->Close();
}

} // namespace lumivane
