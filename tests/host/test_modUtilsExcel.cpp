#include "host/modUtilsExcel.h"

#include "services/ProgramFolder.h"
#include "support/LargeSheets.h"
#include "support/LogCapture.h"
#include "support/PlainSheet.h"
#include "support/TextTable.h"
#include "support/ThrownError.h"

#include <QDir>

using namespace lumivane;
using namespace lumivane::test;
using namespace Qt::StringLiterals;

namespace {

class Instances : public testing::Test
{
protected:
    Instances()
    {
        library.books[u"/reports/Sales.xlsx"_s] = {PlainSheet(u"Data"_s)};
        setHostFactory(library.factory());
    }
    ~Instances() override { setHostFactory({}); }

    PlainLibrary library;
    LogCapture log;
    XLInstance instance;
};

TEST_F(Instances, AWorkerIsKeptUntilItsJobEnds)
{
    EXPECT_TRUE(Excel_Init(instance));
    EXPECT_TRUE(!instance->DisplayAlerts() && instance->IgnoreRemoteRequests() && !instance->Visible());
    const auto held = instance;
    EXPECT_TRUE(Excel_Init(instance));
    EXPECT_EQ(instance, held);

    instance->Open(u"/reports/Sales.xlsx"_s);
    instance->Open(u"/reports/Sales.xlsx"_s);
    Excel_Exit(instance);
    EXPECT_EQ(instance, nullptr);
    EXPECT_TRUE(held->DisplayAlerts() && !held->IgnoreRemoteRequests());
    Excel_Exit(instance);
    const QString path = u"/reports/Sales.xlsx"_s, opened = u"open "_s + path, closed = u"close "_s + path;
    EXPECT_EQ(library.events, QStringList({u"start"_s, opened, opened, closed, closed, u"quit"_s}));
    EXPECT_TRUE(log.entries.isEmpty());
}

TEST_F(Instances, WithoutAnyTheReasonIsLogged)
{
    EXPECT_FALSE(Excel_GetInstance(instance));
    setHostFactory({[]() -> std::unique_ptr<Application> { throw RuntimeError(7, u"No memory is left."_s); }, {}});
    EXPECT_FALSE(Excel_Init(instance));
    EXPECT_EQ(instance, nullptr);
    EXPECT_EQ(log.entries,
              QStringList({u"Error modUtilsExcel.Excel_GetInstance: (429) No running spreadsheet program was found."_s,
                           u"Error modUtilsExcel.Excel_Init: (7) No memory is left."_s}));
}

/// The user's spreadsheet: what is open in it, what is in front, and what it was asked to do.
struct ShowingSpreadsheet : PlainApplication
{
    using PlainApplication::PlainApplication;
    int broughtToFront = 0;
    void BringToFront() override { ++broughtToFront; }
    QString front()
    {
        const auto workbook = ActiveWorkbook();
        return workbook ? QString(workbook->FullName() % u'!' % ActiveSheet()->Name()) : QString();
    }
};

class Launching : public Instances
{
protected:
    Launching()
    {
        for (const QString& path : {sales, otherSales})
            library.books[path] = {PlainSheet(u"Cover"_s), PlainSheet(u"Data"_s)};
        setPrompts(&answers);
    }
    ~Launching() override { setPrompts(nullptr); }

    /// Which of the two instances there are.
    void provide(bool running, bool showing)
    {
        HostFactory factory = library.factory();
        factory.userInstance = [this, running] { return running ? user : nullptr; };
        if (showing)
            factory.visibleInstance = [this] { return shown; };
        setHostFactory(factory);
    }

