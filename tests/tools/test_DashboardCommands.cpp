#include "DemoPlan.h"
#include "DemoProject.h"
#include "Reports.h"
#include "ToolsFixture.h"

#include <QImage>
#include <QRegularExpression>

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
};

} // namespace

TEST_F(DemoCommands, AMissingWorkbookFailsItsPanelsAlone)
{
    refresh(u"Operations"_s);
    ASSERT_TRUE(QFile::remove(path(u"demo/working/Service desk.xlsx"_s)));
    QDir panels(path(u"demo/Panels"_s));
    for (const QString& picture : panels.entryList(QDir::Files))
        panels.remove(picture);
    const Outcome outcome = refresh(u"Operations"_s);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(
        QRegularExpression(u"\\tService desk today\\tfailed: .*Service desk\\.xlsx"_s).match(outcome.output).hasMatch())
        << outcome.output;
    EXPECT_TRUE(outcome.output.contains(u"\tLatest prices\tdrawn anew\n"_s)) << outcome.output;
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
