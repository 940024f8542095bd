#pragma once

#include "panel/PanelGeometry.h"
#include "panel/PictureIdentity.h"

#include <QImage>
#include <QString>
#include <optional>

namespace lumivane {

/// In logical pixels times 15: the same on every screen.
TwipsSize sizeInTwips(const QImage& image);

/// What a panel shows: the picture, whose devicePixelRatio is the scale at which it was drawn, and what of its range
/// could not be drawn, as a sentence for the user. The sentence travels with the picture into the cache file, or a
/// picture with a gap would look complete at the next start. So does what it belongs to.
struct PanelPicture
{
    QImage image;
    QString notice;
    PictureIdentity identity = {};

    TwipsSize size() const { return sizeInTwips(image); }
};

/// Any picture file, drawn pixel by pixel and turned as its camera says. Throws RuntimeError 53 where it is missing and
/// 481 where it is no picture or one of more pixels than can be kept.
PanelPicture loadPictureFile(const QString& file);
/// The kinds of picture files that can be read here, as a filter of a file dialog.
QString pictureFileFilter();

// The picture cache is a Windows bitmap whose resolution gives the scale (96 dots to the inch being 1), with notice and
// identity behind the picture's bytes, where readers of bitmaps do not look.

/// None where the file is missing or damaged, or was not written by saveCachedPicture.
std::optional<PanelPicture> loadCachedPicture(const QString& file);
/// What the file belongs to, without its picture being read.
std::optional<PictureIdentity> cachedIdentity(const QString& file);
/// Writes the whole file or leaves the old one. Throws RuntimeError 75 naming the file.
void saveCachedPicture(const PanelPicture& picture, const QString& file);

} // namespace lumivane
