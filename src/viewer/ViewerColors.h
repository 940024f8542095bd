#pragma once

#include <QColor>
#include <QIcon>
#include <QPalette>

namespace lumivane {

/// The colours of a workbook window around the cells, made from the palette so that they fit a light and a dark
/// desktop. The cells keep the colours of the workbook: they show what a panel shows.
struct ViewerColors
{
    explicit ViewerColors(const QPalette& palette);

    bool dark;
    QColor ground;        ///< behind and beside the cells
    QColor header;        ///< of rows and columns
    QColor headerTouched; ///< where something is selected
    QColor headerWhole;   ///< of rows and columns selected as a whole
    QColor headerText;
    QColor headerTextStrong;
    QColor headerLine;
    QColor accent;    ///< frame of the selection
    QColor selection; ///< translucent, over selected cells
    QColor paneLine;
    QColor quietText;
    QColor noticeGround; ///< of the bar that tells about a changed file
    QColor noticeLine;
};

/// An icon of the workbook window in the colours of the palette, sharp at any scale.
QIcon viewerIcon(const QString& name, const QPalette& palette);

} // namespace lumivane
