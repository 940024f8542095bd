#pragma once

#include "engine/content/Styles.h"

#include <QByteArray>
#include <QRectF>
#include <memory>
#include <string>
#include <vector>

// What pictures and shapes on sheets look like, as a file stores it, with colours resolved. Lengths are in EMU; colours
// carry their opacity; angles are in degrees, clockwise.

namespace lumivane::engine {

/// English metric units, in which drawings are measured. A pixel is one of 96 to the inch.
inline constexpr qint64 emuPerPixel = 9525, emuPerPoint = 12700;

/// A picture as it lies in the file, not decoded.
struct PictureData
{
    QString part; ///< of the package
    QByteArray bytes;
};

struct PictureFill
{
    std::shared_ptr<const PictureData> data;    ///< null: the file only links to it, or lacks it
    std::shared_ptr<const PictureData> outline; ///< the same picture as SVG, null in most files
    /// Shares of its width and height that are cut off on each side; below 0 they are added.
    double left = 0, top = 0, right = 0, bottom = 0;
    double opacity = 1;
    bool tiled = false;
    double tileX = 0, tileY = 0, tileWidth = 1, tileHeight = 1; ///< where the first tile begins; factors of its size
};

enum class FillKind : quint8 { None, Solid, LinearGradient, PathGradient, Pattern, Picture };

struct ShapeFill
{
    FillKind kind = FillKind::None;
    QRgb color = 0;     ///< of a solid fill; of a pattern's lines
    QRgb backColor = 0; ///< of a pattern
    std::string pattern;
    std::vector<GradientStop> stops;            ///< ascending
    double angle = 0;                           ///< of a linear gradient
    bool scaled = false;                        ///< the angle is that in a square, stretched with the shape
    bool round = false;                         ///< a path gradient runs along circles, not rectangles
    QRectF center = QRectF(0.5, 0.5, 0.0, 0.0); ///< where a path gradient begins, in shares of the shape
    PictureFill picture;
};

enum class Dash : quint8 {
    Solid,
    Dot,
    Dash,
    LongDash,
    DashDot,
    LongDashDot,
    LongDashDotDot,
    SystemDot,
    SystemDash,
    SystemDashDot,
    SystemDashDotDot,
};
enum class Cap : quint8 { Flat, Square, Round };
enum class Join : quint8 { Round, Bevel, Miter };
enum class LineEnd : quint8 { None, Triangle, Stealth, Diamond, Oval, Arrow };

struct LineEndStyle
{
    LineEnd kind = LineEnd::None;
    double width = 3, length = 3; ///< in widths of the line
};

struct ShapeLine
{
    bool drawn = false;
    QRgb color = 0;
    double width = emuPerPixel;
    Dash dash = Dash::Solid;
    Cap cap = Cap::Flat;
    Join join = Join::Round;
    LineEndStyle head, tail; ///< at the begin and the end of its path
};

struct ShapeShadow
{
    bool drawn = false;
    QRgb color = 0;
    double blur = 0, distance = 0;
    double direction = 0;              ///< in which it falls, from the x axis
    double across = 1, down = 1;       ///< how many times as large as the shape it is
    QPointF fixed = QPointF(0.5, 1.0); ///< the point that stays in its place then, in shares of the shape
};

/// A name for what its formula gives ("*/ w adj 100000").
struct Guide
{
    std::string name, formula;
};

struct PathStep
{
    enum class Kind : quint8 { Move, Line, Arc, Quadratic, Cubic, Close };
    Kind kind = Kind::Close;
    std::vector<std::string> arguments; ///< numbers or names of guides; of an arc: radii, start and sweep
};

struct ShapePath
{
    double width = 0, height = 0; ///< of its own coordinates; 0: those of the shape, in EMU
    bool filled = true, stroked = true;
    std::vector<PathStep> steps;
};

/// The outline of a shape: a preset by its name, or paths of its own. Its formulas are computed when it is drawn.
struct ShapeGeometry
{
    std::string preset;         ///< empty for own paths
    std::vector<Guide> adjusts; ///< those that the file stores
    std::vector<Guide> guides;  ///< each may name those before it
    std::vector<ShapePath> paths;
    std::vector<std::string> textRect; ///< left, top, right, bottom; empty: the whole shape
};

struct ShapeTextRun
{
    QString text; ///< "\n" breaks the line
    FontStyle font;
};

enum class TextAlign : quint8 { Left, Center, Right, Justify };

/// A distance as a share of the line, or in points.
struct TextSpacing
{
    double share = 0, points = 0;
};

struct ShapeParagraph
{
    TextAlign align = TextAlign::Left;
    TextSpacing line{1, 0}, before, after;
    double margin = 0, indent = 0; ///< of all lines from the left, of the first line beyond that
    QString bullet;
    double endPoints = 11; ///< height of the font where there is no run
    std::vector<ShapeTextRun> runs;
};

enum class TextAnchor : quint8 { Top, Middle, Bottom };
enum class TextTurn : quint8 { None, Clockwise, CounterClockwise };

struct ShapeText
{
    std::vector<ShapeParagraph> paragraphs;
    double left = 91440, top = 45720, right = 91440, bottom = 45720; ///< insets
    TextAnchor anchor = TextAnchor::Top;
    TextTurn turn = TextTurn::None;
    bool centered = false; ///< the text as a whole, across
    bool wrapped = true;
    bool clipped = false;   ///< at the bottom of the shape
    double fontScale = 1;   ///< to which the text was shrunk to fit
    double lineShrink = 0;  ///< by which its lines were moved together
    double ownRotation = 0; ///< beside the shape's
};

enum class ControlKind : quint8 { Button, CheckBox, Radio, DropDown, List, Spin, ScrollBar, Group, Label, Edit };

struct ControlContent
{
    ControlKind kind = ControlKind::Button;
    int state = 0;             ///< 1: checked; 2: neither checked nor not
    QString entries;           ///< of a list or drop-down: the cells that hold them; empty: nothing in the file does
    int chosen = 0;            ///< entry, from 1; 0: none
    int value = 0;             ///< of a spin button or scroll bar; of a list its first entry that shows, from 0
    int least = 0, most = 100; ///< bounds of the value
    int page = 10;             ///< by which a scroll bar goes on
    bool level = false;        ///< a spin button or scroll bar lies on its side
};

/// A shape, a picture, a control or a group of them.
struct ShapeContent
{
    enum class Kind : quint8 { Shape, Picture, Group, Control, Undrawn };
    Kind kind = Kind::Undrawn;
    QRectF place; ///< in its group's coordinates; of one that lies on the sheet itself its anchor counts instead
    double rotation = 0;
    bool flippedAcross = false, flippedDown = false;
    bool hidden = false;
    ShapeGeometry geometry;
    ShapeFill fill; ///< of a picture: the picture
    ShapeLine line;
    ShapeShadow shadow;
    ShapeText text;
    ControlContent control;
    QRectF childPlace; ///< the coordinates of a group's children that its own place shows
    std::vector<ShapeContent> children;
};

} // namespace lumivane::engine
