#pragma once

#include <QString>
#include <QStringList>
#include <ostream>

// Lets GoogleTest print texts as texts. Qt's types live in the global namespace, and so must these.

inline std::ostream& operator<<(std::ostream& out, const QString& text)
{
    return out << text.toStdString();
}

inline void PrintTo(const QString& text, std::ostream* out)
{
    *out << '"' << text << '"';
}

inline void PrintTo(const QStringList& texts, std::ostream* out)
{
    *out << "{\n  " << texts.join(QStringLiteral("\n  ")) << '}';
}
