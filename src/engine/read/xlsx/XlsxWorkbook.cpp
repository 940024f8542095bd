#include "engine/read/xlsx/XlsxWorkbook.h"

#include "engine/read/Fault.h"
#include "engine/read/package/AttributeValues.h"
#include "engine/read/xlsx/DrawingReader.h"
#include "engine/read/xlsx/RichText.h"
#include "engine/read/xlsx/SheetReader.h"
#include "engine/read/xlsx/StyleReader.h"
#include "platform/RuntimeError.h"

#include <algorithm>

namespace lumivane::engine {

using namespace Qt::StringLiterals;

namespace {

/// For a package that holds no workbook that is read here.
[[noreturn]] void throwOtherFormat(const Package& package, const std::string& part)
{
    if (const Package::Entry* mime = package.find("mimetype"); mime && mime->size < 200) {
        if (package.read(*mime).starts_with("application/vnd.oasis.opendocument"))
            throw Fault{u"it is an OpenDocument file, which is not read by the built-in reader; save it as xlsx"_s,
                        true};
    }
    if (part.ends_with(".bin"))
        throw Fault{u"it is a binary workbook (xlsb), which is not read by the built-in reader; save it as xlsx"_s,
                    true};
    throw Fault{u"there is no workbook in it"_s};
}

/// Readers go by the part's type, which for binary workbooks is the only sure sign.
bool isBinaryWorkbook(const Package& package, const std::string& part)
{
    const Package::Entry* types = package.find("[Content_Types].xml");
    if (!types)
        throw Fault{u"entry \"[Content_Types].xml\" is missing"_s};
    pugi::xml_document document;
    readSmallPart(package, *types, document);
    for (const pugi::xml_node node : childrenNamed(document.document_element(), "Override")) {
        std::string_view name = attributeOf(node, "PartName");
        if (name.starts_with('/'))
            name.remove_prefix(1);
        if (name == part)
            return attributeOf(node, "ContentType").find("sheet.binary") != std::string_view::npos;
    }
    return false;
}

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

XlsxWorkbook::XlsxWorkbook(const QString& path) : m_path(path), m_stamp(FileStamp::of(path))
{
    const Package package(path);
    readParts(package);
}

void XlsxWorkbook::readParts(const Package& package)
{
    const std::string part = workbookPart(package);
    pugi::xml_document document;
    readSmallPart(package, *package.find(part), document);
    if (localName(document.document_element()) != "workbook")
        throw Fault{u"there is no workbook in it"_s};
    const std::vector<Relationship> relationships = readRelationships(package, part);
    readWorkbookPart(document.document_element(), relationships);
    readThemeAndStyles(package, relationships);
    readTexts(package, relationships);
}

std::string XlsxWorkbook::workbookPart(const Package& package) const
{
    const std::vector<Relationship> roots = readRelationships(package, "");
    const Relationship* root = findRelationship(roots, "officeDocument");
    const std::string part = root ? root->target : std::string();
    if (!root || part.ends_with(".bin"))
        throwOtherFormat(package, part);
    if (!package.find(part))
        throw Fault{u"entry \"%1\" is missing"_s.arg(textFrom(part))};
    if (isBinaryWorkbook(package, part))
        throwOtherFormat(package, ".bin");
    return part;
}

void XlsxWorkbook::readWorkbookPart(pugi::xml_node workbook, const std::vector<Relationship>& relationships)
{
    date1904 = flagFrom(attributeOf(childNamed(workbook, "workbookPr"), "date1904"), false);
    calculateOnOpen = flagFrom(attributeOf(childNamed(workbook, "calcPr"), "fullCalcOnLoad"), false);
    readSheetList(childNamed(workbook, "sheets"), relationships);
    readNames(childNamed(workbook, "definedNames"));
    const pugi::xml_node view = childNamed(childNamed(workbook, "bookViews"), "workbookView");
    activeSheet = integerFrom(attributeOf(view, "activeTab")).value_or(0);
    if (activeSheet < 0 || activeSheet >= static_cast<int>(sheets.size()))
        activeSheet = 0;
}

void XlsxWorkbook::readSheetList(pugi::xml_node list, const std::vector<Relationship>& relationships)
{
    for (const pugi::xml_node node : childrenNamed(list, "sheet")) {
        SheetEntry entry;
        entry.name = textFrom(attributeOf(node, "name"));
        const std::string_view state = attributeOf(node, "state");
        entry.visible = state != "hidden" && state != "veryHidden";
        SheetPart part;
        const std::string_view id = attributeOf(node, "id");
        if (const Relationship* target = relationshipById(relationships, id); target && !target->external) {
            entry.isChartSheet = target->type == "chartsheet";
            part.name = target->target;
        }
        sheets.push_back(std::move(entry));
        m_parts.push_back(std::move(part));
    }
    if (sheets.empty())
        throw Fault{u"there is no sheet in it"_s};
}

void XlsxWorkbook::readNames(pugi::xml_node list)
{
    for (const pugi::xml_node node : childrenNamed(list, "definedName")) {
        DefinedName name;
        name.name = textFrom(attributeOf(node, "name"));
        name.formula = textFrom(node.child_value());
        name.sheet = integerFrom(attributeOf(node, "localSheetId")).value_or(-1);
        if (name.sheet >= static_cast<int>(sheets.size()))
            name.sheet = -1;
        definedNames.push_back(std::move(name));
    }
}

void XlsxWorkbook::readThemeAndStyles(const Package& package, const std::vector<Relationship>& relationships)
{
    pugi::xml_document document;
    if (const Package::Entry* theme = referredEntry(package, relationships, "theme")) {
        readSmallPart(package, *theme, document);
        m_palette.readTheme(document.document_element());
    }
    if (const Package::Entry* look = referredEntry(package, relationships, "styles")) {
        readSmallPart(package, *look, document);
        styles = readStyles(document.document_element(), m_palette);
    }
}

void XlsxWorkbook::readTexts(const Package& package, const std::vector<Relationship>& relationships)
{
    const Package::Entry* entry = referredEntry(package, relationships, "sharedStrings");
    if (!entry)
        return;
    const auto stream = package.open(*entry);
    try {
        readSharedTexts(*stream, m_palette, texts);
    } catch (const Fault& fault) {
        throw Fault{u"entry \"%1\": %2"_s.arg(textFrom(entry->name), fault.what)};
    }
}

std::shared_ptr<const SheetContent> XlsxWorkbook::sheet(int index)
{
    if (index < 0 || index >= static_cast<int>(m_parts.size()))
        throw RuntimeError(RuntimeError::SubscriptOutOfRange);
    SheetPart& part = m_parts[static_cast<size_t>(index)];
    if (part.content)
        return part.content;
    try {
        const Package package(m_path);
        if (FileStamp::of(m_path) != m_stamp)
            throw Fault{u"the file has changed since it was opened; open it again"_s};
        part.content = readSheet(package, part);
    } catch (const Fault& fault) {
        throw RuntimeError(RuntimeError::ApplicationDefined,
                           u"Sheet \"%1\" of the workbook \"%2\" cannot be read: %3."_s.arg(
                               sheets[static_cast<size_t>(index)].name, m_path, fault.what));
    }
    return part.content;
}

std::shared_ptr<const SheetContent> XlsxWorkbook::readSheet(const Package& package, const SheetPart& part)
{
    const Package::Entry* entry = part.name.empty() ? nullptr : package.find(part.name);
    if (!entry)
        throw Fault{u"its part \"%1\" is missing from the file"_s.arg(textFrom(part.name))};
    auto content = std::make_shared<SheetContent>();
    const auto stream = package.open(*entry);
    SheetReader reader(*stream, {m_palette, texts.size(), date1904, entry->size}, *content);
    reader.read();
    followReferences(package, part, reader.drawingId(), reader.tableIds(), *content);
    return content;
}

/// Drawings and tables are beside the cells: what is wrong with them is told with the sheet, which is whole otherwise.
void XlsxWorkbook::followReferences(const Package& package, const SheetPart& part, const std::string& drawingId,
                                    const std::vector<std::string>& tableIds, SheetContent& content) const
{
    if (drawingId.empty() && tableIds.empty())
        return;
    try {
        const std::vector<Relationship> relationships = readRelationships(package, part.name);
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

qint64 XlsxWorkbook::bytes() const
{
    qint64 sum = qint64(sizeof(*this)) + texts.bytes() + qint64(styles.cells.capacity() * sizeof(CellStyle)) +
                 qint64(styles.fonts.capacity() * sizeof(FontStyle)) +
                 qint64(styles.borders.capacity() * sizeof(BorderStyle)) +
                 qint64(styles.fills.capacity() * sizeof(FillStyle));
    for (const SheetPart& part : m_parts)
        sum += part.content ? part.content->bytes() : 0;
    return sum;
}

} // namespace lumivane::engine
