#pragma once

#include "repository/Database.h"

#include <QByteArray>
#include <QDeadlineTimer>
#include <QList>
#include <chrono>
#include <sqlite3.h>

namespace lumivane {

using Row = QList<QVariant>;

/// A prepared statement; ended when it goes out of scope.
class SqliteStatement
{
public:
    /// Throws RuntimeError for a statement that cannot be prepared. `sql` is one statement.
    SqliteStatement(Database::Connection& connection, const QByteArray& sql);
    ~SqliteStatement() { sqlite3_finalize(m_statement); }
    Q_DISABLE_COPY_MOVE(SqliteStatement)

    sqlite3_stmt* get() const { return m_statement; }
    void bind(int parameter, const QVariant& value); ///< from 1
    bool step();                                     ///< true while there is a row
    void reset();
    int columnCount() const { return sqlite3_column_count(m_statement); }
    QString columnName(int column) const;
    /// The table that all columns come from unchanged; empty when there is none.
    QString onlyTable() const;
    Row row() const;

private:
    Database::Connection& m_connection;
    sqlite3_stmt* m_statement = nullptr;
};

/// The file behind a Database: what of SQLite is on and off for it, and its failures in the words of the user.
struct Database::Connection
{
    Connection(const QString& fileName, Trust trust, int openFlags);
    ~Connection();
    Q_DISABLE_COPY_MOVE(Connection)

    /// Runs statements of our own, which are not held to what the dialect may do.
    void runOwn(const QByteArray& sql);
    qint64 ownNumber(const QByteArray& sql);

    /// Throws the failure `code` of this connection in plain words.
    [[noreturn]] void fail(int code) const;
    void check(int code) const
    {
        if (code != SQLITE_OK)
            fail(code);
    }

    sqlite3* handle = nullptr;
    QString fileName;
    bool unrestricted = false; ///< statements of our own are running
    std::chrono::milliseconds statementLimit = std::chrono::seconds(20);
    QDeadlineTimer deadline{QDeadlineTimer::Forever}; ///< of the statement that is running
};

/// Lifts the restrictions of the dialect while it lives.
class UnrestrictedScope
{
public:
    explicit UnrestrictedScope(Database::Connection& connection)
        : m_connection(connection), m_before(connection.unrestricted)
    {
        connection.unrestricted = true;
    }
    ~UnrestrictedScope() { m_connection.unrestricted = m_before; }
    Q_DISABLE_COPY_MOVE(UnrestrictedScope)

private:
    Database::Connection& m_connection;
    bool m_before;
};

/// Gives the connection the functions of the dialect, its LIKE, and its NOCASE, which knows more than ASCII.
void registerFunctions(sqlite3* handle);

} // namespace lumivane
