#include "panel/PictureIdentity.h"

#include "platform/Clock.h"
#include "platform/FileStamp.h"
#include "repository/Database.h"
#include "repository/clsWorkspacePanel.h"
#include "repository/modUtilsSQL.h"

#include <QCryptographicHash>
#include <QFileInfo>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

/// The limits of a panel, a line for each.
QStringList limitsOf(int panelID)
{
    QStringList lines;
    std::shared_ptr<Recordset> rules;
    if (panelID < 1 ||
        !SQL_OpenRecordset(gDB, rules,
                           u"SELECT * FROM LvnpanelThresholds WHERE PanelID = "_s + QString::number(panelID), false,
                           u"clsWorkspacePanel"_s, u"lightCells"_s))
        return lines;
    for (; !rules->EOF_(); rules->MoveNext()) {
        QStringList fields;
        for (const char16_t* column : {u"rowOffset", u"colOffset", u"highExp", u"ifHigh", u"lowExp", u"ifLow"})
            fields.append(rules->text(column));
        lines.append(fields.join(u'\t'));
    }
    return lines;
}

} // namespace

FileVersion FileVersion::of(const QString& path)
{
    const FileStamp stamp = FileStamp::of(path);
    return {path, stamp.size, stamp.modified};
}

QDateTime FileVersion::time() const
{
    return size < 0 ? QDateTime() : wholeSeconds(QDateTime::fromMSecsSinceEpoch(modified / 1'000'000));
}

QString projectIdentity()
{
    return gDB && gDB->isOpen() ? QFileInfo(gDB->Name()).canonicalFilePath() : QString();
}

QString definitionDigest(const clsWorkspacePanel& panel)
{
    // "M" is drawn like "S", and becomes it when it has been drawn.
    QStringList parts{panel.ContentType == u"M" ? u"S"_s : panel.ContentType,
                      panel.IsCustom,
                      panel.SheetName,
                      panel.PicRange,
                      panel.RowHeights,
                      panel.ColWidths,
                      panel.RelativeTo,
                      panel.ContentMatch};
    parts += limitsOf(panel.ID);
    return QString::fromLatin1(
        QCryptographicHash::hash(parts.join(u'\n').toUtf8(), QCryptographicHash::Sha256).toHex());
}

} // namespace lumivane
