#pragma once

#include <QString>

namespace lumivane {

// The error-log database named by "Log DB" in section "Settings" of the settings file. Several installations may share
// it, so it is opened for each entry and nothing of it is held.

/// Starts the whole log: the file, then the database.
void InitLog(const QString& FileName, bool Reset, bool NoMessages);
/// Looks whether there is such a database and registers LogDBLog with the log; without one, an event line says why.
void InitDBLog();
/// Writes one entry. Failures go to the log file alone.
void LogDBLog(const QString& Module, const QString& Procedure, const QString& LogType, int Number,
              const QString& Description);

} // namespace lumivane
