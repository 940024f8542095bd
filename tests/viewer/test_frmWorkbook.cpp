#include "host/Host.h"
#include "host/modUtilsExcel.h"
#include "platform/ApplicationInfo.h"
#include "platform/Prompts.h"
#include "platform/RuntimeError.h"
#include "services/RecentWorkbooks.h"
#include "support/QtPrinting.h"
#include "support/ScriptedPrompts.h"
#include "viewer/NoticeBar.h"
#include "viewer/SheetView.h"
#include "viewer/SmallSheet.h"
#include "viewer/WorkbookWindows.h"
#include "viewer/frmWorkbook.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QTabBar>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace lumivane::test {

using namespace Qt::StringLiterals;

namespace {

/// Runs the event loop until something holds; false when it does not within a time that no machine needs.
bool eventually(const std::function<bool()>& holds)
{
    QElapsedTimer waited;
    waited.start();
    while (!holds()) {
        if (waited.elapsed() > 20000)
            return false;
        QApplication::processEvents(QEventLoop::AllEvents, 20);
    }
    return true;
}

class WorkbookWindow : public testing::Test
{
protected:
    void SetUp() override
    {
        setProgramFolder(folder.path());
        setPrompts(&answers);
        setHostFactory({[] { return nullptr; }, [this] { return ++otherAsked, nullptr; }});
    }

    void TearDown() override
    {
        for (frmWorkbook* const window : workbookWindows())
            window->close();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        setHostFactory({});
        setPrompts(nullptr);
        setProgramFolder(QString());
    }

    QString file(const QString& name, const WorkbookParts& parts)
    {
        const QString path = folder.filePath(name);
        write(path, parts.package());
        return path;
    }

