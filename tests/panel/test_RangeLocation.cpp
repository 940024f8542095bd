#include "panel/ProjectFixture.h"
#include "panel/ShownDialog.h"
#include "panel/frmPanel.h"
#include "panel/frmRangeRelative.h"
#include "repository/Database.h"
#include "repository/clsPanelSource.h"
#include "repository/clsWorkspacePanel.h"
#include "support/LogCapture.h"
#include "support/TextTable.h"

#include <QComboBox>
#include <QFrame>
#include <QLabel>
#include <QRadioButton>

// The dialog by which a panel's range is found in other versions of its workbook.

namespace lumivane::test {
namespace {

using namespace Qt::StringLiterals;

const QString noValues = u"There are no values in the selected range of cells that can be used to search for the "
                         "range.  Please choose another option."_s;

class RangeLocation : public ProjectFixture
{
protected:
    void SetUp() override
    {
        m_path = addBook(u"sales.xlsx"_s);
        m_record = addPanel(m_path, u"Sales"_s);
        m_panel.Index = 1;
    }

    PlainSheet& sheet() { return m_library.books[m_path].front(); }
    QString notOpened(const QString& path) const
    {
        return path + u" could not be opened, or did not contain the worksheet 'Data'.  This panel's Range Location "
                      "cannot be set."_s;
    }
    void open(std::function<void(frmRangeRelative&)> act)
    {
        whenShown<frmRangeRelative>(std::move(act));
        m_panel.Panel_Range(false);
    }
    /// Rule and parameters as they stand in the panel.
    QString rule() const { return m_record->RelativeTo + u": "_s + m_record->ContentMatch; }

    static QComboBox& rules(const frmRangeRelative& dialog) { return control<QComboBox>(dialog, u"cmbRelativeTo"_s); }
    static QComboBox& values(const frmRangeRelative& dialog) { return control<QComboBox>(dialog, u"cmbAnchor"_s); }
    static QStringList offered(const frmRangeRelative& dialog)
    {
        QStringList texts;
        for (int i = 0; i < values(dialog).count(); ++i)
            texts.append(values(dialog).itemText(i));
        return texts;
    }
    static bool asksForValue(const frmRangeRelative& dialog)
    {
        return control<QFrame>(dialog, u"fraAnchor"_s).isVisible();
    }
    static QRadioButton& option(const frmRangeRelative& dialog, int index)
    {
        return control<QRadioButton>(dialog, u"optFixed%1"_s.arg(index));
    }

