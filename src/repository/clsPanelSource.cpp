#include "repository/clsPanelSource.h"

#include "platform/ApplicationInfo.h"
#include "platform/Checked.h"
#include "platform/Clock.h"
#include "platform/RuntimeError.h"
#include "repository/Database.h"
#include "repository/SqlText.h"
#include "repository/modUtilsSQL.h"
#include "services/ProgramFiles.h"
#include "services/modUtilsFile.h"

#include <QFile>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

const QString& sourceModule()
{
    static const QString name = u"clsPanelSource"_s;
    return name;
}

std::shared_ptr<Recordset> openForSource(const std::shared_ptr<Database>& database, const QString& sql,
                                         const QString& procedure)
{
    std::shared_ptr<Recordset> rs;
    SQL_OpenRecordset(database, rs, sql, true, sourceModule(), procedure);
    return rs;
}

} // namespace

bool clsPanelSource::LoadFromDB(int SourceID, const std::shared_ptr<Database>& DB)
{
    const auto rs = openForSource(DB, u"SELECT * FROM LvnPanelSource"_s + u" WHERE ID = "_s + blankedNumber(SourceID),
                                  u"LoadFromDB"_s);
    if (!rs || rs->EOF_() || !LoadFromRecSet(rs))
        return false;
    chkHasCustom(SourceID, DB);
    return true;
}

bool clsPanelSource::LoadFromRecSet(const std::shared_ptr<Recordset>& rs)
{
    ID = toInt16(double(rs->number(u"ID")));
    rs->read(u"FullPath", FullPath);
    rs->read(u"Mask", Mask);
    rs->read(u"DestFolder", DestFolder);
    // An empty folder becomes the delimiter alone, and is written back so.
    DestFolder = withDelimiter(DestFolder);
    rs->read(u"NewestFile", NewestFile);
    rs->read(u"LastUpdated", LastUpdated);
    rs->read(u"LastChecked", LastChecked);
    if (!rs->isNull(u"checkEveryNmin"))
        CheckEvery = rs->number32(u"checkEveryNmin");
    rs->read(u"UpdateType", UpdateType);
    rs->read(u"SourceFolder", SourceFolder);
    SourceFolder = withDelimiter(SourceFolder);
    rs->read(u"outlookFolder", OLFolder);
    rs->read(u"outlookSubject", OLSubject);
    rs->read(u"outlookSender", OLSender);
    rs->read(u"outlookAttachment", OLAttach);
    rs->read(u"MacroName", Macro);
    rs->read(u"CmdLine", CmdLine);
    rs->read(u"AddedParams", AddedParams);
    return true;
}

bool clsPanelSource::chkHasCustom(int SourceID, const std::shared_ptr<Database>& DB)
{
    const auto rs = openForSource(DB,
                                  u"SELECT * FROM LvnSavedPanel"_s + u" WHERE sourceID = "_s + blankedNumber(SourceID) +
                                      u" and isCustom = 'Y'"_s,
                                  u"chkHasCustom"_s);
    if (rs && !rs->EOF_())
        HasCustom = true;
    return HasCustom;
}

bool clsPanelSource::SaveToDB(const std::shared_ptr<Database>& DB)
{
    return ID < 1 ? InsertDB(DB) : UpdateDB(DB);
}

bool clsPanelSource::InsertDB(const std::shared_ptr<Database>& DB)
{
    const auto text = [](const QString& value) { return QString(u" "_s + textLiteral(value) + u", "_s); };
    // Both dates take the present time: what the fields hold lives until the sources are loaded again.
    const QString now = u" "_s + instantLiteral(Clock::now()) + u", "_s;
    const QString sql = u"INSERT INTO LvnPanelSource(FullPath, Mask, DestFolder, NewestFile,"_s +
                        u" LastUpdated, LastChecked, CheckEveryNMin, UpdateType, SourceFolder,"_s +
                        u" OutlookFolder, OutlookSubject, OutlookSender, OutlookAttachment,"_s +
                        u" MacroName, CmdLine, AddedParams)"_s + u" VALUES ("_s + text(FullPath) + text(Mask) +
                        text(DestFolder) + text(NewestFile) + now + now + blankedNumber(CheckEvery) + u","_s +
                        text(UpdateType) + text(SourceFolder) + text(OLFolder) + u" "_s + doubledLiteral(OLSubject) +
                        u", "_s + text(OLSender) + text(OLAttach) + text(Macro) + text(CmdLine) + u" "_s +
                        textLiteral(AddedParams) + u")"_s;
    if (!SQL_Execute(DB, sql, true, sourceModule(), u"InsertDB"_s))
        return false;
    // The last id is the one just given, whatever other source has this path.
    SQL_KeepNewID(DB, u"LvnPanelSource"_s, u"source"_s, DB->lastIdOf(u"LvnPanelSource"_s), sourceModule(),
                  u"InsertDB"_s);
    ID = toInt16(double(GetID(DB, FullPath)));
    return ID > 0;
}