    const QString sales = u"/reports/Sales.xlsx"_s, otherSales = u"/archive/SALES.xlsx"_s;
    std::shared_ptr<ShowingSpreadsheet> user = std::make_shared<ShowingSpreadsheet>(library);
    std::shared_ptr<ShowingSpreadsheet> shown = std::make_shared<ShowingSpreadsheet>(library);
    ScriptedPrompts answers;
};

TEST_F(Launching, ShowsTheWorkbookWhereTheUserWorks)
{
    for (const auto& [name, open, path, sheet, inFront] : textTable<5>(R"(
        it is open                  | sales other | /REPORTS/sales.xlsx | data    | /reports/Sales.xlsx!Data →
        nothing is open             |             | /reports/Sales.xlsx | Data    | /reports/Sales.xlsx!Data →
        another of the name is open | other       | /reports/Sales.xlsx | Data    | /archive/SALES.xlsx!Cover → /reports/Sales.xlsx!Data
        the sheet is gone           |             | /reports/Sales.xlsx | Summary | /reports/Sales.xlsx!Cover →)")) {
        user = std::make_shared<ShowingSpreadsheet>(library);
        shown = std::make_shared<ShowingSpreadsheet>(library);
        provide(true, true);
        for (const QString& workbook : open.split(u' ', Qt::SkipEmptyParts))
            user->Open(workbook == u"sales" ? sales : otherSales);
        user->setIgnoreRemoteRequests(true);
        EXPECT_TRUE(Excel_Launch(path, sheet)) << name;
        EXPECT_EQ(QString(user->front() % u" → " % shown->front()).trimmed(), inFront) << name;
        EXPECT_EQ(user->broughtToFront + shown->broughtToFront, 1) << name;
        const auto& used = shown->WorkbooksCount() ? shown : user;
        EXPECT_TRUE(used->Visible() && used->DisplayAlerts() && !used->IgnoreRemoteRequests()) << name;
    }
    EXPECT_EQ(log.entries, QStringList(u"Event modUtilsExcel.Excel_HasSheet: Summary not found."_s));
    EXPECT_FALSE(library.events.contains(u"quit"_s)) << "the user's workbooks would be gone";
    EXPECT_FALSE(library.events.contains(u"start"_s)) << "a worker has no windows";
    EXPECT_TRUE(answers.shown.isEmpty());
}

TEST_F(Launching, TellsWhatIsMissingAndEndsNothing)
{
    provide(false, false);
    EXPECT_FALSE(Excel_Launch(sales, u"Data"_s));
    provide(false, true);
    shown->Open(otherSales);
    EXPECT_FALSE(Excel_Launch(u"/reports/Gone.xlsx"_s, u"Data"_s));
    ASSERT_EQ(answers.shown.size(), 2);
    EXPECT_EQ(answers.shown[0], u"Unable to launch Excel instance."_s);
    EXPECT_EQ(answers.shown[1].section(u"\r\n"_s, 0, 0), u"Unable to open /reports/Gone.xlsx."_s);
    EXPECT_FALSE(answers.shown[1].section(u"\r\n"_s, 1).isEmpty()) << "the reason is missing";
    EXPECT_TRUE(log.entries.last().startsWith(u"Error modUtilsExcel.Excel_Launch: "_s));
    EXPECT_EQ(shown->WorkbooksCount(), 1);
    EXPECT_FALSE(library.events.contains(u"quit"_s));
}

/// A workbook of the user that is a file on disk.
struct FileWorkbook : PlainWorkbook
{
    using PlainWorkbook::PlainWorkbook;
    bool saved = true;
    bool Saved() const override { return saved; }
};

using CopyingOpenWorkbooks = ProgramFolder;

TEST_F(CopyingOpenWorkbooks, WritesTheWorkbookInPlaceOfTheOldCopyOrLogsWhyNot)
{
    const LogCapture log;
    const QString original = path(u"Sales.xlsx"_s), copy = path(u"Copy.xlsx"_s), unsaved = path(u"Unsaved.xlsx"_s);
    write(original, "the new one");
    write(copy, "the old one, which is longer");
    const auto workbook = std::make_shared<FileWorkbook>(original);
    EXPECT_TRUE(CopyOpenWorkbook(workbook, copy));
    EXPECT_EQ(read(copy), "the new one");
    EXPECT_TRUE(log.entries.isEmpty());

    const QString folder = QDir(home.path()).dirName();
    EXPECT_FALSE(CopyOpenWorkbook(workbook, path(u"../%1/Sales.xlsx"_s.arg(folder))));
    EXPECT_EQ(read(original), "the new one");
    workbook->saved = false;
    EXPECT_FALSE(CopyOpenWorkbook(workbook, unsaved));
    EXPECT_FALSE(QFile::exists(unsaved));
    EXPECT_FALSE(CopyOpenWorkbook(nullptr, copy));
    EXPECT_EQ(log.entries.filter(u"Error modUtilsExcel.CopyOpenWorkbook"_s).size(), 3);
    EXPECT_TRUE(log.entries.first().contains(u"that is the workbook itself"_s));
}

TEST(RealBottomRight, EndsWithAnEmptyTextWhereNothingCanBeNamed)
{
    LogCapture log;
    PlainSheet sheet(u"Data"_s);
    EXPECT_EQ(RealBottomRight(sheet), QString());
    sheet.put(u"B32767"_s, u"last"_s);
    EXPECT_EQ(RealBottomRight(sheet), u"$B$32767"_s);
    sheet.put(u"A32768"_s, u"beyond"_s);
    EXPECT_EQ(RealBottomRight(sheet), QString());
    EXPECT_EQ(log.entries,
              QStringList({u"Event modUtilsExcel.RealBottomRight: No contents found"_s,
                           u"Event modUtilsExcel.RealBottomRight: Row 32,768 is beyond row 32,767, the last that a "
                           "panel may use. More is possible with Large Sheets=1 in section [Settings] of "
                           "lumivane.INI."_s}));
    const LargeSheets unlimited;
    EXPECT_EQ(RealBottomRight(sheet), u"$B$32768"_s);
}

TEST(ColLetter, EndsAtIV)
{
    EXPECT_EQ(ColLetter(257), QString());
    EXPECT_THROW(ColLetter(0), RuntimeError);
    PlainSheet sheet(u"Data"_s);
    EXPECT_EQ(ColNumber(sheet, u"iv"_s), 256);
    EXPECT_EQ(ColNumber(sheet, u""_s), 0);
    EXPECT_THROW(ColNumber(sheet, u"?"_s), RuntimeError);
}

TEST(Offsets, StayWithinTheLimits)
{
    PlainSheet sheet(u"Data"_s);
    EXPECT_THROW(OffsetRows(sheet, u"32766:32767"_s, 1), RuntimeError);
    EXPECT_THROW(OffsetCols(sheet, u"IU:IV"_s, 1), RuntimeError);
}

TEST(MoveRange, KeepsTheSizeUpToTheEdges)
{
    PlainSheet sheet(u"Data"_s);
    for (const auto& [name, range, from, to, expected] : textTable<5>(R"(
        pushed off the top            | C3:D4      | H10   | H5     | C1:D2
        pushed off the left           | B3:D4      | H10   | A10    | A3:C4
        last column with letters      | IU1:IU2    | A1    | B1     | IV1:IV2
        right edge beyond the letters | IU1:IV2    | A1    | B1     | 6
        last row of 16 bits           | A1:A2      | A1    | A32766 | A32766:A32767
        bottom overflows              | A1:A3      | A1    | A32766 | 6
        distance overflows            | A1:A3      | A1    | A40000 | 6
        no last cell now              | A1:A3      | $H$40 |        | 1004
        whole rows                    | $5:$12     | A1    | A2     | 1004)")) {
        QString moved;
        const ThrownError failure = failureOf([&] { moved = MoveRange(sheet, range, from, to); });
        EXPECT_EQ(failure.number ? QString::number(failure.number) : moved, expected) << name;
    }
}

} // namespace
