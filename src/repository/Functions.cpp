#include "platform/Clock.h"
#include "platform/RuntimeError.h"
#include "repository/Connection.h"
#include "repository/Dialect.h"

#include <QString>
#include <algorithm>
#include <limits>

namespace lumivane {

namespace {

bool isNullValue(sqlite3_value* value)
{
    return sqlite3_value_type(value) == SQLITE_NULL;
}

QString textOf(sqlite3_value* value)
{
    const auto* text = static_cast<const char*>(static_cast<const void*>(sqlite3_value_text(value)));
    return QString::fromUtf8(text, sqlite3_value_bytes(value));
}

void answer(sqlite3_context* context, const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    sqlite3_result_text(context, bytes.constData(), int(bytes.size()), SQLITE_TRANSIENT);
}

/// A length or place of a text; those beyond any text are all alike.
qsizetype lengthOf(sqlite3_value* value)
{
    return qsizetype(std::clamp<sqlite3_int64>(sqlite3_value_int64(value), -1, std::numeric_limits<int>::max()));
}

/// The functions below give Null where the first value is Null, and fail for a length below 0 or a place below 1.
bool answeredEarly(sqlite3_context* context, int count, sqlite3_value** values, qsizetype least)
{
    if (isNullValue(values[0])) {
        sqlite3_result_null(context);
        return true;
    }
    for (int i = 1; i < count; ++i) {
        if (lengthOf(values[i]) < (i == 1 ? least : 0)) {
            sqlite3_result_error(context, "a length or place of a text is out of range", -1);
            return true;
        }
    }
    return false;
}

void lenFunction(sqlite3_context* context, int count, sqlite3_value** values)
{
    if (!answeredEarly(context, count, values, 0))
        sqlite3_result_int64(context, textOf(values[0]).size());
}

void leftFunction(sqlite3_context* context, int count, sqlite3_value** values)
{
    if (!answeredEarly(context, count, values, 0))
        answer(context, textOf(values[0]).left(lengthOf(values[1])));
}

void rightFunction(sqlite3_context* context, int count, sqlite3_value** values)
{
    if (!answeredEarly(context, count, values, 0))
        answer(context, textOf(values[0]).right(lengthOf(values[1])));
}

void midFunction(sqlite3_context* context, int count, sqlite3_value** values)
{
    if (!answeredEarly(context, count, values, 1))
        answer(context, textOf(values[0]).mid(lengthOf(values[1]) - 1, count > 2 ? lengthOf(values[2]) : -1));
}

void upperFunction(sqlite3_context* context, int count, sqlite3_value** values)
{
    if (!answeredEarly(context, count, values, 0))
        answer(context, textOf(values[0]).toUpper());
}

void lowerFunction(sqlite3_context* context, int count, sqlite3_value** values)
{
    if (!answeredEarly(context, count, values, 0))
        answer(context, textOf(values[0]).toLower());
}

void nzFunction(sqlite3_context* context, int count, sqlite3_value** values)
{
    if (!isNullValue(values[0]))
        sqlite3_result_value(context, values[0]);
    else if (count > 1)
        sqlite3_result_value(context, values[1]);
    else
        answer(context, {});
}

void nowFunction(sqlite3_context* context, int, sqlite3_value**)
{
    answer(context, dateText(Clock::now()));
}

/// `text LIKE pattern` calls it with the pattern first.
void likeFunction(sqlite3_context* context, int, sqlite3_value** values)
{
    if (isNullValue(values[0]) || isNullValue(values[1])) {
        sqlite3_result_null(context);
        return;
    }
    try {
        sqlite3_result_int(context, matchesLikePattern(textOf(values[1]), textOf(values[0])));
    } catch (const RuntimeError& error) {
        sqlite3_result_error(context, error.what(), -1);
    }
}

/// The order of all texts: without regard to case, in every script.
int compareTexts(void*, int firstSize, const void* first, int secondSize, const void* second)
{
    return QString::fromUtf8(static_cast<const char*>(first), firstSize)
        .compare(QString::fromUtf8(static_cast<const char*>(second), secondSize), Qt::CaseInsensitive);
}

} // namespace

void registerFunctions(sqlite3* handle)
{
    const struct
    {
        const char* name;
        int arguments;
        void (*function)(sqlite3_context*, int, sqlite3_value**);
    } functions[] = {
        {"Len", 1, lenFunction}, {"Left", 2, leftFunction},   {"Right", 2, rightFunction}, {"Mid", 2, midFunction},
        {"Mid", 3, midFunction}, {"UCase", 1, upperFunction}, {"LCase", 1, lowerFunction}, {"Nz", 1, nzFunction},
        {"Nz", 2, nzFunction},   {"Now", 0, nowFunction},     {"like", 2, likeFunction},
    };
    // None of them may be called by what a file's own schema says.
    for (const auto& f : functions)
        sqlite3_create_function_v2(handle, f.name, f.arguments, SQLITE_UTF8 | SQLITE_DIRECTONLY, nullptr, f.function,
                                   nullptr, nullptr, nullptr);
    // In place of SQLite's own, which knows the case of English letters only.
    sqlite3_create_collation(handle, "NOCASE", SQLITE_UTF8, nullptr, compareTexts);
}

} // namespace lumivane
