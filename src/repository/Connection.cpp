#include "repository/Connection.h"

#include "platform/Clock.h"
#include "repository/Dialect.h"
#include "repository/Schema.h"

#include <QDateTime>
#include <QFile>
#include <QStringList>
#include <algorithm>
#include <cstring>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

constexpr int deadlineInterval = 100'000; // steps of SQLite's machine, about a millisecond

bool isAllowedFunction(const char* name)
{
    static const char* const allowed[] = {"Len", "Left", "Right", "Mid",   "UCase", "LCase", "Nz",
                                          "Now", "IIf",  "like",  "count", "max",   "min",   "sum",
                                          "avg", "trim", "abs",   "instr", "ltrim", "rtrim"};
    return std::any_of(std::begin(allowed), std::end(allowed),
                       [name](const char* known) { return qstricmp(name, known) == 0; });
}

/// Whatever a statement turns out to do: the program's own tables may be read and changed, nothing else.
int authorizeStatement(void* data, int action, const char* first, const char* second, const char*, const char*)
{
    if (static_cast<const Database::Connection*>(data)->unrestricted)
        return SQLITE_OK;
    switch (action) {
    case SQLITE_SELECT:
        return SQLITE_OK;
    case SQLITE_FUNCTION:
        return isAllowedFunction(second) ? SQLITE_OK : SQLITE_DENY;
    case SQLITE_READ:
    case SQLITE_INSERT:
    case SQLITE_UPDATE:
    case SQLITE_DELETE:
        return isProgramTable(QString::fromUtf8(first)) ? SQLITE_OK : SQLITE_DENY;
    default:
        return SQLITE_DENY;
    }
}

/// A statement into which a hostile text found its way must not hold the program up.
int giveUpAfterDeadline(void* data)
{
    const auto* connection = static_cast<const Database::Connection*>(data);
    return !connection->unrestricted && connection->deadline.hasExpired();
}

RuntimeError failureOf(int code, const QString& fileName, const QString& details)
{
    const QString file = u"["_s + fileName + u"]"_s;
    switch (code & 0xFF) {
    case SQLITE_NOTADB:
        return {NotAProject, file + u" is not a project file."_s};
    case SQLITE_CORRUPT:
        return {NotAProject, file + u" is damaged and cannot be used further. Go back to a copy of it."_s};
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return {FileInUse, file + u" is in use by another program. Wait until that has finished, or close it, and try "
                                  "again."_s};
    case SQLITE_FULL:
        return {DiskFull, u"The disk is full: "_s + file + u" could not be changed. Make room and try again."_s};
    case SQLITE_READONLY:
    case SQLITE_PERM:
        return {FileProtected, file + u" is write-protected. Remove the protection of the file and its folder."_s};
    case SQLITE_CANTOPEN:
        return {FileProtected,
                file + u" or a file beside it cannot be opened. Check that you may write to its folder."_s};
    case SQLITE_IOERR:
        return {FileProtected, file + u" cannot be read or written ("_s + details +
                                   u"). Check the disk or network folder it lies on."_s};
    case SQLITE_AUTH:
        return {NotAllowed, u"The statement does what the program never does: "_s + details + u"."_s};
    case SQLITE_INTERRUPT:
        return {StatementFailed, u"The statement takes too long and was given up; "_s + file + u" is as it was."_s};
    case SQLITE_TOOBIG:
        return {StatementFailed, u"A text or statement for "_s + file + u" is too long."_s};
    default:
        return {StatementFailed, details};
    }
}

} // namespace

Database::Connection::Connection(const QString& file, Trust trust, int openFlags) : fileName(file)
{
    // An absolute path, or a name beginning with "file:" would be taken for an address with options.
    const int opened =
        sqlite3_open_v2(QFile::encodeName(file).constData(), &handle, openFlags | SQLITE_OPEN_EXRESCODE, nullptr);
    if (opened != SQLITE_OK) {
        const RuntimeError failure = failureOf(opened, file, QString::fromUtf8(sqlite3_errmsg(handle)));
        sqlite3_close_v2(handle);
        throw failure;
    }
    // No file is so much our own that its triggers, views or schema should run code.
    for (const auto& [option, on] : {std::pair{SQLITE_DBCONFIG_DEFENSIVE, 1},
                                     {SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0},
                                     {SQLITE_DBCONFIG_ENABLE_TRIGGER, 0},
                                     {SQLITE_DBCONFIG_ENABLE_VIEW, 0},
                                     {SQLITE_DBCONFIG_DQS_DML, 0},
                                     {SQLITE_DBCONFIG_DQS_DDL, 0}})
        sqlite3_db_config(handle, option, on, nullptr);
    const bool isStranger = trust == Trust::Stranger;
    sqlite3_limit(handle, SQLITE_LIMIT_LENGTH, isStranger ? 1 << 20 : 1 << 24);
    sqlite3_limit(handle, SQLITE_LIMIT_SQL_LENGTH, 1 << 22);
    sqlite3_limit(handle, SQLITE_LIMIT_COLUMN, 200);
    sqlite3_limit(handle, SQLITE_LIMIT_ATTACHED, 0);
    registerFunctions(handle);
    sqlite3_set_authorizer(handle, authorizeStatement, this);
    sqlite3_progress_handler(handle, deadlineInterval, giveUpAfterDeadline, this);
}

