#include "engine/read/xlsx/ControlReader.h"

#include "engine/read/package/AttributeValues.h"
#include "engine/read/xlsx/DrawingAnchor.h"

#include <algorithm>

namespace lumivane::engine {

using namespace Qt::StringLiterals;

namespace {

std::optional<ControlKind> controlKind(std::string_view name)
{
    using enum ControlKind;
    static constexpr std::pair<std::string_view, ControlKind> kinds[] = {
        {"Button", Button}, {"Checkbox", CheckBox}, {"Radio", Radio}, {"Drop", DropDown}, {"List", List},
        {"Spin", Spin},     {"Scroll", ScrollBar},  {"GBox", Group},  {"Label", Label},   {"Edit", Edit}};
    for (const auto& [known, kind] : kinds) {
        if (known == name)
            return kind;
    }
    return std::nullopt;
}

/// "_x0000_s1028" is number 1028.
std::optional<int> shapeNumber(std::string_view id)
{
    const size_t start = id.rfind("_s");
    return start == std::string_view::npos ? std::nullopt : integerFrom(id.substr(start + 2));
}

std::string_view valueOf(pugi::xml_node data, std::string_view name)
{
    return childNamed(data, name).child_value();
}

QRgb fontColor(std::string_view text)
{
    const QColor color(textFrom(text.substr(0, 32)));
    return color.isValid() ? color.rgb() : 0xff000000;
}

FontStyle addFont(pugi::xml_node node, FontStyle font)
{
    if (const std::string_view face = attributeOf(node, "face"); !face.empty())
        font.family = textFrom(face.substr(0, 256));
    constexpr double perPoint = 20;
    if (const std::optional<double> size = numberFrom(attributeOf(node, "size")))
        font.points = std::clamp(*size / perPoint, 1.0, 400.0);
    if (const std::string_view color = attributeOf(node, "color"); !color.empty())
        font.color = fontColor(color);
    return font;
}

void readState(pugi::xml_node data, ControlContent& control)
{
    const auto number = [data](const char* name, int& value) {
        value = integerFrom(valueOf(data, name)).value_or(value);
    };
    constexpr size_t longest = 255;
    number("Checked", control.state);
    number("Sel", control.chosen);
    number("Val", control.value);
    number("Min", control.least);
    number("Max", control.most);
    number("Page", control.page);
    control.entries = textFrom(valueOf(data, "FmlaRange").substr(0, longest));
    control.level = bool(childNamed(data, "Horiz"));
}

} // namespace

void showPicture(std::shared_ptr<const PictureData> picture, ShapeContent& shape)
{
    shape.kind = ShapeContent::Kind::Picture;
    shape.geometry = {"rect", {}, {}, {}, {}};
    shape.fill = {};
    shape.fill.kind = FillKind::Picture;
    shape.fill.picture.data = std::move(picture);
}

ControlReader::ControlReader(const Package& package, const Package::Entry& part, DrawingPictures& pictures,
                             DrawingBudget& budget)
    : m_pictures(pictures), m_budget(budget), m_relationships(readRelationships(package, part.name))
{
}

std::vector<std::pair<int, DrawingContent>>
ControlReader::read(pugi::xml_node root, std::vector<DrawingContent>& drawings, const std::map<int, size_t>& byNumber)
{
    std::vector<std::pair<int, DrawingContent>> others;
    for (const pugi::xml_node shape : childrenNamed(root, "shape")) {
        std::optional<int> number = shapeNumber(attributeOf(shape, "spid"));
        if (!number)
            number = shapeNumber(attributeOf(shape, "id"));
        if (const auto known = byNumber.find(number.value_or(0)); known != byNumber.end()) {
            readShape(shape, drawings[known->second]);
            continue;
        }
        const pugi::xml_node data = childNamed(shape, "ClientData");
        const std::string_view kind = attributeOf(data, "ObjectType");
        DrawingContent drawing;
        drawing.kind = DrawingKind::Control;
        if (!(controlKind(kind) || kind == "Pict") ||
            !readPixelAnchor(childNamed(data, "Anchor").child_value(), drawing) || !m_budget.objects.takeOne())
            continue;
        readShape(shape, drawing);
        drawing.name = (kind == "Pict" ? u"Object"_s : textFrom(kind)) + u" %1"_s.arg(number.value_or(0) % 1024);
        others.emplace_back(number.value_or(0), std::move(drawing));
    }
    return others;
}

void ControlReader::readShape(pugi::xml_node shape, DrawingContent& drawing)
{
    const pugi::xml_node data = childNamed(shape, "ClientData");
    drawing.hidden = attributeOf(shape, "style").find("visibility:hidden") != std::string_view::npos;
    if (const std::optional<ControlKind> kind = controlKind(attributeOf(data, "ObjectType"))) {
        drawing.shape.kind = ShapeContent::Kind::Control;
        drawing.shape.control.kind = *kind;
        readState(data, drawing.shape.control);
        drawing.shape.text = readText(shape, data, *kind);
        return;
    }
    // Other controls leave a picture of themselves.
    const std::string_view picture = attributeOf(childNamed(shape, "imagedata"), "relid");
    if (const auto found = m_pictures.find(m_relationships, picture))
        showPicture(found, drawing.shape);
}

ShapeText ControlReader::readText(pugi::xml_node shape, pugi::xml_node data, ControlKind kind)
{
    ShapeText text;
    const std::string_view across = valueOf(data, "TextHAlign"), down = valueOf(data, "TextVAlign");
    const bool isButton = kind == ControlKind::Button;
    text.anchor = kind == ControlKind::Group ? TextAnchor::Top
                  : down == "Bottom"         ? TextAnchor::Bottom
                  : down == "Center" || isButton || kind == ControlKind::CheckBox || kind == ControlKind::Radio
                      ? TextAnchor::Middle
                      : TextAnchor::Top;
    text.top = text.bottom = 0;
    text.left = text.right = 19050;
    FontStyle font;
    font.family = u"Segoe UI"_s;
    font.points = 8;
    for (const pugi::xml_node block : childrenNamed(childNamed(shape, "textbox"), "div")) {
        ShapeParagraph paragraph;
        paragraph.align = across == "Center" || (isButton && across.empty()) ? TextAlign::Center
                          : across == "Right"                                ? TextAlign::Right
                                                                             : TextAlign::Left;
        addRuns(block, font, paragraph, 0);
        if (!paragraph.runs.empty() && m_budget.paragraphs.takeOne())
            text.paragraphs.push_back(std::move(paragraph));
    }
    return text;
}

void ControlReader::addRuns(pugi::xml_node node, const FontStyle& font, ShapeParagraph& paragraph, int depth)
{
    constexpr int maxDepth = 8;
    for (const pugi::xml_node child : node.children()) {
        if (child.type() == pugi::node_pcdata) {
            // Line ends in it are those of the file, not of the text.
            QString text = textFrom(child.value()).simplified();
            text.truncate(static_cast<qsizetype>(m_budget.letters.take(static_cast<size_t>(text.size()))));
            if (!text.isEmpty() && m_budget.runs.takeOne())
                paragraph.runs.push_back({text, font});
        } else if (depth < maxDepth) {
            FontStyle changed = addFont(child, font);
            changed.bold = changed.bold || localName(child) == "b";
            changed.italic = changed.italic || localName(child) == "i";
            addRuns(child, changed, paragraph, depth + 1);
        }
    }
}

} // namespace lumivane::engine
