#include "engine/read/package/SmallParts.h"

#include "engine/read/package/AttributeValues.h"
#include "engine/read/package/ReadError.h"

#include <algorithm>

namespace lumivane::engine {

using namespace Qt::StringLiterals;

namespace {

std::string_view withoutPrefix(std::string_view name)
{
    const size_t colon = name.find(':');
    return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

/// "xl/worksheets" and "../drawings/drawing1.xml" make "xl/drawings/drawing1.xml".
std::string resolvedTarget(std::string_view folder, std::string_view target)
{
    std::vector<std::string_view> parts;
    const auto append = [&parts](std::string_view path) {
        while (!path.empty()) {
            const size_t end = std::min(path.find_first_of("/\\"), path.size());
            const std::string_view part = path.substr(0, end);
            if (part == ".." && !parts.empty())
                parts.pop_back();
            else if (!part.empty() && part != "." && part != "..")
                parts.push_back(part);
            path.remove_prefix(std::min(end + 1, path.size()));
        }
    };
    if (!target.starts_with('/'))
        append(folder);
    append(target);
    std::string whole;
    for (const std::string_view part : parts)
        whole.append(whole.empty() ? "" : "/").append(part);
    return whole;
}

} // namespace

void readSmallPart(const Package& package, const Package::Entry& entry, pugi::xml_document& document)
{
    if (entry.size > maxSmallPart)
        throw Fault{u"entry \"%1\" is larger than %2 MB"_s.arg(textFrom(entry.name)).arg(maxSmallPart >> 20),
                    ReadCause::TooLarge};
    const std::string bytes = package.read(entry);
    const pugi::xml_parse_result result = document.load_buffer(bytes.data(), bytes.size(), pugi::parse_default);
    if (!result)
        throw Fault{u"the XML of entry \"%1\" is broken (%2, near byte %3)"_s.arg(
            textFrom(entry.name), QLatin1StringView(result.description()), QString::number(result.offset))};
}

std::string_view localName(pugi::xml_node node)
{
    return withoutPrefix(node.name());
}

pugi::xml_node childNamed(pugi::xml_node node, std::string_view name)
{
    for (const pugi::xml_node child : node.children()) {
        if (localName(child) == name)
            return child;
    }
    return {};
}

std::vector<pugi::xml_node> childrenNamed(pugi::xml_node node, std::string_view name)
{
    std::vector<pugi::xml_node> found;
    for (const pugi::xml_node child : node.children()) {
        if (localName(child) == name)
            found.push_back(child);
    }
    return found;
}

void readTree(XmlScanner& xml, pugi::xml_document& document, size_t maxElements)
{
    document.reset();
    std::string text;
    size_t count = 0;
    const auto appendTo = [&](pugi::xml_node parent) {
        if (++count > maxElements)
            throw Fault{u"an element of it holds more than %1 others"_s.arg(maxElements), ReadCause::TooLarge};
        pugi::xml_node node = parent.append_child(std::string(xml.tag()).c_str());
        for (const XmlScanner::Attribute& attribute : xml.attributes()) {
            text.clear();
            appendDecoded(text, attribute.value);
            node.append_attribute(std::string(attribute.name).c_str()).set_value(text.c_str());
        }
        return node;
    };
    pugi::xml_node node = appendTo(document);
    while (node != document) {
        switch (xml.next()) {
        case XmlScanner::Token::Start:
            node = appendTo(node);
            break;
        case XmlScanner::Token::Text:
            text.clear();
            if (xml.textIsLiteral())
                text = xml.text();
            else
                appendDecoded(text, xml.text());
            node.append_child(pugi::node_pcdata).set_value(text.c_str());
            break;
        case XmlScanner::Token::End:
            node = node.parent();
            break;
        case XmlScanner::Token::Finish:
            return;
        }
    }
}

std::string_view attributeOf(pugi::xml_node node, std::string_view name)
{
    for (const pugi::xml_attribute attribute : node.attributes()) {
        if (withoutPrefix(attribute.name()) == name)
            return attribute.value();
    }
    return {};
}

std::vector<Relationship> readRelationships(const Package& package, std::string_view part)
{
    const size_t slash = part.rfind('/');
    const std::string_view folder = slash == std::string_view::npos ? std::string_view() : part.substr(0, slash);
    const std::string_view file = slash == std::string_view::npos ? part : part.substr(slash + 1);
    std::string name(folder);
    name.append(folder.empty() ? "" : "/").append("_rels/").append(file).append(".rels");
    const Package::Entry* entry = package.find(name);
    if (!entry)
        return {};
    pugi::xml_document document;
    readSmallPart(package, *entry, document);
    std::vector<Relationship> all;
    for (const pugi::xml_node node : childrenNamed(document.document_element(), "Relationship")) {
        Relationship one;
        one.id = attributeOf(node, "Id");
        const std::string_view type = attributeOf(node, "Type");
        one.type = type.substr(type.rfind('/') + 1);
        one.external = attributeOf(node, "TargetMode") == "External";
        const std::string_view target = attributeOf(node, "Target");
        one.target = one.external ? std::string(target) : resolvedTarget(folder, target);
        all.push_back(std::move(one));
    }
    // By id, as thousands of drawings may look for theirs.
    std::stable_sort(all.begin(), all.end(), [](const auto& a, const auto& b) { return a.id < b.id; });
    return all;
}

std::string rootPart(const Package& package)
{
    const std::vector<Relationship> roots = readRelationships(package, "");
    const Relationship* root = findRelationship(roots, "officeDocument");
    return root ? root->target : std::string();
}

const Relationship* findRelationship(const std::vector<Relationship>& all, std::string_view type)
{
    const auto place = std::find_if(all.begin(), all.end(), [&](const auto& one) { return one.type == type; });
    return place != all.end() ? &*place : nullptr;
}

const Relationship* relationshipById(const std::vector<Relationship>& all, std::string_view id)
{
    const auto place = std::lower_bound(all.begin(), all.end(), id,
                                        [](const auto& one, std::string_view wanted) { return one.id < wanted; });
    return place != all.end() && place->id == id && !id.empty() ? &*place : nullptr;
}

} // namespace lumivane::engine
