#pragma once

#include <QString>
#include <memory>

namespace lumivane {

class Application;
class Workbook;
class Worksheet;
struct CellArea;
using XLInstance = std::shared_ptr<Application>;

// Use of spreadsheet instances, and address arithmetic on top of a worksheet.

bool Excel_GetInstance(XLInstance& XLInst);
/// Makes a hidden worker for one job; an instance that is held is kept.
bool Excel_Init(XLInstance& XLInst);
/// Ends a worker: its workbooks close unsaved. Harmless on an empty instance.
void Excel_Exit(XLInstance& XLInst);
/// A worker for one job: begun with this object, and ended with it however the job ends.
class JobWorker
{
public:
    JobWorker();
    ~JobWorker();
    JobWorker(const JobWorker&) = delete;

    explicit operator bool() const { return m_instance != nullptr; } ///< false where none could be had; it is logged
    Application* operator->() const { return m_instance.get(); }
    XLInstance& instance() { return m_instance; }

private:
    XLInstance m_instance;
};
void CloseWorkbooks(XLInstance& XLInst);
bool Excel_HasSheet(const std::shared_ptr<Workbook>& wb, const QString& name);
bool Excel_HasWorkbook(XLInstance& XLInst, const QString& path, bool& otherFolder);
bool Excel_HasShape(const std::shared_ptr<Worksheet>& ws, const QString& name);
/// Shows a workbook to the user at a sheet, in what they use for workbooks, and leaves it to them. A workbook without
/// that sheet shows the one it comes up with. Failures are told by `prompts()`.
bool Excel_Launch(const QString& path, const QString& sheet);
/// Makes a file from a workbook that is open before the user and leaves all as they have it.
bool CopyOpenWorkbook(const std::shared_ptr<Workbook>& wb, const QString& path);

/// Address of the crossing of the last row and the last column with contents, "$H$40"; empty (and logged) for a sheet
/// without any and for one with contents beyond the rows that a panel may use.
QString RealBottomRight(Worksheet& ws);
/// The same for whoever cannot go on without it: throws a sentence where that is empty.
QString LastFilledCell(Worksheet& ws);
/// Letters of columns 1 to columnLimit(); empty above, throws RuntimeError below 1.
QString ColLetter(int column);
/// The same for whoever writes them into an address: throws a sentence above columnLimit().
QString TrackedLetters(int column);
/// "B17:F32", in letters of the columns that a panel may use.
QString TrackedAddress(const CellArea& area);
int ColNumber(Worksheet& ws, const QString& letters);
/// One end of an address: "topLeft" or "botRight".
QString RangeCorner(const QString& address, const QString& corner);
QString OffsetRows(Worksheet& ws, const QString& rng, int RowOff);
QString OffsetCols(Worksheet& ws, const QString& rng, int ColOff);
/// The rectangle `aRng` moved by the distance from `botRng` to `newCell`, size kept, clamped at row and column 1.
QString MoveRange(Worksheet& ws, const QString& aRng, const QString& botRng, const QString& newCell);
void ParseAnchorAddress(const QString& address, bool& rowFixed, bool& colFixed);

} // namespace lumivane
