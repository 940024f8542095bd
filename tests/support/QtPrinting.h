#pragma once

#include <QString>
#include <QStringList>
#include <ostream>

// Lets GoogleTest print texts as texts. Qt's types live in the global namespace, and so must these.

inline void PrintTo(const QString& text, std::ostream* out)
{
    *out << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QStringList& texts, std::ostream* out)
{
    *out << '{';
    for (const QString& text : texts)
        *out << "\n  \"" << text.toStdString() << '"';
    *out << '}';
}
