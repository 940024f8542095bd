#include "panel/PictureIdentity.h"

#include "platform/Clock.h"
#include "platform/FileStamp.h"
#include "repository/Database.h"
#include "repository/clsWorkspacePanel.h"
#include "thresholds/ThresholdRules.h"

#include <QCryptographicHash>
#include <QFileInfo>

namespace lumivane {

using namespace Qt::StringLiterals;

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
    parts += thresholdLines(panel.ID);
    return QString::fromLatin1(
        QCryptographicHash::hash(parts.join(u'\n').toUtf8(), QCryptographicHash::Sha256).toHex());
}

} // namespace lumivane
