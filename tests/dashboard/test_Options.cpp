#include "dashboard/DashboardFixture.h"
#include "dashboard/frmOptions.h"
#include "services/modMain.h"
#include "session/Startup.h"

#include <QAction>
#include <QCheckBox>
#include <QFrame>
#include <QLineEdit>
#include <QMdiArea>

using namespace lumivane;
using namespace Qt::StringLiterals;
using test::clickOn;
using test::control;

namespace {

class Options : public test::DashboardFixture
{
protected:
    Options()
    {
        gDashboardColor = 0xFFFFFF;
        gCaptionAlignment = u"Center"_s;
    }
    ~Options() override { gDashboardColor = 0xFFFFFF; }

    static QLineEdit& frequency(const QDialog& dialog) { return control<QLineEdit>(dialog, u"txtFrequency"_s); }
    static QComboBox& alignment(const QDialog& dialog) { return control<QComboBox>(dialog, u"cmbCaptionAlign"_s); }
    static QColor swatch(const QDialog& dialog)
    {
        return control<QFrame>(dialog, u"shWorkspaceColor"_s).palette().color(QPalette::Window);
    }
    void chooseColor(const QDialog& dialog, const QColor& color)
    {
        m_user.colors = {color};
        clickOn(dialog, u"cmdWorkspaceColor"_s);
    }
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
        {u"   "_s, empty, 10},        {u"5 min"_s, noNumber, 10}, {u"inf"_s, noNumber, 10},
        {u"nan"_s, noNumber, 10},     {u"0"_s, tooSmall, 10},     {u"0.4"_s, {}, 0},
        {u" 2.5 "_s, {}, 2},          {u"1e3"_s, {}, 1000},       {u"32,000"_s, {}, 32000},
        {u"32000.1"_s, tooLarge, 10}, {u"1e300"_s, tooLarge, 10},
    };
    for (const auto& row : rows) {
        m_user.shown.clear();
        gRefreshFrequency = 10;
        frmOptions dialog(Qt::white);
        frequency(dialog).setText(row.typed);
        clickOn(dialog, u"cmdOK"_s);
        EXPECT_EQ(m_user.shown, row.box.isEmpty() ? QStringList() : QStringList{row.box}) << row.typed.toStdString();
        EXPECT_EQ(gRefreshFrequency, row.stored) << row.typed.toStdString();
        EXPECT_EQ(dialog.result(), row.box.isEmpty() ? QDialog::Accepted : QDialog::Rejected);
        const bool retype = !row.box.isEmpty() && row.box != empty;
        EXPECT_EQ(frequency(dialog).selectedText(), retype ? row.typed : QString());
    }
}

TEST_F(Options, ShowsWhatHoldsAndStoresWhatIsChosen)
{
    gRefreshFrequency = 45;
    gCaptionAlignment = u" left"_s;
    frmOptions dialog(QColor(0x10, 0x20, 0x30));
    EXPECT_FALSE(control<QCheckBox>(dialog, u"chkDateTimeStamp"_s).isChecked());
    EXPECT_EQ(frequency(dialog).text(), u"45"_s);
    EXPECT_EQ(alignment(dialog).currentText(), u"Left"_s);
    clickOn(dialog, u"cmdWorkspaceColor"_s);
    EXPECT_EQ(m_user.colorAskedFrom, QColor(0x10, 0x20, 0x30));
    EXPECT_EQ(swatch(dialog), QColor(0x10, 0x20, 0x30)) << "cancelled";
    chooseColor(dialog, QColor(0xaa, 0xbb, 0xcc));
    EXPECT_EQ(swatch(dialog), QColor(0xaa, 0xbb, 0xcc));
    EXPECT_EQ(gDashboardColor, 0xFFFFFFu) << "nothing holds before OK";
    clickOn(dialog, u"cmdOK"_s);
    gDashboardColor = 0;
    ASSERT_TRUE(GetOptionsSettings());
    EXPECT_EQ(gDashboardColor, 0xAABBCCu);
}

TEST_F(Options, AnUnknownAlignmentStandsOnCenterAndIsReplacedByOK)
{
    gCaptionAlignment = u"Middle"_s;
    frmOptions dialog(Qt::white);
    EXPECT_EQ(alignment(dialog).currentText(), u"Center"_s);
    EXPECT_EQ(gCaptionAlignment, u"Middle"_s);
    clickOn(dialog, u"cmdOK"_s);
    EXPECT_EQ(gCaptionAlignment, u"Center"_s);
}

TEST_F(Options, OKPaintsTheGroundAndCancelChangesNothingButTheCountOfMinutes)
{
    start();
    for (const auto& [button, color] : {std::pair(u"cmdCancel"_s, QColor(Qt::white)), {u"cmdOK"_s, Qt::darkBlue}}) {
        window().TickCount = 4;
        test::whenShown<frmOptions>([&](frmOptions& dialog) {
            EXPECT_TRUE(window().IsBusy);
            chooseColor(dialog, Qt::darkBlue);
            frequency(dialog).setText(u"99"_s);
            clickOn(dialog, button);
        });
        window().menus().mnuToolsOptions->trigger();
        EXPECT_EQ(window().findChild<QMdiArea*>()->background().color(), color);
        EXPECT_EQ(gRefreshFrequency, color == Qt::white ? 10 : 99);
        EXPECT_EQ(window().TickCount, 0);
        EXPECT_FALSE(window().IsBusy);
    }
}

} // namespace