Database::Connection::~Connection()
{
    sqlite3_close_v2(handle);
}

void Database::Connection::runOwn(const QByteArray& sql)
{
    const UnrestrictedScope scope(*this);
    check(sqlite3_exec(handle, sql.constData(), nullptr, nullptr, nullptr));
}

qint64 Database::Connection::ownNumber(const QByteArray& sql)
{
    const UnrestrictedScope scope(*this);
    SqliteStatement statement(*this, sql);
    return statement.step() ? sqlite3_column_int64(statement.get(), 0) : 0;
}

void Database::Connection::fail(int code) const
{
    throw failureOf(code, fileName, QString::fromUtf8(sqlite3_errmsg(handle)));
}

SqliteStatement::SqliteStatement(Database::Connection& connection, const QByteArray& sql) : m_connection(connection)
{
    connection.deadline.setRemainingTime(connection.statementLimit);
    const char* tail = nullptr;
    connection.check(sqlite3_prepare_v2(connection.handle, sql.constData(), int(sql.size()), &m_statement, &tail));
}

void SqliteStatement::bind(int parameter, const QVariant& value)
{
    int code = SQLITE_OK;
    const bool isDate = value.typeId() == QMetaType::QDateTime;
    if (!value.isValid() || (isDate && !value.toDateTime().isValid())) {
        code = sqlite3_bind_null(m_statement, parameter);
    } else if (value.typeId() == QMetaType::Double || value.typeId() == QMetaType::Float) {
        code = sqlite3_bind_double(m_statement, parameter, value.toDouble());
    } else if (value.typeId() == QMetaType::QString || isDate) {
        const QByteArray text = (isDate ? dateText(value.toDateTime()) : value.toString()).toUtf8();
        code = sqlite3_bind_text64(m_statement, parameter, text.constData(), sqlite3_uint64(text.size()),
                                   SQLITE_TRANSIENT, SQLITE_UTF8);
    } else if (value.typeId() == QMetaType::QByteArray) {
        const QByteArray bytes = value.toByteArray();
        code = sqlite3_bind_blob64(m_statement, parameter, bytes.constData(), sqlite3_uint64(bytes.size()),
                                   SQLITE_TRANSIENT);
    } else if (value.canConvert<qint64>()) {
        code = sqlite3_bind_int64(m_statement, parameter, value.toLongLong());
    } else {
        throw RuntimeError(RuntimeError::TypeMismatch);
    }
    m_connection.check(code);
}

bool SqliteStatement::step()
{
    const int code = sqlite3_step(m_statement);
    if (code != SQLITE_ROW && code != SQLITE_DONE)
        m_connection.fail(code);
    return code == SQLITE_ROW;
}

void SqliteStatement::reset()
{
    sqlite3_reset(m_statement);
}

QString SqliteStatement::columnName(int column) const
{
    return QString::fromUtf8(sqlite3_column_name(m_statement, column));
}

QString SqliteStatement::onlyTable() const
{
    const char* table = columnCount() > 0 ? sqlite3_column_table_name(m_statement, 0) : nullptr;
    for (int column = 1; table && column < columnCount(); ++column) {
        const char* other = sqlite3_column_table_name(m_statement, column);
        if (!other || std::strcmp(table, other) != 0)
            table = nullptr;
    }
    return QString::fromUtf8(table);
}

Row SqliteStatement::row() const
{
    Row values;
    values.reserve(columnCount());
    for (int column = 0; column < columnCount(); ++column) {
        switch (sqlite3_column_type(m_statement, column)) {
        case SQLITE_INTEGER:
            values.append(qint64(sqlite3_column_int64(m_statement, column)));
            break;
        case SQLITE_FLOAT:
            values.append(sqlite3_column_double(m_statement, column));
            break;
        case SQLITE_TEXT: {
            const void* text = sqlite3_column_text(m_statement, column);
            values.append(QString::fromUtf8(static_cast<const char*>(text), sqlite3_column_bytes(m_statement, column)));
            break;
        }
        case SQLITE_BLOB: {
            const auto* bytes = static_cast<const char*>(sqlite3_column_blob(m_statement, column));
            values.append(QByteArray(bytes, sqlite3_column_bytes(m_statement, column)));
            break;
        }
        default:
            values.append(QVariant());
        }
    }
    return values;
}

} // namespace lumivane
