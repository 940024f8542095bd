#include "assist/modHTMLHelp.h"
#include "platform/RuntimeError.h"
#include "services/ProgramFolder.h"
#include "services/modUtilsINI.h"
#include "support/TextTable.h"

namespace lumivane::test {

using namespace Qt::StringLiterals;

class HtmlHelp : public ProgramFolder
{
protected:
    HtmlHelp()
    {
        setDocumentViewer({[this](const QString& shown, qint32 context) {
                               pages.append(u"%1 at %2"_s.arg(shown).arg(context));
                               if (!refusal.isEmpty())
                                   throw RuntimeError(75, refusal);
                           },
                           {}});
    }
    ~HtmlHelp() override
    {
        setDocumentViewer({});
        QFile::remove(file);
        SetHelpFile(); // forgets the file of this test
    }

    void haveHelp()
    {
        write(file, "help");
        write(GetHelpIniFile(), "[Help]\nMain=1001\nfrmLogin=12\nfrmNone=-3\nfrmWord=soon\n");
        SetHelpFile();
    }

    const QString file = path(u"lumivane.CHM"_s);
    QStringList pages;
    QString refusal;
};

TEST_F(HtmlHelp, WithoutAFileOneLogLineAndAMessageEachTime)
{
    SetHelpFile();
    EXPECT_EQ(helpFile(), QString());
    EXPECT_TRUE(logged().endsWith(
        u"[modHTMLHelp.SetHelpFile]: %1 not found. Will not be able to load help file.\r\n"_s.arg(file).toUtf8()));
    EXPECT_TRUE(user.shown.isEmpty());
    ShowHelp(u"frmLogin"_s);
    EXPECT_EQ(user.shown, QStringList{u"Unable to load help file.  not found."_s}) << "two blanks";
    EXPECT_TRUE(pages.isEmpty());
}

TEST_F(HtmlHelp, TopicsAreLookedUpInTheTable)
{
    haveHelp();
    for (const auto& [topic, context, told] : textTable<3>(R"(
        Main       | 1001 |
        frmlogin   | 12   |
        ·frmLogin· | 12   |
                   | 10   |
        ··         | 10   |
        frmNew     | 10   | told
        frmNone    | 10   | told
        frmWord    | 10   | told)")) {
        pages.clear();
        const QByteArray logBefore = logged();
        ShowHelp(topic);
        EXPECT_EQ(pages, QStringList{u"%1 at %2"_s.arg(file, context)}) << topic;
        const QString line = QString::fromUtf8(logged().sliced(logBefore.size()));
        const QString text = u"[modHTMLHelp.ShowHelp]: Topic [%1] not found in help INI file %2."_s.arg(topic, file);
        EXPECT_TRUE(told.isEmpty() ? line.isEmpty() : line.contains(text)) << line;
    }
    EXPECT_TRUE(user.shown.isEmpty());
}

TEST_F(HtmlHelp, AFailureOfTheReaderIsToldAndLogged)
{
    haveHelp();
    refusal = u"No reader"_s;
    ShowHelp(u"Main"_s);
    const QString text = u"Error loading %1. \r\nNo reader"_s.arg(file);
    EXPECT_EQ(user.shown,
              QStringList{u"Error Source:  modHTMLHelp.ShowHelp\r\nNumber:  75\r\nDescription:  "_s + text});
    EXPECT_TRUE(logged().contains(text.toUtf8()));
}

TEST_F(HtmlHelp, OnlyAWebAddressCounts)
{
    for (const auto& [setting, address] : textPairs(R"(
        → | example.org → | file:///etc/passwd → | https: → | https://exa·mple.org → | http://example.org → http://example.org
        ·https://example.org/lumivane· → https://example.org/lumivane)")) {
        SetIniString(GetIniFile(), u"Settings"_s, u"Web Site"_s, setting);
        EXPECT_EQ(webSite(), address) << setting;
    }
}

} // namespace lumivane::test
