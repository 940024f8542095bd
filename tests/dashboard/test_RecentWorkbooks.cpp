#include "dashboard/DashboardFixture.h"
#include "services/RecentWorkbooks.h"

#include <QFile>
#include <QMenu>

using namespace lumivane;
using namespace Qt::StringLiterals;

namespace {

class RecentMenu : public test::DashboardFixture
{
protected:
    void SetUp() override { start(); }

    QList<QAction*> entries()
    {
        QMenu& menu = *window().menus().mnuWorkspaceRecent;
        Q_EMIT menu.aboutToShow();
        return menu.actions();
    }
};

TEST_F(RecentMenu, ListsTenWorkbooksNewestFirstEachWithAKey)
{
    EXPECT_EQ(entries().first()->text(), u"No workbooks yet"_s);
    EXPECT_FALSE(entries().first()->isEnabled());
    for (const int i : {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 5})
        rememberWorkbook(u"/books/R&D %1.xlsx"_s.arg(i));
    const QList<QAction*> listed = entries();
    ASSERT_EQ(listed.size(), 10);
    EXPECT_EQ(listed[0]->text(), u"&1  /books/R&&D 5.xlsx"_s);
    EXPECT_EQ(listed[1]->text(), u"&2  /books/R&&D 11.xlsx"_s);
    EXPECT_EQ(listed[9]->text(), u"1&0  /books/R&&D 2.xlsx"_s);
}

TEST_F(RecentMenu, AnEntryOpensItsWorkbookOrIsTakenOffWhereThatIsGone)
{
    showWorkbooks();
    const QString sales = addBook(u"sales.xlsx"_s), cash = addBook(u"cash.xlsx"_s);
    rememberWorkbook(sales);
    rememberWorkbook(cash);
    entries()[1]->trigger();
    EXPECT_EQ(openings(sales), 1);
    EXPECT_TRUE(m_user.shown.isEmpty());
    QFile::remove(sales);
    entries()[1]->trigger();
    EXPECT_EQ(m_user.shown, QStringList{u"The workbook [%1] is not there any more. It has been taken off the list of "
                                        "recent workbooks."_s.arg(sales)});
    EXPECT_EQ(recentWorkbooks(), QStringList{cash});
}

} // namespace
