#pragma once

#include <QString>

namespace lumivane {

// The settings file beside the program. One key is read or written in place: other sections, unknown keys, comments and
// their order stay byte by byte.

QString GetIniFile();
QString GetIniString(const QString& File, const QString& Section, const QString& Key, const QString& Default);
qint32 GetIniInt(const QString& File, const QString& Section, const QString& Key, qint32 Default);
void SetIniString(const QString& File, const QString& Section, const QString& Key, const QString& Value);

} // namespace lumivane
