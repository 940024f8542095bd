#include "platform/Clock.h"
#include "repository/Dialect.h"
#include "repository/RecordsetRows.h"

#include <cmath>
#include <limits>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

qsizetype columnNamed(const QStringList& names, QAnyStringView name)
{
    const QString wanted = name.toString();
    for (qsizetype column = 0; column < names.size(); ++column) {
        if (names[column].compare(wanted, Qt::CaseInsensitive) == 0)
            return column;
    }
    throw RuntimeError(ItemNotFound, u"The rows have no column ["_s + wanted + u"]."_s);
}

RuntimeError columnMismatch(QAnyStringView name)
{
    return {RuntimeError::TypeMismatch, u"Type mismatch in column ["_s + name.toString() + u"]"_s};
}

/// Writes the values that are set as a new row and gives the row as the store then has it.
Row insertRow(Database::Connection& file, const QString& table, const QStringList& origins, const Row& values)
{
    const UnrestrictedScope scope(file);
    QByteArray columns, places, all;
    for (qsizetype column = 0; column < origins.size(); ++column) {
        all += (column > 0 ? ", " : "") + quotedIdentifier(origins[column]);
        if (!values[column].isValid())
            continue;
        columns += (columns.isEmpty() ? "" : ", ") + quotedIdentifier(origins[column]);
        places += places.isEmpty() ? "?" : ", ?";
    }
    const QByteArray into = "INSERT INTO " + quotedIdentifier(table);
    SqliteStatement insert(file, columns.isEmpty() ? QByteArray(into + " DEFAULT VALUES")
                                                   : QByteArray(into + " (" + columns + ") VALUES (" + places + ")"));
    int parameter = 0;
    for (const QVariant& value : values) {
        if (value.isValid())
            insert.bind(++parameter, value);
    }
    insert.step();
    SqliteStatement read(file, "SELECT " + all + " FROM " + quotedIdentifier(table) + " WHERE rowid = ?");
    read.bind(1, qint64(sqlite3_last_insert_rowid(file.handle)));
    return read.step() ? read.row() : values;
}

} // namespace

Recordset::Recordset(std::unique_ptr<Rows> rows) : m_rows(std::move(rows)) {}

Recordset::~Recordset() = default;

bool Recordset::EOF_() const
{
    return !m_rows || m_rows->position >= m_rows->rows.size();
}

void Recordset::MoveNext()
{
    if (EOF_())
        throw RuntimeError(NoCurrentRecord, u"There is no present row."_s);
    ++m_rows->position;
}

void Recordset::Close()
{
    m_rows.reset();
}

const QVariant& Recordset::value(QAnyStringView name) const
{
    if (!m_rows)
        throw RuntimeError(ObjectClosed, u"The rows have been closed."_s);
    const qsizetype column = columnNamed(m_rows->names, name);
    if (EOF_())
        throw RuntimeError(NoCurrentRecord, u"There is no present row."_s);
    return m_rows->rows[m_rows->position][column];
}

QVariant Recordset::Field(QAnyStringView name) const
{
    return value(name);
}

bool Recordset::isNull(QAnyStringView name) const
{
    return !value(name).isValid();
}

QString Recordset::text(QAnyStringView name) const
{
    return value(name).toString();
}

qint64 Recordset::number(QAnyStringView name) const
{
    const QVariant& found = value(name);
    if (!found.isValid())
        throw RuntimeError(RuntimeError::InvalidUseOfNull,
                           u"Invalid use of Null in column ["_s + name.toString() + u"]"_s);
    if (found.typeId() == QMetaType::LongLong)
        return found.toLongLong();
    bool isNumber = false;
    const double rounded = std::nearbyint(found.toDouble(&isNumber));
    if (!isNumber || std::isnan(rounded))
        throw columnMismatch(name);
    if (std::abs(rounded) > 9e15)
        throw RuntimeError(RuntimeError::Overflow);
    return qint64(rounded);
}

qint32 Recordset::number32(QAnyStringView name) const
{
    const qint64 found = number(name);
    if (found < std::numeric_limits<qint32>::min() || found > std::numeric_limits<qint32>::max())
        throw RuntimeError(RuntimeError::Overflow);
    return qint32(found);
}

QDateTime Recordset::date(QAnyStringView name) const
{
    const QVariant& found = value(name);
    if (!found.isValid())
        return {};
    QDateTime time = dateFromText(storedDate(found.toString()));
    if (!time.isValid())
        throw columnMismatch(name);
    return time;
}

void Recordset::read(QAnyStringView name, QString& field) const
{
    if (!isNull(name))
        field = text(name);
}

void Recordset::read(QAnyStringView name, QDateTime& field) const
{
    if (!isNull(name))
        field = date(name);
}

QStringList Recordset::fieldNames() const
{
    return m_rows ? m_rows->names : QStringList();
}

int Recordset::rowCount() const
{
    return m_rows ? int(m_rows->rows.size()) : 0;
}

void Recordset::AddNew()
{
    if (!m_rows || m_rows->connection.expired())
        throw RuntimeError(ObjectClosed, u"The rows have been closed."_s);
    if (m_rows->table.isEmpty())
        throw RuntimeError(NotAllowed,
                           u"Rows of this query cannot be added: its columns are not those of one table."_s);
    m_rows->added = Row(m_rows->names.size());
}

void Recordset::setField(QAnyStringView name, const QVariant& newValue)
{
    if (!m_rows || !m_rows->added)
        throw RuntimeError(NoCurrentRecord, u"There is no new row to take a value."_s);
    (*m_rows->added)[columnNamed(m_rows->names, name)] = newValue;
}

void Recordset::Update()
{
    if (!m_rows || !m_rows->added)
        throw RuntimeError(NoCurrentRecord, u"There is no new row to be written."_s);
    const std::shared_ptr<Database::Connection> file = m_rows->connection.lock();
    if (!file)
        throw RuntimeError(ObjectClosed, u"The project file has been closed."_s);
    m_rows->rows.append(insertRow(*file, m_rows->table, m_rows->origins, *m_rows->added));
    m_rows->added.reset();
    m_rows->lastModified = m_rows->rows.size() - 1;
}

qint64 Recordset::LastModified() const
{
    if (!m_rows || m_rows->lastModified < 0)
        throw RuntimeError(NoCurrentRecord, u"No row has been written."_s);
    return m_rows->lastModified;
}

qint64 Recordset::Bookmark() const
{
    if (EOF_())
        throw RuntimeError(NoCurrentRecord, u"There is no present row."_s);
    return m_rows->position;
}

void Recordset::setBookmark(qint64 bookmark)
{
    if (bookmark < 0 || bookmark >= rowCount())
        throw RuntimeError(NoCurrentRecord, u"No row has this bookmark."_s);
    m_rows->position = qsizetype(bookmark);
}

} // namespace lumivane
