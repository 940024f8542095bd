#include "sharing/AltPaths.h"

#include "repository/Database.h"
#include "repository/SqlText.h"
#include "repository/modUtilsSQL.h"
#include "services/modUtilsFile.h"

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

const QString listModule = u"frmAltPaths"_s;
const QString addModule = u"frmAddAltPath"_s;

bool endsInDelimiter(const QString& path)
{
    return path.endsWith(u'\\') || path.endsWith(u'/');
}

/// Whether the text shows by a delimiter which world it comes from.
bool holdsDelimiter(const QString& path)
{
    return path.contains(u'/') || path.contains(u'\\');
}

} // namespace

std::vector<AlternatePath> alternatePaths()
{
    std::vector<AlternatePath> paths;
    std::shared_ptr<Recordset> rows;
    if (!SQL_OpenRecordset(gDB, rows, u"SELECT * FROM LvnAltPaths ORDER BY BasePath"_s, false, listModule,
                           u"FillGrid"_s))
        return paths;
    for (; !rows->EOF_(); rows->MoveNext())
        paths.push_back({rows->text(u"BasePath"), rows->text(u"AltPath")});
    rows->Close();
    return paths;
}

bool deleteAlternatePath(const AlternatePath& pair)
{
    return SQL_Execute(gDB,
                       u"DELETE * FROM LvnAltPaths WHERE BasePath = "_s + doubledLiteral(pair.BasePath) +
                           u" AND AltPath = "_s + doubledLiteral(pair.AltPath),
                       false, listModule, u"cmdDelete_Click"_s);
}

bool SaveAltPaths(const AlternatePath& pair)
{
    return SQL_Execute(gDB,
                       u"INSERT INTO LvnAltPaths (BasePath, AltPath) VALUES ( "_s + doubledLiteral(pair.BasePath) +
                           u", "_s + doubledLiteral(pair.AltPath) + u")"_s,
                       false, addModule, u"SaveAltPaths"_s);
}

QStringList alternateBases()
{
    QStringList paths;
    std::shared_ptr<Recordset> rows;
    if (!SQL_OpenRecordset(gDB, rows,
                           u"SELECT DISTINCT SourceFolder AS Path FROM LvnPanelSource WHERE Len(SourceFolder) > 1"
                           " UNION "
                           " SELECT DISTINCT DestFolder AS Path FROM LvnPanelSource WHERE Len(DestFolder) > 1"
                           " ORDER BY Path"_s,
                           false, addModule, u"Form_Load"_s))
        return paths;
    for (; !rows->EOF_(); rows->MoveNext()) {
        if (!rows->isNull(u"Path"))
            paths.append(rows->text(u"Path"));
    }
    rows->Close();
    return paths;
}

QString alternateLike(const QString& base, const QString& alternate)
{
    if (!endsInDelimiter(base.trimmed()) || endsInDelimiter(alternate.trimmed()))
        return alternate;
    return alternate + (holdsDelimiter(alternate) ? PathDelimiter(alternate) : base.trimmed().right(1));
}

QString rewrittenPath(const QString& path, const QString& base, const QString& alternate)
{
    QString result = path;
    if (base.isEmpty() || !result.contains(base))
        return result;
    result.replace(base, alternate);
    const QString from = PathDelimiter(base), to = PathDelimiter(alternate);
    const bool changesWorld = from != to && holdsDelimiter(base) && holdsDelimiter(alternate);
    return changesWorld ? result.replace(from, to) : result;
}

} // namespace lumivane
