#pragma once

#include "engine/content/ShapeContent.h"
#include "engine/read/package/Package.h"
#include "engine/read/package/SmallParts.h"

#include <map>

namespace lumivane::engine {

/// The pictures that drawings of one sheet refer to. Each part is read once and kept as it lies in the file.
class DrawingPictures
{
public:
    static constexpr qint64 maxPictureBytes = 32 << 20; ///< of one
    static constexpr qint64 maxAllBytes = 128 << 20;

    DrawingPictures(const Package& package, qint64 maxBytes);

    /// By a relationship's id; null for one that leads out of the file, to nothing or beyond the bounds, and for a
    /// damaged part.
    std::shared_ptr<const PictureData> find(const std::vector<Relationship>& relationships, std::string_view id);
    qint64 bytes() const { return m_bytes; }

private:
    std::shared_ptr<const PictureData> read(const std::string& part);

    const Package& m_package;
    const qint64 m_maxBytes;
    qint64 m_bytes = 0;
    std::map<const Package::Entry*, std::shared_ptr<const PictureData>> m_pictures;
};

} // namespace lumivane::engine
