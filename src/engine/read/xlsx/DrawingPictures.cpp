#include "engine/read/xlsx/DrawingPictures.h"

#include "engine/read/package/AttributeValues.h"
#include "engine/read/package/ReadError.h"

#include <algorithm>

namespace lumivane::engine {

DrawingPictures::DrawingPictures(const Package& package, qint64 maxBytes)
    : m_package(package), m_maxBytes(std::min(maxBytes, maxAllBytes))
{
}

std::shared_ptr<const PictureData> DrawingPictures::find(const std::vector<Relationship>& relationships,
                                                         std::string_view id)
{
    const Relationship* target = id.empty() ? nullptr : relationshipById(relationships, id);
    return target && !target->external ? read(target->target) : nullptr;
}

std::shared_ptr<const PictureData> DrawingPictures::read(const std::string& part)
{
    const Package::Entry* entry = m_package.find(part);
    if (!entry)
        return nullptr;
    const auto [place, isNew] = m_pictures.try_emplace(entry);
    const bool fits = entry->size <= quint64(maxPictureBytes) && qint64(entry->size) <= m_maxBytes - m_bytes;
    if (!isNew || !fits)
        return place->second;
    try {
        const std::string bytes = m_package.read(*entry);
        place->second = std::make_shared<const PictureData>(
            PictureData{textFrom(part), QByteArray(bytes.data(), static_cast<qsizetype>(bytes.size()))});
        m_bytes += qint64(bytes.size());
    } catch (const Fault&) {
        // Shown as missing in its place, which says more than a sentence about an entry.
    }
    return place->second;
}

} // namespace lumivane::engine
