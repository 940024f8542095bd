#include "dashboard/DashboardFixture.h"
#include "dashboard/frmOptions.h"
#include "panel/frmPanel.h"
#include "services/modMain.h"
#include "session/Startup.h"

#include <QAction>
#include <QCheckBox>
#include <QFrame>
#include <QLineEdit>
#include <QMdiArea>
#include <QPushButton>

using namespace lumivane;
using namespace Qt::StringLiterals;

namespace {

/// The dialog's parts, and the options of the test put back afterwards.
class Options : public test::DashboardFixture
{
protected:
    Options()
    {
        gDashboardColor = 0xFFFFFF;
        gPanelTimeStamp = true;
        gRefreshFrequency = 10;
        gCaptionAlignment = u"Center"_s;
    }
    ~Options() override { gDashboardColor = 0xFFFFFF; }

    struct Parts
    {
        explicit Parts(const QDialog& dialog)
            : stamp(*dialog.findChild<QCheckBox*>(u"chkDateTimeStamp"_s)),
              frequency(*dialog.findChild<QLineEdit*>(u"txtFrequency"_s)),
              alignment(*dialog.findChild<QComboBox*>(u"cmbCaptionAlign"_s)),
              swatch(*dialog.findChild<QFrame*>(u"shWorkspaceColor"_s)),
              color(*dialog.findChild<QPushButton*>(u"cmdWorkspaceColor"_s)),
              ok(*dialog.findChild<QPushButton*>(u"cmdOK"_s)), cancel(*dialog.findChild<QPushButton*>(u"cmdCancel"_s))
        {
        }
        QCheckBox& stamp;
        QLineEdit& frequency;
        QComboBox& alignment;
        QFrame& swatch;
        QPushButton &color, &ok, &cancel;

