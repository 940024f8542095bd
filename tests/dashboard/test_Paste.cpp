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

struct PasteCase
{
    const char* name;
    const char* selected;
    QStringList panes;
    const char* picRange; ///< stored; empty when the paste is refused
    const char* told = "";
    WindowSelection::Kind kind = WindowSelection::Kind::Range;
    bool visible = true;
};

void PrintTo(const PasteCase& row, std::ostream* out)
{
    *out << row.name;
}

} // namespace

class Paste : public DashboardFixture, public testing::WithParamInterface<PasteCase>
{
};

TEST_P(Paste, MakesAPanelOfTheSelectionOrSaysWhyNot)
{
    const PasteCase& row = GetParam();
    start();
    const auto user = std::make_shared<UserSpreadsheet>(m_library);
    user->setVisible(row.visible);
    user->Open(addBook(u"Figures.xlsx"_s));
    user->window->selection.kind = row.kind;
    user->window->selection.name = QString::fromLatin1(row.selected);
    user->window->range = QString::fromLatin1(row.selected);
    user->window->panes = row.panes;
    HostFactory factory = m_library.factory();
    factory.userInstance = [user] { return user; };
    setHostFactory(factory);
    window().ClickX = 300;
    window().ClickY = 450;

    window().menus().mnuWorkspacePaste->trigger();

    const QString told = QString::fromLatin1(row.told);
    EXPECT_EQ(m_user.shown, told.isEmpty() ? QStringList() : QStringList(told));
    const bool accepted = *row.picRange != '\0';
    ASSERT_EQ(gWorkspace->NumPanels(), accepted ? 1 : 0);
    EXPECT_EQ(window().panelWindows().size(), accepted ? 1 : 0);
    EXPECT_FALSE(window().IsBusy);
    if (!accepted)
        return;
    answerName(u"Pasted"_s);
    window().menus().mnuWorkspaceSave->trigger();
    const QString panel = u"SELECT * FROM LvnSavedPanel"_s;
    EXPECT_EQ(stored(panel, u"PicRange"_s), QString::fromLatin1(row.picRange));
    EXPECT_EQ(stored(panel, u"ContentMatch"_s), u"bottom=$C$4"_s);
    EXPECT_EQ(stored(panel, u"RelativeTo"_s), u"bottom"_s);
    EXPECT_EQ(stored(panel, u"ViewType"_s), u"C"_s);
    EXPECT_EQ(stored(panel, u"Caption"_s), u"Figures"_s);
    EXPECT_EQ(stored(panel, u"Left"_s) + u' ' + stored(panel, u"Top"_s), u"300 450"_s);
    EXPECT_EQ(stored(u"SELECT * FROM LvnPanelSource"_s, u"FullPath"_s), bookPath(u"Figures.xlsx"_s));
}

INSTANTIATE_TEST_SUITE_P(
    OfTheUser, Paste,
    testing::Values(
        PasteCase{"plain", "$B$2:$C$4", {u"$A$1:$M$30"_s}, "$B$2:$C$4``"},
        PasteCase{"cut to what is on screen", "$B$2:$C$40", {u"$A$1:$M$30"_s}, "$B$2:$C$30``"},
        PasteCase{"under frozen rows", "$B$3:$C$4", {u"$A$1:$M$2"_s, u"$A$3:$M$30"_s}, "$B$3:$C$4`1:2`"},
        PasteCase{"beside frozen columns", "$C$2:$C$4", {u"$A$1:$B$30"_s, u"$C$1:$M$30"_s}, "$C$2:$C$4``A:B"},
        PasteCase{"scrolled out",
                  "$B$2:$C$4",
                  {u"$A$20:$M$50"_s},
                  "",
                  "No range of cells selected in the spreadsheet.  Please select a range and paste again."},
        PasteCase{"several areas",
                  "$B$2,$C$4",
                  {u"$A$1:$M$30"_s},
                  "",
                  "Unable to paste.  Several areas are selected.  Please select a single range and paste again."},
        PasteCase{"nothing that can be shown",
                  "$B$2",
                  {u"$A$1:$M$30"_s},
                  "",
                  "Unable to paste.  Invalid selection.  Must either select a range, chart object or shape.",
                  WindowSelection::Kind::Other},
        PasteCase{
            "a chart whose name the project does not take",
            "x', SheetName = 'y",
            {u"$A$1:$M$30"_s},
            "",
            "Unable to paste.  The name of the chart or shape [x', SheetName = 'y] holds an apostrophe, which the "
            "project does not take. Please change it and try again.",
            WindowSelection::Kind::Chart},
        PasteCase{"hidden instance",
                  "$B$2",
                  {u"$A$1:$M$30"_s},
                  "",
                  "Unable to paste.  Excel is not visible.",
                  WindowSelection::Kind::Range,
                  false}),
    [](const auto& chosen) { return QString::fromLatin1(chosen.param.name).replace(u' ', u'_').toStdString(); });

} // namespace lumivane::test
