#pragma once

#include "panel/PanelGeometry.h"

#include <QImage>
#include <QString>

namespace lumivane {

/// In logical pixels times 15: the same on every screen.
TwipsSize sizeInTwips(const QImage& image);

/// What a panel shows: the picture, whose devicePixelRatio is the scale at which it was drawn, and what of its range
/// could not be drawn, as a sentence for the user. The sentence travels with the picture into the cache file, or a
/// picture with a gap would look complete at the next start.
struct PanelPicture
{
    QImage image;
    QString notice;

    TwipsSize size() const { return sizeInTwips(image); }
};

/// Any picture file, drawn pixel by pixel and turned as its camera says. Throws RuntimeError 53 where it is missing and
/// 481 where it is no picture or one of more pixels than can be kept.
PanelPicture loadPictureFile(const QString& file);
/// The kinds of picture files that can be read here, as a filter of a file dialog.
QString pictureFileFilter();

// The picture cache is a Windows bitmap whose resolution tells the scale (96 dots to the inch being 1), with the notice
// behind the picture's bytes, where readers of bitmaps do not look.

/// Throws as loadPictureFile does.
PanelPicture loadCachedPicture(const QString& file);
/// Writes the whole file or leaves the old one. Throws RuntimeError 75 naming the file.
void saveCachedPicture(const PanelPicture& picture, const QString& file);

} // namespace lumivane
