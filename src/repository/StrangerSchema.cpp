#include "repository/StrangerSchema.h"

#include "repository/Connection.h"
#include "repository/Dialect.h"
#include "repository/Tokens.h"

#include <algorithm>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

constexpr int mostSchemaObjects = 200;

bool holdsWord(const std::vector<Token>& tokens, std::initializer_list<const char16_t*> words)
{
    return std::any_of(tokens.begin(), tokens.end(), [&](const Token& token) {
        return std::any_of(words.begin(), words.end(), [&](const char16_t* word) { return token.is(word); });
    });
}

/// Empty for what a file of the program may hold, otherwise what it is.
QString foreignObject(const QString& type, const QString& definition)
{
    if (type != u"table" && type != u"index")
        return u"a "_s + type;
    if (definition.isEmpty())
        return {}; // the index of a key
    const std::vector<Token> tokens = readTokens(definition);
    if (type == u"table")
        return holdsWord(tokens, {u"VIRTUAL"})                      ? u"a virtual table"_s
               : holdsWord(tokens, {u"CHECK", u"GENERATED", u"AS"}) ? u"a table with expressions"_s
                                                                    : QString();
    const auto parentheses =
        std::count_if(tokens.begin(), tokens.end(), [](const Token& t) { return t.isSymbol(u"("); });
    return parentheses > 1 || holdsWord(tokens, {u"WHERE"}) ? u"an index on expressions"_s : QString();
}

[[noreturn]] void refuseFile(const Database::Connection& file, const QString& what)
{
    throw RuntimeError(NotAProject, u"["_s + file.fileName + u"] holds "_s + what +
                                        u", which no file of this program does. Do not use it, and ask its sender for "
                                        "a new one."_s);
}

} // namespace

void refuseForeignSchema(Database::Connection& file)
{
    const UnrestrictedScope scope(file);
    SqliteStatement objects(file, "SELECT type, name, sql FROM sqlite_schema");
    for (int count = 1; objects.step(); ++count) {
        if (count > mostSchemaObjects)
            refuseFile(file, u"more than %1 tables"_s.arg(mostSchemaObjects));
        const Row object = objects.row();
        const QString name = object[1].toString();
        QString foreign;
        try {
            foreign = foreignObject(object[0].toString(), object[2].toString());
        } catch (const RuntimeError&) {
            foreign = u"a definition that is not understood"_s;
        }
        if (!foreign.isEmpty())
            refuseFile(file, foreign + u" ("_s + name.left(60) + u')');
    }
}

} // namespace lumivane
