#pragma once

#include "platform/RuntimeError.h"

#include <QAnyStringView>
#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <chrono>
#include <memory>

namespace lumivane {

class Recordset;

/// An open project file, shared file or error-log database, which is SQLite behind the statements of the program's own
/// dialect (see Dialect.h). Every statement stands alone and is durable when the call returns.
/// The file is one of the program's when it bears the program's mark, which is derived from the connect text: that
/// keeps foreign files out, and is no secrecy. Its tables compare texts without regard to case, in every script.
/// All members throw RuntimeError with a sentence that names the file or the place in the statement.
class Database
{
public:
    /// How far the content of a file is trusted.
    enum class Trust {
        Own,      ///< a file of this installation
        Stranger, ///< a file that came from someone else: checked throughout first, shorter texts, may be read-only
    };
    /// What an empty file is made for.
    enum class Content { Project, ErrorLog };

    static constexpr std::chrono::milliseconds usualPatience = std::chrono::seconds(5);

    /// Opens an existing file for reading and writing. Refuses a missing file, one that is no database, one without
    /// the program's mark (wrong password) and a damaged one.
    /// Waits for other programs that are writing up to `patience`, now and at each statement.
    static std::shared_ptr<Database> open(const QString& fileName, const QString& connect, Trust trust = Trust::Own,
                                          std::chrono::milliseconds patience = usualPatience);
    /// Makes a new, empty file with all tables; refuses to overwrite. The file appears complete or not at all.
    static void create(const QString& fileName, Content content = Content::Project);
    ~Database();

    QString Name() const; ///< absolute path of the file
    /// Runs one statement that gives no rows. Returns the number of rows changed. `SELECT ... INTO t IN 'file'` makes
    /// the table in another file of the program, which may be open, all of it or nothing.
    int Execute(const QString& sql);
    /// Runs one query; its rows are read before this returns.
    std::shared_ptr<Recordset> OpenRecordset(const QString& sql);
    void Close();
    bool isOpen() const;
    /// A consistent copy of the whole file while it is open; `fileName` must not exist.
    void copyTo(const QString& fileName);

    QStringList TableNames() const; ///< in the order of their making
    /// The highest ID that a table of the program has ever given out, 0 when none. IDs are not given twice.
    qint64 lastIdOf(const QString& table) const;

    struct Connection;

    /// While it lives, the statements on a database reach the disk together, which is faster by far for thousands of
    /// them. Each still stands for itself: a failing one undoes no other. What has been done is kept when it ends; a
    /// killed process or a full disk leaves the file as it was before. No `INTO ... IN` this file meanwhile.
    class Bulk
    {
    public:
        explicit Bulk(Database& database);
        ~Bulk();
        Q_DISABLE_COPY_MOVE(Bulk)
        /// Ends it now; throws RuntimeError when nothing of it could be kept.
        void finish();
        /// Ends it now and leaves the file as it was before. Nothing happens within another bulk, which decides.
        void takeBack();

    private:
        std::shared_ptr<Connection> m_file;
    };

private:
    explicit Database(std::shared_ptr<Connection> connection);
    Connection& connection() const; ///< throws when closed
    int copyInto(const QString& sql, const struct Translation& translation);

    std::shared_ptr<Connection> m_connection;

    friend struct DatabaseProbe; // tests shorten the time a statement has
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
    QString text(QAnyStringView name) const;    ///< null reads as empty
    qint64 number(QAnyStringView name) const;   ///< null throws RuntimeError 94 (invalid use of null)
    qint32 number32(QAnyStringView name) const; ///< as `number`, throws RuntimeError 6 beyond 32 bits
    QDateTime date(QAnyStringView name) const;  ///< null reads as an invalid time, another text throws
    /// Into a field of a record; null leaves it as it was.
    void read(QAnyStringView name, QString& field) const;
    void read(QAnyStringView name, QDateTime& field) const;
    QStringList fieldNames() const;
    int rowCount() const;

    /// A new row that takes the values set by setField until Update writes it. Only for a query whose columns all come
    /// unchanged from one table. The position stays where it is; the new row is behind the others.
    void AddNew();
    void setField(QAnyStringView name, const QVariant& value);
    void Update();
    /// The row written last, to be addressed by `setBookmark`; throws when none was.
    qint64 LastModified() const;
    qint64 Bookmark() const;
    void setBookmark(qint64 bookmark);

private:
    friend class Database;
    struct Rows;
    explicit Recordset(std::unique_ptr<Rows> rows);
    const QVariant& value(QAnyStringView name) const;

    std::unique_ptr<Rows> m_rows; ///< null when closed
};

/// The open project; written by InitStandard and frmLogin, and by OpenProject for scripts.
extern std::shared_ptr<Database> gDB;

} // namespace lumivane
