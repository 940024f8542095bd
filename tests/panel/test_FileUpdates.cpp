#include "panel/ProjectFixture.h"
#include "panel/ShownDialog.h"
#include "panel/frmPanel.h"
#include "panel/frmPanelProperties.h"
#include "repository/Database.h"
#include "repository/clsPanelSource.h"
#include "repository/clsWorkspacePanel.h"
#include "support/TextTable.h"
#include "update/MailIntake.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QtTest/QTest>

// The dialog by which new versions of a panel's workbook are found.

namespace lumivane::test {
namespace {

using namespace Qt::StringLiterals;

class FileUpdates : public ProjectFixture
{
protected:
    void SetUp() override
    {
        m_record = addPanel(addBook(u"sales.xlsx"_s), u"Sales"_s);
        m_source = m_record->Source();
        m_panel.Index = 1;
    }
    void TearDown() override
    {
        setMailFolderPicker({});
        setMailIntake({});
    }

    void open(std::function<void(frmPanelProperties&)> act)
    {
        whenShown<frmPanelProperties>(std::move(act));
        m_panel.Panel_Properties(false);
    }
    static QLineEdit& box(const frmPanelProperties& dialog, const QString& name)
    {
        return control<QLineEdit>(dialog, name);
    }
    static QComboBox& types(const frmPanelProperties& dialog) { return control<QComboBox>(dialog, u"cmbUpdateType"_s); }
    static bool shows(const frmPanelProperties& dialog, const QString& frame)
    {
        return control<QFrame>(dialog, frame).isVisible();
    }
    /// What the dialog writes of the source's row, and what it must leave alone.
    QString storedSource() const
    {
        const auto row = gDB->OpenRecordset(u"SELECT * FROM LvnPanelSource"_s);
        QStringList texts{QString::number(row->number32(u"checkEveryNmin"))};
        for (const char* column : {"UpdateType", "SourceFolder", "Mask", "outlookFolder", "outlookSender",
                                   "outlookSubject", "outlookAttachment"})
            texts.append(row->text(QLatin1StringView(column)));
        return texts.join(u';');
    }

