#pragma once

#include "engine/content/SheetContent.h"

#include <map>
#include <memory>

namespace lumivane::engine {

/// What the styles of tables and pivot tables change of the cells of a sheet.
class TableLooks
{
public:
    /// Null where no table of the sheet has a style. The sheet must outlive the object.
    static std::unique_ptr<TableLooks> of(const SheetContent& sheet);

    /// All that a cell's tables change, the strongest element first; null outside of them and where nothing is changed.
    /// The same look has the same address, which stays valid.
    const DifferentialStyle* at(int row, int column);

private:
    struct Part
    {
        TableElement element = TableElement::WholeTable;
        CellArea area;
    };
    /// A rectangle of cells with one style.
    struct Region
    {
        CellArea area;
        const TableStyle* style = nullptr;
        std::vector<Part> parts{};
        std::optional<CellArea> stripedRows{}, stripedColumns{};
        std::optional<std::vector<int>> hiddenRows{}; ///< of the striped ones, ascending; found when first needed
        const PivotContent* pivot = nullptr;
    };
    enum Edge : quint8 { Left = 1, Right = 2, Top = 4, Bottom = 8 };
    /// A look that holds for a cell, and at which edges of its part the cell lies.
    struct Layer
    {
        TableElement element = TableElement::WholeTable;
        quint8 edges = 0;
        const DifferentialStyle* look = nullptr;
        auto operator<=>(const Layer&) const = default;
    };

    explicit TableLooks(const SheetContent& sheet) : m_sheet(sheet) {}
    void add(const TableContent& table);
    void add(const PivotContent& pivot);
    void addPivotLines(const Region& region, int row, int column);
    void addLayer(const Region& region, TableElement element, int row, int column, const CellArea& area);
    void addRowStripe(Region& region, int row, int column);
    void addColumnStripe(const Region& region, int row, int column);
    int visibleRowsBefore(Region& region, int row);
    static DifferentialStyle merged(const std::vector<Layer>& layers);

    const SheetContent& m_sheet;
    std::vector<Region> m_regions;
    CellArea m_bounds;           ///< of all regions
    std::vector<Layer> m_layers; ///< of the cell that is asked for, weakest first
    std::map<std::vector<Layer>, DifferentialStyle> m_merged;
};

} // namespace lumivane::engine
