#pragma once

#include <QColor>
#include <QString>

namespace lumivane {

// Settings of the run that are read everywhere. Each is written by the one named and by nobody else. The open project
// and its records stand beside their classes (gDB, gWorkspace, gSources).

// The options: written by ReadOptions at the start and by frmOptions.
extern QRgb gDashboardColor;      ///< background of the main window
extern bool gPanelTimeStamp;      ///< panel captions show the time of their file
extern qint16 gRefreshFrequency;  ///< minutes between update passes, 0 for every minute
extern QString gCaptionAlignment; ///< "Left" or "Center"; another text counts as "Center"

// The log.
extern QString gLogFile;       ///< path of the log file; written by InitFileLog
extern QString gLogDBFile;     ///< path of the error-log database, may be empty; written by InitDBLog
extern bool gLogToFile;        ///< the log file can be written; written by InitFileLog
extern bool gLogToDB;          ///< the error-log database can be written; written by InitDBLog
extern bool gSuppressMessages; ///< the log procedures show no boxes; written by InitLog

} // namespace lumivane