    std::shared_ptr<clsWorkspacePanel> m_record;
    std::shared_ptr<clsPanelSource> m_source;
    frmPanel m_panel{[] { return false; }};
};

TEST_F(FileUpdates, ShowsTheSourceOfThePanel)
{
    m_source->SourceFolder = u"/reports/in/"_s;
    m_source->Mask = u"sales*.xlsx"_s;
    m_source->UpdateType = u"Folder"_s;
    m_source->OLFolder = u"4711`Reports"_s;
    m_source->OLSender = u"  "_s;
    m_source->OLSubject = u"Sales*"_s;
    open([&](frmPanelProperties& dialog) {
        EXPECT_EQ(types(dialog).currentText(), u"folder"_s) << "found whatever its case";
        EXPECT_EQ(box(dialog, u"txtSource"_s).text(), bookPath(u"sales.xlsx"_s));
        for (const auto& [name, text] :
             textPairs("txtSourceFolder → /reports/in/ | txtMask → sales*.xlsx | txtFrequency "
                       "→ 1000 | txtOFolder → Inbox | txtOSender → * | txtOSubject → Sales*"))
            EXPECT_EQ(box(dialog, name).text(), text) << name;
    });
}

TEST_F(FileUpdates, EachTypeHasItsFields)
{
    open([&](frmPanelProperties& dialog) {
        const QSize size = dialog.size();
        for (const auto& [type, fields] : textPairs("inbox → fraInbox txtFrequency | folder → fraFolder txtFrequency | "
                                                    "default → | refresh → txtFrequency")) {
            types(dialog).setCurrentText(type);
            EXPECT_EQ(shows(dialog, u"fraInbox"_s), fields.contains(u"fraInbox"_s)) << type;
            EXPECT_EQ(shows(dialog, u"fraFolder"_s), fields.contains(u"fraFolder"_s)) << type;
            EXPECT_EQ(box(dialog, u"txtFrequency"_s).isEnabled(), fields.contains(u"txtFrequency"_s)) << type;
            EXPECT_EQ(dialog.size(), size) << type;
        }
    });
}

TEST_F(FileUpdates, WhatIsMissingOrWrongIsToldAndKeepsTheDialogOpen)
{
    ASSERT_TRUE(m_source->SaveToDB(gDB));
    const QString before = storedSource();
    open([&](frmPanelProperties& dialog) {
        for (const auto& [type, field, text, message, focus] : textTable<5>(R"(
            refresh | txtMask         | day's.xlsx | The file mask [day's.xlsx] holds an apostrophe  | txtMask
            inbox   | txtOSender      | ·          | Either sender, subject must be defined.         | txtOSender
            refresh | txtFrequency    |            | No frequency specified.                         | txtFrequency
                    | txtMask         | a          | No Update Type selected.                        | cmbUpdateType
            refresh | txtFrequency    | 32000.5    | Refresh frequency cannot be greater than 32,000.| txtFrequency
            folder  | txtSourceFolder | ·          | No source folder specified.                     |)")) {
            types(dialog).setCurrentText(type);
            if (type.isEmpty())
                types(dialog).setCurrentIndex(-1);
            for (const auto& [other, good] : textPairs("txtSourceFolder → /in | txtMask → a | txtFrequency → 5"))
                box(dialog, other).setText(good);
            box(dialog, u"txtOSubject"_s).setText(u" "_s);
            box(dialog, field).setText(text);
            m_user.shown.clear();
            clickOn(dialog, u"cmdOK"_s);
            ASSERT_TRUE(dialog.isVisible()) << message;
            ASSERT_EQ(m_user.shown.size(), 1) << message;
            EXPECT_TRUE(m_user.shown[0].startsWith(message)) << m_user.shown[0];
            EXPECT_TRUE(focus.isEmpty() || dialog.focusWidget()->objectName() == focus) << message;
            EXPECT_TRUE(focus != u"txtFrequency" || box(dialog, field).selectedText() == text) << message;
        }
        EXPECT_EQ(m_user.asked, QStringList{u"Select source folder"_s});
    });
    EXPECT_EQ(storedSource(), before);
}

TEST_F(FileUpdates, AreStoredWithOK)
{
    for (const auto& [type, folder, frequency, mask, stored] : textTable<5>(R"(
        folder  | /reports/in | 15    | sales*.xlsx | 15;folder;/reports/in/;sales*.xlsx;;*;the day's sales;sales*.xlsx
        default |             | 1,000 | a           | 1000;default;/;a;;*;the day's sales;a
        inbox   | /           | 32000 | a           | 32000;inbox;/;a;;*;the day's sales;a
        refresh | /           | 0.5   | a           | 0;refresh;/;a;;*;the day's sales;a)")) {
        m_source->OLFolder = u"4711`Reports"_s; // not kept unless it is chosen again
        m_source->OLSubject = u"the day's sales"_s;
        m_user.confirmations = {true}; // the folder does not exist
        open([&](frmPanelProperties& dialog) {
            types(dialog).setCurrentText(type);
            box(dialog, u"txtSourceFolder"_s).setText(folder);
            box(dialog, u"txtFrequency"_s).setText(frequency);
            box(dialog, u"txtMask"_s).setText(mask);
            clickOn(dialog, u"cmdOK"_s);
            EXPECT_FALSE(dialog.isVisible()) << type;
        });
        EXPECT_EQ(storedSource(), stored);
    }
    EXPECT_EQ(m_user.shown, QStringList{});
    EXPECT_EQ(m_source->DestFolder + m_source->NewestFile, bookPath(u"sales.xlsx"_s));
}

TEST_F(FileUpdates, AFolderIsJudgedWhileItIsTyped)
{
    QDir(m_folder.path()).mkdir(u"incoming"_s);
    int age = 0;
    for (const QString& name : {u"sales 2.xlsx"_s, u"sales 1.xlsx"_s, u"costs.xlsx"_s}) {
        ASSERT_TRUE(QFile::copy(bookPath(u"sales.xlsx"_s), programFile(u"incoming/"_s + name)));
        touch(programFile(u"incoming/"_s + name), -3600 * ++age);
    }
    open([&](frmPanelProperties& dialog) {
        for (const auto& [type, folder, mask, text] : textTable<4>(R"(
            folder  | incoming          | sales*.xlsx | Fits now: sales 2.xlsx,·
            folder  | incoming          | *.csv       | No file in the folder fits at present.
            folder  | missing           | *.xlsx      | The folder does not exist at present.
            folder  | incoming/../books | *.xlsx      | This is the folder of the current file.
            default | missing           | *.xlsx      | Fits now: sales.xlsx,·)")) {
            types(dialog).setCurrentText(type);
            box(dialog, u"txtMask"_s).setText(mask);
            box(dialog, u"txtSourceFolder"_s).setText(programFile(folder));
            const QLineEdit& fits = box(dialog, u"txtFits"_s);
            EXPECT_TRUE(QTest::qWaitFor([&] { return fits.text().startsWith(text); })) << mask << ": " << fits.text();
        }
    });
    EXPECT_EQ(m_user.pointer, Prompts::Pointer::Default);
}

TEST_F(FileUpdates, AFolderThatIsMissingIsAskedAboutAndTheFilesOwnIsRefused)
{
    m_user.confirmations = {false};
    m_user.folders = {QString()};
    open([&](frmPanelProperties& dialog) {
        types(dialog).setCurrentText(u"folder"_s);
        box(dialog, u"txtSourceFolder"_s).setText(programFile(u"missing"_s));
        clickOn(dialog, u"cmdSourceFolder"_s); // cancelled
        clickOn(dialog, u"cmdOK"_s);
        EXPECT_EQ(m_user.asked.last(), u"The source folder [%1] does not exist at present. Do you want to keep it all "
                                       "the same?"_s.arg(programFile(u"missing"_s)));
        ASSERT_TRUE(dialog.isVisible());
        box(dialog, u"txtSourceFolder"_s).setText(bookPath(u"."_s));
        clickOn(dialog, u"cmdOK"_s);
        ASSERT_TRUE(dialog.isVisible());
        EXPECT_TRUE(m_user.shown.last().startsWith(u"The source folder is the folder of the current file"_s));
        clickOn(dialog, u"cmdCancel"_s);
    });
    EXPECT_EQ(m_source->UpdateType, u"default"_s);
}

TEST_F(FileUpdates, AMailFolderIsStoredWithItsId)
{
    setMailIntake([](const MailQuestion&, QDateTime&) { return QString(); });
    setMailFolderPicker([] { return u"4711`Reports`daily"_s; });
    open([&](frmPanelProperties& dialog) {
        types(dialog).setCurrentText(u"inbox"_s);
        EXPECT_FALSE(control<QLabel>(dialog, u"lblNoMail"_s).isVisible());
        clickOn(dialog, u"cmdOFolder"_s);
        EXPECT_EQ(box(dialog, u"txtOFolder"_s).text(), u"Reports`daily"_s);
        clickOn(dialog, u"cmdOK"_s);
    });
    EXPECT_EQ(m_source->OLFolder, u"4711`Reports`daily"_s);
}

TEST_F(FileUpdates, WithoutMailTheDialogSaysSo)
{
    open([&](frmPanelProperties& dialog) {
        types(dialog).setCurrentText(u"inbox"_s);
        EXPECT_TRUE(control<QLabel>(dialog, u"lblNoMail"_s).isVisible());
        clickOn(dialog, u"cmdOFolder"_s);
        EXPECT_EQ(box(dialog, u"txtOFolder"_s).text(), u""_s);
        clickOn(dialog, u"cmdOK"_s); // asks for a folder again
        EXPECT_TRUE(dialog.isVisible());
    });
    const QString cannotStart = u"Unable to start MS-Outlook."_s;
    EXPECT_EQ(m_user.shown, (QStringList{cannotStart, u"No folder specified."_s, cannotStart}));
}

TEST_F(FileUpdates, WhatTheProjectRefusesIsTakenBack)
{
    open([&](frmPanelProperties& dialog) {
        gDB->Close();
        box(dialog, u"txtMask"_s).setText(u"days.xlsx"_s);
        types(dialog).setCurrentText(u"refresh"_s);
        clickOn(dialog, u"cmdOK"_s);
        EXPECT_TRUE(dialog.isVisible());
    });
    EXPECT_EQ(m_user.shown.size(), 1);
    EXPECT_EQ(m_source->Mask, u"sales.xlsx"_s);
    EXPECT_EQ(m_source->UpdateType, u"default"_s);
}

TEST_F(FileUpdates, WithoutAPanelOrItsSourceItDoesNotOpen)
{
    const std::tuple<qint16, qint32, QString> rows[] = {{-1, 1, u"Invalid panel index."_s},
                                                        {1, 0, u"Invalid source ID."_s},
                                                        {1, 99, u"frmPanelProperties.Form_Activate"_s},
                                                        {7, 1, u"frmPanelProperties.Form_Activate"_s}};
    for (const auto& [index, sourceID, message] : rows) {
        m_panel.Index = index;
        m_record->SourceID = sourceID;
        m_user.shown.clear();
        m_panel.Panel_Properties(false);
        ASSERT_EQ(m_user.shown.size(), 1);
        EXPECT_TRUE(m_user.shown.first().contains(message)) << m_user.shown.first();
    }
}

} // namespace
} // namespace lumivane::test
