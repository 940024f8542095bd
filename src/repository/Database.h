#pragma once

#include "platform/RuntimeError.h"

#include <QDateTime>
#include <QString>
#include <QVariant>
#include <memory>

namespace lumivane {

class Recordset;

/// An open project file, shared file or error-log database, which is SQLite behind the statements of the program's own
/// dialect (see Dialect.h). Every statement stands alone and is durable when the call returns.
/// All members throw RuntimeError with a sentence that names the file or the place in the statement.
class Database
{
public:
    /// How far the content of a file is trusted.
    enum class Trust {
        Own,      ///< a file of this installation
        Stranger, ///< a file that came from someone else: checked first, read-only schema, no triggers, no views
    };

    /// Opens an existing file for reading and writing. Refuses a missing file, one that is no database, one without
    /// the program's mark (wrong password) and a damaged one.
    static std::shared_ptr<Database> open(const QString& fileName, const QString& connect, Trust trust = Trust::Own);
    /// Makes a new, empty project file with all tables; refuses to overwrite.
    static void create(const QString& fileName);
    ~Database();

    QString Name() const; ///< absolute path of the file
    /// Runs one statement that gives no rows. Returns the number of rows changed.
    int Execute(const QString& sql);
    /// Runs one query; its rows are read before this returns.
    std::shared_ptr<Recordset> OpenRecordset(const QString& sql);
    void Close();
    bool isOpen() const;
    /// A consistent copy of the whole file while it is open; `fileName` must not exist.
    void copyTo(const QString& fileName);

    struct Connection;

private:
    Database();
    std::unique_ptr<Connection> m_connection;
};

/// The connect text that every database of the program is opened with.
QString databaseConnect();

/// The rows of a query, all read when it was opened. Positioned on the first row; EOF at once when there is none.
class Recordset
{
public:
    ~Recordset();
    bool EOF_() const; ///< no row at the position (the name `EOF` is a macro of the C library)
    void MoveNext();
    void Close();

    /// The value of a column of the present row; null is an invalid QVariant. Column names ignore case; an unknown one
    /// throws.
    QVariant Field(QAnyStringView name) const;
    bool isNull(QAnyStringView name) const;
    QString text(QAnyStringView name) const;     ///< null reads as empty
    qint64 number(QAnyStringView name) const;    ///< null throws RuntimeError 94 (invalid use of null)
    QDateTime date(QAnyStringView name) const;
    QStringList fieldNames() const;
    int rowCount() const;

    /// A new row that takes the values set by setField until Update writes it.
    void AddNew();
    void setField(QAnyStringView name, const QVariant& value);
    void Update();
    /// The row written last, to be addressed by `setBookmark`.
    qint64 LastModified() const;
    qint64 Bookmark() const;
    void setBookmark(qint64 bookmark);

private:
    friend class Database;
    Recordset();
    struct Rows;
    std::unique_ptr<Rows> m_rows;
};

} // namespace lumivane
