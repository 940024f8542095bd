#include "dashboard/DashboardFixture.h"
#include "host/Host.h"
#include "services/RecentWorkbooks.h"

#include <QFile>
#include <QMenu>

using namespace lumivane;
using namespace Qt::StringLiterals;

namespace {

class RecentMenu : public test::DashboardFixture
{
protected:
    void SetUp() override
    {
        start();
        HostFactory factory = hostFactory();
        factory.visibleInstance = [this] { return std::make_shared<test::PlainApplication>(m_library); };
        setHostFactory(factory);
    }

    QStringList entries()
    {
        QMenu& menu = *window().menus().mnuWorkspaceRecent;
        Q_EMIT menu.aboutToShow();
        QStringList texts;
        for (const QAction* entry : menu.actions())
            texts.append(entry->text());
        return texts;
    }
    void choose(int entry)
    {
        entries();
        window().menus().mnuWorkspaceRecent->actions().at(entry)->trigger();
    }
};

TEST_F(RecentMenu, ListsTenWorkbooksNewestFirstEachWithAKey)
{
    EXPECT_EQ(entries(), QStringList{u"No workbooks yet"_s});
    EXPECT_FALSE(window().menus().mnuWorkspaceRecent->actions().first()->isEnabled());
    for (int i = 1; i <= 11; ++i)
        rememberWorkbook(u"/books/R&D %1.xlsx"_s.arg(i));
    rememberWorkbook(u"/books/R&D 5.xlsx"_s);
    const QStringList listed = entries();
    ASSERT_EQ(listed.size(), 10);
    EXPECT_EQ(listed[0], u"&1  /books/R&&D 5.xlsx"_s);
    EXPECT_EQ(listed[1], u"&2  /books/R&&D 11.xlsx"_s);
    EXPECT_EQ(listed[9], u"1&0  /books/R&&D 2.xlsx"_s);
}

TEST_F(RecentMenu, AnEntryOpensItsWorkbook)
{
    const QString sales = addBook(u"sales.xlsx"_s);
    rememberWorkbook(sales);
    choose(0);
    EXPECT_EQ(openings(sales), 1);
    EXPECT_TRUE(m_user.shown.isEmpty());
}

TEST_F(RecentMenu, AWorkbookThatIsGoneIsToldAndTakenOff)
{
    const QString sales = addBook(u"sales.xlsx"_s);
    const QString cash = addBook(u"cash.xlsx"_s);
    rememberWorkbook(cash);
    rememberWorkbook(sales);
    QFile::remove(sales);
    choose(0);
    EXPECT_EQ(m_user.shown, QStringList{u"The workbook [%1] is not there any more. It has been taken off the list of "
                                        "recent workbooks."_s.arg(sales)});
    EXPECT_EQ(recentWorkbooks(), QStringList{cash});
}

} // namespace
