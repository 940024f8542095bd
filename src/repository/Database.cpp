#include "repository/Database.h"

#include "repository/Connection.h"
#include "repository/Dialect.h"
#include "repository/RecordsetRows.h"
#include "repository/Schema.h"
#include "repository/StrangerSchema.h"

#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

namespace lumivane {

std::shared_ptr<Database> gDB;

using namespace Qt::StringLiterals;

namespace {

constexpr quint32 applicationMark = 0x4C76'6475; // "Lvdu"
constexpr qsizetype mostRows = 200'000;

/// What a file opened by this connect text bears in its header beside the program's own mark (FNV-1a).
qint32 connectMark(const QString& connect)
{
    quint32 hash = 2166136261u;
    for (const char byte : connect.toUtf8())
        hash = (hash ^ quint8(byte)) * 16777619u;
    return qint32(hash);
}

QByteArray markStatements(const QString& connect)
{
    return "PRAGMA application_id = " + QByteArray::number(applicationMark) +
           "; PRAGMA user_version = " + QByteArray::number(connectMark(connect)) + ';';
}

QString absolutePath(const QString& fileName)
{
    return QFileInfo(fileName).absoluteFilePath();
}

/// A hidden name beside the file that is to be made: half-made files are not met under the real one.
QString temporaryNameFor(const QString& fileName)
{
    const QFileInfo info(fileName);
    const quint32 random = QRandomGenerator::global()->generate();
    return info.absolutePath() + u"/."_s + info.fileName() + u'.' + QString::number(random, 16);
}

void refuseExisting(const QString& fileName)
{
    if (QFileInfo::exists(fileName))
        throw RuntimeError(RuntimeError::PathAccess,
                           u"["_s + fileName + u"] exists already. Choose another name, or remove that file."_s);
}

void giveFinalName(const QString& temporary, const QString& fileName)
{
    if (QFile::rename(temporary, fileName))
        return;
    QFile::remove(temporary);
    refuseExisting(fileName);
    throw RuntimeError(RuntimeError::PathAccess, u"["_s + fileName + u"] cannot be made in its folder."_s);
}

void checkMark(Database::Connection& file, const QString& connect)
{
    if (file.ownNumber("PRAGMA application_id") != applicationMark)
        throw RuntimeError(NotAProject, u"["_s + file.fileName + u"] is not a project file."_s);
    if (file.ownNumber("PRAGMA user_version") != connectMark(connect))
        throw RuntimeError(NotAProject, u"["_s + file.fileName + u"] cannot be opened with this password."_s);
}

void checkSound(Database::Connection& file)
{
    const UnrestrictedScope scope(file);
    SqliteStatement check(file, "PRAGMA quick_check(1)");
    if (!check.step() || check.row().value(0).toString() != u"ok"_s)
        file.fail(SQLITE_CORRUPT);
}

bool holdsProject(Database::Connection& file)
{
    return file.ownNumber("SELECT count(*) FROM sqlite_schema WHERE name = 'LvnSavedWorkspace'") > 0;
}

void prepareFile(Database::Connection& file, const QString& connect, Database::Trust trust)
{
    checkMark(file, connect);
    if (trust == Database::Trust::Own && sqlite3_db_readonly(file.handle, "main") != 0)
        file.fail(SQLITE_READONLY);
    // First of all, as what it refuses would be evaluated by the other checks.
    if (trust == Database::Trust::Stranger)
        refuseForeignSchema(file);
    // An error-log database is opened for each entry, and grows: it is not walked through every time.
    if (trust == Database::Trust::Stranger || holdsProject(file))
        checkSound(file);
    // One file to copy and mail, and a statement that has returned is on the disk.
    file.runOwn("PRAGMA journal_mode = DELETE; PRAGMA synchronous = FULL; PRAGMA secure_delete = ON;"
                "PRAGMA cell_size_check = ON; PRAGMA temp_store = MEMORY;");
}

/// SQLite may have done so already where it could not go on.
void rollBack(Database::Connection& file)
{
    const UnrestrictedScope scope(file);
    sqlite3_exec(file.handle, "ROLLBACK", nullptr, nullptr, nullptr);
}

SqliteStatement prepared(Database::Connection& connection, const QString& statement, const Translation& translation)
{
    try {
        return SqliteStatement(connection, translation.sql);
    } catch (const RuntimeError& error) {
        const qsizetype place = translation.placeInStatement(sqlite3_error_offset(connection.handle));
        if (error.number() == StatementFailed && place > 0)
            refuseStatement(statement, place - 1, error.description());
        throw;
    }
}

QList<Row> readRows(SqliteStatement& statement)
{
    QList<Row> rows;
    while (statement.step()) {
        if (rows.size() >= mostRows)
            throw RuntimeError(StatementFailed,
                               u"The query gives more than %1 rows, which no project has."_s.arg(mostRows));
        rows.append(statement.row());
    }
    return rows;
}

/// Type and case rule of a column as a definition of our own: what a stranger's file says of its columns is looked at,
/// never copied.
QByteArray columnDefinition(Database::Connection& file, const SqliteStatement& query, int column)
{
    const QByteArray name = quotedIdentifier(query.columnName(column));
    const char* table = sqlite3_column_table_name(query.get(), column);
    const char* origin = sqlite3_column_origin_name(query.get(), column);
    const char *type = nullptr, *collation = nullptr;
    if (!table || !origin ||
        sqlite3_table_column_metadata(file.handle, "main", table, origin, &type, &collation, nullptr, nullptr,
                                      nullptr) != SQLITE_OK)
        return name;
    const QByteArray declared = QByteArray(type).toUpper();
    QByteArray definition = name;
    if (declared.contains("INT"))
        definition += " INTEGER";
    else if (declared.contains("TEXT") || declared.contains("CHAR"))
        definition += " TEXT";
    else if (declared.contains("REAL") || declared.contains("DOUB"))
        definition += " REAL";
    return qstricmp(collation, "NOCASE") == 0 ? QByteArray(definition + " COLLATE NOCASE") : definition;
}

/// Makes the import table with its rows; all of it or nothing.
void makeImportTable(Database::Connection& target, const QByteArray& columns, int columnCount, const QList<Row>& rows)
{
    const UnrestrictedScope scope(target);
    const QByteArray table = quotedIdentifier(importTable());
    target.runOwn("BEGIN IMMEDIATE");
    try {
        if (target.ownNumber("SELECT count(*) FROM sqlite_schema WHERE name = 'TempSources' COLLATE NOCASE") > 0)
            throw RuntimeError(TableExists, u"The table ["_s + importTable() + u"] is there already in ["_s +
                                                target.fileName + u"]."_s);
        target.runOwn("CREATE TABLE " + table + " (" + columns + ")");
        SqliteStatement insert(target, "INSERT INTO " + table + " VALUES (" +
                                           QByteArray("?,").repeated(columnCount).chopped(1) + ")");
        for (const Row& row : rows) {
            for (int column = 0; column < columnCount; ++column)
                insert.bind(column + 1, row[column]);
            insert.step();
            insert.reset();
        }
        target.runOwn("COMMIT");
    } catch (...) {
        rollBack(target);
        throw;
    }
}

} // namespace

QString databaseConnect()
{
    return u"MS Access;pwd=Dogs274"_s;
}

Database::Database(std::shared_ptr<Connection> connection) : m_connection(std::move(connection)) {}

Database::~Database() = default;

std::shared_ptr<Database> Database::open(const QString& fileName, const QString& connect, Trust trust,
                                         std::chrono::milliseconds patience)
{
    const QString path = absolutePath(fileName);
    if (!QFileInfo(path).isFile())
        throw RuntimeError(FileMissing, u"["_s + path + u"] does not exist."_s);
    auto connection = std::make_shared<Connection>(path, trust, SQLITE_OPEN_READWRITE);
    sqlite3_busy_timeout(connection->handle, int(patience.count()));
    prepareFile(*connection, connect, trust);
    return std::shared_ptr<Database>(new Database(std::move(connection)));
}

void Database::create(const QString& fileName, Content content)
{
    const QString path = absolutePath(fileName);
    refuseExisting(path);
    const QString temporary = temporaryNameFor(path);
    try {
        Connection file(temporary, Trust::Own, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
        file.runOwn("BEGIN");
        for (const QByteArray& table : content == Content::Project ? projectTables() : errorLogTables())
            file.runOwn(table);
        file.runOwn(markStatements(databaseConnect()) + "COMMIT");
    } catch (...) {
        QFile::remove(temporary);
        throw;
    }
    giveFinalName(temporary, path);
}

QString Database::Name() const
{
    return connection().fileName;
}

int Database::Execute(const QString& sql)
{
    const Translation translation = translateStatement(sql);
    Connection& file = connection();
    switch (translation.kind) {
    case Translation::Kind::Query:
        refuseStatement(sql, 0, u"a query gives rows and changes nothing"_s);
    case Translation::Kind::CopyInto:
        return copyInto(sql, translation);
    case Translation::Kind::DropTable:
        if (translation.table.compare(importTable(), Qt::CaseInsensitive) != 0)
            throw RuntimeError(NotAllowed, u"The table ["_s + translation.table + u"] cannot be dropped."_s);
        file.runOwn("DROP TABLE " + quotedIdentifier(translation.table));
        return 0;
    case Translation::Kind::Change:
        break;
    }
    SqliteStatement statement = prepared(file, sql, translation);
    statement.step();
    return sqlite3_changes(file.handle);
}

int Database::copyInto(const QString& sql, const Translation& translation)
{
    if (translation.table.compare(importTable(), Qt::CaseInsensitive) != 0)
        throw RuntimeError(NotAllowed, u"The table ["_s + translation.table + u"] cannot be made."_s);
    Connection& file = connection();
    QByteArray columns;
    int columnCount = 0;
    QList<Row> rows;
    {
        // Read to the end before anything is written: both files may be one.
        SqliteStatement query = prepared(file, sql, translation);
        columnCount = query.columnCount();
        for (int column = 0; column < columnCount; ++column)
            columns += (column > 0 ? ", " : "") + columnDefinition(file, query, column);
        rows = readRows(query);
    }
    const std::shared_ptr<Database> target = open(translation.fileName, databaseConnect());
    makeImportTable(target->connection(), columns, columnCount, rows);
    return int(rows.size());
}

std::shared_ptr<Recordset> Database::OpenRecordset(const QString& sql)
{
    const Translation translation = translateStatement(sql);
    if (translation.kind != Translation::Kind::Query)
        refuseStatement(sql, 0, u"only a query gives rows"_s);
    Connection& file = connection();
    SqliteStatement query = prepared(file, sql, translation);
    auto rows = std::make_unique<Recordset::Rows>();
    rows->connection = m_connection;
    rows->table = query.onlyTable();
    for (int column = 0; column < query.columnCount(); ++column) {
        rows->names.append(query.columnName(column));
        rows->origins.append(QString::fromUtf8(sqlite3_column_origin_name(query.get(), column)));
    }
    rows->rows = readRows(query);
    return std::shared_ptr<Recordset>(new Recordset(std::move(rows)));
}

void Database::Close()
{
    connection();
    m_connection.reset();
}

bool Database::isOpen() const
{
    return m_connection != nullptr;
}

void Database::copyTo(const QString& fileName)
{
    const QString path = absolutePath(fileName);
    refuseExisting(path);
    const QString temporary = temporaryNameFor(path);
    Connection& file = connection();
    // The copy is attached while it is made.
    sqlite3_limit(file.handle, SQLITE_LIMIT_ATTACHED, 1);
    try {
        const UnrestrictedScope scope(file);
        SqliteStatement copy(file, "VACUUM INTO ?");
        copy.bind(1, temporary);
        copy.step();
    } catch (...) {
        sqlite3_limit(file.handle, SQLITE_LIMIT_ATTACHED, 0);
        QFile::remove(temporary);
        throw;
    }
    sqlite3_limit(file.handle, SQLITE_LIMIT_ATTACHED, 0);
    giveFinalName(temporary, path);
}

QStringList Database::TableNames() const
{
    Connection& file = connection();
    const UnrestrictedScope scope(file);
    SqliteStatement tables(file, "SELECT name FROM sqlite_schema WHERE type = 'table' AND name NOT LIKE 'sqlite[_]*'");
    QStringList names;
    while (tables.step())
        names.append(tables.row().value(0).toString());
    return names;
}

qint64 Database::lastIdOf(const QString& table) const
{
    Connection& file = connection();
    const UnrestrictedScope scope(file);
    SqliteStatement last(file, "SELECT seq FROM sqlite_sequence WHERE name = '" + table.toUtf8() + "'");
    return last.step() ? last.row().value(0).toLongLong() : 0;
}

Database::Bulk::Bulk(Database& database) : m_file(database.m_connection)
{
    // One within another is part of the outer one.
    if (!m_file || !sqlite3_get_autocommit(m_file->handle))
        m_file.reset();
    else
        m_file->runOwn("BEGIN IMMEDIATE");
}

Database::Bulk::~Bulk()
{
    try {
        finish();
    } catch (const RuntimeError&) {
        // The file stays as it was before the bulk; whoever needs to know calls finish.
    }
}

void Database::Bulk::finish()
{
    const std::shared_ptr<Connection> file = std::move(m_file);
    m_file.reset();
    if (!file || !file->handle)
        return;
    // SQLite ends it by itself where it cannot go on.
    if (sqlite3_get_autocommit(file->handle))
        throw RuntimeError(StatementFailed, u"["_s + file->fileName +
                                                u"] stays as it was, since one of its changes "
                                                "could not be made. The log says which."_s);
    try {
        file->runOwn("COMMIT");
    } catch (const RuntimeError&) {
        rollBack(*file);
        throw;
    }
}

void Database::Bulk::takeBack()
{
    const std::shared_ptr<Connection> file = std::move(m_file);
    m_file.reset();
    if (file && file->handle)
        rollBack(*file);
}

Database::Connection& Database::connection() const
{
    if (!m_connection)
        throw RuntimeError(ObjectClosed, u"The project file has been closed."_s);
    return *m_connection;
}

} // namespace lumivane
