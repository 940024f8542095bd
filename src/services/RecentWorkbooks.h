#pragma once

#include <QStringList>

namespace lumivane {

// The workbooks opened last, newest first, kept in section "Session" of the settings file.

QStringList recentWorkbooks();
/// Puts a workbook in front. A path that the settings file cannot hold is left out.
void rememberWorkbook(const QString& path);
void forgetWorkbook(const QString& path);

} // namespace lumivane
