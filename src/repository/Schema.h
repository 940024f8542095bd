#pragma once

#include <QByteArray>
#include <QList>
#include <QStringView>

namespace lumivane {

// The tables of the program's files. Text columns compare without regard to case; dates are texts in the form of
// dateText, which sorts by time.

QList<QByteArray> projectTables();  ///< statements that make the tables of a project or shared file, and their indexes
QList<QByteArray> errorLogTables(); ///< the same for an error-log database

/// The one table that is made and dropped at run time, by an import.
QString importTable();
/// Whether the program has business with a table of this name; others in a file are left alone.
bool isProgramTable(QStringView name);

} // namespace lumivane
