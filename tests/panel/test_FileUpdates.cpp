#include "panel/ProjectFixture.h"
#include "panel/ShownDialog.h"
#include "panel/frmPanel.h"
#include "panel/frmPanelProperties.h"
#include "repository/Database.h"
#include "repository/clsPanelSource.h"
#include "repository/clsWorkspacePanel.h"
#include "update/MailIntake.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>

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
    /// The source's row, "|" between the columns that the dialog writes and those it must leave alone.
    QString storedSource() const
    {
        const auto row = gDB->OpenRecordset(u"SELECT * FROM LvnPanelSource"_s);
        QStringList texts{row->text(u"UpdateType"), row->text(u"SourceFolder"), row->text(u"Mask"),
                          QString::number(row->number32(u"checkEveryNmin"))};
        for (const char* column : {"outlookFolder", "outlookSender", "outlookSubject", "outlookAttachment"})
            texts.append(row->text(QLatin1StringView(column)));
        return texts.join(u'|');
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
        EXPECT_EQ(box(dialog, u"txtSourceFolder"_s).text(), u"/reports/in/"_s);
        EXPECT_EQ(box(dialog, u"txtMask"_s).text(), u"sales*.xlsx"_s);
        EXPECT_EQ(box(dialog, u"txtFrequency"_s).text(), u"1000"_s);
        EXPECT_EQ(box(dialog, u"txtOFolder"_s).text(), u"Inbox"_s);
        EXPECT_EQ(box(dialog, u"txtOSender"_s).text(), u"*"_s);
        EXPECT_EQ(box(dialog, u"txtOSubject"_s).text(), u"Sales*"_s);
    });
}

TEST_F(FileUpdates, EachTypeHasItsFields)
{
    const struct
    {
        QString type;
        bool inbox, folder, frequency;
    } rows[] = {{u"inbox"_s, true, false, true},
                {u"folder"_s, false, true, true},
                {u"default"_s, false, false, false},
                {u"refresh"_s, false, false, true}};
    open([&](frmPanelProperties& dialog) {
        const QSize size = dialog.size();
        for (const auto& row : rows) {
            types(dialog).setCurrentText(row.type);
            EXPECT_EQ(shows(dialog, u"fraInbox"_s), row.inbox) << row.type.toStdString();
            EXPECT_EQ(shows(dialog, u"fraFolder"_s), row.folder) << row.type.toStdString();
            EXPECT_EQ(box(dialog, u"txtFrequency"_s).isEnabled(), row.frequency) << row.type.toStdString();
            EXPECT_EQ(dialog.size(), size) << row.type.toStdString();
        }
    });
}

struct Refusal
{
    const char* name;
    QString type;
    QString field, text; ///< what the user enters last
    QString message;
    QString focus; ///< empty: a folder is asked for instead
};
void PrintTo(const Refusal& row, std::ostream* out)
{
    *out << row.name;
}

class RefusedFileUpdates : public FileUpdates, public testing::WithParamInterface<Refusal>
{
};

TEST_P(RefusedFileUpdates, AreToldAndKeepTheDialogOpen)
{
    ASSERT_TRUE(m_source->SaveToDB(gDB));
    const QString before = storedSource();
    open([&](frmPanelProperties& dialog) {
        types(dialog).setCurrentText(GetParam().type);
        if (GetParam().type.isEmpty())
            types(dialog).setCurrentIndex(-1);
        box(dialog, u"txtSourceFolder"_s).setText(u"/in"_s);
        box(dialog, GetParam().field).setText(GetParam().text);
        if (GetParam().field == u"txtOSender")
            box(dialog, u"txtOSubject"_s).setText(u" "_s);
        dialog.activateWindow();
        clickOn(dialog, u"cmdOK"_s);
        ASSERT_TRUE(dialog.isVisible());
        EXPECT_EQ(m_user.shown, QStringList{GetParam().message});
        if (GetParam().focus.isEmpty()) {
            EXPECT_EQ(m_user.asked, QStringList{u"Select source folder"_s});
            return;
        }
        EXPECT_EQ(dialog.focusWidget()->objectName(), GetParam().focus);
        if (GetParam().message.contains(u"requency must") || GetParam().message.contains(u"cannot")) {
            EXPECT_EQ(box(dialog, u"txtFrequency"_s).selectedText(), GetParam().text);
        }
    });
    EXPECT_EQ(storedSource(), before);
}

