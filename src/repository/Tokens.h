#pragma once

#include <QString>
#include <vector>

namespace lumivane {

/// A piece of a statement, blanks left out.
struct Token
{
    enum class Kind { Word, Name, Text, Date, Number, Symbol };

    Kind kind;
    QString text;        ///< a name without brackets, a text or date without its signs and with doubled signs single
    qsizetype character; ///< where it begins in the statement, from 0

    bool is(QStringView word) const { return kind == Kind::Word && text.compare(word, Qt::CaseInsensitive) == 0; }
    bool isSymbol(QStringView sign) const { return kind == Kind::Symbol && text == sign; }
};

/// Throws RuntimeError naming the place of what is no token of the dialect, comments among it.
std::vector<Token> readTokens(const QString& statement);

} // namespace lumivane
