#include "panel/ProjectFixture.h"
#include "panel/ShownDialog.h"
#include "panel/frmPanel.h"
#include "panel/frmRangeRelative.h"
#include "repository/Database.h"
#include "repository/clsPanelSource.h"
#include "repository/clsWorkspacePanel.h"
#include "support/LogCapture.h"

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
    const struct
    {
        QString rule;
        int entry;
    } rows[] = {{u"top"_s, 0}, {u"bottom"_s, 1}, {u"contents"_s, 2}, {u"Bottom"_s, -1}, {u""_s, -1}};
    for (const auto& row : rows) {
        m_record->RelativeTo = row.rule;
        open([&](frmRangeRelative& dialog) {
            EXPECT_EQ(rules(dialog).currentIndex(), row.entry) << row.rule.toStdString();
            EXPECT_EQ(asksForValue(dialog), row.rule == u"contents");
        });
    }
    EXPECT_EQ(m_user.shown, QStringList{});
}

TEST_F(RangeLocation, AValueIsSearchedInItsColumnOrItsRow)
{
    m_record->ContentMatch = u"bottom=$C$4"_s;
    const struct
    {
        int option;
        QString rule;
    } rows[] = {{0, u"contents: bottom=$C$4`anchor=$C3`content=C3"_s},
                {1, u"contents: bottom=$C$4`anchor=C$3`content=C3"_s}};
    for (const auto& row : rows) {
        open([&](frmRangeRelative& dialog) {
            EXPECT_EQ(control<QRadioButton>(dialog, u"optFixed0"_s).text(),
                      row.option == 0 ? u"Search for cell with this value in any row of this &column"_s
                                      : u"Search for a cell with this value in &column 'C'"_s);
            rules(dialog).setCurrentIndex(2);
            EXPECT_EQ(offered(dialog), (QStringList{u"B2"_s, u"B3"_s, u"B4"_s, u"C2"_s, u"C3"_s, u"C4"_s}));
            EXPECT_EQ(values(dialog).currentText(), row.option == 0 ? u"B2"_s : u"C3"_s) << "the stored one";
            values(dialog).setCurrentText(u"C3"_s);
            EXPECT_EQ(option(dialog, 0).text(), u"Search for a cell with this value in &column 'C'"_s);
            EXPECT_EQ(option(dialog, 1).text(), u"Search for a cell with this value in &row 3"_s);
            option(dialog, row.option).setChecked(true);
            clickOn(dialog, u"cmdOK"_s);
        });
        EXPECT_EQ(rule(), row.rule);
    }
    EXPECT_TRUE(m_panel.IsDirty);
}

TEST_F(RangeLocation, OKKeepsTheStoredValueAndWhatIsFixed)
{
    const struct
    {
        QString match;
        int option;
        QString stored; ///< after OK
    } rows[] = {{u"bottom=`anchor=$C3`content=C3"_s, 0, u"anchor=$C3`content=C3"_s},
                {u"bottom=`anchor=C$3`content=C3"_s, 1, u"anchor=C$3`content=C3"_s},
                {u"bottom=`anchor=$C$3`content=C3"_s, 0, u"anchor=$C3`content=C3"_s},
                {u"bottom=`anchor=$B4`content=Twice"_s, 0, u"anchor=$B4`content=Twice"_s},
                {u"bottom=`anchor=B10`content=below"_s, 0, u"anchor=B10`content=below"_s}, // not offered
                {u"bottom=`anchor=C$3`content="_s, 0, u"anchor=$B2`content=B2"_s},
                {u"bottom="_s, 0, u"anchor=$B2`content=B2"_s}};
    sheet().put(u"B4"_s, u"Twice"_s).put(u"C4"_s, u"Twice"_s);
    sheet().put(u"B10"_s, u"below"_s);
    m_record->RelativeTo = u"contents"_s;
    for (const auto& row : rows) {
        m_record->ContentMatch = row.match;
        open([&](frmRangeRelative& dialog) {
            EXPECT_TRUE(option(dialog, row.option).isChecked()) << row.match.toStdString();
            clickOn(dialog, u"cmdOK"_s);
        });
        EXPECT_EQ(rule(), u"contents: bottom=`"_s + row.stored) << row.match.toStdString();
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
    m_library.books.clear();
    choose();
    EXPECT_EQ(m_user.shown, (QStringList{notOpened(m_path), noValues}));
    m_record->SourceID = 0;
    choose();
    EXPECT_EQ(m_user.shown, (QStringList{notOpened(QString()), noValues}));
    EXPECT_TRUE(log.entries.join(u'\n').contains(u"Error frmRangeRelative.PrepAnchorChoice: "_s))
        << log.entries.join(u'\n').toStdString();
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
        EXPECT_TRUE(m_user.shown.last().contains(u"No value to find is chosen."_s))
            << m_user.shown.last().toStdString();
        EXPECT_EQ(rule(), u"top: "_s);
        values(dialog).setCurrentIndex(1);
        clickOn(dialog, u"cmdOK"_s);
    });
    EXPECT_EQ(rule(), u"contents: bottom=`anchor=$B3`content=B3"_s);
}