qint32 clsPanelSource::GetID(const std::shared_ptr<Database>& DB, const QString& path)
{
    const auto rs = openForSource(
        DB, u"SELECT ID FROM LvnPanelSource"_s + u" WHERE FullPath = "_s + doubledLiteral(path), u"GetID"_s);
    // Paths that differ by case alone are equal to the store, and may be two files: the row made last is the one.
    qint32 found = 0;
    for (; rs && !rs->EOF_(); rs->MoveNext())
        found = qMax(found, rs->number32(u"ID"));
    return found;
}

bool clsPanelSource::UpdateDB(const std::shared_ptr<Database>& DB)
{
    const auto assigned = [](const QString& column, const QString& text) {
        return QString(u" "_s + column + u" = "_s + textLiteral(text) + u", "_s);
    };
    const QString sql = u"UPDATE LvnPanelSource SET "_s + assigned(u"Mask"_s, Mask) + u" CheckEveryNMin = "_s +
                        blankedNumber(CheckEvery) + u","_s + assigned(u"UpdateType"_s, UpdateType) +
                        assigned(u"FullPath"_s, FullPath) + assigned(u"SourceFolder"_s, SourceFolder) +
                        assigned(u"DestFolder"_s, DestFolder) + assigned(u"OutlookFolder"_s, OLFolder) +
                        u" OutlookSubject = "_s + doubledLiteral(OLSubject) + u", "_s +
                        assigned(u"OutlookSender"_s, OLSender) + assigned(u"OutlookAttachment"_s, OLAttach) +
                        assigned(u"MacroName"_s, Macro) + assigned(u"CmdLine"_s, CmdLine) + u" AddedParams = "_s +
                        textLiteral(AddedParams) + u" WHERE ID = "_s + blankedNumber(ID);
    return SQL_ExecuteOnRow(DB, sql, u"source [%1]"_s.arg(FullPath), sourceModule(), u"UpdateDB"_s);
}

bool clsPanelSource::DelFromDB(const std::shared_ptr<Database>& DB, int SourceID)
{
    return SQL_Execute(DB, u"DELETE * FROM LvnPanelSource"_s + u" WHERE ID = "_s + blankedNumber(SourceID), true,
                       sourceModule(), u"DelFromDB"_s);
}

void clsPanelSource::ClearSource()
{
    for (QString* text : {&FullPath, &Mask, &DestFolder, &NewestFile, &SourceFolder, &OLFolder, &OLSubject, &OLSender,
                          &OLAttach, &Macro, &CmdLine, &AddedParams})
        text->clear();
    LastUpdated = LastChecked = localTime(QDate(2008, 1, 1), QTime(0, 0));
    CheckEvery = 0;
    UpdateType = u"NA"_s;
}

void clsPanelSource::ClearFlags()
{
    IsUpdated = false;
    IsChecked = false;
}

QString clsPanelSource::currentPath() const
{
    if (!NewestFile.isEmpty())
        return DestFolder + NewestFile;
    return ownsFullPath() ? FullPath : QString();
}

bool clsPanelSource::ownsFullPath() const
{
    return !NewestFile.isEmpty() || Mask.isEmpty() || FitsMask(FullPath, Mask);
}

void clsPanelSource::ClearBMPs(const std::shared_ptr<Database>& DB)
{
    const auto rs = openForSource(DB, u"SELECT ID FROM LvnSavedPanel"_s + u" WHERE SourceID = "_s + blankedNumber(ID),
                                  u"ClearBMPs"_s);
    QString kept;
    for (; rs && !rs->EOF_(); rs->MoveNext()) {
        const QString picture = panelPictureFile(int(rs->number(u"ID")));
        if (FileExists(picture) && !QFile::remove(picture) && kept.isEmpty())
            kept = picture;
    }
    if (!kept.isEmpty())
        throw RuntimeError(RuntimeError::PathAccess, u"The former picture [%1] cannot be removed. Please remove the "
                                                     "write protection of the file and its folder."_s.arg(kept));
}

} // namespace lumivane
