#include "platform/ApplicationInfo.h"
#include "platform/Checked.h"
#include "platform/RuntimeError.h"
#include "repository/Database.h"
#include "repository/SqlText.h"
#include "repository/modUtilsSQL.h"
#include "services/modMain.h"
#include "services/modUtilsINI.h"
#include "services/modUtilsLog.h"
#include "session/Startup.h"

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

const QString& optionsSection()
{
    static const QString name = u"Options"_s;
    return name;
}

/// The settings file has a colour as one number with red in its lowest byte, as older files do.
QRgb colorOfSetting(qint32 number)
{
    const quint32 bits = quint32(number);
    return qRgb(int(bits & 0xFF), int(bits >> 8 & 0xFF), int(bits >> 16 & 0xFF)) & 0xFFFFFF;
}

qint32 settingOfColor(QRgb color)
{
    return qRed(color) | qGreen(color) << 8 | qBlue(color) << 16;
}

qint16 minutesIn(const QString& file, const QString& key, qint16 otherwise)
{
    try {
        const qint16 minutes = toInt16(GetIniInt(file, optionsSection(), key, otherwise));
        if (minutes >= 0)
            return minutes;
        LogEvent(
            u"Main"_s, u"ReadOptions"_s,
            u"%1 in section [%2] of %3 is negative. %4 minutes are taken instead."_s.arg(key, optionsSection(), file)
                .arg(otherwise),
            false);
        return otherwise;
    } catch (const RuntimeError& error) {
        throw RuntimeError(error.number(), u"%1 in section [%2] of %3 cannot be used. %4"_s.arg(
                                               key, optionsSection(), file, error.description()));
    }
}

bool changeSystemSettings(const QString& sql, const QString& procedure)
{
    return SQL_Execute(gDB, sql, true, u"Main"_s, procedure);
}

} // namespace

bool GetOptionsSettings()
{
    const QString file = GetIniFile();
    if (ReadOptions(file, true) || ReadOptions(file, false))
        return true;
    LogEvent(u"Main"_s, u"GetOptionsSettings"_s,
             u"INI File ["_s + file + u"] contains invalid settings.  Unable to continue loading "_s +
                 applicationTitle() + u" until this has been corrected."_s,
             true);
    return false;
}

bool ReadOptions(const QString& File, bool)
{
    setLargeSheets(GetIniInt(File, u"Settings"_s, u"Large Sheets"_s, 0) != 0);
    gDashboardColor = colorOfSetting(GetIniInt(File, optionsSection(), u"Dashboard Color"_s, 0xFFFFFF));
    gPanelTimeStamp = GetIniInt(File, optionsSection(), u"Panel Time Stamp"_s, -1) != 0;
    gRefreshFrequency = minutesIn(File, u"Refresh Frequency"_s, 10);
    gCaptionAlignment = GetIniString(File, optionsSection(), u"Caption Alignment"_s, u"Center"_s);
    return true;
}

void SaveOptions()
{
    const auto save = [file = GetIniFile()](const QString& key, const QString& value) {
        SetIniString(file, optionsSection(), key, value);
    };
    save(u"Dashboard Color"_s, QString::number(settingOfColor(gDashboardColor)));
    save(u"Panel Time Stamp"_s, gPanelTimeStamp ? u"-1"_s : u"0"_s);
    save(u"Refresh Frequency"_s, QString::number(gRefreshFrequency));
    save(u"Caption Alignment"_s, gCaptionAlignment);
}

QString GetSystemSettings(const QString& Key)
{
    std::shared_ptr<Recordset> rs;
    const QString sql = u"SELECT PropertyValue FROM LvnSystem WHERE PropertyKey = "_s + textLiteral(Key);
    if (!SQL_OpenRecordset(gDB, rs, sql, true, u"Main"_s, u"GetSystemSettings"_s) || rs->EOF_())
        return {};
    return rs->text(u"PropertyValue");
}

bool SaveSystemSettings(const QString& Key, const QString& Value)
{
    return changeSystemSettings(u"INSERT INTO LvnSystem (PropertyKey, PropertyValue) VALUES ("_s + textLiteral(Key) +
                                    u","_s + textLiteral(Value) + u")"_s,
                                u"SaveSystemSettings"_s);
}

bool DeleteSystemSettings(const QString& Key)
{
    return changeSystemSettings(u"DELETE * FROM LvnSystem WHERE PropertyKey = "_s + textLiteral(Key),
                                u"DeleteSystemSettings"_s);
}

} // namespace lumivane
