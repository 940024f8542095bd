#pragma once

#include <QColor>
#include <QString>
#include <vector>

namespace lumivane::engine {

/// Small charts in cells that share their looks, and perhaps their scale.
struct SparklineGroup
{
    enum class Kind : quint8 { Line, Column, WinLoss };
    enum class Empty : quint8 { Zero, Gap, Joined }; ///< how cells without a number show in a line
    enum class Scale : quint8 { Own, Group, Given };
    /// A chart: the cell that it lies in, and the cells with its values.
    struct Member
    {
        int row = 0, column = 0;
        QString values; ///< a reference such as "Data!A1:A12"
    };

    Kind kind = Kind::Line;
    Empty empty = Empty::Zero;
    double lineWidth = 0.75; ///< points
    bool showsMarkers = false, showsHigh = false, showsLow = false, showsFirst = false, showsLast = false;
    bool showsNegative = false, showsAxis = false;
    bool showsHidden = false; ///< values of hidden rows and columns, too
    bool rightToLeft = false;
    Scale least = Scale::Own, most = Scale::Own;
    double givenLeast = 0, givenMost = 0;
    QRgb color = 0xff376092, negativeColor = 0xffd00000, axisColor = 0xff000000, markerColor = 0xffd00000;
    QRgb firstColor = 0xffd00000, lastColor = 0xffd00000, highColor = 0xffd00000, lowColor = 0xffd00000;
    QString dates; ///< a reference to the days of the values; empty: they lie at equal distances
    std::vector<Member> members;
};

} // namespace lumivane::engine
