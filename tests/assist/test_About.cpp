#include "assist/SystemInformation.h"
#include "assist/frmAbout.h"
#include "dashboard/DashboardFixture.h"
#include "services/modUtilsINI.h"

#include <QFile>
#include <QtTest/QTest>

using namespace lumivane;
using namespace Qt::StringLiterals;

namespace {

/// A desktop whose only programs are those that a test puts there.
class About : public test::DashboardFixture
{
protected:
    About() { qputenv("PATH", QFile::encodeName(m_folder.path())); }
    ~About() override { qputenv("PATH", m_path); }

    /// A program that writes down its arguments.
    QString install(const QString& name)
    {
        QFile script(m_folder.filePath(name));
        EXPECT_TRUE(script.open(QIODevice::WriteOnly));
        script.write("#!/bin/sh\necho \"$@\" > '" + QFile::encodeName(noted) + ".part'\n/bin/mv '" +
                     QFile::encodeName(noted) + ".part' '" + QFile::encodeName(noted) + "'\n");
        script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return script.fileName();
    }
    QByteArray whatWasNoted()
    {
        QFile file(noted);
        EXPECT_TRUE(QTest::qWaitFor([&] { return file.open(QIODevice::ReadOnly); }, 60000));
        return file.readAll();
    }

    const QByteArray m_path = qgetenv("PATH");
    const QString noted = m_folder.filePath(u"noted"_s);
};

TEST_F(About, SystemInfoStartsTheToolOfTheDesktop)
{
    install(u"gnome-control-center"_s);
    const frmAbout dialog;
    test::clickOn(dialog, u"cmdSysInfo"_s);
    EXPECT_EQ(whatWasNoted(), "info-overview\n");
    EXPECT_TRUE(m_user.shown.isEmpty());
}

TEST_F(About, AToolOfTheAdministratorGoesFirstWhileItIsThere)
{
    const QString known = install(u"hardinfo"_s);
    const QString chosen = install(u"our-tool"_s);
    SetIniString(GetIniFile(), u"Settings"_s, u"System Info"_s, u"our-tool --all"_s);
    EXPECT_EQ(systemInformationCommand(), (QStringList{chosen, u"--all"_s}));
    QFile::remove(chosen);
    EXPECT_EQ(systemInformationCommand(), QStringList{known});
}

TEST_F(About, WithoutAToolItSaysSo)
{
    const frmAbout dialog;
    test::clickOn(dialog, u"cmdSysInfo"_s);
    EXPECT_EQ(m_user.shown,
              QStringList{u"Error Source:  frmAbout.StartSysInfo\r\nNumber:  53\r\nDescription:  No "
                          "program was found on this desktop that shows information about the system."_s});
}

} // namespace
