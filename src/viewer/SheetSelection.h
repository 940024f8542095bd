#pragma once

#include "viewer/ViewedSheet.h"

#include <QString>
#include <vector>

namespace lumivane {

/// The cells selected in a sheet: one or more areas and, within the last one, the active cell. An area never cuts a
/// merged one, unless it is of whole rows or columns.
class SheetSelection
{
public:
    explicit SheetSelection(const ViewedSheet& sheet) : m_sheet(&sheet) { select({1, 1}); }

    const std::vector<CellArea>& areas() const { return m_areas; }
    const CellArea& lastArea() const { return m_areas.back(); }
    const CellSpot& activeCell() const { return m_active; }
    /// The corner that moves when the selection is extended; the active cell stands at the opposite one.
    const CellSpot& movingCorner() const { return m_corner; }
    bool contains(int row, int column) const;
    bool rowTouched(int row) const;
    bool columnTouched(int column) const;
    bool rowWhole(int row) const;
    bool columnWhole(int column) const;
    /// Absolute, several areas joined by commas.
    QString address() const;

    void select(const CellSpot& cell);
    /// The active cell becomes the first one of the last area.
    void select(const std::vector<CellArea>& areas);
    void selectArea(const CellArea& area, const CellSpot& active);
    void addArea(const CellArea& area, const CellSpot& active);
    /// The last area becomes that between the active cell and this one. Whole rows and columns stay whole.
    void extendTo(const CellSpot& corner);
    /// Moves the active cell within the selection, by rows or by columns, and round at its end; selects the neighbour
    /// where only one cell is selected.
    void step(Direction direction);

private:
    CellArea grown(const CellArea& area) const;
    bool isOneCell() const;
    int areaOfActive() const;

    const ViewedSheet* m_sheet;
    std::vector<CellArea> m_areas;
    CellSpot m_active;
    CellSpot m_corner;
};

} // namespace lumivane
