#include "dashboard/frmWorkspace.h"

#include "assist/frmAbout.h"
#include "assist/frmTip.h"
#include "assist/modHTMLHelp.h"
#include "dashboard/DashboardArea.h"
#include "dashboard/frmOptions.h"
#include "panel/frmPanel.h"
#include "platform/Prompts.h"
#include "services/RecentWorkbooks.h"
#include "services/modMain.h"
#include "services/modUtilsFile.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QMenu>
#include <QUrl>

// Commands about the program itself: its project, options, help and information.

namespace lumivane {

using namespace Qt::StringLiterals;

void frmWorkspace::connectSession()
{
    const DashboardActions& a = m_actions;
    connect(a.mnuWorkspaceSwitchRepository, &QAction::triggered, this,
            &frmWorkspace::mnuWorkspaceSwitchRepository_Click);
    connect(a.mnuWorkspaceRecent, &QMenu::aboutToShow, this, &frmWorkspace::fillRecentWorkbooks);
    connect(a.mnuToolsOptions, &QAction::triggered, this, &frmWorkspace::mnuToolsOptions_Click);
    connect(a.mnuHelpContents, &QAction::triggered, this, &frmWorkspace::mnuHelpContents_Click);
    connect(a.mnuHelpLearningGuide, &QAction::triggered, this, &frmWorkspace::mnuHelpLearningGuide_Click);
    connect(a.mnuHelpWeb, &QAction::triggered, this, &frmWorkspace::mnuHelpWeb_Click);
    connect(a.mnuHelpAbout, &QAction::triggered, this, &frmWorkspace::mnuHelpAbout_Click);
    connect(a.cmdHelp, &QAction::triggered, this, &frmWorkspace::cmdHelp_Click);
    a.mnuHelpWeb->setVisible(!webSite().isEmpty());
}

void frmWorkspace::mnuWorkspaceSwitchRepository_Click()
{
    command(u"mnuWorkspaceSwitchRepository_Click"_s, [this] {
        bool OK = false;
        PromptSave(false, OK);
        if (!OK)
            return;
        IsBusy = true;
        Q_EMIT switchRequested();
        IsBusy = false;
    });
}

void frmWorkspace::fillRecentWorkbooks()
{
    QMenu& menu = *m_actions.mnuWorkspaceRecent;
    menu.clear();
    int number = 0;
    for (const QString& path : recentWorkbooks()) {
        const QString shown = QDir::toNativeSeparators(path);
        // A tenth one is chosen by its 0.
        const QString key = ++number < 10 ? u"&%1"_s.arg(number) : u"1&0"_s;
        QAction* entry = menu.addAction(key + u"  "_s + QString(shown).replace(u'&', u"&&"_s));
        entry->setStatusTip(u"Show "_s + shown);
        connect(entry, &QAction::triggered, this, [this, path] { openRecentWorkbook(path); });
    }
    if (number == 0)
        menu.addAction(u"No workbooks yet"_s)->setEnabled(false);
}

void frmWorkspace::openRecentWorkbook(const QString& path)
{
    command(u"mnuWorkspaceRecent_Click"_s, [this, path] {
        if (QFile::exists(path)) {
            showWorkbook(path);
            return;
        }
        forgetWorkbook(path);
        prompts().message(u"The workbook ["_s + QDir::toNativeSeparators(path) +
                              u"] is not there any more. It has been taken off the list of recent workbooks."_s,
                          Prompts::Icon::Exclamation);
    });
}

void frmWorkspace::mnuToolsOptions_Click()
{
    command(u"mnuToolsOptions_Click"_s, [this] {
        IsBusy = true;
        frmOptions(m_area->background().color(), this).exec();
        // After Cancel too: the count to the next pass begins anew in any case.
        m_area->setBackground(QColor(gDashboardColor));
        for (frmPanel* panel : panelWindows())
            panel->SetCaption();
        TickCount = 0;
        IsBusy = false;
    });
}

void frmWorkspace::showTip()
{
    IsBusy = true;
    frmTip(this).exec();
    IsBusy = false;
}

void frmWorkspace::mnuHelpContents_Click()
{
    command(u"mnuHelpContents_Click"_s, [] { ShowHelp(u"Main"_s); });
}

void frmWorkspace::cmdHelp_Click()
{
    command(u"cmdHelp_Click"_s, [this] { ShowHelp(objectName()); });
}

void frmWorkspace::mnuHelpLearningGuide_Click()
{
    command(u"mnuHelpLearningGuide_Click"_s, [] {
        if (FileExists(learningGuideFile()))
            openDocument(QUrl::fromLocalFile(learningGuideFile()));
    });
}

void frmWorkspace::mnuHelpWeb_Click()
{
    command(u"mnuHelpWeb_Click"_s, [] {
        if (!webSite().isEmpty())
            openDocument(QUrl(webSite()));
    });
}

void frmWorkspace::mnuHelpAbout_Click()
{
    command(u"mnuHelpAbout_Click"_s, [this] {
        IsBusy = true;
        frmAbout(this).exec();
        IsBusy = false;
    });
}

} // namespace lumivane