const QString noFrequency = u"No frequency specified."_s, notNumeric = u"Frequency must be numeric."_s,
              tooLow = u"Frequency must be greater than 0."_s,
              tooHigh = u"Refresh frequency cannot be greater than 32,000."_s;
const Refusal refusals[] = {
    {"no_type", u""_s, u"txtMask"_s, u""_s, u"No Update Type selected."_s, u"cmbUpdateType"_s},
    {"no_source_folder", u"folder"_s, u"txtSourceFolder"_s, u" "_s, u"No source folder specified."_s, u""_s},
    {"no_frequency_of_a_folder", u"folder"_s, u"txtFrequency"_s, u""_s, noFrequency, u"txtFrequency"_s},
    {"no_sender_and_no_subject", u"inbox"_s, u"txtOSender"_s, u" "_s, u"Either sender, subject must be defined."_s,
     u"txtOSender"_s},
    {"no_mask", u"default"_s, u"txtMask"_s, u" "_s, u"No file mask defined."_s, u"txtMask"_s},
    {"mask_with_an_apostrophe", u"refresh"_s, u"txtMask"_s, u"day's.xlsx"_s,
     u"The file mask [day's.xlsx] holds an apostrophe, which the project does not take. Please change it and try again."_s,
     u"txtMask"_s},
    {"no_frequency", u"refresh"_s, u"txtFrequency"_s, u""_s, noFrequency, u"txtFrequency"_s},
    {"frequency_in_words", u"refresh"_s, u"txtFrequency"_s, u"hourly"_s, notNumeric, u"txtFrequency"_s},
    {"frequency_zero", u"refresh"_s, u"txtFrequency"_s, u"0"_s, tooLow, u"txtFrequency"_s},
    {"frequency_just_too_high", u"refresh"_s, u"txtFrequency"_s, u"32000.5"_s, tooHigh, u"txtFrequency"_s},
};
INSTANTIATE_TEST_SUITE_P(Refusals, RefusedFileUpdates, testing::ValuesIn(refusals),
                         [](const auto& row) { return std::string(row.param.name); });

struct Confirmed
{
    const char* name;
    QString type, sourceFolder, frequency, mask;
    QString stored;
};
void PrintTo(const Confirmed& row, std::ostream* out)
{
    *out << row.name;
}

class ConfirmedFileUpdates : public FileUpdates, public testing::WithParamInterface<Confirmed>
{
};

