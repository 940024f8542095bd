#pragma once

#include "services/modUtilsLog.h"
#include "support/QtPrinting.h"

#include <QStringList>

namespace lumivane::test {

/// Collects what is logged while it lives, one text an entry: "Event module.procedure: text",
/// "Error module.procedure: (number) description".
class LogCapture
{
public:
    QStringList entries;

    LogCapture()
    {
        setDatabaseLog([this](const QString& module, const QString& procedure, const QString& type, int number,
                              const QString& description) {
            const QString text = number ? QStringLiteral("(%1) %2").arg(number).arg(description) : description;
            entries.append(QStringLiteral("%1 %2.%3: %4").arg(type, module, procedure, text));
        });
    }
    ~LogCapture() { setDatabaseLog({}); }
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;
};

} // namespace lumivane::test
