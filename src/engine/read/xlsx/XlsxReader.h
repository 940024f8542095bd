#pragma once

#include "engine/read/FormatReader.h"
#include "engine/read/package/Package.h"
#include "engine/read/package/SmallParts.h"
#include "engine/read/xlsx/Palette.h"
#include "engine/read/xlsx/TableStyles.h"

#include <set>

namespace lumivane::engine {

class SheetReader;

/// Workbooks in a package of XML parts. The package is opened anew for each sheet.
class XlsxReader : public FormatReader
{
public:
    explicit XlsxReader(const QString& path);

    WorkbookContent readWorkbook(SheetList& sheets, qint64 maxBytes) override;
    std::shared_ptr<const SheetContent> readSheet(const WorkbookContent& workbook, int index, qint64 maxBytes) override;

private:
    void readWorkbookPart(pugi::xml_node workbook, const std::vector<Relationship>& relationships,
                          WorkbookContent& content);
    void readSheetList(pugi::xml_node list, const std::vector<Relationship>& relationships, WorkbookContent& content);
    void readNames(pugi::xml_node list, WorkbookContent& content);
    void readThemeAndStyles(const Package& package, const std::vector<Relationship>& relationships,
                            WorkbookContent& content);
    void readTexts(const Package& package, const std::vector<Relationship>& relationships, qint64 maxBytes,
                   WorkbookContent& content);
    void followReferences(const Package& package, const std::string& part, const SheetReader& reader, qint64 maxBytes,
                          SheetContent& content);
    void readTables(const Package& package, const std::set<const Package::Entry*>& tables, SheetContent& content);

    const QString m_path;
    Palette m_palette;
    TableStyles m_tableStyles;
    std::string m_theme;              ///< its part, read again for drawings; empty without one
    QString m_problem;                ///< what of all sheets could not be read, for the user; empty if all was
    std::vector<std::string> m_parts; ///< of the sheets, by index; empty where the workbook names none
};

} // namespace lumivane::engine
