#pragma once

#include <QColor>
#include <QRectF>
#include <QString>
#include <memory>
#include <optional>
#include <vector>

// The looks of cells as a workbook stores them, with every theme and indexed colour already resolved.

namespace lumivane::engine {

enum class Underline : quint8 { None, Single, Double, SingleAccounting, DoubleAccounting };
enum class Script : quint8 { Normal, Superscript, Subscript };

struct FontStyle
{
    QString family = QStringLiteral("Calibri");
    double points = 11;
    bool bold = false;
    bool italic = false;
    bool strikeOut = false;
    Underline underline = Underline::None;
    Script script = Script::Normal;
    QRgb color = 0xff000000;
    bool operator==(const FontStyle&) const = default;
};

/// The pattern names of the file format; Solid shows `fore` alone.
enum class Pattern : quint8 {
    None,
    Solid,
    Gray125,
    Gray0625,
    DarkGray,
    MediumGray,
    LightGray,
    DarkHorizontal,
    DarkVertical,
    DarkDown,
    DarkUp,
    DarkGrid,
    DarkTrellis,
    LightHorizontal,
    LightVertical,
    LightDown,
    LightUp,
    LightGrid,
    LightTrellis,
    Gradient, ///< as `gradient` says
};

struct GradientStop
{
    double position = 0; ///< 0 to 1
    QRgb color = 0;
    bool operator==(const GradientStop&) const = default;
};

/// Colours that pass over into each other across a cell.
struct CellGradient
{
    std::vector<GradientStop> stops; ///< ascending
    double degrees = 0;              ///< in which they follow each other, clockwise; 0: from left to right
    std::optional<QRectF> inner; ///< they follow each other from this part of the cell, in shares of it, to its sides
    bool operator==(const CellGradient&) const = default;
};

struct FillStyle
{
    Pattern pattern = Pattern::None;
    QRgb fore = 0xff000000;
    QRgb back = 0xffffffff;
    std::shared_ptr<const CellGradient> gradient = {}; ///< null but for Pattern::Gradient
    bool operator==(const FillStyle& other) const;
};

enum class LineStyle : quint8 {
    None,
    Thin,
    Medium,
    Dashed,
    Dotted,
    Thick,
    Double,
    Hair,
    MediumDashed,
    DashDot,
    MediumDashDot,
    DashDotDot,
    MediumDashDotDot,
    SlantDashDot,
};

struct BorderLine
{
    LineStyle style = LineStyle::None;
    QRgb color = 0xff000000;
    bool operator==(const BorderLine&) const = default;
};

struct BorderStyle
{
    BorderLine left, right, top, bottom, diagonal;
    bool diagonalUp = false;   ///< from bottom left to top right
    bool diagonalDown = false; ///< from top left to bottom right
};

enum class Horizontal : quint8 { General, Left, Center, Right, Fill, Justify, CenterAcross, Distributed };
enum class Vertical : quint8 { Bottom, Center, Top, Justify, Distributed };

struct CellStyle
{
    int font = 0; ///< index into StyleTable::fonts
    int fill = 0;
    int border = 0;
    int numberFormat = 0; ///< index into StyleTable::numberFormats
    Horizontal horizontal = Horizontal::General;
    Vertical vertical = Vertical::Bottom;
    qint16 rotation = 0; ///< degrees counter-clockwise, -90 to 90; 255: letters stacked
    quint8 indent = 0;
    bool wrap = false;
    bool shrinkToFit = false;
    bool spaceAround = false; ///< "distributed" also leaves room before and behind a line
    quint8 readingOrder = 0;  ///< 0 by context, 1 left to right, 2 right to left
    bool quotePrefix = false;
};

/// What a table style or a condition changes of a cell's look. What is not set stays as it is.
struct DifferentialStyle
{
    std::optional<QRgb> fontColor;
    std::optional<bool> bold, italic, strikeOut;
    std::optional<Underline> underline;
    std::optional<FillStyle> fill;
    std::optional<BorderLine> left, right, top, bottom;
    std::optional<BorderLine> vertical, horizontal; ///< between the cells of a table's part
    QString numberFormat;                           ///< a code; empty: not set

    /// Takes what is not set here from another one.
    void fillFrom(const DifferentialStyle& other);
    bool operator==(const DifferentialStyle&) const = default;
};

/// Every style of a workbook. Never empty: index 0 of each list is the default.
struct StyleTable
{
    std::vector<FontStyle> fonts{FontStyle{}};
    std::vector<FillStyle> fills{FillStyle{}};
    std::vector<BorderStyle> borders{BorderStyle{}};
    std::vector<QString> numberFormats{QStringLiteral("General")}; ///< format codes, built-in ones spelled out
    std::vector<CellStyle> cells{CellStyle{}};
    std::vector<std::shared_ptr<const DifferentialStyle>> differentials; ///< of conditional formats and tables

    const CellStyle& cell(int index) const
    {
        return cells[index >= 0 && index < static_cast<int>(cells.size()) ? index : 0];
    }
};

} // namespace lumivane::engine
