#include "repository/Database.h"
#include "tools/Commands.h"
#include "tools/Output.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QRegularExpression>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

QJsonValue fieldJson(const QVariant& value)
{
    return value.isValid() ? QJsonValue::fromVariant(value) : QJsonValue(QJsonValue::Null);
}

QJsonArray rowsJson(Recordset& rows)
{
    QJsonArray result;
    const QStringList names = rows.fieldNames();
    for (; !rows.EOF_(); rows.MoveNext()) {
        QJsonObject row;
        for (const QString& name : names)
            row.insert(name, fieldJson(rows.Field(name)));
        result.append(row);
    }
    return result;
}

/// A SELECT gives rows, unless it writes them into a table.
bool givesRows(const QString& statement)
{
    static const QRegularExpression literal(u"'[^']*'"_s),
        into(u"\\bINTO\\b"_s, QRegularExpression::CaseInsensitiveOption);
    return statement.trimmed().startsWith(u"SELECT"_s, Qt::CaseInsensitive) &&
           !QString(statement).remove(literal).contains(into);
}

} // namespace

int newProjectCommand(const CommandLine& line)
{
    Database::create(line.argument(0));
    return 0;
}

int newLogCommand(const CommandLine& line)
{
    Database::create(line.argument(0), Database::Content::ErrorLog);
    return 0;
}

int sqlCommand(const CommandLine& line)
{
    const auto database = Database::open(line.argument(0), databaseConnect());
    const QString statement = line.argument(1);
    // A query gives its rows; what changes rows gives their number.
    if (givesRows(statement))
        printJson(rowsJson(*database->OpenRecordset(statement)));
    else
        printJson(QJsonObject{{u"changed"_s, database->Execute(statement)}});
    database->Close();
    return 0;
}

} // namespace lumivane
