#include "assist/modHTMLHelp.h"
#include "platform/RuntimeError.h"
#include "services/ProgramFolder.h"
#include "services/modUtilsINI.h"

#include <QUrl>

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
    struct
    {
        QString topic;
        int context;
        bool told; ///< in the log
    } const rows[] = {
        {u"Main"_s, 1001, false}, {u"frmlogin"_s, 12, false}, {u" frmLogin "_s, 12, false}, {QString(), 10, false},
        {u"  "_s, 10, false},     {u"frmNew"_s, 10, true},    {u"frmNone"_s, 10, true},     {u"frmWord"_s, 10, true},
    };
    for (const auto& row : rows) {
        pages.clear();
        const QByteArray logBefore = logged();
        ShowHelp(row.topic);
        EXPECT_EQ(pages, QStringList{u"%1 at %2"_s.arg(file).arg(row.context)}) << row.topic.toStdString();
        const QByteArray line = logged().sliced(logBefore.size());
        EXPECT_EQ(!line.isEmpty(), row.told) << row.topic.toStdString();
        const QString text = u"Topic [%1] not found in help INI file %2."_s.arg(row.topic, file);
        EXPECT_EQ(line.contains(u"[modHTMLHelp.ShowHelp]: %1\r\n"_s.arg(text).toUtf8()), row.told)
            << line.toStdString();
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
    struct
    {
        QString setting, address;
    } const rows[] = {
        {QString(), {}},
        {u" https://example.org/lumivane "_s, u"https://example.org/lumivane"_s},
        {u"http://example.org"_s, u"http://example.org"_s},
        {u"example.org"_s, {}},
        {u"file:///etc/passwd"_s, {}},
        {u"https:"_s, {}},
        {u"https://exa mple.org"_s, {}},
    };
    for (const auto& row : rows) {
        SetIniString(GetIniFile(), u"Settings"_s, u"Web Site"_s, row.setting);
        EXPECT_EQ(webSite(), row.address) << row.setting.toStdString();
    }
}

} // namespace lumivane::test
