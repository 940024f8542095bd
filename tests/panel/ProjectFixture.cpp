#include "panel/ProjectFixture.h"

#include "platform/ApplicationInfo.h"
#include "platform/Clock.h"
#include "platform/Prompts.h"
#include "repository/Database.h"
#include "repository/clsPanelSource.h"
#include "repository/clsWorkspace.h"
#include "repository/clsWorkspacePanel.h"
#include "services/ProgramFiles.h"
#include "services/modMain.h"
#include "services/modUtilsFile.h"
#include "update/Stillness.h"

#include <QDir>
#include <QFile>

namespace lumivane::test {

using namespace Qt::StringLiterals;

ProjectFixture::ProjectFixture()
{
    setProgramFolder(m_folder.path());
    setPrompts(&m_user);
    setHostFactory(m_library.factory());
    setPause([](int) {});
    QDir(m_folder.path()).mkdir(u"books"_s);
    Database::create(programFile(u"lumivane.lvdu"_s));
    gDB = Database::open(programFile(u"lumivane.lvdu"_s), databaseConnect());
    gWorkspace = std::make_shared<clsWorkspace>();
    gSources = std::make_shared<clsSources>();
    gPanelTimeStamp = false;
    gCaptionAlignment = u"Left"_s;
    gRefreshFrequency = 10;
}

ProjectFixture::~ProjectFixture()
{
    gWorkspace.reset();
    gSources.reset();
    gDB.reset();
    Clock::setFixed({});
    setHostFactory({});
    setPause({});
    setPrompts(nullptr);
    setProgramFolder(QString());
}

QString ProjectFixture::addBook(const QString& name)
{
    const QString path = bookPath(name);
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
    file.close();
    touch(path, -3600);

    PlainSheet sheet(u"Data"_s, name);
    for (const char* cell : {"B2", "C2", "B3", "C3", "B4", "C4"})
        sheet.put(QString::fromLatin1(cell), QString::fromLatin1(cell));
    sheet.shape(u"Trend"_s);
    m_library.books[path] = {sheet};
    return path;
}

void ProjectFixture::touch(const QString& path, int secondsFromNow)
{
    ASSERT_EQ(AdjustFileTime(path, Clock::now().addSecs(secondsFromNow)), -1);
}

std::shared_ptr<clsWorkspacePanel> ProjectFixture::addPanel(const QString& path, const QString& caption)
{
    const auto panel = gWorkspace->Panels(gWorkspace->AddPanel());
    panel->SourceID = gSources->AddSource(path);
    panel->ContentType = u"S"_s;
    panel->SheetName = u"Data"_s;
    panel->PicRange = u"$B$2:$C$4``"_s;
    panel->RelativeTo = u"top"_s;
    panel->ViewType = u"A"_s;
    panel->Caption = caption;
    panel->pLeft = 150;
    panel->pTop = 300;
    return panel;
}

void ProjectFixture::saveDashboard(const QString& name)
{
    gWorkspace->Name = name;
    ASSERT_TRUE(gWorkspace->SaveToDB(gDB));
}

XLInstance ProjectFixture::worker()
{
    XLInstance XLInst;
    EXPECT_TRUE(Excel_Init(XLInst));
    return XLInst;
}

bool ProjectFixture::cached(const clsWorkspacePanel& panel) const
{
    return QFile::exists(panelPictureFile(panel.ID));
}

qsizetype ProjectFixture::openings(const QString& path) const
{
    return m_library.events.count(u"open "_s + path);
}

QString ProjectFixture::stored(const QString& sql, const QString& column) const
{
    const auto rows = gDB->OpenRecordset(sql);
    return rows->EOF_() ? QString() : rows->text(column);
}

} // namespace lumivane::test
