#include "repository/Schema.h"

#include <QStringList>
#include <algorithm>

namespace lumivane {

using namespace Qt::StringLiterals;

QList<QByteArray> projectTables()
{
    return {
        R"(CREATE TABLE LvnSavedWorkspace (
            ID INTEGER PRIMARY KEY AUTOINCREMENT,
            Name TEXT COLLATE NOCASE,
            Description TEXT COLLATE NOCASE,
            LastUpdated TEXT,
            Template TEXT COLLATE NOCASE,
            Selected TEXT COLLATE NOCASE,
            Status TEXT COLLATE NOCASE,
            Comments TEXT COLLATE NOCASE,
            LastViewed TEXT))",
        R"(CREATE TABLE LvnSavedPanel (
            ID INTEGER PRIMARY KEY AUTOINCREMENT,
            WorkspaceID INTEGER,
            SourceID INTEGER,
            Comments TEXT COLLATE NOCASE,
            ContentType TEXT COLLATE NOCASE,
            SheetName TEXT COLLATE NOCASE,
            ViewType TEXT COLLATE NOCASE,
            Caption TEXT COLLATE NOCASE,
            PicRange TEXT COLLATE NOCASE,
            RowHeights TEXT COLLATE NOCASE,
            ColWidths TEXT COLLATE NOCASE,
            RelativeTo TEXT COLLATE NOCASE,
            ContentMatch TEXT COLLATE NOCASE,
            IsCustom TEXT COLLATE NOCASE,
            LastViewed TEXT,
            "Top" INTEGER,
            "Left" INTEGER,
            Height INTEGER,
            Width INTEGER,
            Ndx INTEGER))",
        // Each source and each dashboard looks for its panels; without these every look walks through all of them.
        "CREATE INDEX LvnSavedPanelOfDashboard ON LvnSavedPanel(WorkspaceID)",
        "CREATE INDEX LvnSavedPanelOfSource ON LvnSavedPanel(SourceID)",
        R"(CREATE TABLE LvnPanelSource (
            ID INTEGER PRIMARY KEY AUTOINCREMENT,
            FullPath TEXT COLLATE NOCASE,
            Mask TEXT COLLATE NOCASE,
            DestFolder TEXT COLLATE NOCASE,
            NewestFile TEXT COLLATE NOCASE,
            LastUpdated TEXT,
            LastChecked TEXT,
            CheckEveryNMin INTEGER,
            UpdateType TEXT COLLATE NOCASE,
            SourceFolder TEXT COLLATE NOCASE,
            OutlookFolder TEXT COLLATE NOCASE,
            OutlookSubject TEXT COLLATE NOCASE,
            OutlookSender TEXT COLLATE NOCASE,
            OutlookAttachment TEXT COLLATE NOCASE,
            MacroName TEXT COLLATE NOCASE,
            CmdLine TEXT COLLATE NOCASE,
            AddedParams TEXT COLLATE NOCASE))",
        R"(CREATE TABLE LvnSystem (
            PropertyKey TEXT COLLATE NOCASE,
            PropertyValue TEXT COLLATE NOCASE))",
        R"(CREATE TABLE LvnAltPaths (
            BasePath TEXT COLLATE NOCASE,
            AltPath TEXT COLLATE NOCASE))",
        R"(CREATE TABLE LvnpanelThresholds (
            PanelID INTEGER,
            rowOffset INTEGER,
            colOffset INTEGER,
            highExp TEXT COLLATE NOCASE,
            ifHigh TEXT COLLATE NOCASE,
            lowExp TEXT COLLATE NOCASE,
            ifLow TEXT COLLATE NOCASE))",
        R"(CREATE TABLE LvnDrillback (
            PanelSourceID INTEGER,
            Sheet TEXT COLLATE NOCASE))",
        R"(CREATE TABLE LvnSourceDoc (
            ID INTEGER PRIMARY KEY AUTOINCREMENT,
            Mask TEXT COLLATE NOCASE))",
    };
}

QList<QByteArray> errorLogTables()
{
    return {
        R"(CREATE TABLE TlyS_ErrorLogs (
            ApplicationName TEXT COLLATE NOCASE,
            ModuleName TEXT COLLATE NOCASE,
            ProcedureName TEXT COLLATE NOCASE,
            LogType TEXT COLLATE NOCASE,
            LogTime TEXT,
            LogNumber INTEGER,
            LogDescription TEXT COLLATE NOCASE))",
    };
}

QString importTable()
{
    return u"TempSources"_s;
}

bool isProgramTable(QStringView name)
{
    static const QStringList names{
        u"LvnSavedWorkspace"_s, u"LvnSavedPanel"_s, u"LvnPanelSource"_s, u"LvnSystem"_s,          u"LvnAltPaths"_s,
        u"LvnDrillback"_s,      u"LvnSourceDoc"_s,  u"TlyS_ErrorLogs"_s, u"LvnpanelThresholds"_s, importTable()};
    return std::any_of(names.begin(), names.end(),
                       [name](const QString& known) { return name.compare(known, Qt::CaseInsensitive) == 0; });
}

} // namespace lumivane
