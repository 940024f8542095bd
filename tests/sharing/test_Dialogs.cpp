#include "dashboard/DashboardFixture.h"
#include "repository/Database.h"
#include "repository/clsPanelSource.h"
#include "repository/clsWorkspace.h"
#include "repository/clsWorkspacePanel.h"
#include "sharing/frmExport.h"
#include "sharing/frmImport.h"
#include "sharing/frmImportFolders.h"
#include "thresholds/frmThresholds.h"

#include <QAction>
#include <QFile>
#include <QFocusEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressBar>
#include <QTableWidget>
#include <QTest>

namespace lumivane::test {
namespace {

using namespace Qt::StringLiterals;

/// The cells of a dialog's table, row by row, with its headers round them.
QString cellsOf(const QDialog& dialog, const QString& table)
{
    const QAbstractItemModel& cells = *control<QTableView>(dialog, table).model();
    QStringList lines{QString()};
    for (int column = 0; column < cells.columnCount(); ++column)
        lines[0] += u'|' + cells.headerData(column, Qt::Horizontal).toString();
    for (int row = 0; row < cells.rowCount(); ++row) {
        lines.append(cells.headerData(row, Qt::Vertical).toString());
        for (int column = 0; column < cells.columnCount(); ++column)
            lines.last() += u'|' + cells.index(row, column).data().toString();
    }
    return lines.join(u'\n');
}

bool isUsable(const QWidget& form, const QString& name)
{
    return control<QWidget>(form, name).isEnabled();
}

class SharingDialogs : public DashboardFixture
{
protected:
    QString sharedFile = programFile(u"shared.lvds"_s);

    void startWith(const QString& dashboard)
    {
        storeDashboard(dashboard, {u"p"_s});
        start();
    }
    /// A shared file with the dashboard "Theirs" of so many panels.
    void makeSharedFile(int panels)
    {
        Database::create(sharedFile);
        const auto shared = Database::open(sharedFile, databaseConnect());
        const Database::Bulk bulk(*shared);
        shared->Execute(u"INSERT INTO LvnSavedWorkspace(Name, LastUpdated) VALUES ('Theirs', #2026-11-20#)"_s);
        shared->Execute(u"INSERT INTO LvnPanelSource(FullPath, Mask, DestFolder, UpdateType, SourceFolder) VALUES "
                        "('/gone/a.xlsx', 'a*.xlsx', '/gone/', 'folder', '%1')"_s.arg(programFile(u""_s)));
        for (int i = 0; i < panels; ++i)
            shared->Execute(u"INSERT INTO LvnSavedPanel(WorkspaceID, SourceID, [Top], [Left], Height, Width) VALUES "
                            "(1, 1, 0, 0, 3000, 3000)"_s);
    }
    /// With all dashboards of the shared file chosen.
    void importing(std::function<void(frmImport&)> act)
    {
        m_user.files.push_back(sharedFile);
        whenShown<frmImport>([act](frmImport& dialog) {
            control<QListWidget>(dialog, u"lstWorkspaces"_s).selectAll();
            act(dialog);
        });
        window().menus().mnuToolsImport->trigger();
    }
    /// Lets `act` run once, among the events of the work that the dialog shows; answers whether it has run.
    static std::shared_ptr<bool> amidWork(const QWidget& dialog, std::function<void()> act)
    {
        auto met = std::make_shared<bool>(false);
        QObject::connect(&control<QProgressBar>(dialog, u"barProgress"_s), &QProgressBar::valueChanged, &dialog,
                         [act, met](int value) {
                             if (value > 0 && !std::exchange(*met, true))
                                 act();
                         });
        return met;
    }

