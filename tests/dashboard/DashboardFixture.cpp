#include "dashboard/DashboardFixture.h"

#include "assist/frmTip.h"
#include "dashboard/frmSaveWorkspace.h"
#include "host/Host.h"
#include "panel/frmPanel.h"
#include "platform/Clock.h"
#include "repository/ProjectRows.h"
#include "repository/clsPanelSource.h"
#include "repository/clsWorkspace.h"
#include "repository/clsWorkspacePanel.h"

#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>

namespace lumivane::test {

using namespace Qt::StringLiterals;

void DashboardFixture::storeDashboard(const QString& name, const QStringList& captions)
{
    Clock::setFixed(QDateTime(QDate(2026, 11, 24), QTime(8, m_stored++)));
    gWorkspace = std::make_shared<clsWorkspace>();
    if (!captions.isEmpty()) {
        const QString path = addBook(name + u".xlsx"_s);
        for (const QString& caption : captions)
            addPanel(path, caption);
    }
    saveDashboard(name);
}

frmWorkspace& DashboardFixture::start()
{
    Clock::setFixed(QDateTime(QDate(2026, 11, 24), QTime(9, 0)));
    m_window = std::make_unique<frmWorkspace>();
    m_window->resize(1000, 700);
    m_window->show();
    // Whoever starts on an empty project closes its tip.
    m_tip.clear();
    QTimer tipReader;
    QObject::connect(&tipReader, &QTimer::timeout, [this] {
        if (auto* tip = qobject_cast<frmTip*>(QApplication::activeModalWidget())) {
            m_tip = control<QLabel>(*tip, u"lblTipText"_s).text();
            tip->reject();
        }
    });
    tipReader.start(0);
    m_window->Form_Activate();
    m_library.events.clear();
    return *m_window;
}

QStringList DashboardFixture::listed() const
{
    QStringList names;
    const QComboBox& list = *m_window->menus().cmbWorkspaces;
    for (int i = 0; i < list.count(); ++i)
        names.append(list.itemText(i));
    return names;
}

QStringList DashboardFixture::panelCaptions() const
{
    QStringList captions;
    for (const frmPanel* panel : m_window->panelWindows())
        captions.append(panel->windowTitle());
    return captions;
}

void DashboardFixture::answerName(const QString& name)
{
    whenShown<frmSaveWorkspace>([name](frmSaveWorkspace& dialog) {
        control<QLineEdit>(dialog, u"txtName"_s).setText(name);
        clickOn(dialog, u"cmdOK"_s);
    });
}

void DashboardFixture::makeDirty()
{
    ASSERT_FALSE(m_window->panelWindows().isEmpty());
    m_window->panelWindows().first()->IsDirty = true;
}

frmPanel& DashboardFixture::panel(const QString& caption)
{
    for (frmPanel* panel : m_window->panelWindows()) {
        if (gWorkspace->Panels(panel->Index)->Caption == caption)
            return *panel;
    }
    throw std::runtime_error("no panel has the caption " + caption.toStdString());
}

frmPanel& DashboardFixture::activate(const QString& caption)
{
    frmPanel& found = panel(caption);
    found.mdiArea()->setActiveSubWindow(&found);
    return found;
}

std::shared_ptr<PlainApplication> DashboardFixture::showWorkbooks()
{
    const auto shown = std::make_shared<PlainApplication>(m_library);
    HostFactory factory = hostFactory();
    factory.visibleInstance = [shown] { return shown; };
    setHostFactory(factory);
    return shown;
}

QString DashboardFixture::writeFile(const QString& name, const QByteArray& content)
{
    QFile file(programFile(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
    return file.fileName();
}

QStringList DashboardFixture::rows(const QString& sql) const
{
    return rowsOf(*gDB, sql);
}

int DashboardFixture::rowCount(const QString& table, const QString& where) const
{
    return int(rows(u"SELECT * FROM "_s + table + u" WHERE "_s + where).size());
}

} // namespace lumivane::test
