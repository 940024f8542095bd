#include "engine/read/xlsx/XlsxReader.h"

#include "engine/read/ReadError.h"
#include "engine/read/package/AttributeValues.h"
#include "engine/read/xlsx/DrawingReader.h"
#include "engine/read/xlsx/RichText.h"
#include "engine/read/xlsx/SheetReader.h"
#include "engine/read/xlsx/StyleReader.h"

#include <algorithm>

namespace lumivane::engine {

using namespace Qt::StringLiterals;

namespace {

/// The entry that is referred to by a type; null where nothing is. Without a part that it refers to, a workbook would
/// look other than it should, and nobody could tell.
const Package::Entry* referredEntry(const Package& package, const std::vector<Relationship>& relationships,
                                    std::string_view type)
{
    const Relationship* reference = findRelationship(relationships, type);
    if (!reference || reference->external)
        return nullptr;
    const Package::Entry* entry = package.find(reference->target);
    if (!entry)
        throw Fault{u"entry \"%1\" is missing"_s.arg(textFrom(reference->target))};
    return entry;
}

void readTable(pugi::xml_node table, SheetContent& content)
{
    const pugi::xml_node filter = childNamed(table, "autoFilter");
    if (const std::optional<CellArea> area = areaFrom(attributeOf(filter, "ref")))
        content.filtered.push_back(*area);
    const pugi::xml_node look = childNamed(table, "tableStyleInfo");
    const std::optional<CellArea> area = areaFrom(attributeOf(table, "ref"));
    if (area && !attributeOf(look, "name").empty() && attributeOf(look, "name") != "None")
        content.unread.push_back(
            {u"the look of the table \"%1\""_s.arg(textFrom(attributeOf(table, "displayName"))), *area});
}

} // namespace

XlsxReader::XlsxReader(const QString& path) : m_path(path) {}

WorkbookContent XlsxReader::readWorkbook(SheetList&)
{
    const Package package(m_path);
    const std::string part = rootPart(package);
    const Package::Entry* entry = package.find(part);
    if (!entry)
        throw Fault{u"entry \"%1\" is missing"_s.arg(textFrom(part))};
    pugi::xml_document document;
    readSmallPart(package, *entry, document);
    if (localName(document.document_element()) != "workbook")
        throw Fault{u"there is no workbook in it"_s, ReadCause::NotAWorkbook};
    const std::vector<Relationship> relationships = readRelationships(package, part);
    WorkbookContent content;
    readWorkbookPart(document.document_element(), relationships, content);
    readThemeAndStyles(package, relationships, content);
    readTexts(package, relationships, content);
    return content;
}

void XlsxReader::readWorkbookPart(pugi::xml_node workbook, const std::vector<Relationship>& relationships,
                                  WorkbookContent& content)
{
    content.date1904 = flagFrom(attributeOf(childNamed(workbook, "workbookPr"), "date1904"), false);
    content.calculateOnOpen = flagFrom(attributeOf(childNamed(workbook, "calcPr"), "fullCalcOnLoad"), false);
    readSheetList(childNamed(workbook, "sheets"), relationships, content);
    readNames(childNamed(workbook, "definedNames"), content);
    const pugi::xml_node view = childNamed(childNamed(workbook, "bookViews"), "workbookView");
    content.activeSheet = integerFrom(attributeOf(view, "activeTab")).value_or(0);
    if (content.activeSheet < 0 || content.activeSheet >= static_cast<int>(content.sheets.size()))
        content.activeSheet = 0;
}

void XlsxReader::readSheetList(pugi::xml_node list, const std::vector<Relationship>& relationships,
                               WorkbookContent& content)
{
    for (const pugi::xml_node node : childrenNamed(list, "sheet")) {
        SheetEntry entry;
        entry.name = textFrom(attributeOf(node, "name"));
        const std::string_view state = attributeOf(node, "state");
        entry.visible = state != "hidden" && state != "veryHidden";
        std::string part;
        const std::string_view id = attributeOf(node, "id");
        if (const Relationship* target = relationshipById(relationships, id); target && !target->external) {
            entry.isChartSheet = target->type == "chartsheet";
            part = target->target;
        }
        content.sheets.push_back(std::move(entry));
        m_parts.push_back(std::move(part));
    }
    if (content.sheets.empty())
        throw Fault{u"there is no sheet in it"_s};
}

void XlsxReader::readNames(pugi::xml_node list, WorkbookContent& content)
{
    for (const pugi::xml_node node : childrenNamed(list, "definedName")) {
        DefinedName name;
        name.name = textFrom(attributeOf(node, "name"));
        name.formula = textFrom(node.child_value());
        name.sheet = integerFrom(attributeOf(node, "localSheetId")).value_or(-1);
        if (name.sheet >= static_cast<int>(content.sheets.size()))
            name.sheet = -1;
        content.definedNames.push_back(std::move(name));
    }
}

void XlsxReader::readThemeAndStyles(const Package& package, const std::vector<Relationship>& relationships,
                                    WorkbookContent& content)
{
    pugi::xml_document document;
    if (const Package::Entry* theme = referredEntry(package, relationships, "theme")) {
        readSmallPart(package, *theme, document);
        m_palette.readTheme(document.document_element());
    }
    if (const Package::Entry* look = referredEntry(package, relationships, "styles")) {
        readSmallPart(package, *look, document);
        content.styles = readStyles(document.document_element(), m_palette);
    }
}

void XlsxReader::readTexts(const Package& package, const std::vector<Relationship>& relationships,
                           WorkbookContent& content)
{
    const Package::Entry* entry = referredEntry(package, relationships, "sharedStrings");
    if (!entry)
        return;
    const auto stream = package.open(*entry);
    try {
        readSharedTexts(*stream, m_palette, content.texts);
    } catch (const Fault& fault) {
        throw Fault{u"entry \"%1\": %2"_s.arg(textFrom(entry->name), fault.what)};
    }
}

std::shared_ptr<const SheetContent> XlsxReader::readSheet(const WorkbookContent& workbook, int index, qint64 maxBytes)
{
    const Package package(m_path);
    const std::string& part = m_parts[static_cast<size_t>(index)];
    const Package::Entry* entry = part.empty() ? nullptr : package.find(part);
    if (!entry)
        throw Fault{u"its part \"%1\" is missing from the file"_s.arg(textFrom(part))};
    auto content = std::make_shared<SheetContent>();
    const auto stream = package.open(*entry);
    SheetReader reader(*stream, {m_palette, workbook.texts.size(), workbook.date1904, entry->size, maxBytes}, *content);
    reader.read();
    followReferences(package, part, reader.drawingId(), reader.tableIds(), *content);
    return content;
}

/// Drawings and tables are beside the cells: what is wrong with them is told with the sheet, which is whole otherwise.
void XlsxReader::followReferences(const Package& package, const std::string& part, const std::string& drawingId,
                                  const std::vector<std::string>& tableIds, SheetContent& content) const
{
    if (drawingId.empty() && tableIds.empty())
        return;
    try {
        const std::vector<Relationship> relationships = readRelationships(package, part);
        const auto target = [&](const std::string& id) {
            const Relationship* found = relationshipById(relationships, id);
            return found && !found->external ? package.find(found->target) : nullptr;
        };
        for (const std::string& id : tableIds) {
            const Package::Entry* entry = target(id);
            if (!entry)
                continue;
            pugi::xml_document document;
            readSmallPart(package, *entry, document);
            readTable(document.document_element(), content);
        }
        if (drawingId.empty())
            return;
        const Package::Entry* entry = target(drawingId);
        if (!entry)
            throw Fault{u"the part with the drawings is missing from the file"_s};
        content.drawings = readDrawings(package, *entry);
    } catch (const Fault& fault) {
        content.problem = u"Charts and pictures are missing: %1."_s.arg(fault.what);
    }
}

} // namespace lumivane::engine
