#include "engine/draw/PictureCache.h"

#include "engine/draw/MetafileConverter.h"

#include <QBuffer>
#include <QImageReader>
#include <algorithm>

namespace lumivane::engine {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype maxSvgBytes = 2 << 20;
constexpr int freeDecodings = 10; // of one picture in a minute
constexpr int maxSide = 4096;     // of a picture made of lines
constexpr size_t maxSizes = 4;    // that are kept of one picture

DecodedPicture decode(const QByteArray& bytes, PictureFormat format, const QSize& wanted)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, formatName(format));
    reader.setAutoDetectImageFormat(false);
    if (!reader.canRead())
        return {{}, u"it is damaged, or pictures of its format cannot be read here"_s, {}};
    const QSize own = reader.size();
    if (own.isEmpty())
        return {{}, u"it is damaged"_s, {}};
    if (format == PictureFormat::Svg)
        reader.setScaledSize(wanted.boundedTo({maxSide, maxSide}));
    else if (qint64(own.width()) * own.height() > PictureCache::maxPixels)
        return {{}, u"it is too large"_s, {}};
    QImage image = reader.read();
    if (image.isNull())
        return {{}, u"it is damaged"_s, {}};
    // Painting makes pictures smaller by leaving out pixels; this takes their mean.
    const QSize least = image.size().boundedTo(wanted);
    if (format != PictureFormat::Svg && least != image.size())
        image = image.scaled(least, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    return {std::move(image).convertToFormat(QImage::Format_ARGB32_Premultiplied), {}, own};
}

} // namespace

PictureCache& PictureCache::shared()
{
    static PictureCache cache;
    return cache;
}

QImage PictureCache::image(const PictureFill& fill, const QSize& size)
{
    const QSize wanted = size.expandedTo({1, 1});
    const std::lock_guard lock(m_mutex);
    const QImage sharp = decoded(fill.outline, wanted);
    return sharp.isNull() ? decoded(fill.data, wanted) : sharp;
}

QSize PictureCache::ownSize(const PictureFill& fill)
{
    constexpr QSize small(16, 16);
    const std::lock_guard lock(m_mutex);
    const Data& data = fill.data ? fill.data : fill.outline;
    if (!data)
        return {};
    if (entry(data).ownSize.isEmpty())
        decoded(data, small);
    return entry(data).ownSize;
}

QString PictureCache::problem(const PictureFill& fill)
{
    if (!fill.data && !fill.outline)
        return u"it is not in the file"_s;
    constexpr QSize small(16, 16);
    const std::lock_guard lock(m_mutex);
    for (const Data& data : {fill.outline, fill.data}) {
        if (!data)
            continue;
        Entry& known = entry(data);
        if (known.images.empty() && known.problem.isEmpty())
            decoded(data, small);
        if (known.problem.isEmpty() && known.images.empty())
            return u"it takes too long"_s;
        if (known.problem.isEmpty())
            return {};
    }
    return entry(fill.data ? fill.data : fill.outline).problem;
}

PictureCache::Entry& PictureCache::entry(const Data& data)
{
    return m_entries[data];
}

QImage PictureCache::decoded(const Data& data, const QSize& size)
{
    if (!data)
        return {};
    Entry& known = entry(data);
    for (size_t i = 0; i < known.sizes.size(); ++i) {
        if (known.sizes[i] == size)
            return known.images[i];
    }
    return known.problem.isEmpty() ? made(known, data, size) : QImage();
}

QImage PictureCache::made(Entry& known, const Data& data, const QSize& size)
{
    const bool inTime = hasTime();
    const bool isCounted = known.decodings == 0 || known.decodings > freeDecodings;
    if (isCounted && !inTime)
        return {};
    QElapsedTimer spent;
    spent.start();
    DecodedPicture decoded = decodedAnew(known, *data, size);
    if (isCounted)
        m_timeSpent += spent.elapsed();
    ++known.decodings;
    known.problem = std::move(decoded.problem);
    known.ownSize = decoded.ownSize;
    if (decoded.image.isNull())
        return {};
    makeRoom(decoded.image.sizeInBytes());
    if (known.images.size() >= maxSizes) {
        m_bytes -= known.images.front().sizeInBytes();
        known.images.erase(known.images.begin());
        known.sizes.erase(known.sizes.begin());
    }
    m_bytes += decoded.image.sizeInBytes();
    known.images.push_back(decoded.image);
    known.sizes.push_back(size);
    return decoded.image;
}

DecodedPicture PictureCache::decodedAnew(Entry& known, const PictureData& data, const QSize& size)
{
    const PictureFormat format = pictureFormat(data.bytes);
    if (format == PictureFormat::Unknown)
        return {{}, u"its format is not known"_s};
    if (format == PictureFormat::Svg && data.bytes.size() > maxSvgBytes)
        return {{}, u"it is too large"_s};
    if (format == PictureFormat::Svg && !isSelfContained(data.bytes))
        return {{}, u"it draws on other files"_s};
    if (format != PictureFormat::Emf && format != PictureFormat::Wmf)
        return decode(data.bytes, format, size);
    if (known.outline.isEmpty()) {
        ConvertedMetafile converted = convertMetafile(format, data.bytes);
        if (!converted.problem.isEmpty())
            return {{}, converted.problem};
        known.outline = std::move(converted.svg);
    }
    return decode(known.outline, PictureFormat::Svg, size);
}

bool PictureCache::hasTime()
{
    if (!m_clock.isValid() || m_clock.elapsed() > 60'000) {
        m_clock.start();
        m_timeSpent = 0;
        for (auto& [data, entry] : m_entries)
            entry.decodings = std::min(entry.decodings, 1);
    }
    return m_timeSpent < maxDecodingTime;
}

/// Forgets pictures that no sheet holds any more, and all of them where that is not enough: they are quickly made anew.
void PictureCache::makeRoom(qint64 bytes)
{
    const auto forget = [this](Entry& entry) {
        for (const QImage& image : entry.images)
            m_bytes -= image.sizeInBytes();
        entry.images.clear();
        entry.sizes.clear();
    };
    for (auto place = m_entries.begin(); place != m_entries.end();) {
        const bool unused = place->first.expired();
        if (unused)
            forget(place->second);
        place = unused ? m_entries.erase(place) : std::next(place);
    }
    if (m_bytes + bytes <= maxBytes)
        return;
    for (auto& [data, entry] : m_entries)
        forget(entry);
}

} // namespace lumivane::engine
