#pragma once

#include <QString>
#include <memory>

namespace lumivane {

class Database;
class Recordset;

// The only way to a database. Each procedure traps its failure, logs it under "UtilsSQL" and its own name with the
// caller and the statement in the text, shows it if ShowError says so, and answers false with the object unchanged.

bool SQL_OpenDatabase(std::shared_ptr<Database>& Database, const QString& DBName, const QString& Connect,
                      bool ShowError, const QString& CallerModule, const QString& CallerProc);
/// The same for a file that came from someone else, logged under the same name.
bool SQL_OpenSharedFile(std::shared_ptr<Database>& Database, const QString& DBName, const QString& Connect,
                        bool ShowError, const QString& CallerModule, const QString& CallerProc);
/// The same for the error-log database, which must not hold the program up while another one writes into it.
bool SQL_OpenLogDatabase(std::shared_ptr<Database>& Database, const QString& DBName, const QString& Connect,
                         const QString& CallerModule, const QString& CallerProc);
bool SQL_Execute(const std::shared_ptr<Database>& Database, const QString& SQL, bool ShowError,
                 const QString& CallerModule, const QString& CallerProc);
/// The same for a statement that changes one row: one that meets no row fails too, since what it should have kept is
/// lost. `Noun` says what the row is, as "panel".
bool SQL_ExecuteOnRow(const std::shared_ptr<Database>& Database, const QString& SQL, const QString& Noun,
                      const QString& CallerModule, const QString& CallerProc);
void SQL_CloseDatabase(std::shared_ptr<Database>& Database, bool ShowError, const QString& CallerModule,
                       const QString& CallerProc);
bool SQL_OpenRecordset(const std::shared_ptr<Database>& Database, std::shared_ptr<Recordset>& Recordset,
                       const QString& SQL, bool ShowError, const QString& CallerModule, const QString& CallerProc);
/// The id that a new row of a table was given, as ids are kept: in 16 bits. A row with a higher one is deleted again,
/// since no program could load it and what stands with it; then throws RuntimeError 6. `Noun` as above.
qint16 SQL_KeepNewID(const std::shared_ptr<Database>& Database, const QString& Table, const QString& Noun, qint64 ID,
                     const QString& CallerModule, const QString& CallerProc);
/// Whether the last of these procedures failed because of the file (in use, protected, damaged, closed, no room), so
/// that the next statement would wait as long and fail as well.
bool SQL_FileFailed();

} // namespace lumivane
