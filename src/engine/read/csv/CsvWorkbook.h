#pragma once

#include "engine/content/WorkbookContent.h"

#include <map>

namespace lumivane::engine {

/// A text file with separators, as a workbook of one sheet named by the file's base name.
class CsvWorkbook : public WorkbookContent
{
public:
    /// From the file's bytes; `year` is that of dates without one. Throws Fault.
    CsvWorkbook(const QString& path, std::string bytes, int year);

    std::shared_ptr<const SheetContent> sheet(int index) override;
    qint64 bytes() const override;

private:
    void readFields(std::string_view text, int year);
    Cell cellFrom(std::string_view field, int year);
    quint32 styleFor(const char16_t* format);
    quint32 linesStyle();

    std::shared_ptr<SheetContent> m_sheet;
    std::map<const char16_t*, quint32> m_styles;
    quint32 m_linesStyle = 0; ///< 0: not made yet
};

} // namespace lumivane::engine
