#include "host/Host.h"
#include "host/modUtilsExcel.h"
#include "panel/ShownDialog.h"
#include "platform/RuntimeError.h"
#include "services/ProgramFolder.h"
#include "services/RecentWorkbooks.h"
#include "viewer/NoticeBar.h"
#include "viewer/SheetView.h"
#include "viewer/SmallSheet.h"
#include "viewer/WorkbookWindows.h"
#include "viewer/frmWorkbook.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QtTest/QTest>

namespace lumivane::test {

using namespace Qt::StringLiterals;

namespace {

/// Runs the event loop until something holds; false when it does not within a time that no machine needs.
bool eventually(const std::function<bool()>& holds)
{
    return QTest::qWaitFor(holds, 20000);
}

class WorkbookWindow : public ProgramFolder
{
protected:
    void SetUp() override
    {
        setHostFactory({[] { return nullptr; }, [this] { return ++otherAsked, nullptr; }});
    }

    void TearDown() override
    {
        for (frmWorkbook* const window : workbookWindows())
            window->close();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        setHostFactory({});
    }

    QString file(const QString& name, const WorkbookParts& parts)
    {
        write(path(name), parts.package());
        return path(name);
    }

    frmWorkbook& open(const std::string& views = std::string())
    {
        QString reason;
        frmWorkbook* const window = openWorkbookWindow(file(u"Report.xlsx"_s, smallWorkbook(views)), &reason);
        if (!window)
            throw std::runtime_error(reason.toStdString());
        window->resize(800, 600);
        QApplication::processEvents();
        return *window;
    }

    static QPoint middle(frmWorkbook& window, int row, int column)
    {
        return window.view().cellRect({row, column}).center();
    }

    static void drag(frmWorkbook& window, const QPoint& from, const QPoint& to)
    {
        QWidget* const cells = window.view().viewport();
        QTest::mousePress(cells, Qt::LeftButton, {}, from);
        QTest::mouseMove(cells, to);
        QTest::mouseRelease(cells, Qt::LeftButton, {}, to);
    }

    static void click(frmWorkbook& window, const QPoint& place, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::mouseClick(window.view().viewport(), Qt::LeftButton, modifiers, place);
    }

    /// Whether the window comes to show an area as a picture of it does.
    static bool showsAsPictured(frmWorkbook& window, const CellArea& area)
    {
        return eventually([&] { return looksPictured(window, area); });
    }

    static bool looksPictured(frmWorkbook& window, const CellArea& area)
    {
        const SheetView& view = window.view();
        const QRect place =
            view.cellRect({area.firstRow, area.firstColumn}) | view.cellRect({area.lastRow, area.lastColumn});
        const QImage pictured = userInstance()->ActiveSheet()->CopyPicture(area).convertToFormat(QImage::Format_RGB32);
        return view.viewport()->grab(place).toImage().convertToFormat(QImage::Format_RGB32) == pictured;
    }

    static std::shared_ptr<Application> userInstance()
    {
        XLInstance instance;
        return Excel_GetInstance(instance) ? instance : nullptr;
    }

    static QString selected() { return userInstance()->ActiveWindow()->RangeSelection(); }