    static void write(const QString& path, const QByteArray& bytes)
    {
        QFile out(path);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(bytes);
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

    static void mouse(frmWorkbook& window, QEvent::Type type, const QPoint& place, Qt::KeyboardModifiers modifiers)
    {
        QWidget* const viewport = window.view().viewport();
        const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
        const Qt::MouseButtons held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
        QMouseEvent event(type, place, viewport->mapToGlobal(place), button, held, modifiers);
        QApplication::sendEvent(viewport, &event);
    }

    static QPoint middle(frmWorkbook& window, int row, int column)
    {
        return window.view().cellRect({row, column}).center();
    }

    static void drag(frmWorkbook& window, const QPoint& from, const QPoint& to,
                     Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        mouse(window, QEvent::MouseButtonPress, from, modifiers);
        if (to != from)
            mouse(window, QEvent::MouseMove, to, modifiers);
        mouse(window, QEvent::MouseButtonRelease, to, modifiers);
    }

    static void click(frmWorkbook& window, const QPoint& place, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        drag(window, place, place, modifiers);
    }

    static void press(QWidget& widget, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QKeyEvent down(QEvent::KeyPress, key, modifiers);
        QApplication::sendEvent(&widget, &down);
    }

    static std::shared_ptr<Application> userInstance()
    {
        XLInstance instance;
        return Excel_GetInstance(instance) ? instance : nullptr;
    }

    static QString selected() { return userInstance()->ActiveWindow()->RangeSelection(); }

    template <class T>
    static T& part(frmWorkbook& window, const QString& name)
    {
        T* const found = window.findChild<T*>(name);
        if (!found)
            throw std::runtime_error("the window has no " + name.toStdString());
        return *found;
    }

    QTemporaryDir folder;
    ScriptedPrompts answers;
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
    EXPECT_TRUE(instance->Visible());
    EXPECT_EQ(instance->ActiveWorkbook()->FullName(), folder.filePath(u"Report.xlsx"_s));
    EXPECT_EQ(instance->ActiveWorkbook()->WorksheetNames(), QStringList({u"Data"_s, u"My notes"_s, u"Secret"_s}));
    EXPECT_TRUE(instance->ActiveWorkbook()->Saved());
    EXPECT_EQ(instance->ActiveSheet()->Name(), u"Data"_s);
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
    EXPECT_EQ(userInstance()->ActiveWindow()->Selection().kind, WindowSelection::Kind::Range);
    click(window, middle(window, 7, 6), Qt::ControlModifier);
    EXPECT_EQ(selected(), u"$B$2:$D$5,$F$7"_s);
    click(window, middle(window, 3, 3));
    click(window, middle(window, 5, 4), Qt::ShiftModifier);
    EXPECT_EQ(selected(), u"$C$3:$D$5"_s);
    drag(window, middle(window, 4, 6), middle(window, 2, 2));
    EXPECT_EQ(selected(), u"$B$2:$F$4"_s) << "upwards and to the left";
    click(window, middle(window, 9, 3));
    EXPECT_EQ(selected(), u"$B$9:$D$9"_s) << "merged";

    const QPoint rowHeader(4, middle(window, 3, 1).y()), columnHeader(middle(window, 1, 3).x(), 4);
    click(window, rowHeader);
    EXPECT_EQ(selected(), u"$3:$3"_s);
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
    press(view, Qt::Key_Down);
    press(view, Qt::Key_Right, Qt::ControlModifier);
    EXPECT_EQ(selected(), u"$B$2"_s);
    press(view, Qt::Key_Right, Qt::ControlModifier | Qt::ShiftModifier);
    press(view, Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(selected(), u"$B$2:$D$3"_s);
    press(view, Qt::Key_Space, Qt::ShiftModifier);
    EXPECT_EQ(selected(), u"$2:$3"_s);
    press(view, Qt::Key_Home, Qt::ControlModifier);
    press(view, Qt::Key_Space, Qt::ControlModifier);
    EXPECT_EQ(selected(), u"$A:$A"_s);
    press(view, Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_EQ(userInstance()->ActiveSheet()->Name(), u"My notes"_s);
    press(view, Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_EQ(userInstance()->ActiveSheet()->Name(), u"My notes"_s) << "the hidden sheet has no tab";
    press(view, Qt::Key_PageUp, Qt::ControlModifier);
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
    click(window, middle(window, 22, 8));
    EXPECT_EQ(shown->Selection(), (WindowSelection{WindowSelection::Kind::Other, u"Logo"_s}));
    press(window.view(), Qt::Key_Escape);
    EXPECT_EQ(shown->Selection().kind, WindowSelection::Kind::Range);
}

TEST_F(WorkbookWindow, TellsItsPanesInOrder)
{
    frmWorkbook& window = open(paneView("<pane xSplit='2' ySplit='2' topLeftCell='C3' state='frozen'/>"));
    window.view().sheet()->setSize({400, 140});
    const auto shown = userInstance()->ActiveWindow();
    QStringList panes;
    for (int i = 1; i <= shown->PanesCount(); ++i)
        panes << shown->PaneVisibleRange(i);
    EXPECT_EQ(panes, QStringList({u"$A$1:$B$2"_s, u"$C$1:$H$2"_s, u"$A$3:$B$8"_s, u"$C$3:$H$8"_s}));
    EXPECT_THROW(shown->PaneVisibleRange(0), RuntimeError);
    EXPECT_THROW(shown->PaneVisibleRange(5), RuntimeError);
    part<QAction>(window, u"freezeAction"_s).trigger();
    EXPECT_EQ(shown->PanesCount(), 1);
}

TEST_F(WorkbookWindow, GoesWhereTheNameBoxSays)
{
    frmWorkbook& window = open();
    auto& box = part<QWidget>(window, u"nameBox"_s);
    auto& line = *box.findChild<QLineEdit*>();
    const auto enter = [&](const QString& text) {
        line.setText(text);
        press(box, Qt::Key_Return);
    };
    enter(u"d200:e210"_s);
    EXPECT_EQ(selected(), u"$D$200:$E$210"_s);
    EXPECT_TRUE(window.view().sheet()->panes().visible(0).contains(200, 4));
    enter(u"note"_s);
    EXPECT_EQ(userInstance()->ActiveSheet()->Name(), u"My notes"_s);
    EXPECT_EQ(line.text(), u"Note"_s) << "the name of what is selected";
    enter(u"Secret!A1"_s);
    EXPECT_EQ(answers.shown, QStringList(u"The sheet \"Secret\" is hidden, so that its cells cannot be selected."_s));
    EXPECT_EQ(selected(), u"$A$1"_s);
}

TEST_F(WorkbookWindow, FindsWhileTyping)
{
    frmWorkbook& window = open();
    part<QAction>(window, u"findAction"_s).trigger();
    auto& line = part<QLineEdit>(window, u"findLineEdit"_s);
    for (const QChar letter : u"q2"_s) {
        QKeyEvent typed(QEvent::KeyPress, 0, Qt::NoModifier, QString(letter));
        QApplication::sendEvent(&line, &typed);
    }
    EXPECT_EQ(selected(), u"$D$2"_s);
    line.setText(u"nobody"_s);
    press(line, Qt::Key_Return);
    EXPECT_EQ(part<QLabel>(window, u"findRemarkLabel"_s).text(), u"Not found in this sheet"_s);
    EXPECT_EQ(selected(), u"$D$2"_s);
}

TEST_F(WorkbookWindow, CopiesAndSumsUp)
{
    frmWorkbook& window = open();
    drag(window, middle(window, 3, 3), middle(window, 5, 4));
    part<QAction>(window, u"copyAction"_s).trigger();
    EXPECT_EQ(QApplication::clipboard()->text(), u"1.00\t2.00\n3.00\t\n5.00\t6.00\n"_s);
    const auto& figures = part<QLabel>(window, u"figuresLabel"_s);
    EXPECT_TRUE(eventually([&] { return figures.text().contains(u"Sum: 17.00"_s); })) << figures.text();
    EXPECT_TRUE(figures.text().startsWith(u"3 \u00d7 2"_s)) << figures.text();
}

TEST_F(WorkbookWindow, SaysThatTheFileHasChangedAndReadsItAgain)
{
    frmWorkbook& window = open();
    window.watch().setPauses(50, 20);
    click(window, middle(window, 3, 3));
    window.view().setZoom(150);
    auto& bar = part<NoticeBar>(window, u"noticeBar"_s);
    EXPECT_TRUE(bar.isHidden());

    WorkbookParts changed = smallWorkbook();
    std::string& sheet = std::find_if(changed.entries.begin(), changed.entries.end(), [](const PackageEntry& entry) {
                             return entry.name == "xl/worksheets/sheet1.xml";
                         })->bytes;
    sheet.replace(sheet.find("<v>1</v>"), 8, "<v>41</v>");
    // As programs save: into another file that then takes the name.
    write(folder.filePath(u"new"_s), changed.package());
    QFile::remove(folder.filePath(u"Report.xlsx"_s));
    ASSERT_TRUE(QFile::rename(folder.filePath(u"new"_s), folder.filePath(u"Report.xlsx"_s)));
    ASSERT_TRUE(eventually([&] { return bar.isVisible(); }));
    EXPECT_TRUE(eventually([&] { return bar.text() == u"The file \"Report.xlsx\" has changed since it was read."_s; }))
        << bar.text();
    EXPECT_EQ(userInstance()->ActiveSheet()->shownText(3, 3), u"1.00"_s) << "nothing changes behind the user's back";

    Q_EMIT bar.actionRequested();
    EXPECT_TRUE(bar.isHidden());
    EXPECT_EQ(userInstance()->ActiveSheet()->shownText(3, 3), u"41.00"_s);
    EXPECT_EQ(selected(), u"$C$3"_s);
    EXPECT_EQ(window.view().sheet()->zoom(), 150);

    // It is watched still, although it is another file than the one first opened.
    write(folder.filePath(u"Report.xlsx"_s), "no workbook any more");
    ASSERT_TRUE(eventually([&] { return bar.isVisible(); }));
    write(folder.filePath(u"Report.xlsx"_s), QByteArray());
    Q_EMIT bar.actionRequested();
    EXPECT_TRUE(bar.text().contains(u"Report.xlsx"_s)) << bar.text();
    EXPECT_EQ(userInstance()->ActiveSheet()->shownText(3, 3), u"41.00"_s) << "what was read stays";

    QFile::remove(folder.filePath(u"Report.xlsx"_s));
    EXPECT_TRUE(eventually([&] {
        return bar.text() ==
               u"The file \"Report.xlsx\" is gone. The window still shows what it held when it was read."_s;
    })) << bar.text();
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
    EXPECT_EQ(openWorkbookWindow(folder.filePath(u"none.xlsx"_s), &reason), nullptr);
    EXPECT_TRUE(reason.contains(u"none.xlsx"_s)) << reason;
    EXPECT_EQ(userInstance()->WorkbooksCount(), 2);
}

class DrawnWindow : public WorkbookWindow, public testing::WithParamInterface<const char*>
{
protected:
    /// Whether the window comes to show an area as a picture of it does.
    bool showsAsPictured(frmWorkbook& window, const CellArea& area)
    {
        const QRect place = window.view()
                                .cellRect({area.firstRow, area.firstColumn})
                                .united(window.view().cellRect({area.lastRow, area.lastColumn}));
        const QImage pictured = userInstance()->ActiveSheet()->CopyPicture(area).convertToFormat(QImage::Format_RGB32);
        return eventually([&] {
            QWidget& viewport = *window.view().viewport();
            return viewport.grab(place).toImage().convertToFormat(QImage::Format_RGB32) == pictured;
        });
    }
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

TEST_F(WorkbookWindow, IsWhereThePanelsWorkbookIsLaunched)
{
    offerWorkbookWindows();
    const QString report = file(u"Report.xlsx"_s, smallWorkbook());
    ASSERT_TRUE(QDir(folder.path()).mkdir(u"archive"_s));
    const QString archived = file(u"archive/Report.xlsx"_s, smallWorkbook());

    ASSERT_TRUE(Excel_Launch(report, u"My notes"_s));
    ASSERT_EQ(workbookWindows().size(), 1);
    frmWorkbook* const first = workbookWindows().first();
    EXPECT_TRUE(first->isVisible());
    EXPECT_EQ(first->currentSheet(), 1);
    first->showMinimized();
    EXPECT_TRUE(Excel_Launch(report, u"data"_s));
    EXPECT_EQ(workbookWindows().size(), 1);
    EXPECT_EQ(first->currentSheet(), 0);
    EXPECT_FALSE(first->isMinimized());

    EXPECT_TRUE(Excel_Launch(archived, u"My notes"_s));
    ASSERT_EQ(workbookWindows().size(), 2);
    EXPECT_EQ(first->workbook()->path(), report);
    EXPECT_EQ(first->currentSheet(), 0) << "another workbook of the same name went into its window";
    EXPECT_EQ(activeWorkbookWindow()->workbook()->path(), archived);

    write(folder.filePath(u"Broken.xlsx"_s), "PK\x03\x04 and nothing more");
    EXPECT_FALSE(Excel_Launch(folder.filePath(u"Broken.xlsx"_s), u"Data"_s));
    ASSERT_EQ(answers.shown.size(), 1);
    EXPECT_TRUE(answers.shown[0].startsWith(u"Unable to open %1.\r\n"_s.arg(folder.filePath(u"Broken.xlsx"_s))))
        << answers.shown[0].toStdString();
    EXPECT_EQ(workbookWindows().size(), 2);
}

TEST_F(WorkbookWindow, RunsToTheLeftWhereTheSheetDoes)
{
    frmWorkbook& window = open(paneView("", "rightToLeft='1'"));
    SheetView& view = window.view();
    EXPECT_GT(view.cellRect({1, 1}).left(), view.cellRect({1, 2}).left());
    press(view, Qt::Key_Left);
    EXPECT_EQ(selected(), u"$B$1"_s);
    click(window, QPoint(view.viewport()->width() - 3, middle(window, 3, 1).y()));
    EXPECT_EQ(selected(), u"$3:$3"_s) << "the row headers stand on the right";
}

} // namespace

} // namespace lumivane::test
