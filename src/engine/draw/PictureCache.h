#pragma once

#include "engine/content/ShapeContent.h"

#include <QElapsedTimer>
#include <QImage>
#include <map>
#include <mutex>

namespace lumivane::engine {

/// A picture, or why there is none.
struct DecodedPicture
{
    QImage image;
    QString problem;
    QSize ownSize{};
};

/// Pictures of drawings as they were decoded for a size, kept for all threads within a bound. Formats are told by their
/// bytes. What would take too much memory or time is refused with a sentence's end ("its format is not known").
class PictureCache
{
public:
    static constexpr qint64 maxBytes = 64 << 20;    ///< of all that is kept
    static constexpr qint64 maxPixels = 50'000'000; ///< of a picture that is decoded
    /// Milliseconds that decoding pictures may take in a minute; more of them are not shown. Once a picture was
    /// decoded, the next times are free for a while: the cache forgets pictures that are still needed.
    static constexpr qint64 maxDecodingTime = 5'000;

    static PictureCache& shared();

    /// The whole picture, no larger than it is itself unless it is made of lines; null where it cannot be decoded.
    QImage image(const PictureFill& fill, const QSize& size);
    /// In its own pixels, which a picture made of lines states as well; empty where it cannot be decoded.
    QSize ownSize(const PictureFill& fill);
    /// Why a picture is not shown; empty where it is.
    QString problem(const PictureFill& fill);

private:
    using Data = std::shared_ptr<const PictureData>;
    struct Entry
    {
        QByteArray outline; ///< the SVG that a metafile was turned into
        QString problem;
        QSize ownSize;              ///< known once it was decoded
        int decodings = 0;          ///< in the present minute; at least 1 once there was one
        std::vector<QImage> images; ///< of some sizes
        std::vector<QSize> sizes;   ///< for which they were asked
    };

    Entry& entry(const Data& data);
    QImage decoded(const Data& data, const QSize& size);
    QImage made(Entry& entry, const Data& data, const QSize& size);
    bool hasTime();
    DecodedPicture decodedAnew(Entry& entry, const PictureData& data, const QSize& size);
    void makeRoom(qint64 bytes);

    std::mutex m_mutex;
    std::map<std::weak_ptr<const PictureData>, Entry, std::owner_less<>> m_entries;
    qint64 m_bytes = 0;
    QElapsedTimer m_clock;  ///< since the present minute began
    qint64 m_timeSpent = 0; ///< milliseconds in it
};

} // namespace lumivane::engine
