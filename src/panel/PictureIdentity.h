#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

namespace lumivane {

class clsWorkspacePanel;

/// A file as it was when a picture was made from it.
struct FileVersion
{
    QString path;
    qint64 size = -1;    ///< below 0: none
    qint64 modified = 0; ///< nanoseconds since 1970

    static FileVersion of(const QString& path);
    QDateTime time() const; ///< as stored times are; invalid for none
    bool operator==(const FileVersion&) const = default;
};

/// What a picture shows. Pictures are kept under the number of their panel alone, in a folder that all projects of an
/// installation share, and other installations may open the same project: only this says whether a picture is the
/// panel's.
struct PictureIdentity
{
    QString project; ///< file of the project
    /// Digests of the definitions that it shows: that of the panel on the screen and, where an adjustment has moved the
    /// stored one on, that one too.
    QStringList definitions;
    FileVersion version; ///< the panel's workbook
    FileVersion copy;    ///< the personal copy that a custom panel is drawn from
    QString range;       ///< where the rule found the range; the name of a chart

    bool operator==(const PictureIdentity&) const = default;
};

/// The file of the open project, the same by whichever way it was opened.
QString projectIdentity();
/// Digest of all that decides what a panel shows of a given file: content, range, rule, sizes and limits.
QString definitionDigest(const clsWorkspacePanel& panel);

} // namespace lumivane
