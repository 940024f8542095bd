#include "engine/read/xlsx/NoteReader.h"

#include "engine/read/package/AttributeValues.h"
#include "engine/read/xlsx/DrawingAnchor.h"
#include "engine/read/xlsx/DrawingBudget.h"
#include "engine/read/xlsx/RichText.h"

#include <algorithm>
#include <map>

namespace lumivane::engine {

using namespace Qt::StringLiterals;

namespace {

constexpr size_t maxComments = 100000;
constexpr size_t maxOpenNotes = 5000;
constexpr QRgb noteColor = 0xffffffe1;

using CellKey = std::pair<int, int>;

/// The comment of each cell that has one.
std::map<CellKey, const CommentMark*> byCell(const SheetContent& content)
{
    std::map<CellKey, const CommentMark*> found;
    for (const CommentMark& mark : content.comments)
        found.emplace(CellKey{mark.row, mark.column}, &mark);
    return found;
}

/// Right after the Start of a comment, up to its End.
void readComment(XmlScanner& xml, const Palette& palette, bool textFits, CommentMark& mark, TextTable& texts,
                 std::string& buffer)
{
    const size_t outside = xml.depth() - 1;
    while (true) {
        const XmlScanner::Token token = xml.next();
        if (token == XmlScanner::Token::End && xml.depth() == outside)
            return;
        if (token != XmlScanner::Token::Start)
            continue;
        if (xml.name() == nameKey("text") && textFits && mark.text < 0)
            mark.text = readRichText(xml, palette, texts, buffer);
        else
            xml.skip();
    }
}

bool standsOpen(pugi::xml_node shape, pugi::xml_node data)
{
    if (const pugi::xml_node visible = childNamed(data, "Visible"))
        return std::string_view(visible.child_value()) != "False";
    return attributeOf(shape, "style").find("visibility:hidden") == std::string_view::npos;
}

/// "#ffffe1 [80]"; names of system colors stand for the customary one.
QRgb fillOf(pugi::xml_node shape)
{
    const std::string_view text = attributeOf(shape, "fillcolor").substr(0, 7);
    const QColor color = text.starts_with('#') ? QColor(textFrom(text)) : QColor();
    return color.isValid() ? color.rgb() : noteColor;
}

/// A paragraph for each line of a text.
ShapeText noteText(const QString& text, const std::vector<TextRun>* runs, DrawingBudget& budget)
{
    ShapeText result;
    result.left = result.right = 4 * emuPerPixel;
    result.top = result.bottom = 2 * emuPerPixel;
    result.clipped = true;
    FontStyle plain;
    plain.family = u"Tahoma"_s;
    plain.points = 9;
    qsizetype line = 0;
    while (line <= text.size() && budget.paragraphs.takeOne()) {
        const qsizetype end = text.indexOf(u'\n', line) < 0 ? text.size() : text.indexOf(u'\n', line);
        ShapeParagraph& paragraph = result.paragraphs.emplace_back();
        paragraph.endPoints = plain.points;
        for (qsizetype i = 0, count = runs ? qsizetype(runs->size()) : 0; i <= count; ++i) {
            // Before the first run the text is plain.
            const auto startOf = [&](qsizetype run) {
                return run < 1 ? 0 : run > count ? text.size() : qsizetype((*runs)[size_t(run - 1)].start);
            };
            const qsizetype from = std::max(line, startOf(i)), to = std::min(end, startOf(i + 1));
            const bool isPlain = i == 0 || (*runs)[size_t(i - 1)].cellFont;
            if (from < to && budget.runs.takeOne())
                paragraph.runs.push_back({text.mid(from, to - from), isPlain ? plain : (*runs)[size_t(i - 1)].font});
        }
        line = end + 1;
    }
    return result;
}

std::optional<DrawingContent> boxOf(pugi::xml_node shape, pugi::xml_node data)
{
    DrawingContent box;
    if (!readPixelAnchor(childNamed(data, "Anchor").child_value(), box))
        return std::nullopt;
    box.shape.kind = ShapeContent::Kind::Shape;
    box.shape.geometry.preset = "rect";
    box.shape.fill.kind = FillKind::Solid;
    box.shape.fill.color = fillOf(shape);
    box.shape.line.drawn = true;
    box.shape.line.color = 0xff000000;
    return box;
}

} // namespace

void readComments(ByteStream& bytes, const Palette& palette, qint64 maxBytes, SheetContent& content)
{
    XmlScanner xml(bytes);
    std::string buffer;
    std::vector<bool> standsForConversation; // by author
    const qint64 before = content.texts.bytes();
    for (XmlScanner::Token token = xml.next(); token != XmlScanner::Token::Finish; token = xml.next()) {
        if (token != XmlScanner::Token::Start)
            continue;
        if (xml.name() == nameKey("author") && standsForConversation.size() < maxComments) {
            buffer.clear();
            xml.appendText(buffer);
            // A conversation leaves a note for older programs, by an author that stands for it.
            standsForConversation.push_back(buffer.starts_with("tc="));
        } else if (xml.name() == nameKey("comment")) {
            const std::optional<CellPlace> place = placeFrom(xml.attribute("ref"));
            const auto author = static_cast<size_t>(integerFrom(xml.attribute("authorId")).value_or(-1));
            if (!place || content.comments.size() >= maxComments) {
                xml.skip();
                continue;
            }
            CommentMark mark{place->row, place->column,
                             author < standsForConversation.size() && standsForConversation[author]};
            readComment(xml, palette, content.texts.bytes() - before < maxBytes, mark, content.texts, buffer);
            content.comments.push_back(mark);
        }
    }
}

void readConversations(pugi::xml_node root, qint64 maxBytes, SheetContent& content)
{
    std::map<CellKey, std::string> said;
    for (const pugi::xml_node one : childrenNamed(root, "threadedComment")) {
        const std::optional<CellPlace> place = placeFrom(attributeOf(one, "ref"));
        if (!place)
            continue;
        std::string& text = said[{place->row, place->column}];
        if (text.size() >= maxCellText)
            continue;
        if (!text.empty())
            text += '\n';
        text += childNamed(one, "text").child_value();
    }
    const qint64 before = content.texts.bytes();
    for (CommentMark& mark : content.comments) {
        const auto found = said.find({mark.row, mark.column});
        if (found != said.end() && content.texts.bytes() - before < maxBytes)
            mark.text = content.texts.append(found->second);
    }
}

void readOpenNotes(pugi::xml_node root, SheetContent& content)
{
    const std::map<CellKey, const CommentMark*> comments = byCell(content);
    DrawingBudget budget;
    for (const pugi::xml_node shape : childrenNamed(root, "shape")) {
        const pugi::xml_node data = childNamed(shape, "ClientData");
        if (attributeOf(data, "ObjectType") != "Note" || !standsOpen(shape, data))
            continue;
        const auto number = [&](std::string_view name) {
            return std::clamp(integerFrom(childNamed(data, name).child_value()).value_or(-1), -1, maxRow) + 1;
        };
        const auto comment = comments.find({number("Row"), number("Column")});
        if (comment == comments.end() || content.openNotes.size() >= maxOpenNotes)
            continue;
        const CommentMark& mark = *comment->second;
        std::optional<DrawingContent> box = boxOf(shape, data);
        if (!box)
            continue;
        if (mark.text >= 0)
            box->shape.text =
                noteText(content.texts.text(quint64(mark.text)), content.texts.runs(quint64(mark.text)), budget);
        content.openNotes.push_back({mark.row, mark.column, std::move(*box)});
    }
}

} // namespace lumivane::engine
