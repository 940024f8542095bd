#pragma once

#include "host/embedded/EmbeddedHost.h"
#include "host/embedded/EmbeddedSheet.h"
#include "platform/RuntimeError.h"
#include "support/QtPrinting.h"
#include "support/XlsxWriter.h"

namespace lumivane::test {

/// An application on a cache of its own.
struct OwnApplication
{
    embedded::ContentCache cache;
    embedded::EmbeddedApplication application{cache};

    std::shared_ptr<Workbook> open(const WorkbookParts& parts, const QString& fileName = QStringLiteral("Report.xlsx"))
    {
        return application.Open(writeTemporary(fileName, parts.package()));
    }
    /// The first sheet of a workbook with this sheet data.
    std::shared_ptr<embedded::EmbeddedSheet> sheet(const std::string& sheetData, const std::string& styles = "")
    {
        WorkbookParts parts({{"Data", "<sheetData>" + sheetData + "</sheetData>", ""}});
        parts.styles(styles);
        return std::static_pointer_cast<embedded::EmbeddedSheet>(open(parts)->ActiveSheet());
    }
};

/// The description of the RuntimeError that an action throws; "none" if it throws none.
template <class Action>
QString failureOf(Action action)
{
    try {
        action();
    } catch (const RuntimeError& failure) {
        return failure.description();
    }
    return QStringLiteral("none");
}

} // namespace lumivane::test
