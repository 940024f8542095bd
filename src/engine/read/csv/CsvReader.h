#pragma once

#include "engine/read/FormatReader.h"
#include "engine/read/RowBuilder.h"

#include <map>
#include <optional>

namespace lumivane::engine {

/// Text files with separators, as workbooks of one sheet named by the file's base name. The sheet is read with the
/// rest: its values decide which styles there are.
class CsvReader : public FormatReader
{
public:
    explicit CsvReader(const QString& path);

    WorkbookContent readWorkbook(SheetList& sheets, qint64 maxBytes) override;
    /// Never needed, as readWorkbook gives the only sheet.
    std::shared_ptr<const SheetContent> readSheet(const WorkbookContent& workbook, int index, qint64 maxBytes) override;

private:
    void readFields(std::string_view text);
    Cell cellFrom(std::string_view field);
    quint32 styleFor(const char16_t* format);
    quint32 linesStyle();

    const QString m_path;
    const int m_year;                 ///< of dates without one
    std::optional<RowBuilder> m_rows; ///< while the fields are read
    StyleTable m_styles;
    std::map<const char16_t*, quint32> m_formats;
    quint32 m_linesStyle = 0; ///< 0: not made yet
};

} // namespace lumivane::engine
