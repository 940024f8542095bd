#pragma once

#include <QString>
#include <functional>

namespace lumivane {

// The log: a text file beside the program, of which a line is on disk when the call returns, and behind it an optional
// database that several installations share. A failure to log is never shown and never logged into the database.

void LogEvent(const QString& Module, const QString& Procedure, const QString& Text, bool ShowMessage);
void LogError(const QString& Module, const QString& Procedure, int Number, const QString& Description,
              bool ShowMessage);
/// The box of LogError alone, where the entry says more than its user needs.
void ShowError(const QString& Module, const QString& Procedure, int Number, const QString& Description);

/// The file alone.
void WriteEventLine(const QString& Module, const QString& Procedure, const QString& Text);
void WriteErrorLine(const QString& Source, int Number, const QString& Description);

QString GetLogFile();
/// Starts the log file, anew if `Reset`; one of 1000001 bytes or more is put aside first. A file that cannot be
/// written leaves gLogToFile False, and the run goes on without it.
void InitFileLog(const QString& FileName, bool Reset);

/// Who writes an entry to the error-log database. The store registers itself here, since it lies above the log and
/// logs its own failures; none is set until it does.
using DatabaseLog = std::function<void(const QString& Module, const QString& Procedure, const QString& LogType,
                                       int Number, const QString& Description)>;
void setDatabaseLog(DatabaseLog writer);

} // namespace lumivane
