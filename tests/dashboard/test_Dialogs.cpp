#include "controls/QtPrompts.h"
#include "dashboard/DashboardFixture.h"
#include "dashboard/PanelArrangement.h"
#include "dashboard/frmOpenWorkspace.h"
#include "dashboard/frmSaveWorkspace.h"
#include "services/modUtilsINI.h"

#include <QClipboard>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QtTest/QTest>

using namespace lumivane;
using namespace Qt::StringLiterals;
using test::clickOn;
using test::control;

namespace {

using OpenDialog = test::DashboardFixture;

TEST_F(OpenDialog, WithoutDashboardsItSaysSoAndDoesNotOpen)
{
    frmOpenWorkspace dialog{QString()};
    EXPECT_EQ(dialog.exec(), QDialog::Rejected);
    EXPECT_EQ(m_user.shown, QStringList{u"There are no saved dashboards to select from.  Please save at least one "
                                        "dashboard."_s});
}

using SaveDialog = test::DashboardFixture;

TEST_F(SaveDialog, RefusesBlankTakenAndHostileNames)
{
    storeDashboard(u"Morning"_s, {});
    const std::pair<QString, QString> rows[] = {
        {u"   "_s, u"Name must not be blank!"_s},
        {u" morning "_s, u"A dashboard with the same name already exists.  Please modify the name."_s},
        {u"Year's end"_s,
         u"The name [Year's end] holds an apostrophe, which the project does not take. Please change it "
         "and try again."_s},
        {u"Morning 2"_s, QString()},
    };
    for (const auto& [typed, box] : rows) {
        m_user.shown.clear();
        frmSaveWorkspace dialog(u"SaveAs"_s, QString());
        auto& name = control<QLineEdit>(dialog, u"txtName"_s);
        name.setText(typed);
        clickOn(dialog, u"cmdOK"_s);
        EXPECT_EQ(m_user.shown.value(0), box);
        EXPECT_EQ(dialog.WorkspaceName, box.isEmpty() ? typed : QString());
        EXPECT_EQ(name.selectedText(), box.isEmpty() ? QString() : name.text()) << "ready to be typed over";
    }
}

TEST_F(SaveDialog, FiltersWhatIsTypedButNotWhatIsPasted)
{
    frmSaveWorkspace dialog(u"SaveAs"_s, QString());
    auto& name = control<QLineEdit>(dialog, u"txtName"_s);
    QTest::keyClicks(&name, u"a'b\"c*d+e-f"_s);
    QApplication::clipboard()->setText(u"'*"_s);
    name.paste();
    EXPECT_EQ(name.text(), u"abcde-f'*"_s);
}

// ---- boxes ----

TEST(Boxes, ShowTextsOfWorkbooksAsPlainText)
{
    const QString name = u"<b>Sales</b>\r\nnot found"_s;
    test::whenShown<QMessageBox>([&](QMessageBox& box) {
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        EXPECT_EQ(box.text(), u"<b>Sales</b>\nnot found"_s);
        EXPECT_EQ(box.windowTitle(), u"Lumivane"_s);
    });
    QtPrompts().message(name, Prompts::Icon::Exclamation);
}

TEST(Boxes, AQuestionIsNoUnlessYesIsChosen)
{
    QtPrompts user;
    test::whenShown<QMessageBox>([](QMessageBox& box) {
        EXPECT_EQ(box.windowTitle(), u"Confirm Action"_s);
        EXPECT_EQ(box.defaultButton(), box.button(QMessageBox::No));
    });
    EXPECT_FALSE(user.confirmAction(u"Delete?"_s)) << "closed without an answer";
    test::whenShown<QMessageBox>([](QMessageBox& box) { box.button(QMessageBox::Yes)->click(); });
    EXPECT_TRUE(user.confirmAction(u"Delete?"_s));
    test::whenShown<QMessageBox>([](QMessageBox& box) { box.reject(); });
    EXPECT_EQ(user.askYesNoCancel(u"Save?"_s), Prompts::Answer::Cancel);
    test::whenShown<QMessageBox>([](QMessageBox& box) { box.button(QMessageBox::No)->click(); });
    EXPECT_EQ(user.askYesNoCancel(u"Save?"_s), Prompts::Answer::No);
}

TEST(Boxes, ThePointerOfALongCommandComesBackAfterABox)
{
    QtPrompts user;
    user.setPointer(Prompts::Pointer::Hourglass);
    user.setPointer(Prompts::Pointer::Hourglass);
    test::whenShown<QMessageBox>(
        [](QMessageBox&) { EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::ArrowCursor); });
    user.message(u"Not found"_s, Prompts::Icon::Critical);
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    user.setPointer(Prompts::Pointer::Default);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

class FileQuestions : public test::DashboardFixture
{
protected:
    /// Chooses a file in the next dialog for files and tells where that one began.
    void choose(const QString& file, QString& begunAt)
    {
        test::whenShown<QFileDialog>([file, &begunAt](QFileDialog& dialog) {
            begunAt = dialog.directory().absolutePath();
            dialog.selectFile(file);
            QMetaObject::invokeMethod(&dialog, "accept");
        });
    }
};

TEST_F(FileQuestions, BeginWhereTheLastFileWasChosenInAnEarlierRunToo)
{
    const QString book = addBook(u"Sales.xlsx"_s);
    const QString books = QFileInfo(book).absolutePath();
    const auto stored = [] { return GetIniString(GetIniFile(), u"Session"_s, u"Folder"_s, QString()); };
    QString begunAt;
    choose(book, begunAt);
    EXPECT_EQ(QtPrompts().openFile({u"Open"_s, u"All (*)"_s, m_folder.path()}), book);
    EXPECT_EQ(begunAt, m_folder.path()) << "where the question says";
    EXPECT_EQ(stored(), books);

    // The dialog itself remembers a folder for this run; the stored one goes before it.
    SetIniString(GetIniFile(), u"Session"_s, u"Folder"_s, m_folder.path());
    choose(book, begunAt);
    EXPECT_EQ(QtPrompts().openFile({u"Open"_s, u"All (*)"_s, QString()}), book);
    EXPECT_EQ(begunAt, m_folder.path());
    EXPECT_EQ(stored(), books);
}

TEST_F(FileQuestions, TakeANameThatIsTypedWithoutItsExtension)
{
    const QString book = addBook(u"Sales.xlsx"_s);
    QString begunAt;
    choose(book.chopped(5), begunAt);
    EXPECT_EQ(QtPrompts().openFile({u"Open"_s, u"Workbooks (*.xlsx)"_s, QString(), u"xlsx"_s}), book);
}

// ---- windows side by side ----

TEST(Arrangement, TilesFillTheAreaWithoutGapOrOverlap)
{
    const QRect area(10, 20, 601, 407);
    for (int count = 1; count <= 12; ++count) {
        for (const auto tile : {tileHorizontally, tileVertically}) {
            const QVector<QRect> places = tile(area, count);
            ASSERT_EQ(places.size(), count);
            int covered = 0;
            for (const QRect& place : places) {
                EXPECT_TRUE(area.contains(place));
                covered += place.width() * place.height();
                for (const QRect& other : places)
                    EXPECT_TRUE(&other == &place || !other.intersects(place));
            }
            EXPECT_EQ(covered, area.width() * area.height()) << count;
        }
    }
    EXPECT_TRUE(tileHorizontally(area, 0).isEmpty());
}

TEST(Arrangement, FewWindowsLieInRowsOrColumns)
{
    const QRect area(0, 0, 600, 300);
    EXPECT_EQ(tileHorizontally(area, 3), (QVector<QRect>{{0, 0, 600, 100}, {0, 100, 600, 100}, {0, 200, 600, 100}}));
    EXPECT_EQ(tileVertically(area, 3), (QVector<QRect>{{0, 0, 200, 300}, {200, 0, 200, 300}, {400, 0, 200, 300}}));
    EXPECT_EQ(tileHorizontally(area, 5).first(), QRect(0, 0, 300, 150)) << "two columns, the second with three windows";
}

TEST(Arrangement, ACascadeBeginsANewColumnAtHalfTheHeight)
{
    EXPECT_EQ(cascade(QRect(0, 0, 600, 100), 25, 5), (QVector<QPoint>{{0, 0}, {25, 25}, {50, 0}, {75, 25}, {100, 0}}));
}

TEST(Arrangement, MinimizedWindowsStandAtTheBottomRowUponRow)
{
    EXPECT_EQ(arrangeIcons(QRect(0, 0, 450, 300), QSize(200, 30), 3),
              (QVector<QRect>{{0, 270, 200, 30}, {200, 270, 200, 30}, {0, 240, 200, 30}}));
}

} // namespace
