#include "host/modUtilsExcel.h"

#include "host/Host.h"
#include "platform/Checked.h"
#include "platform/Prompts.h"
#include "platform/RuntimeError.h"
#include "services/modUtilsFile.h"
#include "services/modUtilsLog.h"

#include <algorithm>

namespace lumivane {

using namespace Qt::StringLiterals;

namespace {

const QString excelModule = u"modUtilsExcel"_s;

constexpr int invalidProcedureCall = 5;
constexpr int cannotCreateObject = 429;

void logExcelFailure(const QString& procedure, const RuntimeError& failure)
{
    LogError(excelModule, procedure, failure.number(), failure.description(), false);
}

bool logMissing(const QString& procedure, const QString& text)
{
    LogEvent(excelModule, procedure, text, false);
    return false;
}

bool refuseLaunch(const QString& text)
{
    prompts().message(text, Prompts::Icon::Exclamation);
    return false;
}

/// The user's instance, as long as it can show the workbook beside what it has open: one that has another workbook of
/// that name might not. Otherwise one that is made or found for showing; null where there is none.
XLInstance instanceToShow(const QString& path)
{
    XLInstance user;
    bool otherFolder = false;
    if (Excel_GetInstance(user) && (Excel_HasWorkbook(user, path, otherFolder) || !otherFolder))
        return user;
    return hostFactory().visibleInstance ? hostFactory().visibleInstance() : nullptr;
}

std::shared_ptr<Workbook> workbookToShow(XLInstance& XLInst, const QString& path)
{
    bool otherFolder = false;
    if (Excel_HasWorkbook(XLInst, path, otherFolder)) {
        for (int i = 1; i <= XLInst->WorkbooksCount(); ++i) {
            auto workbook = XLInst->WorkbookItem(i);
            if (workbook->FullName().compare(path, Qt::CaseInsensitive) == 0)
                return workbook;
        }
    }
    return XLInst->Open(path);
}

/// The cell in the last row and the last column of an area, absolute.
QString cornerOf(Worksheet& ws, const CellArea& contents)
{
    return ws.Cells(toRow(contents.lastRow), toColumn(contents.lastColumn)).Address();
}

} // namespace

bool Excel_GetInstance(XLInstance& XLInst)
{
    if (XLInst)
        return true;
    try {
        if (hostFactory().userInstance)
            XLInst = hostFactory().userInstance();
        if (!XLInst)
            throw RuntimeError(cannotCreateObject, u"No running spreadsheet program was found."_s);
        return true;
    } catch (const RuntimeError& failure) {
        XLInst = nullptr;
        logExcelFailure(u"Excel_GetInstance"_s, failure);
        return false;
    }
}

bool Excel_Init(XLInstance& XLInst)
{
    if (XLInst)
        return true;
    try {
        if (hostFactory().worker)
            XLInst = hostFactory().worker();
        if (!XLInst)
            throw RuntimeError(cannotCreateObject, u"No spreadsheet engine could be started."_s);
        XLInst->setDisplayAlerts(false);
        XLInst->setIgnoreRemoteRequests(true);
        return true;
    } catch (const RuntimeError& failure) {
        XLInst = nullptr;
        logExcelFailure(u"Excel_Init"_s, failure);
        return false;
    }
}

void Excel_Exit(XLInstance& XLInst)
{
    if (!XLInst)
        return;
    try {
        CloseWorkbooks(XLInst);
        XLInst->setIgnoreRemoteRequests(false);
        XLInst->setDisplayAlerts(true);
        XLInst->Quit();
    } catch (const RuntimeError& failure) {
        logExcelFailure(u"Excel_Exit"_s, failure);
    }
    XLInst = nullptr;
}

JobWorker::JobWorker()
{
    Excel_Init(m_instance);
}

JobWorker::~JobWorker()
{
    Excel_Exit(m_instance);
}

void CloseWorkbooks(XLInstance& XLInst)
{
    if (!XLInst)
        return;
    try {
        XLInst->setDisplayAlerts(false);
        for (int i = XLInst->WorkbooksCount(); i >= 1; --i) {
            if (const auto workbook = XLInst->WorkbookItem(i))
                workbook->Close();
        }
    } catch (const RuntimeError& failure) {
        logExcelFailure(u"CloseWorkbooks"_s, failure);
    }
}

bool Excel_HasSheet(const std::shared_ptr<Workbook>& wb, const QString& name)
{
    if (!wb)
        return false;
    try {
        if (wb->WorksheetByName(name))
            return true;
    } catch (const RuntimeError& failure) {
        // Counts as missing for the caller, but the log must not say so.
        logExcelFailure(u"Excel_HasSheet"_s, failure);
        return false;
    }
    return logMissing(u"Excel_HasSheet"_s, name % u" not found.");
}

bool Excel_HasWorkbook(XLInstance& XLInst, const QString& path, bool& otherFolder)
{
    otherFolder = false;
    if (!XLInst)
        return false;
    try {
        QString name, extension;
        SplitPath(path, nullptr, &name, &extension);
        const QString fileName = extension.isEmpty() ? name : QString(name % u'.' % extension);
        for (int i = 1; i <= XLInst->WorkbooksCount(); ++i) {
            const auto workbook = XLInst->WorkbookItem(i);
            if (workbook->FullName().compare(path, Qt::CaseInsensitive) == 0)
                return true;
            if (workbook->Name().compare(fileName, Qt::CaseInsensitive) == 0)
                otherFolder = true;
        }
        return false;
    } catch (const RuntimeError&) {
        return logMissing(u"Excel_HasWorkbook"_s, path % u" not loaded.");
    }
}

bool Excel_HasShape(const std::shared_ptr<Worksheet>& ws, const QString& name)
{
    if (!ws)
        return false;
    try {
        if (ws->ShapeNames().contains(name, Qt::CaseInsensitive))
            return true;
    } catch (const RuntimeError& failure) {
        logExcelFailure(u"Excel_HasShape"_s, failure);
        return false;
    }
    return logMissing(u"Excel_HasShape"_s, name % u" not found.");
}

bool Excel_Launch(const QString& path, const QString& sheet)
{
    const auto logFailure = [](const RuntimeError& failure) { logExcelFailure(u"Excel_Launch"_s, failure); };
    try {
        XLInstance XLInst = instanceToShow(path);
        if (!XLInst)
            return refuseLaunch(u"Unable to launch Excel instance."_s);
        std::shared_ptr<Workbook> workbook;
        QString reason;
        try {
            workbook = workbookToShow(XLInst, path);
        } catch (const RuntimeError& failure) {
            logFailure(failure);
            reason = u"\r\n"_s % failure.description();
        }
        if (!workbook)
            return refuseLaunch(u"Unable to open "_s % path % u'.' % reason);

        workbook->Activate();
        if (Excel_HasSheet(workbook, sheet))
            workbook->WorksheetByName(sheet)->Select();
        XLInst->setIgnoreRemoteRequests(false);
        XLInst->setDisplayAlerts(true);
        XLInst->setVisible(true);
        XLInst->BringToFront();
        return true;
    } catch (const RuntimeError& failure) {
        // The instance is let go and never ended, even one made here: it may hold what the user has opened before.
        logFailure(failure);
        return false;
    }
}

bool CopyOpenWorkbook(const std::shared_ptr<Workbook>& wb, const QString& path)
{
    try {
        if (!wb)
            throw RuntimeError(RuntimeError::ObjectNotSet);
        wb->SaveCopyAs(path);
        return true;
    } catch (const RuntimeError& failure) {
        logExcelFailure(u"CopyOpenWorkbook"_s, failure);
        return false;
    }
}

QString LastFilledCell(Worksheet& ws)
{
    const auto contents = ws.contentArea();
    if (!contents)
        throw RuntimeError(RuntimeError::ApplicationDefined,
                           u"The sheet [%1] of [%2] has no cells with contents."_s.arg(ws.Name(), ws.WorkbookName()));
    return cornerOf(ws, *contents);
}

QString RealBottomRight(Worksheet& ws)
{
    QString reason = u"No contents found"_s;
    try {
        if (const auto contents = ws.contentArea())
            return cornerOf(ws, *contents);
    } catch (const RuntimeError& failure) {
        reason = failure.description();
    }
    logMissing(u"RealBottomRight"_s, reason);
    return {};
}

QString ColLetter(int column)
{
    if (column < 1)
        throw RuntimeError(invalidProcedureCall, u"There is no column %1."_s.arg(column));
    return column > columnLimit() ? QString() : columnLetters(column);
}

QString TrackedLetters(int column)
{
    const QString letters = ColLetter(column);
    if (letters.isEmpty())
        throwBeyondColumns(column);
    return letters;
}

QString TrackedAddress(const CellArea& area)
{
    return TrackedLetters(area.firstColumn) % QString::number(area.firstRow) % u':' % TrackedLetters(area.lastColumn) %
           QString::number(area.lastRow);
}

int ColNumber(Worksheet& ws, const QString& letters)
{
    return letters.isEmpty() ? 0 : toColumn(ws.Range(letters % u':' % letters).Column());
}

QString RangeCorner(const QString& address, const QString& corner)
{
    const qsizetype colon = address.indexOf(u':');
    if (colon < 0)
        return address;
    return corner == "botRight"_L1 ? address.mid(colon + 1) : address.left(colon);
}

QString OffsetRows(Worksheet& ws, const QString& rng, int RowOff)
{
    const SheetRange range = ws.Range(rng);
    const int first = toRow(range.Row() + RowOff);
    const int last = toRow(range.RowsCount() + first - 1);
    return QString::number(first) % u':' % QString::number(last);
}

QString OffsetCols(Worksheet& ws, const QString& rng, int ColOff)
{
    const SheetRange range = ws.Range(rng);
    const int first = toColumn(range.Column() + ColOff);
    const int last = toColumn(range.ColumnsCount() + first - 1);
    return TrackedLetters(first) % u':' % TrackedLetters(last);
}

QString MoveRange(Worksheet& ws, const QString& aRng, const QString& botRng, const QString& newCell)
{
    const SheetRange to = ws.Range(newCell);
    const SheetRange from = ws.Range(botRng);
    const int dRow = toRow(to.Row() - from.Row());
    const int dCol = toColumn(to.Column() - from.Column());
    const SheetRange corner = ws.Range(RangeCorner(aRng, u"topLeft"_s));
    const SheetRange range = ws.Range(aRng);

    const int top = std::max(toRow(corner.Row() + dRow), 1);
    const int bottom = std::max(toRow(range.RowsCount() + top - 1), 1);
    const int left = std::max(toColumn(corner.Column() + dCol), 1);
    const int right = std::max(toColumn(range.ColumnsCount() + left - 1), 1);
    return TrackedAddress({top, left, bottom, right});
}

void ParseAnchorAddress(const QString& address, bool& rowFixed, bool& colFixed)
{
    rowFixed = colFixed = false;
    if (address.contains(u':') || address.size() < 3)
        return;
    colFixed = address.startsWith(u'$');
    rowFixed = address.indexOf(u'$', 1) >= 0;
}

} // namespace lumivane
