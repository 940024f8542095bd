#pragma once

#include "platform/ApplicationInfo.h"
#include "platform/Clock.h"
#include "repository/Database.h"
#include "repository/clsPanelSource.h"
#include "repository/clsWorkspacePanel.h"
#include "session/ProgramFiles.h"
#include "session/modMain.h"
#include "session/modUtilsFile.h"
#include "support/LogCapture.h"
#include "support/PlainSheet.h"
#include "support/ScriptedPrompts.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace lumivane::test {

/// A project with one source, folders to fetch from and to adopt in, and a fixed time: 24 November 2026, 10:30:00.
class ProjectWithSource : public testing::Test
{
protected:
    ProjectWithSource()
    {
        for (const auto name : {"program", "from", "to"})
            QDir(folder.path()).mkdir(QLatin1StringView(name));
        setProgramFolder(folder.filePath(QStringLiteral("program")));
        setPrompts(&prompts);
        setHostFactory(library.factory());
        Clock::setFixed(at("10:30:00"));
        const QString file = folder.filePath(QStringLiteral("program/project.lvdu"));
        Database::create(file);
        DB = Database::open(file, databaseConnect());

        source.FullPath = to + QStringLiteral("Sales.xlsx");
        source.Mask = QStringLiteral("Sales.xlsx");
        source.SourceFolder = from;
        source.DestFolder = to;
        source.UpdateType = QStringLiteral("folder");
        source.CheckEvery = 60;
        source.LastUpdated = source.LastChecked = at("08:00:00");
    }

    ~ProjectWithSource() override
    {
        Clock::setFixed({});
        setHostFactory({});
        setPrompts(nullptr);
        setProgramFolder({});
    }

    /// A time of that day.
    static QDateTime at(const char* time)
    {
        return {QDate(2026, 11, 24), QTime::fromString(QLatin1StringView(time), Qt::ISODate)};
    }

    static QString put(const QString& path, const QDateTime& time, const QByteArray& bytes = "workbook")
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
        file.write(bytes);
        file.close();
        EXPECT_EQ(AdjustFileTime(path, time), -1);
        return path;
    }

    static QStringList namesIn(const QString& folderPath)
    {
        return QDir(folderPath).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    /// Stores the source as it is now.
    void store() { ASSERT_TRUE(source.SaveToDB(DB)); }

    clsPanelSource stored()
    {
        clsPanelSource again;
        EXPECT_TRUE(again.LoadFromDB(source.ID, DB));
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
        EXPECT_TRUE(result.SaveToDB(DB, 1));
        put(panelPictureFile(result.ID), at("08:00:00"));
        return result;
    }

    clsWorkspacePanel storedPanel(int panelID)
    {
        clsWorkspacePanel again;
        EXPECT_TRUE(again.LoadFromDB(panelID, DB));
        return again;
    }
    QString storedRange(int panelID) { return storedPanel(panelID).PicRange; }

    QTemporaryDir folder;
    const QString from = folder.filePath(QStringLiteral("from/"));
    const QString to = folder.filePath(QStringLiteral("to/"));
    ScriptedPrompts prompts;
    LogCapture log;
    PlainLibrary library;
    std::shared_ptr<Database> DB;
    clsPanelSource source;
};

} // namespace lumivane::test
