#include "controls/QtPrompts.h"
#include "dashboard/DashboardFixture.h"
#include "dashboard/PanelArrangement.h"
#include "dashboard/frmOpenWorkspace.h"
#include "dashboard/frmSaveWorkspace.h"
#include "repository/clsWorkspace.h"
#include "services/modUtilsINI.h"

#include <QClipboard>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QtTest/QTest>

using namespace lumivane;
using namespace Qt::StringLiterals;

namespace {

template <class Widget>
Widget& part(const QDialog& dialog, const QString& name)
{
    return *dialog.findChild<Widget*>(name);
}

class OpenDialog : public test::DashboardFixture
{
protected:
    static QStringList offered(const frmOpenWorkspace& dialog)
    {
        QStringList names;
        const auto& box = part<QComboBox>(dialog, u"cmbSource"_s);
        for (int i = 0; i < box.count(); ++i)
            names.append(box.itemText(i));
        return names;
    }
};

TEST_F(OpenDialog, ASingleDashboardMustBePicked)
{
    storeDashboard(u"Morning"_s, {});
    frmOpenWorkspace dialog{QString()};
    part<QPushButton>(dialog, u"cmdOK"_s).click();
    EXPECT_EQ(m_user.shown, QStringList{u"No dashboard selected."_s});
    EXPECT_EQ(dialog.WorkspaceID, -1);
    part<QComboBox>(dialog, u"cmbSource"_s).setCurrentIndex(0);
    part<QPushButton>(dialog, u"cmdOK"_s).click();
    EXPECT_EQ(dialog.WorkspaceID, gWorkspace->ID);
}

TEST_F(OpenDialog, OnlyAMoveLeavesOutTheDashboardOnScreen)
{
    storeDashboard(u"Morning"_s, {});
    storeDashboard(u"Evening"_s, {});
    frmOpenWorkspace move{u"Move"_s};
    EXPECT_EQ(offered(move), QStringList{u"Morning"_s});
    EXPECT_EQ(move.windowTitle(), u"Move to dashboard"_s);
    EXPECT_EQ(part<QLabel>(move, u"lblSource"_s).text(), u"Select target &dashboard:"_s);
    EXPECT_EQ(offered(frmOpenWorkspace{u"Copy"_s}).size(), 2);
}

TEST_F(OpenDialog, WithoutDashboardsItSaysSoAndDoesNotOpen)
{
    frmOpenWorkspace dialog{QString()};
    EXPECT_EQ(dialog.exec(), QDialog::Rejected);
    EXPECT_EQ(m_user.shown, QStringList{u"There are no saved dashboards to select from.  Please save at least one "
                                        "dashboard."_s});
}

using SaveDialog = test::DashboardFixture;

TEST_F(SaveDialog, SaysWhatItIsFor)
{
    struct
    {
        QString mode, caption, title, verb;
    } const rows[] = {
        {u"SaveAs"_s, u"Save dashboard As"_s, u"Save current dashboard"_s, u"Save"_s},
        {u"Rename"_s, u"Rename dashboard"_s, u"Rename current dashboard"_s, u"Rename"_s},
        {QString(), u"Save dashboard"_s, u"Save current dashboard"_s, u"Save"_s},
    };
    for (const auto& row : rows) {
        const frmSaveWorkspace dialog(row.mode, QString());
        EXPECT_EQ(dialog.windowTitle(), row.caption);
        EXPECT_EQ(part<QLabel>(dialog, u"lblTitle"_s).text(), row.title);
        EXPECT_EQ(part<QLabel>(dialog, u"lblSubtitle"_s).text(),
                  row.verb + u" the current dashboard for convenient review. Its contents will be updated as new data "
                             "arrives."_s);
    }
}

TEST_F(SaveDialog, RefusesBlankAndTakenNames)
{
    storeDashboard(u"Morning"_s, {});
    const QString blank = u"Name must not be blank!"_s;
    const QString taken = u"A dashboard with the same name already exists.  Please modify the name."_s;
    struct
    {
        QString typed, box, result;
    } const rows[] = {
        {QString(), blank, {}},
        {u"   "_s, blank, {}},
        {u"Morning"_s, taken, {}},
        {u" morning "_s, taken, {}},
        {u"Morning 2"_s, {}, u"Morning 2"_s},
        {u"Year's end"_s,
         u"The name [Year's end] holds an apostrophe, which the project does not take. Please change it "
         "and try again."_s,
         {}},
    };
    for (const auto& row : rows) {
        m_user.shown.clear();
        frmSaveWorkspace dialog(u"SaveAs"_s, QString());
        auto& name = part<QLineEdit>(dialog, u"txtName"_s);
        name.setText(row.typed);
        part<QPushButton>(dialog, u"cmdOK"_s).click();
        EXPECT_EQ(m_user.shown, row.box.isEmpty() ? QStringList() : QStringList{row.box});
        EXPECT_EQ(dialog.WorkspaceName, row.result);
        EXPECT_EQ(name.selectedText(), row.box.isEmpty() ? QString() : name.text()) << "ready to be typed over";
    }
}

TEST_F(SaveDialog, FiltersWhatIsTypedButNotWhatIsPasted)
{
    frmSaveWorkspace dialog(u"SaveAs"_s, QString());
    auto& name = part<QLineEdit>(dialog, u"txtName"_s);
    QTest::keyClicks(&name, u"a'b\"c*d+e-f"_s);
    EXPECT_EQ(name.text(), u"abcde-f"_s);
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
