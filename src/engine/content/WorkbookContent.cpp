#include "engine/content/WorkbookContent.h"

#include <algorithm>

namespace lumivane::engine {

int WorkbookContent::sheetNamed(const QString& name) const
{
    const auto place = std::find_if(sheets.begin(), sheets.end(), [&](const SheetEntry& entry) {
        return entry.name.compare(name, Qt::CaseInsensitive) == 0;
    });
    return place == sheets.end() ? -1 : static_cast<int>(place - sheets.begin());
}

int WorkbookContent::sheetStoredAs(const QString& name) const
{
    return isTextFile ? 0 : sheetNamed(name);
}

QStringList WorkbookContent::worksheetNames() const
{
    QStringList names;
    for (const SheetEntry& entry : sheets) {
        if (!entry.isChartSheet)
            names.append(entry.name);
    }
    return names;
}

qint64 WorkbookContent::bytes() const
{
    return qint64(sizeof(*this)) + texts.bytes() + qint64(styles.cells.capacity() * sizeof(CellStyle)) +
           qint64(styles.fonts.capacity() * sizeof(FontStyle)) +
           qint64(styles.borders.capacity() * sizeof(BorderStyle)) +
           qint64(styles.fills.capacity() * sizeof(FillStyle));
}

} // namespace lumivane::engine
