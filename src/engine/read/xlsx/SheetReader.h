#pragma once

#include "engine/content/SheetContent.h"
#include "engine/read/RowBuilder.h"
#include "engine/read/package/AttributeValues.h"
#include "engine/read/package/XmlScanner.h"
#include "engine/read/xlsx/ConditionReader.h"
#include "engine/read/xlsx/Palette.h"
#include "engine/read/xlsx/SheetObjects.h"

namespace lumivane::engine {

/// What a sheet needs to know of its workbook.
struct SheetSurroundings
{
    const Palette& palette;
    const ConditionReader::Looks& looks; ///< that conditional formats name by number
    int sharedTexts = 0;                 ///< how many there are
    int styles = 1;                      ///< of cells, as many
    bool date1904 = false;
    quint64 partSize = 0;               ///< of the sheet's part in bytes, against which its claims are held; 0: unknown
    qint64 maxBytes = maxWorkbookBytes; ///< for the sheet in memory
};

/// Reads one sheet's part in a single pass. Throws Fault when anything in it is broken: never half a sheet.
class SheetReader
{
public:
    SheetReader(ByteStream& bytes, const SheetSurroundings& surroundings, SheetContent& content);
    void read();

    /// Relationship ids of the drawing and of tables, to be followed by the caller.
    const std::string& drawingId() const { return m_drawingId; }
    const std::string& controlsId() const { return m_controlsId; }        ///< of the part with controls and comments
    const std::vector<SheetObject>& objects() const { return m_objects; } ///< controls and objects of other programs
    const std::string& backgroundId() const { return m_backgroundId; }    ///< of the picture under the cells
    const std::vector<std::string>& tableIds() const { return m_tableIds; }

private:
    struct CellStart
    {
        std::string_view type;
        Cell cell;
    };

    void readPart();
    void readReference(std::string& id);
    void readDimension();
    void readView();
    void readPane();
    void readDefaults();
    void readColumns();
    void readColumn();
    void readRows();
    void readRow();
    void readCell();
    CellStart cellStart();
    void finishCell(CellStart& start);
    void setValue(CellStart& start, std::string_view raw);
    void setNumber(Cell& cell, std::string_view raw);
    void setDate(Cell& cell, std::string_view raw);
    void setSharedText(Cell& cell, std::string_view raw);
    qint32 styleFrom(std::string_view text) const;
    void readSheetFilter();
    void readMerges();
    void readTableParts();
    void readConditions();
    void readObjects();
    void readExtensions();
    void addSparklines(SparklineGroup group);
    template <class Handle>
    void forChildren(Handle handle);
    [[noreturn]] void failCell(const Cell& cell, const char* what, std::string_view value) const;

    const SheetSurroundings m_surroundings;
    SheetContent& m_content;
    RowBuilder m_rows;
    XmlScanner m_xml;
    ConditionReader m_conditions;
    size_t m_sparklinesRead = 0;
    bool m_sparklinesMissing = false;
    int m_row = 0;     ///< of the <row> being read
    int m_column = 0;  ///< of the cell read last
    int m_cellRow = 0; ///< where that cell belongs, which need not be the row it stands in
    bool m_viewRead = false;
    std::string m_value;
    std::string m_buffer;
    std::string m_drawingId, m_controlsId, m_backgroundId;
    std::vector<std::string> m_tableIds;
    std::vector<SheetObject> m_objects;
};

} // namespace lumivane::engine
