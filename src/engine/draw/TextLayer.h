#pragma once

#include "engine/draw/CellText.h"
#include "engine/draw/Scene.h"

#include <set>

namespace lumivane::engine {

/// The texts of an area, each placed in its cell and as far beyond it as its neighbours are empty. They are placed when
/// the layer is made, since gridlines, which are painted first, end where a text runs over them.
class TextLayer
{
public:
    explicit TextLayer(const Scene& scene);
    void paint(QPainter& painter) const;
    /// A text runs over the edge between this column and the next one.
    bool runsOver(int row, int column) const { return m_runOver.contains({row, column}); }

private:
    struct Placed
    {
        CellText text;
        QRect clip;
        QRectF box; ///< in which the lines are aligned
        Horizontal horizontal;
        Vertical vertical;
        double angle = 0; ///< degrees counter-clockwise
        bool spread = false;
        bool spreadLast = false;
        bool spaceAround = false; ///< a spread line has as much room at its ends as within
        bool wholeCellUnderline = false;
    };
    /// A cell, or a merged area, with what is known of it before its text is laid out.
    struct Place
    {
        int row, column;
        CellArea area;
        const CellStyle& style;
        CellKind kind;
        QRect rect;
        Horizontal horizontal;
        bool mayRunOver;
        bool besideIcon; ///< that a condition gives the cell
    };

    void placeRow(int rowIndex);
    void placeNeighbour(int row, int column, int step);
    void placeMerged();
    void placeCell(int row, int column, const CellArea& area);
    void placeNumber(const Place& place);
    void placeText(Place place);
    void placeLines(const Place& place, CellText text);
    void placeRotated(const Place& place, CellText text);
    void placeStacked(const Place& place, const CellText& text);
    void placeFilling(const Place& place, const FormattedText& formatted, const CellText& text);
    void add(const Place& place, CellText text, QRectF box);

    QRect reach(const Place& place, double width);
    Place across(const Place& place);
    CellText make(const Place& place, const FormattedText& formatted, double shrink = 1) const;
    std::optional<CellText> fittedNumber(const Place& place, double width) const;
    CellText filledText(const Place& place, FormattedText formatted, double width) const;
    CellText shrunk(const Place& place, const FormattedText& formatted, const CellText& text, double width) const;
    double innerWidth(const Place& place) const;
    double indent(const Place& place) const;
    bool isFree(int row, int column) const;
    void paintText(QPainter& painter, const Placed& placed) const;
    void paintLines(QPainter& painter, const Placed& placed, const QRectF& box) const;

    const Scene& m_scene;
    double m_padding;
    double m_blank; ///< width of a blank in the default font
    std::vector<Placed> m_placed;
    std::set<std::pair<int, int>> m_runOver;
};

} // namespace lumivane::engine
