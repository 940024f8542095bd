#include "assist/frmTip.h"
#include "assist/modHTMLHelp.h"
#include "dashboard/DashboardFixture.h"
#include "dashboard/frmOpenWorkspace.h"
#include "dashboard/frmOptions.h"
#include "dashboard/frmSaveWorkspace.h"
#include "services/modUtilsINI.h"

#include <QAction>
#include <QFile>
#include <QPushButton>
#include <QToolButton>
#include <QUrl>

using namespace lumivane;
using namespace Qt::StringLiterals;

namespace {

/// A program with a help file whose pages are numbered as the topics are listed here.
class HelpCommands : public test::DashboardFixture
{
protected:
    HelpCommands()
    {
        setDocumentViewer({[this](const QString&, qint32 context) { seen.append(topics.value(context - 100)); },
                           [this](const QUrl& document) { seen.append(document.toString()); }});
        makeFile(u"lumivane.CHM"_s);
        for (qsizetype i = 0; i < topics.size(); ++i)
            SetIniString(GetHelpIniFile(), u"Help"_s, topics[i], QString::number(100 + i));
        SetHelpFile();
    }
    ~HelpCommands() override
    {
        setDocumentViewer({});
        QFile::remove(programFile(u"lumivane.CHM"_s));
        SetHelpFile();
    }

    void makeFile(const QString& name) { QFile(programFile(name)).open(QIODevice::WriteOnly); }
    static void pressHelp(const QDialog& dialog) { dialog.findChild<QPushButton*>(u"cmdHelp"_s)->click(); }

    const QStringList topics = {
        u"Main"_s,       u"frmWorkspace"_s, u"OpenWorkspace"_s, u"TargetWorkspace"_s, u"frmSaveWorkspace"_s,
        u"frmOptions"_s, u"frmTip"_s};
    QStringList seen;
};

TEST_F(HelpCommands, EachPlaceAsksForItsTopic)
{
    start();
    window().menus().mnuHelpContents->trigger();
    window().findChild<QToolButton*>(u"cmdHelp"_s)->click();
    pressHelp(frmOpenWorkspace{QString()});
    pressHelp(frmOpenWorkspace{u"Copy"_s});
    pressHelp(frmSaveWorkspace{u"SaveAs"_s, QString()});
    pressHelp(frmOptions{Qt::white});
    pressHelp(frmTip());
    window().menus().mnuHelpLearningGuide->trigger();
    EXPECT_EQ(seen, topics) << "there is no guide";
    makeFile(u"lumivane_Learning_Guide.pdf"_s);
    window().menus().mnuHelpLearningGuide->trigger();
    EXPECT_EQ(seen.last(), QUrl::fromLocalFile(learningGuideFile()).toString());
}

} // namespace
