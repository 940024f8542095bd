#include "services/modMain.h"

namespace lumivane {

using namespace Qt::StringLiterals;

QRgb gDashboardColor = 0xFFFFFF;
bool gPanelTimeStamp = true;
qint16 gRefreshFrequency = 10;
QString gCaptionAlignment = u"Center"_s;
QString gLogFile;
QString gLogDBFile;
bool gLogToFile = false;
bool gLogToDB = false;
bool gSuppressMessages = false;

} // namespace lumivane
