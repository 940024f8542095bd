#include "dashboard/DashboardFixture.h"
#include "panel/frmPanel.h"
#include "repository/Database.h"
#include "repository/clsPanelSource.h"
#include "repository/clsWorkspace.h"
#include "repository/clsWorkspacePanel.h"
#include "session/modHTMLHelp.h"
#include "session/modMain.h"
#include "session/modUtilsINI.h"
#include "sharing/ImportPreview.h"
#include "sharing/frmAddAltPath.h"
#include "sharing/frmAltPaths.h"
#include "sharing/frmExport.h"
#include "sharing/frmImport.h"
#include "sharing/frmImportFolders.h"
#include "sharing/frmThresholds.h"

#include <QAction>
#include <QFile>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QTableWidget>

// The dialogs for sharing and thresholds, reached from the menus of the main window.

namespace lumivane::test {
namespace {

using namespace Qt::StringLiterals;

template <class Widget>
Widget& part(const QWidget& form, const QString& name)
{
    return *form.findChild<Widget*>(name);
}

void press(const QWidget& form, const QString& button)
{
    part<QPushButton>(form, button).click();
}

QStringList texts(const QListWidget& list, bool onlySelected)
{
    QStringList found;
    for (int i = 0; i < list.count(); ++i) {
        if (!onlySelected || list.item(i)->isSelected())
            found.append(list.item(i)->text());
    }
    return found;
}

QStringList gridRows(const QTableWidget& grid)
{
    QStringList lines;
    for (int row = 0; row < grid.rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < grid.columnCount(); ++column)
            cells.append(grid.item(row, column) ? grid.item(row, column)->text() : QString());
        lines.append(cells.join(u'|'));
    }
    return lines;
}

class SharingDialogs : public DashboardFixture
{
protected:
    QString sharedFile = programFile(u"shared.lvds"_s);

