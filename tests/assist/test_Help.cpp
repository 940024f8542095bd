#include "assist/frmTip.h"
#include "assist/modHTMLHelp.h"
#include "dashboard/DashboardFixture.h"
#include "dashboard/frmOpenWorkspace.h"
#include "dashboard/frmOptions.h"
#include "dashboard/frmSaveWorkspace.h"
#include "support/LogCapture.h"

#include <QAction>
#include <QFile>
#include <QScopeGuard>
#include <QToolButton>
#include <QUrl>

using namespace lumivane;
using namespace Qt::StringLiterals;

namespace {

using HelpCommands = test::DashboardFixture;

TEST_F(HelpCommands, EachPlaceAsksForItsTopic)
{
    QFile help(programFile(u"lumivane.CHM"_s)), guide(programFile(u"lumivane_Learning_Guide.pdf"_s));
    ASSERT_TRUE(help.open(QIODevice::WriteOnly));
    SetHelpFile();
    QUrl opened;
    setDocumentViewer({[](const QString&, qint32) {}, [&](const QUrl& document) { opened = document; }});
    const auto end = qScopeGuard([&] {
        setDocumentViewer({});
        help.remove();
        SetHelpFile();
    });
    start();
    const auto pressHelp = [](const QDialog& dialog) { test::clickOn(dialog, u"cmdHelp"_s); };
    const test::LogCapture log; // no topic has a page of its own, and so each is logged
    window().menus().mnuHelpContents->trigger();
    window().findChild<QToolButton*>(u"cmdHelp"_s)->click();
    pressHelp(frmOpenWorkspace{QString()});
    pressHelp(frmOpenWorkspace{u"Copy"_s});
    pressHelp(frmSaveWorkspace{u"SaveAs"_s, QString()});
    pressHelp(frmOptions{Qt::white});
    pressHelp(frmTip());
    QStringList topics;
    for (const QString& entry : log.entries)
        topics.append(entry.section(u'[', 1).section(u']', 0, 0));
    EXPECT_EQ(topics.join(u' '),
              u"Main frmWorkspace OpenWorkspace TargetWorkspace frmSaveWorkspace frmOptions frmTip"_s);

    window().menus().mnuHelpLearningGuide->trigger();
    EXPECT_EQ(opened, QUrl()) << "there is no guide";
    ASSERT_TRUE(guide.open(QIODevice::WriteOnly));
    window().menus().mnuHelpLearningGuide->trigger();
    EXPECT_EQ(opened, QUrl::fromLocalFile(learningGuideFile()));
}

} // namespace
