#pragma once

#include "host/embedded/EmbeddedHost.h"
#include "host/embedded/EmbeddedSheet.h"
#include "support/ThrownError.h"
#include "support/XlsxWriter.h"

namespace lumivane::test {

/// An application on a cache of its own.
struct OwnApplication
{
    engine::ContentCache cache;
    EmbeddedApplication application{cache};

    std::shared_ptr<Workbook> open(const WorkbookParts& parts, const QString& fileName = QStringLiteral("Report.xlsx"))
    {
        return application.Open(writeTemporary(fileName, parts.package()));
    }
    /// The first sheet of a workbook with this sheet data.
    std::shared_ptr<EmbeddedSheet> sheet(const std::string& sheetData, const std::string& styles = "")
    {
        WorkbookParts parts({{"Data", "<sheetData>" + sheetData + "</sheetData>", ""}});
        parts.styles(styles);
        return std::static_pointer_cast<EmbeddedSheet>(open(parts)->ActiveSheet());
    }
};

inline CellArea area(const QString& address)
{
    return CellArea::parse(address).value();
}

} // namespace lumivane::test
