#pragma once

#include <QColor>
#include <QString>

namespace lumivane {

// The session's settings: one a process, reachable from everywhere, each written by the owner named and by nobody else.
// The open project and its records stand beside their classes (gDB, gWorkspace, gSources).

extern QRgb gDashboardColor;      ///< background of the main window
extern bool gPanelTimeStamp;      ///< panel captions show the time of their file
extern qint16 gRefreshFrequency;  ///< minutes between update passes
extern QString gCaptionAlignment; ///< "Left" or "Center"
extern QString gLogFile;          ///< written by InitFileLog
extern QString gLogDBFile;        ///< written by InitDBLog
extern bool gLogToFile;           ///< written by InitFileLog
extern bool gLogToDB;             ///< written by InitDBLog
extern bool gSuppressMessages;    ///< the log procedures show no boxes; written by InitLog

} // namespace lumivane
