#include "dashboard/DashboardFixture.h"
#include "panel/frmPanel.h"
#include "panel/frmPanelProperties.h"
#include "panel/frmRangeRelative.h"
#include "platform/Clock.h"
#include "repository/clsPanelSource.h"
#include "repository/clsWorkspace.h"
#include "repository/clsWorkspacePanel.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QMenu>

// From a dialog of a panel's properties to what the next pass makes of it.

namespace lumivane::test {
namespace {

using namespace Qt::StringLiterals;

class PanelProperties : public DashboardFixture
{
protected:
    QString m_book = bookPath(u"Morning.xlsx"_s);

    void startWithOnePanel()
    {
        storeDashboard(u"Morning"_s, {u"Figures"_s});
        start();
    }
    /// A version of the workbook in which B2:C4 lies some rows further down.
    void deliverMovedVersion(const QString& path, int rows)
    {
        PlainSheet sheet(u"Data"_s, u"Morning.xlsx"_s);
        sheet.put(u"B1"_s, u"inserted above"_s);
        for (const char* cell : {"B2", "C2", "B3", "C3", "B4", "C4"})
            sheet.put(u"%1%2"_s.arg(QChar::fromLatin1(cell[0])).arg(cell[1] - '0' + rows), QString::fromLatin1(cell));
        m_library.books[path] = {sheet};
        touch(path, 60 * (rows + 1));
    }
    QString storedRange() const { return stored(u"SELECT PicRange FROM LvnSavedPanel"_s, u"PicRange"_s); }
};

TEST_F(PanelProperties, ARangeFoundByItsValueFollowsEachDelivery)
{
    startWithOnePanel();
    whenShown<frmRangeRelative>([&](frmRangeRelative& dialog) {
        EXPECT_TRUE(window().IsBusy) << "no pass may begin";
        control<QComboBox>(dialog, u"cmbRelativeTo"_s).setCurrentIndex(2);
        control<QComboBox>(dialog, u"cmbAnchor"_s).setCurrentText(u"B3"_s);
        clickOn(dialog, u"cmdOK"_s);
    });
    window().menus().mnuPanelRange->trigger();
    EXPECT_FALSE(window().IsBusy);
    EXPECT_TRUE(window().AnyPanelDirty());
    EXPECT_EQ(stored(u"SELECT RelativeTo FROM LvnSavedPanel"_s, u"RelativeTo"_s), u"top"_s) << "not saved yet";
    window().mnuWorkspaceSave_Click();
    EXPECT_EQ(stored(u"SELECT ContentMatch FROM LvnSavedPanel"_s, u"ContentMatch"_s),
              u"bottom=`anchor=$B3`content=B3"_s);

    deliverMovedVersion(m_book, 5);
    window().Workspace_CheckUpdates();
    EXPECT_EQ(storedRange(), u"B7:C9``"_s);
    EXPECT_EQ(m_user.shown, QStringList{});

    // Another value, chosen in the version that the pass brought, is measured from where the range lies now.
    whenShown<frmRangeRelative>([](frmRangeRelative& dialog) {
        control<QComboBox>(dialog, u"cmbAnchor"_s).setCurrentText(u"C4"_s);
        clickOn(dialog, u"cmdOK"_s);
    });
    window().menus().mnuPanelRange->trigger();
    window().mnuWorkspaceSave_Click();
    EXPECT_EQ(storedRange(), u"B7:C9``"_s);
    deliverMovedVersion(m_book, 7);
    window().Workspace_CheckUpdates();
    EXPECT_EQ(storedRange(), u"B9:C11``"_s);
}

TEST_F(PanelProperties, AFolderIsWatchedFromTheNextPassOn)
{
    startWithOnePanel();
    QDir(m_folder.path()).mkdir(u"incoming"_s);
    whenShown<frmPanelProperties>([&](frmPanelProperties& dialog) {
        EXPECT_TRUE(window().IsBusy) << "no pass may begin";
        control<QComboBox>(dialog, u"cmbUpdateType"_s).setCurrentText(u"folder"_s);
        control<QLineEdit>(dialog, u"txtSourceFolder"_s).setText(programFile(u"incoming"_s));
        control<QLineEdit>(dialog, u"txtFrequency"_s).setText(u"1"_s);
        clickOn(dialog, u"cmdOK"_s);
    });
    window().menus().mnuPanelProperties->trigger();
    EXPECT_EQ(stored(u"SELECT UpdateType FROM LvnPanelSource"_s, u"UpdateType"_s), u"folder"_s);

    const QString delivered = programFile(u"incoming/Morning.xlsx"_s);
    ASSERT_TRUE(QFile::copy(m_book, delivered));
    touch(delivered, 3600);
    const qsizetype openings = this->openings(m_book);
    Clock::setFixed(Clock::now().addDays(1));
    window().Workspace_CheckUpdates();
    EXPECT_EQ(QFileInfo(m_book).lastModified(), QFileInfo(delivered).lastModified());
    EXPECT_GT(this->openings(m_book), openings) << "the panel was drawn anew";
    EXPECT_EQ(m_user.shown, QStringList{});
}

TEST_F(PanelProperties, TheRangeLocationIsForRangesOnly)
{
    startWithOnePanel();
    for (const auto& [contentType, enabled] : {std::pair(u"S"_s, true), {u"C"_s, false}, {u"P"_s, false}}) {
        gWorkspace->Panels(1)->ContentType = contentType;
        Q_EMIT window().menus().mnuPanel->aboutToShow();
        EXPECT_EQ(window().menus().mnuPanelRange->isEnabled(), enabled) << contentType.toStdString();
        EXPECT_TRUE(window().menus().mnuPanelProperties->isEnabled());
    }
}

} // namespace
} // namespace lumivane::test