    /// A shared file with one dashboard of `panels` panels.
    void makeSharedFile(const QString& name, int panels = 1)
    {
        Database::create(sharedFile);
        const auto shared = Database::open(sharedFile, databaseConnect());
        const Database::Bulk bulk(*shared);
        shared->Execute(u"INSERT INTO LvnSavedWorkspace(Name, LastUpdated) VALUES ('%1', #2026-11-20#)"_s.arg(name));
        shared->Execute(u"INSERT INTO LvnPanelSource(FullPath, Mask, DestFolder, UpdateType, SourceFolder) VALUES "
                        "('/gone/a.xlsx', 'a*.xlsx', '/gone/', 'folder', '%1')"_s.arg(programFile(u""_s)));
        for (int i = 0; i < panels; ++i)
            shared->Execute(u"INSERT INTO LvnSavedPanel(WorkspaceID, SourceID, [Top], [Left], Height, Width) VALUES "
                            "(1, 1, 0, 0, 3000, 3000)"_s);
    }
    void openShared(std::function<void(frmImport&)> act)
    {
        m_user.files.push_back(sharedFile);
        whenShown<frmImport>(std::move(act));
        window().menus().mnuToolsImport->trigger();
    }
    /// Lets `act` run once, among the events of the work that the dialog shows.
    static void amidWork(const QWidget& dialog, std::function<void()> act)
    {
        auto& bar = part<QProgressBar>(dialog, u"barProgress"_s);
        QObject::connect(&bar, &QProgressBar::valueChanged, &dialog, [&bar, act](int value) {
            if (value > 0 && !bar.property("met").toBool()) {
                bar.setProperty("met", true);
                act();
            }
        });
    }
    void thresholds(std::function<void(frmThresholds&)> act)
    {
        whenShown<frmThresholds>(std::move(act));
        window().menus().mnuPanelThresholds->trigger();
    }
    static void addRule(const frmThresholds& dialog, int row, int column, const QString& limit)
    {
        auto& cells = part<QTableView>(dialog, u"grdCells"_s);
        cells.setCurrentIndex(cells.model()->index(row, column));
        press(dialog, u"cmdAdd"_s);
        auto& rules = part<QTableWidget>(dialog, u"grdRules"_s);
        qobject_cast<QLineEdit*>(rules.cellWidget(rules.rowCount() - 1, 2))->setText(limit);
    }
    /// The cells to pick from under their letters and numbers.
    static QString shownCells(const frmThresholds& dialog)
    {
        const QAbstractItemModel& cells = *part<QTableView>(dialog, u"grdCells"_s).model();
        QString text = u"  "_s;
        for (int column = 0; column < cells.columnCount(); ++column)
            text += u' ' + cells.headerData(column, Qt::Horizontal).toString();
        for (int row = 0; row < cells.rowCount(); ++row) {
            text += u'\n' + cells.headerData(row, Qt::Vertical).toString();
            for (int column = 0; column < cells.columnCount(); ++column)
                text += u' ' + cells.index(row, column).data().toString();
        }
        return text;
    }
    QString storedRules() const
    {
        QStringList lines;
        const auto rows = gDB->OpenRecordset(u"SELECT * FROM LvnpanelThresholds"_s);
        for (; !rows->EOF_(); rows->MoveNext())
            lines.append(
                u"%1,%2 high%3%4 low%5%6"_s.arg(rows->number(u"rowOffset"))
                    .arg(rows->number(u"colOffset"))
                    .arg(rows->text(u"highExp"), rows->text(u"ifHigh"), rows->text(u"lowExp"), rows->text(u"ifLow")));
        return lines.join(u'\n');
    }
};

TEST_F(SharingDialogs, ExportsTheDashboardOnScreenUnlessOthersAreChosen)
{
    storeDashboard(u"Sales"_s, {u"p"_s});
    storeDashboard(u"Costs"_s, {u"q"_s});
    start();
    m_user.files = {QString(), sharedFile};
    whenShown<frmExport>([](frmExport& dialog) {
        auto& list = part<QListWidget>(dialog, u"lstWorkspaces"_s);
        EXPECT_EQ(texts(list, false), (QStringList{u"Costs"_s, u"Sales"_s}));
        EXPECT_EQ(texts(list, true), QStringList{u"Costs"_s});
        list.clearSelection();
        press(dialog, u"cmdOK"_s);
        list.item(1)->setSelected(true);
        press(dialog, u"cmdOK"_s); // cancelled in the file dialog
        EXPECT_TRUE(dialog.isVisible());
        press(dialog, u"cmdOK"_s);
        EXPECT_FALSE(dialog.isVisible());
    });
    window().menus().mnuToolsExport->trigger();
    EXPECT_EQ(m_user.shown,
              (QStringList{u"Must select at least 1 dashboard to export."_s, u"No export file name defined."_s}));
    EXPECT_EQ(m_user.asked, (QStringList{u"Enter export file name"_s, u"Enter export file name"_s}));
    const auto rows =
        Database::open(sharedFile, databaseConnect())->OpenRecordset(u"SELECT Name FROM LvnSavedWorkspace"_s);
    EXPECT_EQ(rows->rowCount(), 1);
    EXPECT_EQ(rows->text(u"Name"), u"Sales"_s);
}

TEST_F(SharingDialogs, ExportTakesNothingElseWhileItWritesAndCanBeCancelled)
{
    storeDashboard(u"Sales"_s, {u"p"_s});
    start();
    m_user.files = {sharedFile, sharedFile};
    whenShown<frmExport>([&](frmExport& dialog) {
        bool met = false;
        amidWork(dialog, [&] {
            met = true;
            EXPECT_TRUE(part<QProgressBar>(dialog, u"barProgress"_s).isVisible());
            EXPECT_TRUE(window().IsBusy) << "no pass may begin";
            EXPECT_FALSE(part<QWidget>(dialog, u"cmdOK"_s).isEnabled());
            EXPECT_FALSE(part<QWidget>(dialog, u"cmdAltPath"_s).isEnabled());
            press(dialog, u"cmdCancel"_s);
        });
        press(dialog, u"cmdOK"_s);
        EXPECT_TRUE(met && dialog.isVisible());
        EXPECT_EQ(part<QLabel>(dialog, u"lblStatus"_s).text(), u"The export was cancelled. Nothing of it is left."_s);
        EXPECT_FALSE(QFile::exists(sharedFile));
        EXPECT_FALSE(window().IsBusy);
        press(dialog, u"cmdOK"_s);
        EXPECT_FALSE(dialog.isVisible());
    });
    window().menus().mnuToolsExport->trigger();
    EXPECT_TRUE(QFile::exists(sharedFile));
    EXPECT_EQ(m_user.shown, QStringList{});
}

TEST_F(SharingDialogs, WithoutDashboardsThereIsNothingToExport)
{
    start();
    window().menus().mnuToolsExport->trigger();
    EXPECT_EQ(m_user.shown, QStringList{u"There are no saved dashboards to export."_s});
}

TEST_F(SharingDialogs, AddAndDeleteAlternatePathsOnTheWayToAnExport)
{
    storeDashboard(u"Sales"_s, {u"p"_s});
    start();
    const QString base = gSources->SourceByIndex(1)->DestFolder;
    whenShown<frmExport>([&](frmExport& exporting) {
        whenShown<frmAltPaths>([&](frmAltPaths& paths) {
            auto& grid = part<QTableWidget>(paths, u"grdAltPaths"_s);
            EXPECT_EQ(gridRows(grid), QStringList{});
            EXPECT_EQ(grid.horizontalHeaderItem(0)->text(), u"Base Path"_s);
            EXPECT_EQ(grid.horizontalHeaderItem(1)->text(), u"Alternate Path"_s);
            press(paths, u"cmdDelete"_s); // nothing happens
            whenShown<frmAddAltPath>([&](frmAddAltPath& adding) {
                press(adding, u"cmdOK"_s);
                part<QComboBox>(adding, u"cmbBase"_s).setCurrentText(base);
                part<QLineEdit>(adding, u"txtAlt"_s).setText(u"  "_s);
                press(adding, u"cmdOK"_s);
                part<QLineEdit>(adding, u"txtAlt"_s).setText(u"D:\\it's"_s);
                press(adding, u"cmdOK"_s);
            });
            press(paths, u"cmdAdd"_s);
            EXPECT_EQ(gridRows(grid), QStringList{base + u"|D:\\it's\\"_s});
            EXPECT_EQ(rowCount(u"LvnAltPaths"_s), 1);
            press(paths, u"cmdDelete"_s);
            EXPECT_EQ(gridRows(grid), QStringList{});
            EXPECT_EQ(rowCount(u"LvnAltPaths"_s), 0);
        });
        press(exporting, u"cmdAltPath"_s);
    });
    window().menus().mnuToolsExport->trigger();
    EXPECT_EQ(m_user.shown, (QStringList{u"Must select a base path."_s, u"Must define an alternate path."_s}));
}

TEST_F(SharingDialogs, ImportShowsItsFoldersAndWritesOnlyWhenTheyAreAccepted)
{
    storeDashboard(u"Mine"_s, {u"p"_s});
    start();
    makeSharedFile(u"Theirs"_s);
    const QString here = programFile(u""_s) + u'/';
    const auto refuseFolders = [&](frmImportFolders& folders) {
        EXPECT_EQ(gridRows(part<QTableWidget>(folders, u"grdFolders"_s)),
                  (QStringList{u"/gone/|read and written|does not exist"_s, here + u"|read|exists"_s}));
        press(folders, u"cmdCancel"_s);
    };
    openShared([&](frmImport& dialog) {
        press(dialog, u"cmdOK"_s);
        auto& list = part<QListWidget>(dialog, u"lstWorkspaces"_s);
        EXPECT_EQ(texts(list, false), QStringList{u"Theirs"_s});
        list.selectAll();
        whenShown<frmImportFolders>(refuseFolders);
        press(dialog, u"cmdOK"_s);
        EXPECT_TRUE(dialog.isVisible()) << "the folders can be thought over";
        EXPECT_EQ(rowCount(u"LvnSavedWorkspace"_s), 1);
        EXPECT_FALSE(gDB->TableNames().contains(u"TempSources"_s));
        whenShown<frmImportFolders>([](frmImportFolders& folders) { press(folders, u"cmdOK"_s); });
        press(dialog, u"cmdOK"_s);
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_EQ(m_user.shown, (QStringList{u"Must select at least 1 panel to import."_s,
                                         u"Selected dashboard(s) were imported successfully."_s}));
    EXPECT_EQ(listed(), (QStringList{u"Mine"_s, u"Theirs"_s}));
    EXPECT_EQ(list().currentText(), u"Mine"_s);
    EXPECT_EQ(gSources->Count(), 2) << "the new source is known at once";
    EXPECT_FALSE(window().IsBusy);
}

TEST_F(SharingDialogs, ImportCanBeCancelledUntilItWrites)
{
    storeDashboard(u"Mine"_s, {u"p"_s});
    start();
    makeSharedFile(u"Theirs"_s, 500);
    openShared([&](frmImport& dialog) {
        part<QListWidget>(dialog, u"lstWorkspaces"_s).selectAll();
        int signs = 0;
        const auto cancelled = QObject::connect(&part<QProgressBar>(dialog, u"barProgress"_s),
                                                &QProgressBar::valueChanged, &dialog, [&](int value) {
                                                    if (value <= 0)
                                                        return;
                                                    ++signs;
                                                    EXPECT_TRUE(window().IsBusy) << "no pass may begin";
                                                    EXPECT_FALSE(part<QWidget>(dialog, u"cmdOK"_s).isEnabled());
                                                    dialog.reject();
                                                    EXPECT_TRUE(dialog.isVisible());
                                                });
        press(dialog, u"cmdOK"_s); // cancelled before the folders are shown
        EXPECT_EQ(signs, 1);
        EXPECT_EQ(rowCount(u"LvnSavedWorkspace"_s), 1);
        QObject::disconnect(cancelled);

        whenShown<frmImportFolders>([&](frmImportFolders& folders) {
            amidWork(dialog, [&] {
                EXPECT_TRUE(window().IsBusy);
                EXPECT_FALSE(part<QWidget>(dialog, u"cmdCancel"_s).isEnabled());
                dialog.reject();
            });
            press(folders, u"cmdOK"_s);
        });
        press(dialog, u"cmdOK"_s);
        EXPECT_TRUE(part<QProgressBar>(dialog, u"barProgress"_s).property("met").toBool());
    });
    EXPECT_EQ(rowCount(u"LvnSavedPanel"_s, u"WorkspaceID = 2"_s), 500);
    EXPECT_EQ(m_user.shown, QStringList{u"Selected dashboard(s) were imported successfully."_s});
}

TEST_F(SharingDialogs, ImportTellsWhatRunTimeErrorsKeptFromIt)
{
    storeDashboard(u"Mine"_s, {u"p"_s});
    start();
    makeSharedFile(u"Theirs"_s, 2);
    Database::open(sharedFile, databaseConnect())->Execute(u"UPDATE LvnSavedPanel SET SourceID = NULL WHERE ID = 2"_s);
    openShared([&](frmImport& dialog) {
        part<QListWidget>(dialog, u"lstWorkspaces"_s).selectAll();
        whenShown<frmImportFolders>([](frmImportFolders& folders) { press(folders, u"cmdOK"_s); });
        press(dialog, u"cmdOK"_s);
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_EQ(m_user.shown, (QStringList{u"Not everything could be imported.\n\nThe dashboard \"Theirs\" lacks panels: "
                                         "Invalid use of Null in column [SourceID]"_s,
                                         u"Selected dashboard(s) were imported successfully."_s}));
    EXPECT_EQ(rowCount(u"LvnSavedPanel"_s, u"WorkspaceID = 2"_s), 1);
}

TEST_F(SharingDialogs, ImportRefusesBeforeItOpens)
{
    storeDashboard(u"Mine"_s, {u"p"_s});
    start();
    m_user.files = {QString(), sharedFile};
    window().menus().mnuToolsImport->trigger(); // cancelled
    EXPECT_EQ(m_user.shown, QStringList{});
    window().menus().mnuToolsImport->trigger();
    makeSharedFile(u"MINE"_s);
    m_user.files.push_back(sharedFile);
    window().menus().mnuToolsImport->trigger();
    EXPECT_EQ(m_user.shown, (QStringList{u"Import file ["_s + sharedFile + u"] does not exist."_s,
                                         u"There are no dashboards to import from."_s}));
}

TEST_F(SharingDialogs, ThresholdsArePickedCheckedStoredAndShown)
{
    storeDashboard(u"Sales"_s, {u"Figures"_s});
    m_library.books[bookPath(u"Sales.xlsx"_s)].front().put(u"C3"_s, u"70"_s);
    start();
    thresholds([&](frmThresholds& dialog) {
        EXPECT_EQ(shownCells(dialog), u"   B C\n2 B2 C2\n3 B3 70\n4 B4 C4"_s);
        press(dialog, u"cmdAdd"_s);
        addRule(dialog, 1, 1, u"much"_s);
        press(dialog, u"cmdOK"_s);
        EXPECT_TRUE(dialog.isVisible());
        EXPECT_EQ(rowCount(u"LvnpanelThresholds"_s), 0);
        auto& rules = part<QTableWidget>(dialog, u"grdRules"_s);
        qobject_cast<QLineEdit*>(rules.cellWidget(0, 2))->setText(u" 50 "_s);
        addRule(dialog, 0, 0, u"*2>7"_s);
        qobject_cast<QComboBox*>(rules.cellWidget(1, 1))->setCurrentText(u"formula"_s);
        qobject_cast<QComboBox*>(rules.cellWidget(1, 3))->setCurrentIndex(1);
        addRule(dialog, 2, 0, u"1"_s);
        press(dialog, u"cmdDelete"_s);
        press(dialog, u"cmdOK"_s);
    });
    EXPECT_EQ(m_user.shown,
              (QStringList{u"Pick a cell of the panel first."_s,
                           u"The limit of cell C3 cannot be used: the formula [= 1>much] is not understood at [much]: "
                           "a number is expected. Enter a number, as 1000 or -2.5."_s}));
    EXPECT_EQ(storedRules(), u"3,3 high>50color@B2 low\n2,2 high low*2>7color@B2"_s);
    const QImage picture = window().panelWindows().first()->picture().image;
    EXPECT_EQ(picture.pixelColor(picture.width() - 5, picture.height() / 2), QColor(128, 180, 180));

    // Opened again, the rules stand as they were and are stored unchanged.
    thresholds([&](frmThresholds& dialog) {
        EXPECT_EQ(part<QTableWidget>(dialog, u"grdRules"_s).rowCount(), 2);
        press(dialog, u"cmdOK"_s);
    });
    EXPECT_EQ(storedRules(), u"3,3 high>50color@B2 low\n2,2 high low*2>7color@B2"_s);
}

TEST_F(SharingDialogs, ThresholdsSplitARowWithTwoLimitsAndKeepWhatMarksNothing)
{
    storeDashboard(u"Sales"_s, {u"Figures"_s});
    start();
    gDB->Execute(u"INSERT INTO LvnpanelThresholds VALUES (1, 3, 3, '>5', 'colorRed', '< 1', 'note')"_s);
    thresholds([](frmThresholds& dialog) { press(dialog, u"cmdOK"_s); });
    EXPECT_EQ(storedRules(), u"3,3 high>5color@B2 low\n3,3 high low<1note"_s);
}

TEST_F(SharingDialogs, ThresholdsFollowADefinitionThatHasMoved)
{
    storeDashboard(u"Sales"_s, {u"Figures"_s});
    start();
    gDB->Execute(u"INSERT INTO LvnpanelThresholds VALUES (1, 13, 3, '>5', 'color@B12', '', '')"_s);
    thresholds([](frmThresholds& dialog) {
        EXPECT_EQ(part<QTableWidget>(dialog, u"grdRules"_s).item(0, 0)->text(), u"C3"_s);
        press(dialog, u"cmdOK"_s);
    });
    EXPECT_EQ(storedRules(), u"3,3 high>5color@B2 low"_s);
}

TEST_F(SharingDialogs, ThresholdsLeaveOutWhatThePanelHides)
{
    storeDashboard(u"Sales"_s, {u"Figures"_s});
    gDB->Execute(u"UPDATE LvnSavedPanel SET RowHeights = '2:2=15`3:3=0`4:4=15', ColWidths = 'B:B=0`C:C=8.43'"_s);
    start();
    thresholds([](frmThresholds& dialog) { EXPECT_EQ(shownCells(dialog), u"   C\n2 C2\n4 C4"_s); });
}

TEST_F(SharingDialogs, ThresholdsAreDeletedAndMovedWhereTheUserIs)
{
    storeDashboard(u"Sales"_s, {u"Figures"_s});
    start();
    thresholds([&](frmThresholds& dialog) {
        EXPECT_FALSE(part<QWidget>(dialog, u"cmdDelete"_s).isEnabled());
        for (int i = 1; i <= 4; ++i)
            addRule(dialog, 0, 0, QString::number(i));
        EXPECT_FALSE(part<QWidget>(dialog, u"cmdDown"_s).isEnabled());
        auto& rules = part<QTableWidget>(dialog, u"grdRules"_s);
        QFocusEvent entered(QEvent::FocusIn); // whether or not the window is active yet
        QApplication::sendEvent(rules.cellWidget(1, 3), &entered);
        press(dialog, u"cmdDelete"_s); // 1 3 4
        press(dialog, u"cmdUp"_s);     // 3 1 4
        EXPECT_FALSE(part<QWidget>(dialog, u"cmdUp"_s).isEnabled());
        rules.setCurrentCell(2, 0);
        QKeyEvent deletion(QEvent::KeyPress, Qt::Key_Delete, Qt::NoModifier);
        QApplication::sendEvent(&rules, &deletion); // 3 1
        press(dialog, u"cmdOK"_s);
    });
    EXPECT_EQ(storedRules(), u"2,2 high>3color@B2 low\n2,2 high>1color@B2 low"_s);
}

TEST_F(SharingDialogs, HelpAsksForThePageOfItsForm)
{
    storeDashboard(u"Sales"_s, {u"Figures"_s});
    start();
    QStringList topics;
    setDocumentViewer({[&](const QString&, qint32 context) { topics.append(QString::number(context)); }, {}});
    QFile(programFile(u"lumivane.CHM"_s)).open(QIODevice::WriteOnly);
    SetHelpFile();
    frmExport exporting;
    frmImport importing;
    frmImportFolders folders{ImportPreview{}};
    frmAltPaths paths;
    frmAddAltPath adding;
    frmThresholds limits{*gWorkspace->Panels(1)};
    int context = 100;
    for (QDialog* dialog :
         std::initializer_list<QDialog*>{&exporting, &importing, &folders, &paths, &adding, &limits}) {
        SetIniString(GetHelpIniFile(), u"Help"_s,
                     QString::fromLatin1(dialog->metaObject()->className()).section(u':', -1),
                     QString::number(++context));
        press(*dialog, u"cmdHelp"_s);
    }
    setDocumentViewer({});
    EXPECT_EQ(topics, (QStringList{u"101"_s, u"102"_s, u"103"_s, u"104"_s, u"105"_s, u"106"_s}));
}

TEST_F(SharingDialogs, ThresholdsAreForRangesOnly)
{
    storeDashboard(u"Sales"_s, {u"Figures"_s});
    start();
    gWorkspace->Panels(1)->ContentType = u"C"_s;
    window().menus().mnuPanelThresholds->trigger();
    EXPECT_EQ(m_user.shown, QStringList{u"Only panels that show a range of cells can have thresholds."_s});
}

TEST_F(SharingDialogs, ThresholdsCanBePickedByPlaceWithoutTheWorkbook)
{
    storeDashboard(u"Sales"_s, {u"Figures"_s});
    start();
    m_library.books.clear();
    thresholds([&](frmThresholds& dialog) {
        EXPECT_TRUE(part<QLabel>(dialog, u"lblNotice"_s).text().contains(u"was not found"_s));
        addRule(dialog, 0, 1, u"9"_s);
        EXPECT_EQ(part<QTableWidget>(dialog, u"grdRules"_s).item(0, 0)->text(), u"C2"_s);
    });
    EXPECT_EQ(rowCount(u"LvnpanelThresholds"_s), 0) << "cancelled";
}

} // namespace
} // namespace lumivane::test
