#include "DemoPlan.h"
#include "DemoProject.h"
#include "Reports.h"
#include "ToolsFixture.h"

#include <QImage>

using namespace Qt::StringLiterals;

namespace lumivane::test {

namespace {

/// The demo with its two dashboards, of whose reports new versions can be delivered.
class DemoCommands : public ToolsFixture
{
protected:
    void SetUp() override { demo::makeDemo(QDir(path(u"demo"_s))); }

    QString project() const { return path(u"demo/lumivane.lvdu"_s); }
    Outcome refresh(const QString& dashboard)
    {
        return call({u"refresh"_s, u"--home"_s, path(u"demo"_s), project(), dashboard});
    }
    QImage snapshot(const QString& dashboard)
    {
        const QString target = path(u"snapshot.png"_s);
        EXPECT_EQ(call({u"snapshot"_s, u"--home"_s, path(u"demo"_s), project(), dashboard, target}).status, 0);
        return QImage(target);
    }
    /// The outcomes that a refresh told, by caption.
    static QMap<QString, QString> outcomes(const Outcome& outcome)
    {
        QMap<QString, QString> result;
        for (const QString& line : outcome.output.split(u'\n', Qt::SkipEmptyParts)) {
            const QStringList parts = line.split(u'\t');
            result.insert(parts.value(1), parts.value(2));
        }
        return result;
    }
    /// The reports of a version, a minute newer than now, where the program looks for them.
    void deliver(int version)
    {
        for (const QString& folder : {u"demo/working"_s, u"demo/incoming"_s})
            for (const demo::ReportFile& report : demo::reportFiles(version)) {
                QFile file(write(folder + u'/' + report.name, report.bytes));
                ASSERT_TRUE(file.open(QIODevice::ReadWrite));
                ASSERT_TRUE(file.setFileTime(QDateTime::currentDateTime().addSecs(60 * version),
                                             QFileDevice::FileModificationTime));
            }
    }
    QString storedRange(const QString& caption)
    {
        return call({u"sql"_s, project(), u"SELECT PicRange FROM LvnSavedPanel WHERE Caption = '%1'"_s.arg(caption)})
            .array()
            .at(0)
            .toObject()
            .value(u"PicRange")
            .toString();
    }
};

} // namespace

TEST_F(DemoCommands, RefreshDrawsOnceAndAgainAfterADelivery)
{
    const QStringList captions = outcomes(refresh(u"Management"_s)).keys();
    EXPECT_EQ(captions.size(), 5);
    const auto allAre = [&](const QString& outcome) {
        const auto told = outcomes(refresh(u"Management"_s));
        return told.keys() == captions && told.values() == QStringList(captions.size(), outcome);
    };
    EXPECT_TRUE(allAre(u"unchanged"_s));
    deliver(2);
    EXPECT_TRUE(allAre(u"drawn anew"_s));
    EXPECT_TRUE(allAre(u"unchanged"_s));
}

TEST_F(DemoCommands, RangesFollowTheirRules)
{
    refresh(u"Management"_s);
    refresh(u"Operations"_s);
    deliver(3);
    refresh(u"Management"_s);
    refresh(u"Operations"_s);
    EXPECT_EQ(storedRange(u"Latest trading days"_s), u"A29:H40`4:4`"_s);        // ten days more
    EXPECT_EQ(storedRange(u"Plan attainment"_s), u"$A$4:$E$10``"_s);            // stays
    EXPECT_EQ(storedRange(u"Cash this week and next"_s), u"F4:I12``A:A"_s);     // two weeks on
    EXPECT_EQ(storedRange(u"Liquidity reserve"_s), u"A14:D18``"_s);             // two accounts more
    EXPECT_EQ(storedRange(u"Production, end of week"_s), u"F14:J26`4:4`A:B"_s); // four machines more
    EXPECT_EQ(storedRange(u"Latest prices"_s), u"A15:E22`1:1`"_s);              // six lines more
    EXPECT_EQ(storedRange(u"Sales so far"_s), u"A40:H40`4:4`"_s);
}

TEST_F(DemoCommands, FiguresOverTheirLimitsAreMarkedWhereTheRangeHasMoved)
{
    const auto marked = [](const QImage& picture, QColor color) {
        int count = 0;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                count += picture.pixelColor(x, y) == color;
        return count;
    };
    const QColor high(128, 180, 180), low(180, 128, 180);
    const QImage before = snapshot(u"Management"_s);
    EXPECT_EQ(marked(before, high) + marked(before, low), 0);
    deliver(2);
    refresh(u"Management"_s);
    const QImage after = snapshot(u"Management"_s);
    EXPECT_GT(marked(after, high), 300) << "sales of all days are over 18000 now";
    EXPECT_GT(marked(after, low), 300) << "those of the last day are below 500";
}

TEST_F(DemoCommands, AMissingWorkbookFailsItsPanelsAlone)
{
    refresh(u"Operations"_s);
    ASSERT_TRUE(QFile::remove(path(u"demo/working/Service desk.xlsx"_s)));
    QDir panels(path(u"demo/Panels"_s));
    for (const QString& picture : panels.entryList(QDir::Files))
        panels.remove(picture);
    const Outcome outcome = refresh(u"Operations"_s);
    EXPECT_EQ(outcome.status, 1);
    const auto told = outcomes(outcome);
    EXPECT_TRUE(told.value(u"Service desk today"_s).startsWith(u"failed: "_s));
    EXPECT_TRUE(told.value(u"Service desk today"_s).contains(u"Service desk.xlsx"_s));
    EXPECT_EQ(told.value(u"Latest prices"_s), u"drawn anew"_s);
}

TEST_F(DemoCommands, UnknownDashboardsAreTold)
{
    const Outcome outcome = refresh(u"Finance"_s);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(outcome.errors.contains(u"no dashboard \"Finance\"; there are: Management, Operations."_s))
        << outcome.errors.toStdString();
}

TEST_F(DemoCommands, SnapshotsShowPanelsAtTheirPlacesAndFollowVersions)
{
    const QImage before = snapshot(u"Management"_s);
    QRect reached;
    for (const demo::PanelPlan& plan : demo::panelPlans())
        if (plan.dashboard == u"Management" && plan.view != u"A")
            reached |= plan.window;
    EXPECT_GE(before.width(), reached.right());
    EXPECT_GE(before.height(), reached.bottom());
    EXPECT_EQ(snapshot(u"Management"_s), before);

    deliver(2);
    const QImage after = snapshot(u"Management"_s);
    ASSERT_EQ(after.size(), before.size());
    for (const demo::PanelPlan& plan : demo::panelPlans())
        if (plan.dashboard == u"Management") {
            EXPECT_NE(after.copy(plan.window), before.copy(plan.window)) << plan.caption.toStdString();
        }
    const QRect ground(678, 12, 10, 200); // between two panels
    EXPECT_EQ(after.copy(ground), before.copy(ground));
}

} // namespace lumivane::test
