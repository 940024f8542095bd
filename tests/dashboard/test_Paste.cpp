#include "dashboard/DashboardFixture.h"
#include "panel/frmPanel.h"
#include "repository/clsWorkspace.h"
#include "repository/clsWorkspacePanel.h"

#include <QAction>

namespace lumivane::test {

using namespace Qt::StringLiterals;

namespace {

struct UserWindow : Window
{
    WindowSelection selection;
    QString range;
    QStringList panes;

    WindowSelection Selection() override { return selection; }
    QString RangeSelection() override { return range; }
    int PanesCount() override { return static_cast<int>(panes.size()); }
    QString PaneVisibleRange(int index) override { return panes[index - 1]; }
};

/// The spreadsheet in front of the user: workbooks in memory, and a window that shows and selects what a test says.
struct UserSpreadsheet : PlainApplication
{
    using PlainApplication::PlainApplication;
    std::shared_ptr<UserWindow> window = std::make_shared<UserWindow>();
    std::shared_ptr<Window> ActiveWindow() override { return window; }
};

} // namespace

using Paste = DashboardFixture;

TEST_F(Paste, MakesAPanelOfTheSelectionOrSaysWhyNot)
{
    using enum WindowSelection::Kind;
    start();
    const auto user = std::make_shared<UserSpreadsheet>(m_library);
    const QString figures = addBook(u"Figures.xlsx"_s);
    for (const QString& name : {u"Twice"_s, u"twice"_s})
        m_library.books[figures].front().shape(name);
    user->Open(figures);
    HostFactory factory = m_library.factory();
    factory.userInstance = [user] { return user; };
    setHostFactory(factory);
    const struct
    {
        WindowSelection::Kind kind;
        bool visible;
        QString pane, told;
        QString name = u"$B$2:$C$4"_s;
    } refused[] = {
        {Range, true, u"$A$20:$M$50"_s, u"No range of cells selected in the spreadsheet."_s}, // scrolled out
        {Range, false, u"$A$1:$M$30"_s, u"Excel is not visible."_s},
        {Other, true, u"$A$1:$M$30"_s, u"Must either select a range, chart object or shape."_s},
        {Chart, true, u"$A$1:$M$30"_s, u"The name of the chart or shape [x', SheetName = 'y] holds an apostrophe"_s,
         u"x', SheetName = 'y"_s},
        {Shape, true, u"$A$1:$M$30"_s, u"There are 2 charts or shapes named [twice] on the sheet [Data]."_s,
         u"twice"_s},
        {Shape, true, u"$A$1:$M$30"_s, u"has no name by which a panel could find it"_s, QString()},
    };
    for (const auto& row : refused) {
        m_user.shown.clear();
        user->setVisible(row.visible);
        user->window->selection.kind = row.kind;
        user->window->selection.name = row.name;
        user->window->range = u"$B$2:$C$4"_s;
        user->window->panes = {row.pane};
        window().menus().mnuWorkspacePaste->trigger();
        EXPECT_TRUE(m_user.shown.value(0).contains(row.told)) << m_user.shown.value(0);
        EXPECT_EQ(gWorkspace->NumPanels(), 0);
        EXPECT_TRUE(window().panelWindows().isEmpty());
        EXPECT_FALSE(window().IsBusy);
    }
    user->window->selection = {Range, {}};
    window().ClickX = 300;
    window().ClickY = 450;
    window().menus().mnuWorkspacePaste->trigger();
    answerName(u"Pasted"_s);
    window().menus().mnuWorkspaceSave->trigger();
    EXPECT_EQ(rows(u"SELECT PicRange, ContentMatch, RelativeTo, ViewType, Caption, [Left], [Top] FROM LvnSavedPanel"_s),
              QStringList{u"$B$2:$C$4``|bottom=$C$4|bottom|C|Figures|300|450"_s});
    EXPECT_EQ(rows(u"SELECT FullPath FROM LvnPanelSource"_s), QStringList{bookPath(u"Figures.xlsx"_s)});

    user->window->selection = {Shape, u"Trend"_s};
    window().menus().mnuWorkspacePaste->trigger();
    ASSERT_EQ(gWorkspace->NumPanels(), 2) << m_user.shown.join(u'|');
    EXPECT_EQ(gWorkspace->Panels(2)->ContentType + gWorkspace->Panels(2)->PicRange, u"CTrend"_s);
}

} // namespace lumivane::test
