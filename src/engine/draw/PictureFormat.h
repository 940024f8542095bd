#pragma once

#include <QByteArray>

namespace lumivane::engine {

enum class PictureFormat { Unknown, Png, Jpeg, Gif, Bmp, Tiff, WebP, Svg, Emf, Wmf };

/// What a picture is, by its bytes.
PictureFormat pictureFormat(const QByteArray& bytes);
/// As decoders name it ("png"); null for those that need another program.
const char* formatName(PictureFormat format);
/// Whether an SVG draws with nothing but what is in it, in bounded time: no links to files, no styles or entities from
/// elsewhere, few shapes that repeat others.
bool isSelfContained(const QByteArray& svg);

} // namespace lumivane::engine
