#include "engine/read/xlsx/XlsxReader.h"

#include "engine/read/package/AttributeValues.h"
#include "engine/read/package/ReadError.h"
#include "engine/read/xlsx/DrawingPictures.h"
#include "engine/read/xlsx/DrawingReader.h"
#include "engine/read/xlsx/NoteReader.h"
#include "engine/read/xlsx/RichText.h"
#include "engine/read/xlsx/SheetReader.h"
#include "engine/read/xlsx/StyleReader.h"
#include "engine/read/xlsx/TableReader.h"

namespace lumivane::engine {

using namespace Qt::StringLiterals;

namespace {

/// Tables of one sheet that are followed.
constexpr size_t maxTables = 1000;

/// The entry that is referred to by a type, or null; `missing` then is its name where one is referred to.
const Package::Entry* referredEntry(const Package& package, const std::vector<Relationship>& relationships,
                                    std::string_view type, std::string* missing = nullptr)
{
    const Relationship* reference = findRelationship(relationships, type);
    if (!reference || reference->external)
        return nullptr;
    const Package::Entry* entry = package.find(reference->target);
    if (!entry && missing)
        *missing = reference->target;
    return entry;
}

/// Comments without which the sheet is whole otherwise. Conversations and boxes are beside the comments themselves.
void readNotes(const Package& package, const std::vector<Relationship>& relationships, pugi::xml_node boxes,
               const Palette& palette, qint64 maxBytes, SheetContent& content)
{
    constexpr qint64 mostBytes = 16 << 20;
    const qint64 allowed = std::min(mostBytes, maxBytes - content.bytes());
    const Package::Entry* comments = referredEntry(package, relationships, "comments");
    if (!comments)
        return;
    try {
        readComments(*package.open(*comments), palette, allowed, content);
        pugi::xml_document document;
        if (const Package::Entry* said = referredEntry(package, relationships, "threadedComment")) {
            readSmallPart(package, *said, document);
            readConversations(document.document_element(), allowed, content);
        }
    } catch (const Fault& fault) {
        content.addProblem(u"Comments are missing: %1."_s.arg(fault.what));
    }
    readOpenNotes(boxes, content);
}

/// The older part with controls and the boxes of comments. Such parts are often careless in their XML: nothing is read
/// of a broken one. Controls are named as not drawn then, and the cells with comments are marked all the same.
void readOlderDrawings(const Package& package, const Package::Entry& entry, pugi::xml_document& document)
{
    try {
        readSmallPart(package, entry, document);
    } catch (const Fault&) {
        document.reset();
    }
}

void readBackground(const Package& package, const std::vector<Relationship>& relationships, const std::string& id,
                    qint64 maxBytes, SheetContent& content)
{
    if (id.empty())
        return;
    DrawingPictures pictures(package, maxBytes - content.bytes());
    content.background.data = pictures.find(relationships, id);
    content.pictureBytes += pictures.bytes();
    if (!content.background.data)
        content.addProblem(u"The sheet's background is missing: it is not in the file, or too large."_s);
}

} // namespace

XlsxReader::XlsxReader(const QString& path) : m_path(path) {}

WorkbookContent XlsxReader::readWorkbook(SheetList&, qint64 maxBytes)
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
    readTexts(package, relationships, maxBytes, content);
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
        std::string name(attributeOf(node, "name"));
        resolveEscapes(name);
        entry.name = textFrom(name);
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
        if (name.sheet < 0 || name.sheet >= static_cast<int>(content.sheets.size()))
            name.sheet = -1;
        content.definedNames.push_back(std::move(name));
    }
}

void XlsxReader::readThemeAndStyles(const Package& package, const std::vector<Relationship>& relationships,
                                    WorkbookContent& content)
{
    pugi::xml_document document;
    if (const Package::Entry* theme = referredEntry(package, relationships, "theme")) {
        m_theme = theme->name;
        readSmallPart(package, *theme, document);
        m_palette.readTheme(document.document_element());
    }
    std::string missing;
    if (const Package::Entry* look = referredEntry(package, relationships, "styles", &missing)) {
        readSmallPart(package, *look, document);
        content.styles = readStyles(document.document_element(), m_palette);
        m_tableStyles.readOwn(document.document_element(), content.styles.differentials);
    } else if (!missing.empty()) {
        // Dates look like numbers then, so whoever sees the sheet must know.
        m_problem =
            u"Formats and colors of cells are missing: entry \"%1\" is not in the file."_s.arg(textFrom(missing));
    }
}