        QColor swatchColor() const { return swatch.palette().color(QPalette::Window); }
    };
};

TEST_F(Options, TheFrequencyIsCheckedInThisOrder)
{
    const QString empty = u"No refresh frequency specified."_s;
    const QString noNumber = u"Refresh frequency must be numeric."_s;
    const QString tooSmall = u"Refresh frequency must be greater than 0."_s;
    const QString tooLarge = u"Refresh frequency cannot be greater than 32,000."_s;
    struct
    {
        QString typed, box;
        int stored;
    } const rows[] = {
        {QString(), empty, 10},     {u"   "_s, empty, 10},    {u"ten"_s, noNumber, 10},
        {u"5 min"_s, noNumber, 10}, {u"inf"_s, noNumber, 10}, {u"nan"_s, noNumber, 10},
        {u"0"_s, tooSmall, 10},     {u"-3"_s, tooSmall, 10},  {u"0.4"_s, {}, 0},
        {u" 5 "_s, {}, 5},          {u"2.5"_s, {}, 2},        {u"1e3"_s, {}, 1000},
        {u"32,000"_s, {}, 32000},   {u"32000"_s, {}, 32000},  {u"32000.1"_s, tooLarge, 10},
        {u"1e300"_s, tooLarge, 10},
    };
    for (const auto& row : rows) {
        m_user.shown.clear();
        gRefreshFrequency = 10;
        frmOptions dialog(Qt::white);
        const Parts parts(dialog);
        parts.frequency.setText(row.typed);
        parts.ok.click();
        EXPECT_EQ(m_user.shown, row.box.isEmpty() ? QStringList() : QStringList{row.box}) << row.typed.toStdString();
        EXPECT_EQ(gRefreshFrequency, row.stored) << row.typed.toStdString();
        EXPECT_EQ(dialog.result(), row.box.isEmpty() ? QDialog::Accepted : QDialog::Rejected);
        const bool retype = !row.box.isEmpty() && row.box != empty;
        EXPECT_EQ(parts.frequency.selectedText(), retype ? row.typed : QString());
    }
}

TEST_F(Options, ShowsWhatHoldsAndStoresWhatIsChosen)
{
    gPanelTimeStamp = false;
    gRefreshFrequency = 45;
    gCaptionAlignment = u" left"_s;
    frmOptions dialog(QColor(0x10, 0x20, 0x30));
    const Parts parts(dialog);
    EXPECT_FALSE(parts.stamp.isChecked());
    EXPECT_EQ(parts.frequency.text(), u"45"_s);
    EXPECT_EQ(parts.alignment.currentText(), u"Left"_s);
    EXPECT_EQ(parts.swatchColor(), QColor(0x10, 0x20, 0x30));

    parts.color.click();
    EXPECT_EQ(m_user.colorAskedFrom, QColor(0x10, 0x20, 0x30));
    EXPECT_EQ(parts.swatchColor(), QColor(0x10, 0x20, 0x30)) << "cancelled";
    m_user.colors = {QColor(0xaa, 0xbb, 0xcc)};
    parts.color.click();
    EXPECT_EQ(parts.swatchColor(), QColor(0xaa, 0xbb, 0xcc));
    EXPECT_EQ(gDashboardColor, 0xFFFFFFu) << "nothing holds before OK";
    parts.stamp.setChecked(true);
    parts.alignment.setCurrentIndex(1);
    parts.frequency.setText(u"7"_s);
    parts.ok.click();

    gDashboardColor = 0;
    gPanelTimeStamp = false;
    gRefreshFrequency = 0;
    gCaptionAlignment.clear();
    ASSERT_TRUE(GetOptionsSettings());
    EXPECT_EQ(gDashboardColor, 0xAABBCCu);
    EXPECT_TRUE(gPanelTimeStamp);
    EXPECT_EQ(gRefreshFrequency, 7);
    EXPECT_EQ(gCaptionAlignment, u"Center"_s);
}

TEST_F(Options, AnUnknownAlignmentStandsOnCenterAndIsReplacedByOK)
{
    gCaptionAlignment = u"Middle"_s;
    frmOptions dialog(Qt::white);
    EXPECT_EQ(Parts(dialog).alignment.currentText(), u"Center"_s);
    EXPECT_EQ(gCaptionAlignment, u"Middle"_s);
    Parts(dialog).ok.click();
    EXPECT_EQ(gCaptionAlignment, u"Center"_s);
}

TEST_F(Options, TheCommandAppliesThemToTheWindows)
{
    storeDashboard(u"Morning"_s, {u"One"_s});
    gPanelTimeStamp = false;
    gCaptionAlignment = u"Left"_s;
    start();
    ASSERT_EQ(panelCaptions(), QStringList{u"One"_s});
    window().TickCount = 4;
    m_user.colors = {QColor(0x20, 0x40, 0x60)};
    test::whenShown<frmOptions>([this](frmOptions& dialog) {
        EXPECT_TRUE(window().IsBusy);
        const Parts parts(dialog);
        parts.stamp.setChecked(true);
        parts.color.click();
        parts.ok.click();
    });
    window().menus().mnuToolsOptions->trigger();
    EXPECT_EQ(window().findChild<QMdiArea*>()->background().color(), QColor(0x20, 0x40, 0x60));
    EXPECT_NE(panelCaptions(), QStringList{u"One"_s}) << "with the time of its file";
    EXPECT_EQ(window().TickCount, 0);
    EXPECT_FALSE(window().IsBusy);
}

TEST_F(Options, CancelChangesNothingButTheCountOfMinutes)
{
    start();
    window().TickCount = 4;
    m_user.colors = {QColor(0x20, 0x40, 0x60)};
    test::whenShown<frmOptions>([](frmOptions& dialog) {
        const Parts parts(dialog);
        parts.color.click();
        parts.frequency.setText(u"99"_s);
        parts.cancel.click();
    });
    window().menus().mnuToolsOptions->trigger();
    EXPECT_EQ(gRefreshFrequency, 10);
    EXPECT_EQ(window().findChild<QMdiArea*>()->background().color(), QColor(Qt::white));
    EXPECT_EQ(window().TickCount, 0);
}

} // namespace
