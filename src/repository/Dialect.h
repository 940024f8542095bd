#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>
#include <vector>

namespace lumivane {

/// A statement of the program's SQL dialect, rewritten for SQLite. The dialect: dates between `#` signs, month first;
/// `SELECT TOP n`; `DELETE * FROM`; names in brackets; text in apostrophes or quotes; `Left()`; `SELECT ... INTO table
/// IN 'file'`; one statement, and nothing behind it.
struct Translation
{
    enum class Kind { Query, Change, CopyInto, DropTable };

    Kind kind = Kind::Query;
    QByteArray sql;   ///< UTF-8; empty for DropTable. For CopyInto the query whose rows are copied.
    QString table;    ///< of CopyInto and DropTable
    QString fileName; ///< of CopyInto

    /// Where a place of `sql` stood in the statement as it was given, counted from 1; 0 if unknown.
    qsizetype placeInStatement(qsizetype byte) const;

    struct Origin
    {
        qsizetype byte;      ///< in `sql`
        qsizetype character; ///< in the given statement, from 0
    };
    std::vector<Origin> origins; ///< one for each token, rising
};

/// Rewrites token by token and never looks inside a text. Throws RuntimeError with a sentence that names the place for
/// what it does not understand, an empty list behind `IN` and a second statement among it.
Translation translateStatement(const QString& statement);

/// The store's form of a date of the dialect, with an offset from UTC where it has one; empty if it is none. A date
/// without time is its midnight, a time without date one of the day from which dates are counted.
QString storedDate(const QString& text);
/// A name as SQLite takes it, whatever it holds.
QByteArray quotedIdentifier(const QString& name);

/// `LIKE` of the dialect: `*` any characters, `?` one, `#` a digit, `[a-z]` and `[!a-z]` one of a set; without regard
/// to case. Throws RuntimeError for a bracket that is not closed.
bool matchesLikePattern(QStringView text, QStringView pattern);

/// The numbers with which statements and files fail, for the log.
enum SqlErrorNumber {
    InvalidPattern = 93,
    TableExists = 3010,
    NoCurrentRecord = 3021,
    FileMissing = 3024,
    DiskFull = 3026,
    NotAllowed = 3033,
    FileInUse = 3045,
    FileProtected = 3051,
    SyntaxError = 3075,
    TextRefused = 3077,
    StatementFailed = 3146,
    RowGone = 3167,
    ItemNotFound = 3265,
    NotAProject = 3343,
    ObjectClosed = 3420,
};

/// Throws RuntimeError SyntaxError; the place is counted from 0 and may lie behind the end.
[[noreturn]] void refuseStatement(const QString& statement, qsizetype character, const QString& reason);

} // namespace lumivane