void XlsxReader::readTexts(const Package& package, const std::vector<Relationship>& relationships, qint64 maxBytes,
                           WorkbookContent& content)
{
    const Package::Entry* entry = referredEntry(package, relationships, "sharedStrings");
    if (!entry)
        return;
    const auto stream = package.open(*entry);
    try {
        readSharedTexts(*stream, m_palette, maxBytes, content.texts);
    } catch (const Fault& fault) {
        throw Fault{u"entry \"%1\": %2"_s.arg(textFrom(entry->name), fault.what), fault.cause};
    }
}

std::shared_ptr<const SheetContent> XlsxReader::readSheet(const WorkbookContent& workbook, int index, qint64 maxBytes)
{
    const Package package(m_path);
    const std::string& part = m_parts[static_cast<size_t>(index)];
    if (part.empty())
        throw Fault{u"the file does not say which of its parts holds it"_s};
    const Package::Entry* entry = package.find(part);
    if (!entry)
        throw Fault{u"its part \"%1\" is missing from the file"_s.arg(textFrom(part))};
    auto content = std::make_shared<SheetContent>();
    const auto stream = package.open(*entry);
    content->sheetIndex = index;
    content->problem = m_problem;
    SheetReader reader(*stream,
                       {m_palette, workbook.styles.differentials, workbook.texts.size(),
                        static_cast<int>(workbook.styles.cells.size()), workbook.date1904, entry->size, maxBytes},
                       *content);
    reader.read();
    followReferences(package, part, reader, maxBytes, *content);
    return content;
}

/// Drawings and tables are beside the cells: what is wrong with them is said with the sheet, which is whole otherwise.
void XlsxReader::followReferences(const Package& package, const std::string& part, const SheetReader& reader,
                                  qint64 maxBytes, SheetContent& content)
{
    try {
        const std::vector<Relationship> relationships = readRelationships(package, part);
        const auto target = [&](const std::string& id) {
            const Relationship* found = relationshipById(relationships, id);
            return found && !found->external ? package.find(found->target) : nullptr;
        };
        std::set<const Package::Entry*> tables;
        for (const std::string& id : reader.tableIds()) {
            if (const Package::Entry* entry = target(id))
                tables.insert(entry);
        }
        for (const Relationship& reference : relationships) {
            const Package::Entry* entry = reference.external ? nullptr : package.find(reference.target);
            if (reference.type == "pivotTable" && entry)
                tables.insert(entry);
        }
        readTables(package, tables, content);
        readBackground(package, relationships, reader.backgroundId(), maxBytes, content);
        pugi::xml_document older;
        const Package::Entry* olderPart = target(reader.controlsId());
        if (olderPart)
            readOlderDrawings(package, *olderPart, older);
        readNotes(package, relationships, older.document_element(), m_palette, maxBytes, content);
        const DrawingParts parts{target(reader.drawingId()), olderPart,        older.document_element(),
                                 package.find(m_theme),      reader.objects(), relationships};
        if (!parts.drawings && !reader.drawingId().empty())
            throw Fault{u"the part with the drawings is missing from the file"_s};
        if (!parts.drawings && !parts.older && parts.objects.empty())
            return;
        SheetDrawings read = readDrawings(package, parts, m_palette, maxBytes - content.bytes());
        content.drawings = std::move(read.drawings);
        content.pictureBytes += read.pictureBytes;
        if (!read.complete)
            content.addProblem(u"The sheet holds more drawings than can be shown; some are missing."_s);
    } catch (const Fault& fault) {
        content.addProblem(u"Charts and pictures are missing: %1."_s.arg(fault.what));
    }
}

/// Each once, whatever number of times the sheet names it. One that is broken does not keep the others from being read.
void XlsxReader::readTables(const Package& package, const std::set<const Package::Entry*>& tables,
                            SheetContent& content)
{
    TableReader reader(m_tableStyles, m_palette, content);
    QString broken;
    size_t count = 0;
    for (const Package::Entry* entry : tables) {
        if (++count > maxTables) {
            content.addProblem(u"The looks of all but %1 tables are missing."_s.arg(maxTables));
            break;
        }
        try {
            pugi::xml_document document;
            readSmallPart(package, *entry, document);
            reader.readTable(document.document_element());
            reader.readPivot(document.document_element());
        } catch (const Fault& fault) {
            broken = fault.what;
        }
    }
    if (!broken.isEmpty())
        content.addProblem(u"The look of a table is missing: %1."_s.arg(broken));
}

} // namespace lumivane::engine
