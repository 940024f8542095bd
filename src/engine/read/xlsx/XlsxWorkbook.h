#pragma once

#include "engine/content/WorkbookContent.h"
#include "engine/read/package/Package.h"
#include "engine/read/package/SmallParts.h"
#include "engine/read/xlsx/Palette.h"
#include "platform/FileStamp.h"

namespace lumivane::engine {

/// A workbook in a package. Everything but the sheets is read at once; the file is closed in between and opened again
/// for each sheet, so that nobody is kept from replacing it.
class XlsxWorkbook : public WorkbookContent
{
public:
    /// Throws Fault.
    explicit XlsxWorkbook(const QString& path);

    std::shared_ptr<const SheetContent> sheet(int index) override;
    qint64 bytes() const override;

private:
    struct SheetPart
    {
        std::string name;
        std::shared_ptr<const SheetContent> content;
    };

    void readParts(const Package& package);
    std::string workbookPart(const Package& package) const;
    void readWorkbookPart(pugi::xml_node workbook, const std::vector<Relationship>& relationships);
    void readSheetList(pugi::xml_node list, const std::vector<Relationship>& relationships);
    void readNames(pugi::xml_node list);
    void readThemeAndStyles(const Package& package, const std::vector<Relationship>& relationships);
    void readTexts(const Package& package, const std::vector<Relationship>& relationships);
    std::shared_ptr<const SheetContent> readSheet(const Package& package, const SheetPart& part);
    void followReferences(const Package& package, const SheetPart& part, const std::string& drawingId,
                          const std::vector<std::string>& tableIds, SheetContent& content) const;

    QString m_path;
    FileStamp m_stamp;
    Palette m_palette;
    std::vector<SheetPart> m_parts; ///< beside `sheets`
};

} // namespace lumivane::engine
