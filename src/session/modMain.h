#pragma once

#include <QColor>
#include <QString>
#include <memory>

namespace lumivane {

class Database;
class clsWorkspace;
class clsSources; // repository/clsPanelSource.h
class Prompts;

// The session: one a process, reachable from everywhere, each written by the owner named and by nobody else.

extern std::shared_ptr<Database> gDB;            ///< the open project; written by InitStandard and frmLogin
extern std::shared_ptr<clsWorkspace> gWorkspace; ///< the dashboard on screen; written by frmWorkspace
extern std::shared_ptr<clsSources> gSources;     ///< every source of the project; written by frmWorkspace
extern QRgb gDashboardColor;                     ///< background of the main window
extern bool gPanelTimeStamp;                     ///< panel captions show the time of their file
extern qint16 gRefreshFrequency;                 ///< minutes between update passes
extern QString gCaptionAlignment;                ///< "Left" or "Center"
extern QString gLogFile;                         ///< written by InitFileLog
extern QString gLogDBFile;                       ///< written by InitDBLog
extern bool gLogToFile;                          ///< written by InitFileLog
extern bool gLogToDB;                            ///< written by InitDBLog
extern bool gSuppressMessages;                   ///< the log procedures show no boxes; written by InitLog

/// Who talks to the user for this session; set once by the program's main function, by tests to a scripted answerer.
/// While none is set, nothing is shown and every question is answered No or with nothing.
void setPrompts(Prompts* prompts);
Prompts& prompts();

} // namespace lumivane
