#pragma once

#include "engine/draw/PictureFormat.h"

#include <QString>

namespace lumivane::engine {

struct ConvertedMetafile
{
    QByteArray svg;  ///< empty where there is a problem
    QString problem; ///< the end of a sentence: "the program "wmf2svg" is not installed"
};

/// Turns an EMF or WMF into an SVG by another program. It runs without a shell in a folder of its own, has a few
/// seconds and bounded memory, and may write a bounded number of bytes.
ConvertedMetafile convertMetafile(PictureFormat format, const QByteArray& bytes);

} // namespace lumivane::engine