TEST_F(RangeLocation, TheValueIsStoredHoweverTheListShowsIt)
{
    sheet().put(u"B2"_s, u"Net\nsales"_s).put(u"B3"_s, u"46300"_s, u"Mon 5 Oct"_s);
    open([&](frmRangeRelative& dialog) {
        rules(dialog).setCurrentIndex(2);
        EXPECT_EQ(offered(dialog).mid(0, 2), (QStringList{u"Net sales"_s, u"46300 (Mon 5 Oct)"_s}));
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
    EXPECT_TRUE(m_user.shown[1].contains(u"frmRangeRelative.Form_Activate"_s)) << m_user.shown[1].toStdString();
}

struct RuleChange
{
    const char* name;
    QString rule, match; ///< with which the panel found its range two rows further down
    int entry;           ///< chosen in the dialog
    QString range;       ///< stored after the dashboard was saved
    QString found;       ///< in the present version, by the new rule
};
void PrintTo(const RuleChange& row, std::ostream* out)
{
    *out << row.name;
}

class RangeLocationOfAMovedRange : public RangeLocation, public testing::WithParamInterface<RuleChange>
{
};

TEST_P(RangeLocationOfAMovedRange, ShowsTheSameCellsByTheNewRule)
{
    m_record->RelativeTo = GetParam().rule;
    m_record->ContentMatch = GetParam().match;
    m_record->RowHeights = u"2:2=30"_s;
    sheet().clear(u"B2:C4"_s);
    for (const char* cell : {"B4", "C4", "B5", "C5", "B6", "C6"})
        sheet().put(QString::fromLatin1(cell), u"was %1%2"_s.arg(QChar::fromLatin1(cell[0])).arg(cell[1] - '2'));
    XLInstance XLInst = worker();
    PanelPipeline pipeline;
    saveDashboard(u"Morning"_s);
    ASSERT_TRUE(pipeline.Panel_LoadExcel(m_path, m_path, false, XLInst, m_record)) << pipeline.problem.toStdString();
    ASSERT_EQ(m_record->adjMovRange(), u"B4:C6"_s);

    open([&](frmRangeRelative& dialog) {
        rules(dialog).setCurrentIndex(GetParam().entry);
        clickOn(dialog, u"cmdOK"_s);
    });
    saveDashboard(u"Morning"_s);
    EXPECT_EQ(stored(u"SELECT PicRange FROM LvnSavedPanel"_s, u"PicRange"_s), GetParam().range);
    clsWorkspacePanel again;
    ASSERT_TRUE(again.LoadFromDB(m_record->ID, gDB));
    again.GetAdjRange(sheet());
    EXPECT_EQ(again.adjMovRange(), GetParam().found);
    m_record->GetAdjRange(sheet());
    EXPECT_EQ(m_record->adjMovRange(), GetParam().found) << "in memory as in the store";

    // The last cell was stored for the same version as the range.
    m_record->RelativeTo = u"bottom"_s;
    m_record->GetAdjRange(sheet());
    EXPECT_EQ(m_record->adjMovRange(), GetParam().found);
}

const RuleChange ruleChanges[] = {
    {"bottom_to_contents", u"bottom"_s, u"bottom=$C$4"_s, 2, u"B4:C6``"_s, u"B4:C6"_s},
    {"bottom_to_top", u"bottom"_s, u"bottom=$C$4"_s, 0, u"B4:C6``"_s, u"B4:C6"_s},
    {"bottom_stays", u"bottom"_s, u"bottom=$C$4"_s, 1, u"$B$2:$C$4``"_s, u"B4:C6"_s},
    {"contents_to_bottom_with_a_last_cell", u"contents"_s, u"bottom=$C$4`anchor=$B2`content=was B2"_s, 1,
     u"$B$2:$C$4``"_s, u"B4:C6"_s},
    {"contents_to_bottom_without_one", u"contents"_s, u"bottom=`anchor=$B2`content=was B2"_s, 1, u"B4:C6``"_s,
     u"B4:C6"_s},
    {"contents_to_another_value", u"contents"_s, u"bottom=`anchor=$C3`content=was C3"_s, 2, u"B4:C6``"_s, u"B4:C6"_s},
};
INSTANTIATE_TEST_SUITE_P(Changes, RangeLocationOfAMovedRange, testing::ValuesIn(ruleChanges),
                         [](const auto& row) { return std::string(row.param.name); });

} // namespace
} // namespace lumivane::test