    QString m_path;
    std::shared_ptr<clsWorkspacePanel> m_record;
    frmPanel m_panel{[] { return false; }};
};

TEST_F(RangeLocation, OffersTheRulesInTheirOrderAndShowsThePanelsOne)
{
    for (const auto& [shown, entry] : textPairs("top → 0 | bottom → 1 | contents → 2 | Bottom → -1")) {
        m_record->RelativeTo = shown;
        open([&](frmRangeRelative& dialog) {
            EXPECT_EQ(rules(dialog).currentIndex(), entry.toInt()) << shown;
            EXPECT_EQ(asksForValue(dialog), shown == u"contents");
        });
    }
    EXPECT_EQ(m_user.shown, QStringList{});
}

TEST_F(RangeLocation, AValueIsSearchedInItsColumnOrItsRow)
{
    m_record->ContentMatch = u"bottom=$C$4"_s;
    open([&](frmRangeRelative& dialog) {
        rules(dialog).setCurrentIndex(2);
        EXPECT_EQ(offered(dialog), (QStringList{u"B2"_s, u"B3"_s, u"B4"_s, u"C2"_s, u"C3"_s, u"C4"_s}));
        EXPECT_EQ(values(dialog).currentText(), u"B2"_s);
        values(dialog).setCurrentText(u"C3"_s);
        EXPECT_EQ(option(dialog, 1).text(), u"Search for a cell with this value in &row 3"_s);
        option(dialog, 1).setChecked(true);
        clickOn(dialog, u"cmdOK"_s);
    });
    EXPECT_EQ(rule(), u"contents: bottom=$C$4`anchor=C$3`content=C3"_s);
    EXPECT_TRUE(m_panel.IsDirty);
}

TEST_F(RangeLocation, OKKeepsTheStoredValueAndWhatIsFixed)
{
    sheet().put(u"B4"_s, u"Twice"_s).put(u"C4"_s, u"Twice"_s).put(u"B10"_s, u"below"_s);
    m_record->RelativeTo = u"contents"_s;
    for (const auto& [name, before, checked, after] : textTable<4>(R"(
        in its column           | anchor=$C3`content=C3    | 0 | anchor=$C3`content=C3
        in its row              | anchor=C$3`content=C3    | 1 | anchor=C$3`content=C3
        fixed both ways         | anchor=$C$3`content=C3   | 0 | anchor=$C3`content=C3
        the first of two        | anchor=$B4`content=Twice | 0 | anchor=$B4`content=Twice
        outside the range       | anchor=B10`content=below | 0 | anchor=B10`content=below
        nothing that was stored | anchor=C$3`content=      | 0 | anchor=$B2`content=B2)")) {
        m_record->ContentMatch = u"bottom=`"_s + before;
        open([&](frmRangeRelative& dialog) {
            EXPECT_TRUE(option(dialog, checked.toInt()).isChecked()) << name;
            clickOn(dialog, u"cmdOK"_s);
        });
        EXPECT_EQ(rule(), u"contents: bottom=`"_s + after) << name;
    }
}

TEST_F(RangeLocation, AWorkbookThatCannotBeReadIsToldAndItsWorkerEnded)
{
    const LogCapture log;
    const auto choose = [&] {
        m_user.shown.clear();
        m_library.events.clear();
        open([&](frmRangeRelative& dialog) {
            rules(dialog).setCurrentIndex(2);
            EXPECT_EQ(rules(dialog).currentIndex(), 1);
        });
        EXPECT_EQ(m_library.events.count(u"quit"_s), m_library.events.count(u"start"_s));
        EXPECT_EQ(m_user.pointer, Prompts::Pointer::Default);
    };
    m_library.books[m_path] = {PlainSheet(u"Other"_s)};
    choose();
    EXPECT_EQ(m_user.shown, (QStringList{notOpened(m_path), noValues}));
    m_record->SourceID = 0;
    choose();
    EXPECT_EQ(m_user.shown, (QStringList{notOpened(QString()), noValues}));
    EXPECT_FALSE(log.entries.filter(u"Error frmRangeRelative.PrepAnchorChoice: "_s).isEmpty())
        << log.entries.join(u'\n');
}

TEST_F(RangeLocation, ARangeOfMoreThan32ColumnsOffersItsFirstOnes)
{
    sheet().put(u"AI2"_s, u"far"_s);
    m_record->PicRange = u"$B$2:$AI$4``"_s;
    open([&](frmRangeRelative& dialog) {
        rules(dialog).setCurrentIndex(2);
        ASSERT_EQ(m_user.shown.size(), 1);
        EXPECT_TRUE(m_user.shown[0].contains(u"32 columns"));
        ASSERT_TRUE(asksForValue(dialog));
        EXPECT_EQ(values(dialog).count(), 6);
        EXPECT_EQ(values(dialog).currentIndex(), -1);
        clickOn(dialog, u"cmdOK"_s);
        ASSERT_TRUE(dialog.isVisible());
        EXPECT_TRUE(m_user.shown.last().contains(u"No value to find is chosen."_s)) << m_user.shown.last();
        EXPECT_EQ(rule(), u"top: "_s);
        values(dialog).setCurrentIndex(1);
        clickOn(dialog, u"cmdOK"_s);
    });
    EXPECT_EQ(rule(), u"contents: bottom=`anchor=$B3`content=B3"_s);
}

TEST_F(RangeLocation, TheValueIsStoredHoweverTheListShowsIt)
{
    sheet().put(u"B2"_s, u"Net\nsales"_s).put(u"B3"_s, u"46300"_s, u"Mon 5 Oct"_s).put(u"B4"_s, u"1186"_s, u"1,186"_s);
    open([&](frmRangeRelative& dialog) {
        rules(dialog).setCurrentIndex(2);
        EXPECT_EQ(offered(dialog).mid(0, 3), (QStringList{u"Net sales"_s, u"46300 (Mon 5 Oct)"_s, u"1186"_s}));
        values(dialog).setCurrentIndex(1);
        clickOn(dialog, u"cmdOK"_s);
    });
    EXPECT_EQ(rule(), u"contents: bottom=`anchor=$B3`content=46300"_s);
    open([&](frmRangeRelative& dialog) {
        values(dialog).setCurrentIndex(0);
        clickOn(dialog, u"cmdOK"_s);
    });
    EXPECT_EQ(rule(), u"contents: bottom=`anchor=$B2`content=Net\nsales"_s);
}

TEST_F(RangeLocation, SaysWhereTheRangeLiesAndWhatTheRuleFindsNow)
{
    sheet().put(u"D7"_s, u"Sum"_s).put(u"B3"_s, u"Total"_s).put(u"B4"_s, u"Total"_s);
    m_record->RelativeTo = u"bottom"_s;
    m_record->ContentMatch = u"bottom=$C$4"_s;
    open([&](frmRangeRelative& dialog) {
        const QLabel& found = control<QLabel>(dialog, u"lblFound"_s);
        EXPECT_EQ(found.text(), u"Stored address: B2:C4\nFound by this rule now: C5:D7"_s);
        rules(dialog).setCurrentIndex(0);
        EXPECT_EQ(found.text(), u"Stored address: B2:C4\nFound by this rule now: C5:D7"_s) << "where it is now";
    });
    m_record->RelativeTo = u"top"_s;
    open([&](frmRangeRelative& dialog) {
        rules(dialog).setCurrentIndex(2);
        values(dialog).setCurrentIndex(2);
        EXPECT_EQ(control<QLabel>(dialog, u"lblFound"_s).text(),
                  u"Stored address: B2:C4\nFound by this rule now: B1:C3\nThe value in B4 is found first in B3. "
                  "Choose another value, or the other direction of search."_s);
        option(dialog, 1).setChecked(true);
        EXPECT_TRUE(control<QLabel>(dialog, u"lblFound"_s).text().endsWith(u"now: B2:C4"_s)) << "in row 4";
    });
    EXPECT_EQ(rule(), u"top: bottom=$C$4"_s) << "cancelled";
    m_record->RelativeTo = u"contents"_s;
    for (const auto& [stored, sentence] : {std::pair{u"$D7`content=Sum"_s, u"The stored value is found in D7."_s},
                                           {u"$C9`content=Gone"_s, u"The stored value is not found now"_s}}) {
        m_record->ContentMatch = u"bottom=`anchor="_s + stored;
        open([&](frmRangeRelative& dialog) {
            EXPECT_TRUE(control<QLabel>(dialog, u"lblFound"_s).text().contains(sentence)) << sentence;
        });
    }
    EXPECT_TRUE(m_panel.IsDirty);
}

TEST_F(RangeLocation, WithoutSuchAPanelItDoesNotOpen)
{
    m_panel.Index = -1;
    m_panel.Panel_Range(false);
    EXPECT_EQ(m_user.shown, QStringList{u"Invalid panel index."_s});
    m_panel.Index = 7;
    m_panel.Panel_Range(false);
    ASSERT_EQ(m_user.shown.size(), 2);
    EXPECT_TRUE(m_user.shown[1].contains(u"frmRangeRelative.Form_Activate"_s)) << m_user.shown[1];
}

/// A row: name, the rule with its clauses by which the panel found its range two rows further down, the rule chosen in
/// the dialog, the range stored after the dashboard was saved.
using RangeLocationOfAMovedRange = OfEachRow<RangeLocation, 5>;

TEST_P(RangeLocationOfAMovedRange, ShowsTheSameCellsByTheNewRule)
{
    const auto& [name, oldRule, match, chosen, range] = GetParam();
    m_record->RelativeTo = oldRule;
    m_record->ContentMatch = match;
    m_record->RowHeights = u"2:2=30"_s;
    sheet().clear(u"B2:C4"_s);
    for (const char* cell : {"B4", "C4", "B5", "C5", "B6", "C6"})
        sheet().put(QString::fromLatin1(cell), u"was %1%2"_s.arg(QChar::fromLatin1(cell[0])).arg(cell[1] - '2'));
    saveDashboard(u"Morning"_s);
    m_record->GetAdjRange(sheet());
    ASSERT_EQ(m_record->adjMovRange(), u"B4:C6"_s);

    open([&](frmRangeRelative& dialog) {
        rules(dialog).setCurrentIndex(chosen.toInt());
        clickOn(dialog, u"cmdOK"_s);
    });
    saveDashboard(u"Morning"_s);
    EXPECT_EQ(stored(u"SELECT PicRange FROM LvnSavedPanel"_s, u"PicRange"_s), range + u"``");
    clsWorkspacePanel again;
    ASSERT_TRUE(again.LoadFromDB(m_record->ID, gDB));
    again.GetAdjRange(sheet());
    EXPECT_EQ(again.adjMovRange(), u"B4:C6"_s);
    m_record->GetAdjRange(sheet());
    EXPECT_EQ(m_record->adjMovRange(), u"B4:C6"_s) << "in memory as in the store";

    // The last cell was stored for the same version as the range.
    m_record->RelativeTo = u"bottom"_s;
    m_record->GetAdjRange(sheet());
    EXPECT_EQ(m_record->adjMovRange(), u"B4:C6"_s);
}

INSTANTIATE_TEST_SUITE_P(Changes, RangeLocationOfAMovedRange, testing::ValuesIn(textTable<5>(R"(
    bottom to contents                  | bottom   | bottom=$C$4                           | 2 | B4:C6
    bottom to top                       | bottom   | bottom=$C$4                           | 0 | B4:C6
    bottom stays                        | bottom   | bottom=$C$4                           | 1 | $B$2:$C$4
    contents to bottom with a last cell | contents | bottom=$C$4`anchor=$B2`content=was B2 | 1 | $B$2:$C$4
    contents to bottom without one      | contents | bottom=`anchor=$B2`content=was B2     | 1 | B4:C6
    contents to another value           | contents | bottom=`anchor=$C3`content=was C3     | 2 | B4:C6)")),
                         rowName);

} // namespace
} // namespace lumivane::test
