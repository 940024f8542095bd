#pragma once

#include "SheetBuilder.h"
#include "engine/draw/SheetPainter.h"

#include <QImage>

namespace lumivane::engine {

inline constexpr QRgb red = 0xffff0000, blue = 0xff0000ff, green = 0xff00c000, white = 0xffffffff, black = 0xff000000;
inline constexpr int cellWidth = 64, cellHeight = 20; // of the default font

/// Draws from A1 on, without gridlines, so that what is not white is what the test is about.
inline QImage draw(SheetBuilder& made, int rows = 1, int columns = 3, double scale = 1,
                   const SheetOverlay* overlay = nullptr)
{
    made.sheet().view.gridLines = false;
    return SheetPainter(made.shown(overlay)).image({1, 1, rows, columns}, scale);
}

/// The smallest rectangle round what is not white within a part of the picture; empty if there is nothing.
inline QRect ink(const QImage& image, const QRect& part)
{
    QRect found;
    for (int y = part.top(); y <= part.bottom(); ++y)
        for (int x = part.left(); x <= part.right(); ++x)
            if (image.pixel(x, y) != white)
                found |= QRect(x, y, 1, 1);
    return found;
}

inline QRect ink(const QImage& image)
{
    return ink(image, image.rect());
}

inline QRect cellRect(int row, int column)
{
    return {(column - 1) * cellWidth, (row - 1) * cellHeight, cellWidth, cellHeight};
}

} // namespace lumivane::engine