TEST_P(ConfirmedFileUpdates, AreStored)
{
    m_source->OLFolder = u"4711`Reports"_s;
    m_source->OLSubject = u"the day's sales"_s;
    m_user.confirmations = {true}; // the folder does not exist
    open([&](frmPanelProperties& dialog) {
        types(dialog).setCurrentText(GetParam().type);
        box(dialog, u"txtSourceFolder"_s).setText(GetParam().sourceFolder);
        box(dialog, u"txtFrequency"_s).setText(GetParam().frequency);
        box(dialog, u"txtMask"_s).setText(GetParam().mask);
        clickOn(dialog, u"cmdOK"_s);
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_EQ(m_user.shown, QStringList{});
    EXPECT_EQ(storedSource(), GetParam().stored);
    EXPECT_EQ(m_source->NewestFile, u"sales.xlsx"_s);
    EXPECT_EQ(m_source->DestFolder, bookPath(QString()));
}

const Confirmed confirmed[] = {
    {"folder", u"folder"_s, u"/reports/in"_s, u"15"_s, u"sales*.xlsx"_s,
     u"folder|/reports/in/|sales*.xlsx|15||*|the day's sales|sales*.xlsx"_s},
    {"folder_with_its_delimiter", u"folder"_s, u"/reports/in/"_s, u"32000"_s, u"*.xls"_s,
     u"folder|/reports/in/|*.xls|32000||*|the day's sales|*.xls"_s},
    {"no_folder_is_the_delimiter_alone", u"default"_s, u""_s, u"1000"_s, u"a"_s,
     u"default|/|a|1000||*|the day's sales|a"_s},
    {"the_default_inbox_unless_chosen_again", u"inbox"_s, u"/"_s, u"60"_s, u"sales?.xlsx"_s,
     u"inbox|/|sales?.xlsx|60||*|the day's sales|sales?.xlsx"_s},
    {"half_a_minute_rounds_to_even", u"refresh"_s, u"/"_s, u"0.5"_s, u"a"_s, u"refresh|/|a|0||*|the day's sales|a"_s},
    {"one_and_a_half_too", u"refresh"_s, u"/"_s, u" 1.5 "_s, u"a"_s, u"refresh|/|a|2||*|the day's sales|a"_s},
    {"grouped_digits", u"refresh"_s, u"/"_s, u"1,440"_s, u"a"_s, u"refresh|/|a|1440||*|the day's sales|a"_s},
};
INSTANTIATE_TEST_SUITE_P(Types, ConfirmedFileUpdates, testing::ValuesIn(confirmed),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(FileUpdates, AFolderIsJudgedWhileItIsTyped)
{
    QDir(m_folder.path()).mkdir(u"incoming"_s);
    int age = 0;
    for (const QString& name : {u"sales 2.xlsx"_s, u"sales 1.xlsx"_s, u"costs.xlsx"_s}) {
        ASSERT_TRUE(QFile::copy(bookPath(u"sales.xlsx"_s), programFile(u"incoming/"_s + name)));
        touch(programFile(u"incoming/"_s + name), -3600 * ++age);
    }
    const struct
    {
        QString type, folder, mask;
        QString text; ///< that it begins with
    } rows[] = {{u"folder"_s, u"incoming"_s, u"sales*.xlsx"_s, u"Fits now: sales 2.xlsx, "_s},
                {u"folder"_s, u"incoming/"_s, u"COSTS.*"_s, u"Fits now: costs.xlsx, "_s},
                {u"folder"_s, u"incoming"_s, u"*.csv"_s, u"No file in the folder fits at present."_s},
                {u"folder"_s, u"missing"_s, u"*.xlsx"_s, u"The folder does not exist at present."_s},
                {u"folder"_s, u"incoming/../books"_s, u"*.xlsx"_s, u"This is the folder of the current file."_s},
                {u"default"_s, u"missing"_s, u"*.xlsx"_s, u"Fits now: sales.xlsx, "_s}};
    open([&](frmPanelProperties& dialog) {
        for (const auto& row : rows) {
            types(dialog).setCurrentText(row.type);
            box(dialog, u"txtMask"_s).setText(row.mask);
            box(dialog, u"txtSourceFolder"_s).setText(programFile(row.folder));
            QDeadlineTimer patience(5000);
            while (!box(dialog, u"txtFits"_s).text().startsWith(row.text) && !patience.hasExpired())
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
            EXPECT_TRUE(box(dialog, u"txtFits"_s).text().startsWith(row.text))
                << row.mask.toStdString() << ": " << box(dialog, u"txtFits"_s).text().toStdString();
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
    const struct
    {
        qint16 index;
        qint32 sourceID;
        QString message;
    } rows[] = {{-1, 1, u"Invalid panel index."_s},
                {1, 0, u"Invalid source ID."_s},
                {1, 99, u"frmPanelProperties.Form_Activate"_s},
                {7, 1, u"frmPanelProperties.Form_Activate"_s}};
    for (const auto& row : rows) {
        m_panel.Index = row.index;
        m_record->SourceID = row.sourceID;
        m_user.shown.clear();
        m_panel.Panel_Properties(false);
        ASSERT_EQ(m_user.shown.size(), 1);
        EXPECT_TRUE(m_user.shown.first().contains(row.message)) << m_user.shown.first().toStdString();
    }
}

} // namespace
} // namespace lumivane::test