    int otherAsked = 0; ///< for the user's instance of another program
};

TEST_F(WorkbookWindow, IsTheUsersInstanceWhileItIsOpen)
{
    EXPECT_EQ(userInstance(), nullptr);
    EXPECT_EQ(otherAsked, 1) << "without a window, the instance that was there before is";
    frmWorkbook& window = open();
    const auto instance = userInstance();
    ASSERT_NE(instance, nullptr);
    EXPECT_EQ(otherAsked, 1);
    EXPECT_TRUE(instance->Visible() && instance->ActiveWorkbook()->Saved());
    EXPECT_EQ(instance->ActiveWorkbook()->FullName(), path(u"Report.xlsx"_s));
    EXPECT_EQ(RealBottomRight(*instance->ActiveSheet()), u"$F$9"_s);
    EXPECT_THROW(instance->ActiveSheet()->setRowHeight(1, 1, 0), RuntimeError);

    const auto held = instance->ActiveWindow();
    const auto heldSheet = instance->ActiveSheet();
    window.close();
    EXPECT_EQ(userInstance(), nullptr);
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(held->Selection().kind, WindowSelection::Kind::Nothing);
    EXPECT_EQ(held->PanesCount(), 0);
    heldSheet->Activate();
    EXPECT_EQ(heldSheet->shownText(3, 3), u"1.00"_s) << "what is held outlives the window";
}

TEST_F(WorkbookWindow, SelectsByMouse)
{
    frmWorkbook& window = open();
    drag(window, middle(window, 2, 2), middle(window, 5, 4));
    EXPECT_EQ(selected(), u"$B$2:$D$5"_s);
    click(window, middle(window, 7, 6), Qt::ControlModifier);
    EXPECT_EQ(selected(), u"$B$2:$D$5,$F$7"_s);
    click(window, middle(window, 3, 3));
    click(window, middle(window, 5, 4), Qt::ShiftModifier);
    EXPECT_EQ(selected(), u"$C$3:$D$5"_s);

    const QPoint rowHeader(4, middle(window, 3, 1).y()), columnHeader(middle(window, 1, 3).x(), 4);
    drag(window, rowHeader, QPoint(4, middle(window, 5, 1).y()));
    EXPECT_EQ(selected(), u"$3:$5"_s);
    click(window, columnHeader);
    EXPECT_EQ(selected(), u"$C:$C"_s);
    click(window, QPoint(middle(window, 1, 6).x(), 4), Qt::ShiftModifier);
    EXPECT_EQ(selected(), u"$C:$F"_s);
    click(window, QPoint(4, 4));
    EXPECT_EQ(selected(), CellArea::wholeSheet().absolute());
}

TEST_F(WorkbookWindow, SelectsByKeyboard)
{
    frmWorkbook& window = open();
    SheetView& view = window.view();
    QTest::keyClick(&view, Qt::Key_Down);
    QTest::keyClick(&view, Qt::Key_Right, Qt::ControlModifier);
    EXPECT_EQ(selected(), u"$B$2"_s);
    QTest::keyClick(&view, Qt::Key_Right, Qt::ControlModifier | Qt::ShiftModifier);
    QTest::keyClick(&view, Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(selected(), u"$B$2:$D$3"_s);
    QTest::keyClick(&view, Qt::Key_Space, Qt::ShiftModifier);
    EXPECT_EQ(selected(), u"$2:$3"_s);
    QTest::keyClick(&view, Qt::Key_Home, Qt::ControlModifier);
    QTest::keyClick(&view, Qt::Key_Space, Qt::ControlModifier);
    EXPECT_EQ(selected(), u"$A:$A"_s);
    for (int i = 0; i < 2; ++i)
        QTest::keyClick(&view, Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_EQ(userInstance()->ActiveSheet()->Name(), u"My notes"_s) << "the hidden sheet has no tab";
    QTest::keyClick(&view, Qt::Key_PageUp, Qt::ControlModifier);
    EXPECT_EQ(selected(), u"$A:$A"_s) << "each sheet keeps its own";
}

TEST_F(WorkbookWindow, SelectsDrawings)
{
    frmWorkbook& window = open();
    click(window, middle(window, 3, 3));
    click(window, middle(window, 12, 8));
    const auto shown = userInstance()->ActiveWindow();
    EXPECT_EQ(shown->Selection(), (WindowSelection{WindowSelection::Kind::Chart, u"Sales"_s}));
    EXPECT_EQ(shown->RangeSelection(), u"$C$3"_s) << "the cells stay selected behind it";
    auto& copy = control<QAction>(window, u"copyAction"_s);
    copy.trigger();
    EXPECT_EQ(user.shown.value(0), u"Unable to copy the chart \"Sales\": it cannot be drawn here."_s);
    click(window, middle(window, 22, 8));
    EXPECT_EQ(shown->Selection(), (WindowSelection{WindowSelection::Kind::Shape, u"Logo"_s}));
    EXPECT_EQ(copy.statusTip(), u"Copy the picture \"Logo\" as a picture"_s);
    copy.trigger();
    EXPECT_EQ(QApplication::clipboard()->image().size(), QSize(128, 60));
    window.readAgain();
    EXPECT_EQ(shown->Selection().name, u"Logo"_s);
    QTest::keyClick(&window.view(), Qt::Key_Escape);
    EXPECT_EQ(shown->Selection().kind, WindowSelection::Kind::Range);
    EXPECT_EQ(copy.statusTip(), u"Copy the selected cells as text"_s);
}

TEST_F(WorkbookWindow, GoesWhereTheNameBoxSays)
{
    frmWorkbook& window = open();
    auto& box = control<QWidget>(window, u"nameBox"_s);
    auto& line = *box.findChild<QLineEdit*>();
    const auto enter = [&](const QString& text) {
        line.setText(text);
        QTest::keyClick(&box, Qt::Key_Return);
    };
    enter(u"d200:e210"_s);
    EXPECT_TRUE(window.view().sheet()->panes().visible(0).contains(200, 4));
    enter(u"note"_s);
    EXPECT_EQ(userInstance()->ActiveSheet()->Name(), u"My notes"_s);
    EXPECT_EQ(line.text(), u"Note"_s) << "the name of what is selected";
    enter(u"Secret!A1"_s);
    EXPECT_EQ(user.shown, QStringList(u"The sheet \"Secret\" is hidden, so that its cells cannot be selected."_s));
    EXPECT_EQ(selected(), u"$A$1"_s);
}

TEST_F(WorkbookWindow, FindsWhileTyping)
{
    frmWorkbook& window = open();
    control<QAction>(window, u"findAction"_s).trigger();
    auto& line = control<QLineEdit>(window, u"findLineEdit"_s);
    QTest::keyClicks(&line, u"q2"_s);
    EXPECT_EQ(selected(), u"$D$2"_s);
    line.setText(u"nobody"_s);
    QTest::keyClick(&line, Qt::Key_Return);
    EXPECT_EQ(control<QLabel>(window, u"findRemarkLabel"_s).text(), u"Not found in this sheet"_s);
    EXPECT_EQ(selected(), u"$D$2"_s);
}

TEST_F(WorkbookWindow, CopiesAndSumsUp)
{
    frmWorkbook& window = open();
    drag(window, middle(window, 3, 3), middle(window, 5, 4));
    control<QAction>(window, u"copyAction"_s).trigger();
    EXPECT_EQ(QApplication::clipboard()->text(), u"1.00\t2.00\n3.00\t\n5.00\t6.00\n"_s);
    const auto& figures = control<QLabel>(window, u"figuresLabel"_s);
    EXPECT_TRUE(eventually([&] { return figures.text().contains(u"Sum: 17.00"_s); })) << figures.text();
    EXPECT_TRUE(figures.text().startsWith(u"3 \u00d7 2"_s)) << figures.text();
}

TEST_F(WorkbookWindow, SaysThatTheFileHasChangedAndReadsItAgain)
{
    frmWorkbook& window = open();
    window.watch().setPauses(50, 20);
    click(window, middle(window, 3, 3));
    window.view().setZoom(150);
    auto& bar = control<NoticeBar>(window, u"noticeBar"_s);
    EXPECT_TRUE(bar.isHidden());

    WorkbookParts changed = smallWorkbook();
    for (PackageEntry& entry : changed.entries) {
        if (const auto place = entry.bytes.find("<v>1</v>"); place != std::string::npos)
            entry.bytes.replace(place, 8, "<v>41</v>");
    }
    // As programs save: into another file that then takes the name.
    const QString report = path(u"Report.xlsx"_s);
    write(path(u"new"_s), changed.package());
    QFile::remove(report);
    ASSERT_TRUE(QFile::rename(path(u"new"_s), report));
    const QString told = u"The file \"Report.xlsx\" has changed since it was read."_s;
    ASSERT_TRUE(eventually([&] { return bar.isVisible() && bar.text() == told; })) << bar.text();
    EXPECT_EQ(userInstance()->ActiveSheet()->shownText(3, 3), u"1.00"_s) << "nothing changes behind the user's back";

    Q_EMIT bar.actionRequested();
    EXPECT_TRUE(bar.isHidden());
    EXPECT_EQ(userInstance()->ActiveSheet()->shownText(3, 3), u"41.00"_s);
    EXPECT_EQ(selected(), u"$C$3"_s);
    EXPECT_EQ(window.view().sheet()->zoom(), 150);

    // It is watched still, although it is another file than the one first opened.
    write(report, "no workbook any more");
    ASSERT_TRUE(eventually([&] { return bar.isVisible(); }));
    write(report, QByteArray());
    Q_EMIT bar.actionRequested();
    EXPECT_TRUE(bar.text().contains(u"Report.xlsx"_s)) << bar.text();
    EXPECT_EQ(userInstance()->ActiveSheet()->shownText(3, 3), u"41.00"_s) << "what was read stays";

    QFile::remove(report);
    const QString gone = u"The file \"Report.xlsx\" is gone. The window still shows what it held when it was read."_s;
    EXPECT_TRUE(eventually([&] { return bar.text() == gone; })) << bar.text();
}

TEST_F(WorkbookWindow, OpensEachWorkbookOnceAndRemembersIt)
{
    frmWorkbook& first = open();
    const QString other = file(u"Other.xlsx"_s, smallWorkbook());
    frmWorkbook* const second = openWorkbookWindow(other);
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(openWorkbookWindow(first.workbook()->path()), &first);
    EXPECT_EQ(userInstance()->WorkbooksCount(), 2);
    EXPECT_EQ(userInstance()->ActiveWorkbook()->Name(), u"Report.xlsx"_s) << "the one brought to the front";
    userInstance()->WorkbookItem(2)->Activate();
    EXPECT_EQ(userInstance()->ActiveWorkbook()->Name(), u"Other.xlsx"_s);
    EXPECT_EQ(recentWorkbooks(), QStringList({other, first.workbook()->path()}));

    QString reason;
    EXPECT_EQ(openWorkbookWindow(path(u"none.xlsx"_s), &reason), nullptr);
    EXPECT_TRUE(reason.contains(u"none.xlsx"_s)) << reason;
}

class DrawnWindow : public WorkbookWindow, public testing::WithParamInterface<const char*>
{
};

TEST_P(DrawnWindow, ShowsCellsAsPanelsDo)
{
    frmWorkbook& window = open(paneView("", GetParam()));
    window.resize(1200, 900);
    click(window, middle(window, 25, 1));
    EXPECT_EQ(selected(), u"$A$25"_s);
    EXPECT_TRUE(showsAsPictured(window, {2, 2, 7, 6}));
    window.showSheet(1);
    EXPECT_TRUE(showsAsPictured(window, {28, 7, 36, 13})) << "over the edges of the blocks that are drawn at once";
}
INSTANTIATE_TEST_SUITE_P(Written, DrawnWindow, testing::Values("", "rightToLeft='1'", "showGridLines='0'"));

TEST_F(WorkbookWindow, HasFilterButtonsThatPanelsDoNot)
{
    WorkbookParts parts = smallWorkbook();
    for (PackageEntry& entry : parts.entries) {
        if (const auto place = entry.bytes.find("<mergeCells"); place != std::string::npos)
            entry.bytes.insert(place,
                               "<autoFilter ref='B2:D5'><filterColumn colId='1' hiddenButton='1'/></autoFilter>");
    }
    frmWorkbook& window = *openWorkbookWindow(file(u"Filtered.xlsx"_s, parts));
    window.resize(800, 600);
    click(window, middle(window, 25, 1));
    EXPECT_TRUE(showsAsPictured(window, {2, 3, 2, 3})) << "its button is hidden";
    EXPECT_TRUE(showsAsPictured(window, {3, 2, 3, 4}));
    EXPECT_FALSE(looksPictured(window, {2, 2, 2, 2}));
    EXPECT_FALSE(looksPictured(window, {2, 4, 2, 4}));
}

TEST_F(WorkbookWindow, IsWhereThePanelsWorkbookIsLaunched)
{
    offerWorkbookWindows();
    const QString report = file(u"Report.xlsx"_s, smallWorkbook());
    ASSERT_TRUE(QDir(home.path()).mkdir(u"archive"_s));
    const QString archived = file(u"archive/Report.xlsx"_s, smallWorkbook());

    ASSERT_TRUE(Excel_Launch(report, u"My notes"_s));
    ASSERT_EQ(workbookWindows().size(), 1);
    frmWorkbook* const first = workbookWindows().first();
    first->showMinimized();
    EXPECT_TRUE(Excel_Launch(report, u"data"_s));
    EXPECT_EQ(first->currentSheet(), 0);
    EXPECT_TRUE(first->isVisible() && !first->isMinimized());

    EXPECT_TRUE(Excel_Launch(archived, u"My notes"_s));
    ASSERT_EQ(workbookWindows().size(), 2);
    EXPECT_EQ(first->currentSheet(), 0) << "another workbook of the same name went into its window";
    EXPECT_EQ(activeWorkbookWindow()->workbook()->path(), archived);
}

TEST_F(WorkbookWindow, RunsToTheLeftWhereTheSheetDoes)
{
    frmWorkbook& window = open(paneView("", "rightToLeft='1'"));
    SheetView& view = window.view();
    EXPECT_GT(view.cellRect({1, 1}).left(), view.cellRect({1, 2}).left());
    QTest::keyClick(&view, Qt::Key_Left);
    EXPECT_EQ(selected(), u"$B$1"_s);
    click(window, QPoint(view.viewport()->width() - 3, middle(window, 3, 1).y()));
    EXPECT_EQ(selected(), u"$3:$3"_s) << "the row headers stand on the right";
}

} // namespace

} // namespace lumivane::test
