#pragma once

#include "engine/read/package/Package.h"
#include "engine/read/package/XmlScanner.h"

#include <pugixml.hpp>
#include <string>
#include <vector>

namespace lumivane::engine {

// The small parts of a package: read as a whole under a bound, then looked at as a tree. Names are compared without
// their namespace prefix, which every writer chooses for itself.

constexpr quint64 maxSmallPart = 32ull << 20;

/// Throws Fault when the part is too large or its XML is broken.
void readSmallPart(const Package& package, const Package::Entry& entry, pugi::xml_document& document);

/// Right after a Start: the element as a tree, up to and including its End. Throws Fault where it has more elements
/// than `maxElements`.
void readTree(XmlScanner& xml, pugi::xml_document& document, size_t maxElements);

std::string_view localName(pugi::xml_node node);
/// The first element of that name in the node; a null node if there is none.
pugi::xml_node childNamed(pugi::xml_node node, std::string_view name);
/// All elements of that name in the node.
std::vector<pugi::xml_node> childrenNamed(pugi::xml_node node, std::string_view name);
/// An attribute's value by its name without prefix; a null view if there is none.
std::string_view attributeOf(pugi::xml_node node, std::string_view name);

struct Relationship
{
    std::string id;
    std::string type;   ///< the last word of it: "worksheet", "styles"
    std::string target; ///< name of a part of the package; as written if it is external
    bool external = false;
};

/// What a part refers to, ordered by id, from the part beside it; none when there is no such part. The package itself
/// is "".
std::vector<Relationship> readRelationships(const Package& package, std::string_view part);
/// Name of the part that the package as a whole refers to as its document, which need not exist; empty without one.
std::string rootPart(const Package& package);
const Relationship* findRelationship(const std::vector<Relationship>& all, std::string_view type);
const Relationship* relationshipById(const std::vector<Relationship>& all, std::string_view id);

} // namespace lumivane::engine