    void thresholds(std::function<void(frmThresholds&)> act)
    {
        whenShown<frmThresholds>(std::move(act));
        window().menus().mnuPanelThresholds->trigger();
    }
    static QTableWidget& rulesOf(const frmThresholds& dialog) { return control<QTableWidget>(dialog, u"grdRules"_s); }
    template <class Editor>
    static Editor& editor(const frmThresholds& dialog, int row, int column)
    {
        return *qobject_cast<Editor*>(rulesOf(dialog).cellWidget(row, column));
    }
    static void addRule(const frmThresholds& dialog, int row, int column, const QString& limit)
    {
        auto& cells = control<QTableView>(dialog, u"grdCells"_s);
        cells.setCurrentIndex(cells.model()->index(row, column));
        clickOn(dialog, u"cmdAdd"_s);
        editor<QLineEdit>(dialog, rulesOf(dialog).rowCount() - 1, 2).setText(limit);
    }
    QString storedRules() const
    {
        return rows(u"SELECT rowOffset, colOffset, highExp, ifHigh, lowExp, ifLow FROM LvnpanelThresholds"_s)
            .join(u'\n');
    }
};

TEST_F(SharingDialogs, ExportCanBeCancelled)
{
    startWith(u"Sales"_s);
    m_user.files = {sharedFile, sharedFile};
    whenShown<frmExport>([&](frmExport& dialog) {
        const auto met = amidWork(dialog, [&] { clickOn(dialog, u"cmdCancel"_s); });
        clickOn(dialog, u"cmdOK"_s);
        EXPECT_TRUE(*met && dialog.isVisible());
        EXPECT_EQ(control<QLabel>(dialog, u"lblStatus"_s).text(),
                  u"The export was cancelled. All is as it was before."_s);
        EXPECT_FALSE(QFile::exists(sharedFile));
        clickOn(dialog, u"cmdOK"_s);
        EXPECT_FALSE(dialog.isVisible());
    });
    window().menus().mnuToolsExport->trigger();
    EXPECT_TRUE(QFile::exists(sharedFile));
}

TEST_F(SharingDialogs, ImportCanBeCancelledUntilItWrites)
{
    startWith(u"Mine"_s);
    makeSharedFile(500);
    importing([&](frmImport& dialog) {
        const auto looked = amidWork(dialog, [&] {
            EXPECT_TRUE(window().IsBusy) << "no pass may begin";
            EXPECT_FALSE(isUsable(dialog, u"cmdOK"_s));
            dialog.reject();
        });
        clickOn(dialog, u"cmdOK"_s); // cancelled before the folders are shown
        EXPECT_TRUE(*looked && dialog.isVisible());
        EXPECT_EQ(rowCount(u"LvnSavedWorkspace"_s), 1);

        std::shared_ptr<bool> written;
        whenShown<frmImportFolders>([&](frmImportFolders& folders) {
            EXPECT_TRUE(cellsOf(folders, u"grdFolders"_s).contains(u"|/gone/a.xlsx|workbook|does not exist"_s));
            written = amidWork(dialog, [&] {
                EXPECT_TRUE(window().IsBusy);
                EXPECT_FALSE(isUsable(dialog, u"cmdCancel"_s));
                dialog.reject();
            });
            clickOn(folders, u"cmdOK"_s);
        });
        clickOn(dialog, u"cmdOK"_s);
        EXPECT_TRUE(written && *written);
    });
    EXPECT_EQ(listed(), (QStringList{u"Mine"_s, u"Theirs"_s}));
    EXPECT_EQ(list().currentText(), u"Mine"_s);
    EXPECT_EQ(gSources->Count(), 2) << "the new source is known at once";
    EXPECT_FALSE(window().IsBusy);
    EXPECT_EQ(rowCount(u"LvnSavedPanel"_s, u"WorkspaceID = 2"_s), 500);
    EXPECT_EQ(m_user.shown, QStringList{u"Selected dashboard(s) were imported successfully."_s});
}

TEST_F(SharingDialogs, ImportTellsWhatRunTimeErrorsKeptFromIt)
{
    startWith(u"Mine"_s);
    makeSharedFile(2);
    const auto theirs = Database::open(sharedFile, databaseConnect());
    QString breakRows = u"UPDATE LvnPanelSource SET Mask = NULL"_s;
    importing([&](frmImport& dialog) {
        const auto importBroken = [&] {
            whenShown<frmImportFolders>([&](frmImportFolders& folders) {
                theirs->Execute(breakRows); // when the look ahead has found them good
                clickOn(folders, u"cmdOK"_s);
            });
            clickOn(dialog, u"cmdOK"_s);
        };
        importBroken();
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(control<QLabel>(dialog, u"lblStatus"_s).text(),
                  u"The import did not come to its end. The sources of the dashboards were not all imported: Invalid "
                  "use of Null"_s);
        theirs->Execute(u"UPDATE LvnPanelSource SET Mask = 'a*.xlsx'"_s);
        breakRows = u"UPDATE LvnSavedPanel SET SourceID = NULL WHERE ID = 2"_s;
        importBroken();
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_EQ(m_user.shown, (QStringList{u"Not everything could be imported.\n\nThe dashboard \"Theirs\" lacks panels: "
                                         "Invalid use of Null in column [SourceID]"_s,
                                         u"Selected dashboard(s) were imported successfully."_s}));
}

TEST_F(SharingDialogs, RefuseWhereThereIsNothingToDo)
{
    start();
    window().menus().mnuToolsExport->trigger();
    startWith(u"Mine"_s);
    window().menus().mnuToolsImport->trigger(); // cancelled
    m_user.files = {sharedFile};
    window().menus().mnuToolsImport->trigger();
    gWorkspace->Panels(1)->ContentType = u"C"_s;
    window().menus().mnuPanelThresholds->trigger();
    EXPECT_EQ(m_user.shown, (QStringList{u"There are no saved dashboards to export."_s,
                                         u"Import file ["_s + sharedFile + u"] does not exist."_s,
                                         u"Only panels that show a range of cells can have thresholds."_s}));
}

TEST_F(SharingDialogs, ThresholdsArePickedStoredAndShown)
{
    storeDashboard(u"Sales"_s, {u"Figures"_s});
    m_library.books[bookPath(u"Sales.xlsx"_s)].front().put(u"C3"_s, u"70"_s);
    start();
    thresholds([&](frmThresholds& dialog) {
        EXPECT_EQ(cellsOf(dialog, u"grdCells"_s), u"|B|C\n2|B2|C2\n3|B3|70\n4|B4|C4"_s);
        clickOn(dialog, u"cmdAdd"_s);
        addRule(dialog, 1, 1, u" 50 "_s);
        addRule(dialog, 0, 0, u"*2>7"_s);
        editor<QComboBox>(dialog, 1, 1).setCurrentText(u"formula"_s);
        editor<QComboBox>(dialog, 1, 3).setCurrentIndex(1);
        clickOn(dialog, u"cmdOK"_s);
    });
    EXPECT_EQ(m_user.shown, QStringList{u"Pick a cell of the panel first."_s});
    const QString stored = u"3|3|>50|color@B2||\n2|2|||*2>7|color@B2"_s;
    EXPECT_EQ(storedRules(), stored);
    thresholds([&](frmThresholds& dialog) { clickOn(dialog, u"cmdOK"_s); });
    EXPECT_EQ(storedRules(), stored) << "opened again, they stand as they were";
}

TEST_F(SharingDialogs, ThresholdsAreDeletedAndMovedWhereTheUserIs)
{
    startWith(u"Sales"_s);
    thresholds([&](frmThresholds& dialog) {
        for (int i = 1; i <= 4; ++i)
            addRule(dialog, 0, 0, QString::number(i));
        EXPECT_FALSE(isUsable(dialog, u"cmdDown"_s));
        QFocusEvent entered(QEvent::FocusIn); // whether or not the window is active yet
        QApplication::sendEvent(&editor<QComboBox>(dialog, 1, 3), &entered);
        clickOn(dialog, u"cmdDelete"_s); // 1 3 4
        clickOn(dialog, u"cmdUp"_s);     // 3 1 4
        EXPECT_FALSE(isUsable(dialog, u"cmdUp"_s));
        rulesOf(dialog).selectRow(2);
        QTest::keyClick(&rulesOf(dialog), Qt::Key_Delete); // 3 1
        clickOn(dialog, u"cmdOK"_s);
    });
    EXPECT_EQ(storedRules(), u"2|2|>3|color@B2||\n2|2|>1|color@B2||"_s);
}

TEST_F(SharingDialogs, ThresholdsOfABlockOfCellsAreEnteredOnceAndNotLostUnasked)
{
    startWith(u"Sales"_s);
    m_user.confirmations = {false};
    thresholds([&](frmThresholds& dialog) {
        auto& cells = control<QTableView>(dialog, u"grdCells"_s);
        cells.selectionModel()->select({cells.model()->index(0, 0), cells.model()->index(1, 1)},
                                       QItemSelectionModel::ClearAndSelect);
        clickOn(dialog, u"cmdAdd"_s);
        EXPECT_FALSE(isUsable(dialog, u"cmdUp"_s) || isUsable(dialog, u"cmdDown"_s)) << "several at once";
        QTest::keyClicks(&editor<QLineEdit>(dialog, 0, 2), u"70"_s);
        rulesOf(dialog).selectRow(1);
        QTest::keyClicks(&editor<QLineEdit>(dialog, 1, 2), u"5"_s); // of this one alone
        QTest::keyClick(&dialog, Qt::Key_Escape);
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(m_user.asked.size(), 1);
        clickOn(dialog, u"cmdOK"_s);
    });
    EXPECT_EQ(storedRules(), u"2|2|>70|color@B2||\n2|3|>705|color@B2||\n3|2|>70|color@B2||\n3|3|>70|color@B2||"_s);
    thresholds([&](frmThresholds& dialog) { clickOn(dialog, u"cmdCancel"_s); });
    EXPECT_EQ(m_user.asked.size(), 1) << "nothing was changed";
}

TEST_F(SharingDialogs, ThresholdsOfEarlierDaysAreShownAndStoredAsTheyAreMeant)
{
    startWith(u"Sales"_s);
    const std::pair<QString, QString> table[] = {
        // Two limits become two rules; what marks nothing is kept.
        {u"3, 3, '>5', 'colorRed', '< 1', 'note'"_s, u"3|3|>5|color@B2||\n3|3|||<1|note"_s},
        // The definition has moved since.
        {u"13, 3, '>5', 'color@B12', '', ''"_s, u"3|3|>5|color@B2||"_s},
    };
    for (const auto& [row, stored] : table) {
        gDB->Execute(u"DELETE FROM LvnpanelThresholds"_s);
        gDB->Execute(u"INSERT INTO LvnpanelThresholds VALUES (1, "_s + row + u')');
        thresholds([&](frmThresholds& dialog) {
            EXPECT_EQ(rulesOf(dialog).item(0, 0)->text(), u"C3"_s);
            clickOn(dialog, u"cmdOK"_s);
        });
        EXPECT_EQ(storedRules(), stored);
    }
}

TEST_F(SharingDialogs, ThresholdsLeaveOutWhatThePanelHides)
{
    storeDashboard(u"Sales"_s, {u"Figures"_s});
    gDB->Execute(u"UPDATE LvnSavedPanel SET RowHeights = '2:2=15`3:3=0`4:4=15', ColWidths = 'B:B=0`C:C=8.43'"_s);
    start();
    thresholds([](frmThresholds& dialog) { EXPECT_EQ(cellsOf(dialog, u"grdCells"_s), u"|C\n2|C2\n4|C4"_s); });
    m_library.books.clear();
    thresholds([&](frmThresholds& dialog) {
        EXPECT_TRUE(control<QLabel>(dialog, u"lblNotice"_s).text().contains(u"was not found"_s));
        EXPECT_EQ(cellsOf(dialog, u"grdCells"_s), u"|B|C\n2||\n3||\n4||"_s) << "by their places";
    });
}

} // namespace
} // namespace lumivane::test
