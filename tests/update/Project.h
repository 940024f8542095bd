#pragma once

#include "repository/ProjectFile.h"
#include "repository/clsWorkspacePanel.h"
#include "services/ProgramFiles.h"
#include "services/modUtilsFile.h"
#include "support/LogCapture.h"
#include "support/PlainSheet.h"
#include "support/TextTable.h"
#include "update/Stillness.h"

#include <QDir>

namespace lumivane::test {

/// A project with one source, folders to fetch from and to adopt in, and a fixed time: 24 November 2026, 10:30:00.
class ProjectWithSource : public ProjectFile
{
protected:
    ProjectWithSource()
    {
        for (const QString& name : {from, to})
            QDir().mkdir(name);
        setHostFactory(library.factory());
        setPause([](int) {});
        Clock::setFixed(at(QStringLiteral("10:30:00")));
        source.FullPath = to + QStringLiteral("Sales.xlsx");
        source.Mask = QStringLiteral("Sales.xlsx");
        source.SourceFolder = from;
        source.DestFolder = to;
        source.UpdateType = QStringLiteral("folder");
        source.CheckEvery = 60;
        source.LastUpdated = source.LastChecked = at(QStringLiteral("08:00:00"));
    }
    ~ProjectWithSource() override
    {
        setHostFactory({});
        setPause({});
    }

    /// A time of that day.
    static QDateTime at(const QString& time) { return {QDate(2026, 11, 24), QTime::fromString(time, Qt::ISODate)}; }

    static QString put(const QString& path, const QDateTime& time, const QByteArray& bytes = "workbook")
    {
        write(path, bytes);
        EXPECT_EQ(AdjustFileTime(path, time), -1);
        return path;
    }

    static QStringList namesIn(const QString& folderPath)
    {
        return QDir(folderPath).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    /// Stores the source as it is now.
    void store() { ASSERT_TRUE(source.SaveToDB(db)); }

    clsPanelSource stored()
    {
        clsPanelSource again;
        EXPECT_TRUE(again.LoadFromDB(source.ID, db));
        return again;
    }

    /// Stores a panel of the source on dashboard 1, with a cached picture.
    clsWorkspacePanel panel(const QString& relativeTo, const QString& picRange, const QString& contentMatch = QString(),
                            const QString& sheet = QStringLiteral("Data"))
    {
        clsWorkspacePanel result;
        result.SourceID = source.ID;
        result.ContentType = QStringLiteral("S");
        result.SheetName = sheet;
        result.RelativeTo = relativeTo;
        result.PicRange = picRange;
        result.ContentMatch = contentMatch;
        EXPECT_TRUE(result.SaveToDB(db, 1));
        put(panelPictureFile(result.ID), at(QStringLiteral("08:00:00")));
        return result;
    }

    clsWorkspacePanel storedPanel(int panelID)
    {
        clsWorkspacePanel again;
        EXPECT_TRUE(again.LoadFromDB(panelID, db));
        return again;
    }
    QString storedRange(int panelID) { return storedPanel(panelID).PicRange; }

    /// Stores a panel that goes with the last cell, H40 at present.
    clsWorkspacePanel follower(const QString& sheet = QStringLiteral("Data"))
    {
        return panel(QStringLiteral("bottom"), QStringLiteral("$B$5:$F$20``"), QStringLiteral("bottom=$H$40"), sheet);
    }
    /// The source adopts what lies in its folder, and a file of this time lies there. Answers its path.
    QString adoptHere(const QString& time)
    {
        source.UpdateType = QStringLiteral("default");
        return put(to + QStringLiteral("Sales.xlsx"), at(time));
    }

    const QString from = path(QStringLiteral("from/"));
    const QString to = path(QStringLiteral("to/"));
    LogCapture log;
    PlainLibrary library;
    clsPanelSource source;
};

} // namespace lumivane::test
